#include "daemon/service/log_control.h"

#include "bus/codec.h"
#include "support/bus_pair.h"
#include "support/fake_journal.h"

#include <gtest/gtest.h>

#include <string>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;

constexpr const char* kPath = "/org/freedesktop/LogControl1";
constexpr const char* kInterface = "org.freedesktop.LogControl1";
constexpr const char* kProperties = "org.freedesktop.DBus.Properties";

class LogControls : public testing::Test {
 protected:
  LogControls() { control_.Attach(pair_.Server()); }

  /// The property's text, or the error.
  std::string Get(const char* property) {
    const Bus::Message call = pair_.NewCall(kPath, kProperties, "Get");
    Bus::ArgumentsCodec<std::string, std::string>::Append(call.get(), kInterface, property);
    sd_bus_message* answer = pair_.WaitForAnswer(pair_.Send(call.get()));
    if (ErrorOf(answer) != "none") {
      return ErrorOf(answer);
    }
    EXPECT_TRUE(Bus::EnterContainer(answer, SD_BUS_TYPE_VARIANT, "s"));
    return Bus::Codec<std::string>::Read(answer);
  }

  /// Sets the property to a text, or to a number; returns the error, "none" for success.
  template <typename Value>
  std::string Set(const char* property, const Value& value) {
    const Bus::Message call = pair_.NewCall(kPath, kProperties, "Set");
    Bus::ArgumentsCodec<std::string, std::string>::Append(call.get(), kInterface, property);
    Bus::OpenContainer(call.get(), SD_BUS_TYPE_VARIANT, Bus::Codec<Value>::signature.text);
    Bus::Codec<Value>::Append(call.get(), value);
    Bus::CloseContainer(call.get());
    return ErrorOf(pair_.WaitForAnswer(pair_.Send(call.get())));
  }
  std::string SetText(const char* property, const std::string& text) { return Set(property, text); }

  FakeJournal journal_;
  Log log_{Severity::Information, journal_, LogTarget::Console};
  LogControl control_{log_};
  BusPair pair_;
};

TEST_F(LogControls, TellTheLevelTheTargetAndTheIdentifier) {
  EXPECT_EQ(Get("LogLevel"), "info");
  EXPECT_EQ(Get("LogTarget"), "console");
  EXPECT_EQ(Get("SyslogIdentifier"), "talowifid");
}

TEST_F(LogControls, TellTheLevelAsItIsNow) {
  log_.SetLevel(Severity::Debug);
  EXPECT_EQ(Get("LogLevel"), "debug");
  log_.SetLevel(Severity::Error);
  EXPECT_EQ(Get("LogLevel"), "err");
}

TEST_F(LogControls, SetEveryLevel) {
  const std::pair<const char*, Severity> rows[] = {
      {"emerg", Severity::Emergency},  {"alert", Severity::Alert},     {"crit", Severity::Critical},
      {"err", Severity::Error},        {"warning", Severity::Warning}, {"notice", Severity::Notice},
      {"info", Severity::Information}, {"debug", Severity::Debug},
  };
  for (const auto& [word, severity] : rows) {
    EXPECT_EQ(SetText("LogLevel", word), "none");
    EXPECT_EQ(log_.GetLevel(), severity);
    EXPECT_EQ(Get("LogLevel"), word);
  }
}

TEST_F(LogControls, RefuseAWordThatIsNoLevel) {
  for (const std::string word : {"", "Debug", "DEBUG", "error", "7", "debug ", "100%s"}) {
    EXPECT_EQ(SetText("LogLevel", word),
              "org.freedesktop.DBus.Error.InvalidArgs: \"" + word +
                  "\" is no log level; emerg, alert, crit, err, warning, notice, info and debug are");
  }
  EXPECT_EQ(log_.GetLevel(), Severity::Information);
}

TEST_F(LogControls, RefuseALevelThatIsNoText) {
  EXPECT_TRUE(Set("LogLevel", 7).starts_with("org.freedesktop.DBus.Error.InvalidArgs: "));
  EXPECT_EQ(log_.GetLevel(), Severity::Information);
}

TEST_F(LogControls, SetTheTarget) {
  EXPECT_EQ(SetText("LogTarget", "journal"), "none");
  EXPECT_EQ(log_.GetTarget(), LogTarget::Journal);
  EXPECT_EQ(Get("LogTarget"), "journal");
  EXPECT_EQ(SetText("LogTarget", "console"), "none");
  EXPECT_EQ(log_.GetTarget(), LogTarget::Console);
  EXPECT_EQ(Get("LogTarget"), "console");
}

TEST_F(LogControls, RefuseTheJournalWhereThereIsNone) {
  journal_.isThere = false;
  EXPECT_EQ(SetText("LogTarget", "journal"),
            "org.freedesktop.DBus.Error.NotSupported: there is no journal here");
  EXPECT_EQ(Get("LogTarget"), "console");
}

TEST_F(LogControls, RefuseAnotherTarget) {
  for (const std::string word : {"", "kmsg", "syslog", "null", "auto", "Console", "100%s"}) {
    EXPECT_EQ(SetText("LogTarget", word), "org.freedesktop.DBus.Error.InvalidArgs: \"" + word +
                                              "\" is no log target here; console and journal are");
  }
  EXPECT_EQ(Get("LogTarget"), "console");
  EXPECT_TRUE(Set("LogTarget", 7).starts_with("org.freedesktop.DBus.Error.InvalidArgs: "));
}

TEST_F(LogControls, KeepTheIdentifier) {
  EXPECT_TRUE(
      SetText("SyslogIdentifier", "other").starts_with("org.freedesktop.DBus.Error.PropertyReadOnly: "));
  EXPECT_EQ(Get("SyslogIdentifier"), "talowifid");
}

}  // namespace

}  // namespace TALO::Wifid
