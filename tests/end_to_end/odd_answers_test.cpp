// What the tool says to answers that no daemon of its own version gives.

#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/fake_service.h"

#include <cstdint>

namespace TALO::EndToEnd {

namespace {

using Wifi::Bus::CheckMessage;
using Then = FakeService::Then;

class OddAnswer : public EndToEndTest {
 protected:
  /// Runs the tool against a service that gives `answer` to every call.
  ToolRun RunToolAgainst(const Words& words, const FakeService::Answer& answer) {
    FakeService service(Address(), answer);
    Process tool(ToolProcess(Address(), words));
    service.ServeUntilEndOf(tool);
    return Finish(tool);
  }

  ToolRun RunToolAgainstError(const Words& words, const char* name, const char* message) {
    return RunToolAgainst(words, [=](sd_bus_message* call) {
      AnswerError(call, name, message);
      return Then::ServeOn;
    });
  }
};

TEST_F(OddAnswer, OfAnotherTypeIsRefused) {
  EXPECT_EQ(
      RunToolAgainst({"getRadioIfStatuses"},
                     [](sd_bus_message* call) {
                       CheckMessage(sd_bus_reply_method_return(call, "s", "wlan0"));
                       return Then::ServeOn;
                     }),
      Failure("the answer of the wifi daemon to GetRadioIfStatuses cannot be read (it holds \"s\" instead "
              "of \"a(isas)\"): Bad reply\n"));
}

TEST_F(OddAnswer, WithNothingInItIsRefused) {
  EXPECT_EQ(RunToolAgainst({"isAllNetworkAPDisabled"},
                           [](sd_bus_message* call) {
                             CheckMessage(sd_bus_reply_method_return(call, nullptr));
                             return Then::ServeOn;
                           }),
            Failure("the answer of the wifi daemon to IsAllNetworkAPDisabled cannot be read (it holds \"\" "
                    "instead of \"b\"): Bad reply\n"));
}

TEST_F(OddAnswer, WithMoreThanWasAskedForIsRefused) {
  EXPECT_EQ(RunToolAgainst({"modifyLogLevel", "--level", "Debug"},
                           [](sd_bus_message* call) {
                             CheckMessage(sd_bus_reply_method_return(call, "i", 1));
                             return Then::ServeOn;
                           }),
            Failure("the answer of the wifi daemon to SetLogLevel cannot be read (it holds \"i\" instead of "
                    "\"\"): Bad reply\n"));
}

TEST_F(OddAnswer, WithAMACAddressThatIsNoneIsRefused) {
  EXPECT_EQ(RunToolAgainst({"getDevices"},
                           [](sd_bus_message* call) {
                             CheckMessage(sd_bus_reply_method_return(call, "a(sssiayisiiii)", 1,
                                                                     "02:00:00:00:00:0g", "phone", "", 1, 1,
                                                                     0x48, 1, "wlan0_1", -50, 100, 100, 60));
                             return Then::ServeOn;
                           }),
            Failure("the answer of the wifi daemon to GetDevices cannot be read (Invalid MAC address: "
                    "02:00:00:00:00:0g): Bad reply\n"));
}

TEST_F(OddAnswer, WithAnUnknownRadioEndsTheListingThere) {
  EXPECT_EQ(RunToolAgainst({"getRadioIfStatuses"},
                           [](sd_bus_message* call) {
                             CheckMessage(sd_bus_reply_method_return(call, "a(isas)", 2, 1, "wlan0", 1,
                                                                     "wlan0_1", 9, "wlan1", 0));
                             return Then::ServeOn;
                           }),
            Failure("Frequency           Radio Interface     Enabled Wifi Interfaces\n"
                    "Band2_4GHz          wlan0               wlan0_1 \n"
                    "Failed to execute command: Failed to Convert enum class "
                    "[N4TALO4Wifi4Util14RadioFrequencyE] to string: 9: Runtime error\n"));
}

TEST_F(OddAnswer, ToTheLogLevelClosesDebugCommands) {
  const auto answerNumber = [](sd_bus_message* call) {
    CheckMessage(sd_bus_reply_method_return(call, "v", "i", 7));
    return Then::ServeOn;
  };
  EXPECT_EQ(RunToolAgainst({"getRadios"}, answerNumber),
            Failure("the answer of the wifi daemon to LogLevel cannot be read (it holds \"i\" instead of "
                    "\"s\"): "
                    "Bad reply\n" +
                    Tool::helpListing(false)));
  EXPECT_EQ(RunToolAgainst({"help"}, answerNumber), Success(Tool::helpListing(false)));
}

TEST_F(OddAnswer, OfALogLevelThatHasNoNameClosesDebugCommands) {
  for (const char* level : {"", "DEBUG", "debug2", "7"}) {
    const auto answer = [level](sd_bus_message* call) {
      AnswerLogLevel(call, level);
      return Then::ServeOn;
    };
    SCOPED_TRACE(level);
    EXPECT_EQ(RunToolAgainst({"getRadios"}, answer), Failure("getRadios is supported only on debug mode.\n"));
    EXPECT_EQ(RunToolAgainst({"help"}, answer), Success(Tool::helpListing(false)));
  }
}

struct ErrorCase {
  const char* name;
  const char* message;
  const char* printed;
};

TEST_F(OddAnswer, OfAnErrorIsPrintedWithItsMeaning) {
  const std::vector<ErrorCase> errors = {
      {"com.talo.Wifi1.Error.InvalidArgument", "a b", "Failed to execute command: a b: Invalid argument\n"},
      {"com.talo.Wifi1.Error.NotFound", "a b", "Failed to execute command: a b: Not found\n"},
      {"com.talo.Wifi1.Error.AlreadyExists", "a b", "Failed to execute command: a b: Already exists\n"},
      {"com.talo.Wifi1.Error.NotSupported", "a b", "Failed to execute command: a b: Not supported\n"},
      {"com.talo.Wifi1.Error.NotAllowed", "a b", "Failed to execute command: a b: Not allowed\n"},
      {"com.talo.Wifi1.Error.Busy", "a b", "Failed to execute command: a b: Busy\n"},
      {"com.talo.Wifi1.Error.LimitReached", "a b", "Failed to execute command: a b: Limit reached\n"},
      {"com.talo.Wifi1.Error.RadioFailed", "a b", "Failed to execute command: a b: Radio failed\n"},
      {"com.talo.Wifi1.Error.StorageFailed", "a b", "Failed to execute command: a b: Storage failed\n"},
      {"com.talo.Wifi1.Error.Newer", "a b",
       "GetDevices failed on the bus: com.talo.Wifi1.Error.Newer: a b: Unexpected error\n"},
      {"com.example.Odd", "a b", "GetDevices failed on the bus: com.example.Odd: a b: Unexpected error\n"},
      {"org.freedesktop.DBus.Error.ServiceUnknown", "a b",
       "the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n"},
      {"org.freedesktop.DBus.Error.Spawn.Failed", "a b",
       "the bus could not start the wifi daemon (a b): Daemon not started\n"},
      {"org.freedesktop.DBus.Error.TimedOut", "a b",
       "the bus could not start the wifi daemon (a b): Daemon not started\n"},
      {"org.freedesktop.systemd1.NoSuchUnit", "a b",
       "the bus could not start the wifi daemon (a b): Daemon not started\n"},
      {"org.freedesktop.DBus.Error.UnknownMethod", "a b",
       "the wifi daemon does not know the operation; is it of another version? (GetDevices): Unknown "
       "operation\n"},
      {"org.freedesktop.DBus.Error.InvalidArgs", "a b",
       "the wifi daemon takes other arguments; is it of another version? (GetDevices): Unknown operation\n"},
      {"org.freedesktop.DBus.Error.AccessDenied", "a b",
       "the bus does not let this user talk to the wifi daemon (GetDevices): Access denied\n"},
      {"org.freedesktop.DBus.Error.NoReply", "a b",
       "the wifi daemon went away before it answered (GetDevices): Daemon gone\n"},
  };
  for (const ErrorCase& error : errors) {
    SCOPED_TRACE(error.name);
    EXPECT_EQ(RunToolAgainstError({"getDevices"}, error.name, error.message), Failure(error.printed));
  }
}

TEST_F(OddAnswer, OfAnErrorWithPercentSignsAndLineEndsIsPrintedAsItCame) {
  EXPECT_EQ(RunToolAgainstError({"getDevices"}, "com.talo.Wifi1.Error.NotFound", "100%s of\n%n"),
            Refusal("100%s of\n%n: Not found"));
}

TEST_F(OddAnswer, OfAnErrorToTheLogLevelClosesDebugCommands) {
  const Words words = {"getRadios"};
  EXPECT_EQ(
      RunToolAgainstError(words, "org.freedesktop.DBus.Error.UnknownProperty", "a b"),
      Failure("the wifi daemon does not know the operation; is it of another version? (LogLevel): Unknown "
              "operation\n" +
              Tool::helpListing(false)));
  EXPECT_EQ(RunToolAgainstError(words, "com.talo.Wifi1.Error.NotAllowed", "a b"),
            Failure("a b: Not allowed\n" + Tool::helpListing(false)));
  EXPECT_EQ(RunToolAgainstError({"help"}, "com.example.Odd", "a b"), Success(Tool::helpListing(false)));
}

}  // namespace

}  // namespace TALO::EndToEnd
