#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

namespace {

class ModifyLogLevel : public testing::Test {
 protected:
  ModifyLogLevel() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(ModifyLogLevel, SetsEachOfTheFourLevels) {
  for (const std::string level : {"Error", "Warning", "Information", "Debug"}) {
    SCOPED_TRACE(level);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"modifyLogLevel", "--level", level});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls,
              (Calls{"WifiClientFactoryForTool::GetInstance()", "SetLogLevel(" + level + ")"}));
  }
}

TEST_F(ModifyLogLevel, TakesErrorAsTheLowestLevelAndNotAsASentinel) {
  const ToolRun run = runTool({"modifyLogLevel", "--level", "Error"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactoryForTool::GetInstance()", "SetLogLevel(Error)"}));
  EXPECT_EQ(static_cast<int>(Wifi::Util::LogLevel::Error), 0);
}

TEST_F(ModifyLogLevel, RefusesTheLowerCaseWordDebugAndLeavesTheDaemonAlone) {
  const ToolRun run = runTool({"modifyLogLevel", "--level", "debug"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi4Util8LogLevelE]: debug: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{});
}

TEST_F(ModifyLogLevel, RefusesEveryWordThatIsNotExactlyAName) {
  for (const std::string level : {"", "DEBUG", "Debug ", " Debug", "Debu", "Debugs", "3", "-1", "Warn"}) {
    SCOPED_TRACE(level);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"modifyLogLevel", "--level", level});
    EXPECT_EQ(run.output,
              "Failed to execute command: Failed to convert string to enum class "
              "[N4TALO4Wifi4Util8LogLevelE]: " +
                  level + ": Runtime error\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{});
  }
}

TEST_F(ModifyLogLevel, RefusesExtraUnknownOptionsBeforeAnythingElse) {
  daemon_.Fail("WifiClientFactoryForTool", std::runtime_error("no client"));
  const ToolRun run = runTool({"modifyLogLevel", "--odd", "1", "--level", "bad"});
  EXPECT_EQ(run.output, "unrecognised option '--odd'\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{});
}

TEST_F(ModifyLogLevel, ConvertsTheLevelBeforeItObtainsTheClient) {
  daemon_.Fail("WifiClientFactoryForTool", std::runtime_error("no client"));
  const ToolRun run = runTool({"modifyLogLevel", "--level", "bad"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi4Util8LogLevelE]: bad: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{});
}

TEST_F(ModifyLogLevel, IsNotHeldBackByALogLevelThatCannotBeLearned) {
  daemon_.Fail("IsDebugLogLevel",
               talo::dbus::DbusError(make_error_code(Wifi::ErrorCode::NoAnswer), "silent"));
  const ToolRun run = runTool({"modifyLogLevel", "--level", "Debug"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactoryForTool::GetInstance()", "SetLogLevel(Debug)"}));
}

}  // namespace

}  // namespace TALO::Tool
