// The daemon's log level, and the commands that it opens and closes.

#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/test_connection.h"

namespace TALO::EndToEnd {

namespace {

/// The daemon logs as it does out of the box.
class LogLevel : public EndToEndTest {
 protected:
  LogLevel() { StartDaemon({.options = {}}); }

  void ExpectDebugCommandsRefused() {
    EXPECT_EQ(RunTool({"getNetworkInterfaces"}),
              Failure("getNetworkInterfaces is supported only on debug mode.\n"));
    EXPECT_EQ(RunTool({"help"}), Success(Tool::helpListing(false)));
  }
  void ExpectDebugCommandsAllowed() {
    EXPECT_EQ(RunTool({"getNetworkInterfaces"}), Success("\n"));
    EXPECT_EQ(RunTool({"help"}), Success(Tool::helpListing(true)));
  }
};

TEST_F(LogLevel, RefusesDebugCommandsOutOfTheBoxWithTheWordAsTyped) {
  ExpectDebugCommandsRefused();
  EXPECT_EQ(RunTool({"GetRadios"}), Failure("GetRadios is supported only on debug mode.\n"));
  EXPECT_EQ(RunTool({"GETRADIOS", "--unknown"}), Failure("GETRADIOS is supported only on debug mode.\n"));
}

TEST_F(LogLevel, RefusesEveryOtherCommandThanTheListedOnes) {
  int refused = 0;
  for (const Tool::CommandRow& row : Tool::commandRows()) {
    if (row.debugOnly) {
      ++refused;
      EXPECT_EQ(RunTool({row.name}), Failure(row.name + " is supported only on debug mode.\n"));
    }
  }
  EXPECT_EQ(refused, 43);
}

TEST_F(LogLevel, RefusesDebugCommandsBeforeTheyChangeAnything) {
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"}),
            Failure("createNetwork is supported only on debug mode.\n"));
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
}

TEST_F(LogLevel, OpensDebugCommandsAtDebugAndClosesThemAtAnyOther) {
  Do({"modifyLogLevel", "--level", "Debug"});
  ExpectDebugCommandsAllowed();
  for (const char* level : {"Error", "Warning", "Information"}) {
    SCOPED_TRACE(level);
    Do({"modifyLogLevel", "--level", level});
    ExpectDebugCommandsRefused();
    Do({"modifyLogLevel", "--level", "Debug"});
  }
  ExpectDebugCommandsAllowed();
}

TEST_F(LogLevel, IsSeenInTheStandardProperty) {
  TestConnection bus(Address());
  EXPECT_EQ(bus.GetLogLevel(), "info");
  const std::vector<std::pair<const char*, const char*>> levels = {
      {"Debug", "debug"}, {"Error", "err"}, {"Warning", "warning"}, {"Information", "info"}};
  for (const auto& [word, level] : levels) {
    Do({"modifyLogLevel", "--level", word});
    EXPECT_EQ(bus.GetLogLevel(), level);
  }
}

TEST_F(LogLevel, IsSetByTheStandardProperty) {
  TestConnection bus(Address());
  bus.SetLogLevel("debug");
  ExpectDebugCommandsAllowed();
  for (const char* level : {"emerg", "alert", "crit", "err", "warning", "notice", "info"}) {
    SCOPED_TRACE(level);
    bus.SetLogLevel("debug");
    bus.SetLogLevel(level);
    EXPECT_EQ(bus.GetLogLevel(), level);
    EXPECT_EQ(RunTool({"getNetworkInterfaces"}),
              Failure("getNetworkInterfaces is supported only on debug mode.\n"));
  }
}

TEST_F(LogLevel, StaysWhenThePropertyIsSetToAnUnknownOne) {
  TestConnection bus(Address());
  bus.SetLogLevel("debug");
  try {
    bus.SetLogLevel("Debug");
    ADD_FAILURE() << "no error";
  } catch (const CallError& error) {
    EXPECT_EQ(error.Name(), "org.freedesktop.DBus.Error.InvalidArgs");
    EXPECT_EQ(error.Message(),
              "\"Debug\" is no log level; emerg, alert, crit, err, warning, notice, info and debug are");
  }
  EXPECT_EQ(bus.GetLogLevel(), "debug");
}

TEST_F(LogLevel, StaysWhenTheToolIsGivenAnUnknownOne) {
  EXPECT_EQ(
      RunTool({"modifyLogLevel", "--level", "debug"}),
      Refusal("Failed to convert string to enum class [N4TALO4Wifi4Util8LogLevelE]: debug: Runtime error"));
  EXPECT_EQ(TestConnection(Address()).GetLogLevel(), "info");
}

TEST_F(LogLevel, DecidesWhatIsListedBehindAFailureToo) {
  EXPECT_EQ(RunTool({}), Failure(Tool::helpListing(false)));
  EXPECT_EQ(RunTool({"getNetwork"}),
            Failure("Failed to find command: getNetwork\n" + Tool::helpListing(false)));
  Do({"modifyLogLevel", "--level", "Debug"});
  EXPECT_EQ(RunTool({"--help"}), Failure(Tool::helpListing(true)));
  EXPECT_EQ(RunTool({"getNetwork"}),
            Failure("Failed to find command: getNetwork\n" + Tool::helpListing(true)));
}

}  // namespace

}  // namespace TALO::EndToEnd
