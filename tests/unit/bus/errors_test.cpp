#include "bus/errors.h"

#include "support/thrown.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>
#include <vector>

namespace TALO::Wifi::Bus {

namespace {

/// What an error with this name and message means to the caller of GetDevices. Null is for none.
Thrown MeaningOf(const char* name, const char* message) {
  const sd_bus_error error = SD_BUS_ERROR_MAKE_CONST(name, message);
  return Catch([&] { ThrowCallError(error, "GetDevices"); });
}

struct RefusalRow {
  ErrorCode code;
  const char* name;
  const char* phrase;
};

const std::vector<RefusalRow> kRefusals = {
    {ErrorCode::InvalidArgument, "com.talo.Wifi1.Error.InvalidArgument", "Invalid argument"},
    {ErrorCode::NotFound, "com.talo.Wifi1.Error.NotFound", "Not found"},
    {ErrorCode::AlreadyExists, "com.talo.Wifi1.Error.AlreadyExists", "Already exists"},
    {ErrorCode::NotSupported, "com.talo.Wifi1.Error.NotSupported", "Not supported"},
    {ErrorCode::NotAllowed, "com.talo.Wifi1.Error.NotAllowed", "Not allowed"},
    {ErrorCode::Busy, "com.talo.Wifi1.Error.Busy", "Busy"},
    {ErrorCode::LimitReached, "com.talo.Wifi1.Error.LimitReached", "Limit reached"},
    {ErrorCode::RadioFailed, "com.talo.Wifi1.Error.RadioFailed", "Radio failed"},
    {ErrorCode::StorageFailed, "com.talo.Wifi1.Error.StorageFailed", "Storage failed"},
};

TEST(Refusal, HasItsNameOnTheBus) {
  for (const RefusalRow& row : kRefusals) {
    EXPECT_STREQ(ErrorNameOf(row.code), row.name);
  }
}

TEST(Refusal, BecomesAnExceptionWithItsCodeAndWords) {
  for (const RefusalRow& row : kRefusals) {
    EXPECT_EQ(MeaningOf(row.name, "network 7: 50% done"),
              (Thrown{Thrown::Refusal, row.code, std::string("network 7: 50% done: ") + row.phrase}));
  }
}

TEST(Refusal, IsKnownByItsNameWhenTheDaemonGaveNoWords) {
  for (const RefusalRow& row : kRefusals) {
    const Thrown expected = {Thrown::Refusal, row.code, std::string(row.name) + ": " + row.phrase};
    EXPECT_EQ(MeaningOf(row.name, nullptr), expected);
    EXPECT_EQ(MeaningOf(row.name, ""), expected);
  }
}

TEST(Refusal, IsNoneOfTheOtherErrors) {
  for (const ErrorCode code :
       {ErrorCode::RuntimeError, ErrorCode::BusUnavailable, ErrorCode::DaemonNotRunning,
        ErrorCode::DaemonNotStarted, ErrorCode::AccessDenied, ErrorCode::DaemonGone, ErrorCode::NoAnswer,
        ErrorCode::BadReply, ErrorCode::UnknownOperation, ErrorCode::Unexpected, ErrorCode{0},
        ErrorCode{19}}) {
    EXPECT_EQ(ErrorNameOf(code), nullptr) << static_cast<int>(code);
  }
}

struct BusErrorRow {
  const char* name;
  ErrorCode code;
  const char* what;
};

TEST(ErrorOfTheBus, IsTheFailureThatItsNameMeans) {
  const char* const denied =
      "the bus does not let this user talk to the wifi daemon (GetDevices): Access denied";
  const char* const busGone = "the bus went away before the wifi daemon answered (GetDevices): Daemon gone";
  const char* const unknown =
      "the wifi daemon does not know the operation; is it of another version? (GetDevices): Unknown "
      "operation";
  const char* const notRunning =
      "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running";
  const std::vector<BusErrorRow> rows = {
      {"org.freedesktop.DBus.Error.ServiceUnknown", ErrorCode::DaemonNotRunning, notRunning},
      {"org.freedesktop.DBus.Error.NameHasNoOwner", ErrorCode::DaemonNotRunning, notRunning},
      {"org.freedesktop.DBus.Error.AccessDenied", ErrorCode::AccessDenied, denied},
      {"org.freedesktop.DBus.Error.AuthFailed", ErrorCode::AccessDenied, denied},
      {"org.freedesktop.DBus.Error.InteractiveAuthorizationRequired", ErrorCode::AccessDenied, denied},
      {"org.freedesktop.DBus.Error.NoReply", ErrorCode::DaemonGone,
       "the wifi daemon went away before it answered (GetDevices): Daemon gone"},
      {"org.freedesktop.DBus.Error.Disconnected", ErrorCode::DaemonGone, busGone},
      {"System.Error.ECONNRESET", ErrorCode::DaemonGone, busGone},
      {"System.Error.EPIPE", ErrorCode::DaemonGone, busGone},
      {"System.Error.ENOTCONN", ErrorCode::DaemonGone, busGone},
      {"org.freedesktop.DBus.Error.Timeout", ErrorCode::NoAnswer,
       "the wifi daemon did not answer in time (GetDevices): No answer"},
      {"org.freedesktop.DBus.Error.UnknownMethod", ErrorCode::UnknownOperation, unknown},
      {"org.freedesktop.DBus.Error.UnknownInterface", ErrorCode::UnknownOperation, unknown},
      {"org.freedesktop.DBus.Error.UnknownObject", ErrorCode::UnknownOperation, unknown},
      {"org.freedesktop.DBus.Error.UnknownProperty", ErrorCode::UnknownOperation, unknown},
      {"org.freedesktop.DBus.Error.InvalidArgs", ErrorCode::UnknownOperation,
       "the wifi daemon takes other arguments; is it of another version? (GetDevices): Unknown operation"},
  };
  for (const BusErrorRow& row : rows) {
    const Thrown expected = {Thrown::Failure, row.code, row.what};
    EXPECT_EQ(MeaningOf(row.name, "words of the bus"), expected) << row.name;
    EXPECT_EQ(MeaningOf(row.name, nullptr), expected) << row.name;
  }
}

TEST(ErrorOfTheBus, IsADaemonThatCouldNotBeStartedForEveryErrorOfSpawning) {
  for (const char* name :
       {"org.freedesktop.DBus.Error.Spawn.ExecFailed", "org.freedesktop.DBus.Error.Spawn.ServiceNotFound"}) {
    EXPECT_EQ(MeaningOf(name, "exited with 127"),
              (Thrown{Thrown::Failure, ErrorCode::DaemonNotStarted,
                      "the bus could not start the wifi daemon (exited with 127): Daemon not started"}));
    EXPECT_EQ(MeaningOf(name, nullptr), (Thrown{Thrown::Failure, ErrorCode::DaemonNotStarted,
                                                "the bus could not start the wifi daemon (" +
                                                    std::string(name) + "): Daemon not started"}));
  }
}

TEST(ErrorOfTheBus, IsUnexpectedWhereItsNameIsUnknown) {
  EXPECT_EQ(MeaningOf("com.example.Odd", "out of cheese"),
            (Thrown{Thrown::Failure, ErrorCode::Unexpected,
                    "GetDevices failed on the bus: com.example.Odd: out of cheese: Unexpected error"}));
}

TEST(ErrorOfTheBus, IsNotTakenForARefusalThatItsNameOnlyResembles) {
  for (const std::string name :
       {"com.talo.Wifi1.Error.", "com.talo.Wifi1.Error.Notfound", "com.talo.Wifi1.Error.NotFound2",
        "com.talo.Wifi1.Error.RuntimeError", "com.talo.Wifi2.Error.NotFound", "NotFound"}) {
    EXPECT_EQ(MeaningOf(name.c_str(), "words"),
              (Thrown{Thrown::Failure, ErrorCode::Unexpected,
                      "GetDevices failed on the bus: " + name + ": words: Unexpected error"}));
  }
}

TEST(ErrorOfTheBus, IsKnownByItsNameWhenItHasNoMessage) {
  const Thrown expected = {Thrown::Failure, ErrorCode::Unexpected,
                           "GetDevices failed on the bus: com.example.Odd: Unexpected error"};
  EXPECT_EQ(MeaningOf("com.example.Odd", nullptr), expected);
  EXPECT_EQ(MeaningOf("com.example.Odd", ""), expected);
}

TEST(ErrorOfTheBus, IsStillAFailureWithoutANameAndAMessage) {
  EXPECT_EQ(MeaningOf(nullptr, nullptr), (Thrown{Thrown::Failure, ErrorCode::Unexpected,
                                                 "GetDevices failed on the bus: : Unexpected error"}));
}

TEST(MissingBus, IsReportedWithItsReason) {
  EXPECT_EQ(Catch([] { ThrowBusUnavailable(ENOENT); }),
            (Thrown{Thrown::Failure, ErrorCode::BusUnavailable,
                    "the system bus cannot be reached (No such file or directory): Bus unavailable"}));
}

TEST(UnreadableReply, IsReportedWithOperationAndReason) {
  EXPECT_EQ(Catch([] { ThrowBadReply("GetDevices", "it is torn"); }),
            (Thrown{Thrown::Failure, ErrorCode::BadReply,
                    "the answer of the wifi daemon to GetDevices cannot be read (it is torn): Bad reply"}));
}

}  // namespace

}  // namespace TALO::Wifi::Bus
