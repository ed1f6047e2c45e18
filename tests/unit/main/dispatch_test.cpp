#include "support/command_rows.h"
#include "support/fake_daemon.h"
#include "support/letter_case.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <stdexcept>
#include <string>
#include <vector>

// Which command a run chooses, and whether it may run.

namespace TALO::Tool {

namespace {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

const Calls kOnlyLogLevel = {"IsDebugLogLevel()"};
const Calls kGetNetworks = {"WifiClientFactory::GetInstance()", "GetNetworkSettings()"};
const std::string kNoNetworks = "[]\n\n";

class Dispatch : public testing::Test {
 protected:
  Dispatch() { FakeDaemon::Reset(); }

  /// Runs the tool against a daemon at the log level.
  static ToolRun runAt(bool debug, const std::vector<std::string>& words) {
    FakeDaemon::Reset();
    FakeDaemon::Get().isDebugLogLevel = debug;
    return runTool(words);
  }

  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(Dispatch, EndsWithZeroWhenTheHandlerReturned) {
  const ToolRun run = runTool({"getNetworks"});
  EXPECT_EQ(run.output, kNoNetworks);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, kGetNetworks);
}

TEST_F(Dispatch, PrintsTheListingForHelpInAnyLetterCase) {
  for (const std::string word : {"help", "HELP", "Help", "hELP"}) {
    for (const bool debug : {false, true}) {
      SCOPED_TRACE(word);
      const ToolRun run = runAt(debug, {word});
      EXPECT_EQ(run.output, helpListing(debug));
      EXPECT_EQ(run.status, 0);
      EXPECT_EQ(daemon_.calls, kOnlyLogLevel);
    }
  }
}

TEST_F(Dispatch, PrintsTheListingForHelpWhateverFollowsIt) {
  const ToolRun run = runTool({"help", "getNetworks", "--unknown", "x"});
  EXPECT_EQ(run.output, helpListing(true));
  EXPECT_EQ(run.status, 0);
}

TEST_F(Dispatch, PrintsTheListingForHelpWithoutTheDebugCommandsWhenTheLogLevelCannotBeLearned) {
  daemon_.failures["IsDebugLogLevel"] = std::make_exception_ptr(std::runtime_error("no daemon"));
  const ToolRun run = runTool({"help"});
  EXPECT_EQ(run.output, helpListing(false));
  EXPECT_EQ(run.status, 0);
}

TEST_F(Dispatch, PrintsOnlyTheListingAndEndsWithOneWithoutACommand) {
  const std::vector<std::vector<std::string>> invocations = {
      {}, {"--help"}, {"--verbose"}, {"--help", "--verbose=1"}, {"--subargs", "getNetworks"}, {"-v"}};
  for (const auto& words : invocations) {
    for (const bool debug : {false, true}) {
      SCOPED_TRACE(testing::PrintToString(words));
      const ToolRun run = runAt(debug, words);
      EXPECT_EQ(run.output, helpListing(debug));
      EXPECT_EQ(run.status, 1);
      EXPECT_EQ(daemon_.calls, kOnlyLogLevel);
    }
  }
}

TEST_F(Dispatch, IgnoresTheHelpSwitchBesideACommand) {
  const std::vector<std::vector<std::string>> invocations = {{"--help", "getNetworks"},
                                                             {"getNetworks", "--help"}};
  for (const auto& words : invocations) {
    SCOPED_TRACE(testing::PrintToString(words));
    const ToolRun run = runAt(true, words);
    EXPECT_EQ(run.output, kNoNetworks);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, kGetNetworks);
  }
}

TEST_F(Dispatch, PrintsTheListingWithZeroForHelpBesideTheHelpSwitch) {
  const ToolRun run = runTool({"--help", "help"});
  EXPECT_EQ(run.output, helpListing(true));
  EXPECT_EQ(run.status, 0);
}

TEST_F(Dispatch, FindsACommandTypedAllInLowerCase) {
  const ToolRun run = runTool({"getnetworks"});
  EXPECT_EQ(run.output, kNoNetworks);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, kGetNetworks);
}

TEST_F(Dispatch, FindsACommandTypedAllInCapitals) {
  const ToolRun run = runTool({"GETNETWORKS"});
  EXPECT_EQ(run.output, kNoNetworks);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, kGetNetworks);
}

TEST_F(Dispatch, RunsEveryCommandInAnyLetterCaseAlike) {
  for (const CommandRow& row : commandRows()) {
    const ToolRun asNamed = runAt(true, {row.name});
    const Calls calls = daemon_.calls;
    for (const std::string& word : {inUpperCase(row.name), inLowerCase(row.name)}) {
      SCOPED_TRACE(word);
      const ToolRun run = runAt(true, {word});
      EXPECT_EQ(run.output, asNamed.output);
      EXPECT_EQ(run.status, asNamed.status);
      EXPECT_EQ(daemon_.calls, calls);
    }
  }
}

TEST_F(Dispatch, PrintsTheWordAndTheListingForAnUnknownCommand) {
  for (const bool debug : {false, true}) {
    const ToolRun run = runAt(debug, {"getNetwork"});
    EXPECT_EQ(run.output, "Failed to find command: getNetwork\n" + helpListing(debug));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, kOnlyLogLevel);
  }
}

TEST_F(Dispatch, PrintsAnUnknownCommandAsTyped) {
  for (const std::string word :
       {"", " ", "GETNETWORK", "getNetworks ", "get networks", "%s%n", "\xFF", "-"}) {
    SCOPED_TRACE(word);
    const ToolRun run = runAt(true, {word, "--id", "7"});
    EXPECT_EQ(run.output, "Failed to find command: " + word + "\n" + helpListing(true));
    EXPECT_EQ(run.status, 1);
  }
}

TEST_F(Dispatch, RefusesEveryDebugCommandOutsideDebugLevel) {
  int refused = 0;
  for (const CommandRow& row : commandRows()) {
    if (!row.debugOnly) {
      continue;
    }
    SCOPED_TRACE(row.name);
    const ToolRun run = runAt(false, {row.name});
    EXPECT_EQ(run.output, row.name + " is supported only on debug mode.\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, kOnlyLogLevel);
    ++refused;
  }
  EXPECT_EQ(refused, 43);
}

TEST_F(Dispatch, RefusesADebugCommandByTheWordAsTyped) {
  for (const std::string word : {"GetRadios", "GETRADIOS", "getradios"}) {
    const ToolRun run = runAt(false, {word});
    EXPECT_EQ(run.output, word + " is supported only on debug mode.\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, kOnlyLogLevel);
  }
}

TEST_F(Dispatch, RefusesADebugCommandBeforeItsArgumentsAreLookedAt) {
  const ToolRun run = runAt(false, {"deleteNetwork", "--colour", "blue"});
  EXPECT_EQ(run.output, "deleteNetwork is supported only on debug mode.\n");
  EXPECT_EQ(run.status, 1);
}

TEST_F(Dispatch, AsksForTheLogLevelBeforeADebugCommandDoesAnything) {
  for (const CommandRow& row : commandRows()) {
    if (row.debugOnly) {
      SCOPED_TRACE(row.name);
      runAt(true, {row.name});
      ASSERT_FALSE(daemon_.calls.empty());
      EXPECT_EQ(daemon_.calls.front(), "IsDebugLogLevel()");
      EXPECT_EQ(std::count(daemon_.calls.begin(), daemon_.calls.end(), "IsDebugLogLevel()"), 1);
    }
  }
}

TEST_F(Dispatch, AsksInOrderForTheLogLevelTheClientAndTheAnswer) {
  const ToolRun run = runTool({"getRadios"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "GetRadioSettings()"}));
}

TEST_F(Dispatch, RunsTheOtherCommandsAtEveryLogLevelWithoutAskingForIt) {
  int others = 0;
  for (const CommandRow& row : commandRows()) {
    if (row.debugOnly || row.name == "help") {
      continue;
    }
    SCOPED_TRACE(row.name);
    const ToolRun atDebug = runAt(true, {row.name});
    const Calls calls = daemon_.calls;
    const ToolRun run = runAt(false, {row.name});
    EXPECT_EQ(run.output, atDebug.output);
    EXPECT_EQ(run.status, atDebug.status);
    EXPECT_EQ(daemon_.calls, calls);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "IsDebugLogLevel()"), 0);
    ++others;
  }
  EXPECT_EQ(others, 15);
}

}  // namespace

}  // namespace TALO::Tool
