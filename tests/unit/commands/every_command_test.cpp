// What holds for all commands alike: their typical run, the debug gate, and failures of the client.

#include "support/command_cases.h"
#include "support/command_test.h"
#include "values/errors.h"

#include <boost/any.hpp>

#include <array>
#include <utility>

namespace TALO::Tool {

using talo::dbus::DbusError;
using Wifi::ErrorCode;

namespace {

class EveryCommand : public CommandTest, public testing::WithParamInterface<CommandCase> {
 protected:
  /// The calls of a typical run up to and with the one at `last`, counted behind the gate.
  static Calls callsUpTo(std::size_t last) {
    Calls calls = GetParam().typicalCalls();
    calls.resize(GetParam().gateCalls().size() + last + 1);
    return calls;
  }
};
class DebugOnlyCommand : public EveryCommand {};
class CommandOfAnyLevel : public EveryCommand {};
class CommandWithoutOptions : public EveryCommand {};

/// Operations are listed with their arguments and fail by their name.
std::string nameOf(const std::string& call) { return call.substr(0, call.find('(')); }

/// The listing outside debug level.
std::string helpListing() {
  constexpr std::array<std::pair<const char*, const char*>, 16> kRows = {{
      {"help", "help"},
      {"getNetworks", "get networks"},
      {"isAllNetworkAPDisabled", "is all network ap disabled"},
      {"getRadioIfStatuses", "get radio if statuses"},
      {"updateSchedule", "update schedule"},
      {"getScheduleStatus", "get schedule status"},
      {"rotatePassword", "rotate password"},
      {"wpsERConfig", "wps er config"},
      {"getDevices", "get devices"},
      {"isDefaultWPS_PBCAvalible", "is default wps pbc avalible"},
      {"triggerWPSConnected", "trigger wps connected"},
      {"triggerDefaultWPS_PBC", "trigger default wps pbc"},
      {"triggerWPS_PBC", "trigger wps pbc"},
      {"triggerHWButton", "trigger hw button"},
      {"modifyLogLevel", "modify log level"},
      {"getRadioConversionInfo", "get radio conversion info"},
  }};
  std::string listing = "Usage: talowifitool [option] command args\n  Options are:\n";
  for (const auto& [name, description] : kRows) {
    std::string line = std::string("    ") + name;
    line.resize(44, ' ');
    line += description;
    line.resize(94, ' ');
    listing += line + "\n";
  }
  return listing + "\n";
}

TEST_P(EveryCommand, PrintsItsAnswerAndMakesItsCallsOnly) {
  daemon_.isDebugLogLevel = GetParam().debugOnly;
  const ToolRun run = runTool(GetParam().typicalWords());
  EXPECT_EQ(run.output, GetParam().output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, GetParam().typicalCalls());
}

TEST_P(EveryCommand, ReportsThatNoClientCanBeObtained) {
  for (const ClientFailure& failure : clientFailures()) {
    SCOPED_TRACE(failure.name);
    daemon_.calls.clear();
    daemon_.failures[GetParam().factory] = failure.exception;
    const ToolRun run = runTool(GetParam().typicalWords());
    EXPECT_EQ(run.output, failure.output);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, callsUpTo(0));
  }
}

TEST_P(EveryCommand, ReportsThatAnOperationFailed) {
  for (std::size_t i = 0; i < GetParam().operations.size(); ++i) {
    for (const ClientFailure& failure : clientFailures()) {
      SCOPED_TRACE(GetParam().operations[i] + " fails with " + failure.name);
      daemon_.calls.clear();
      daemon_.failures = {{nameOf(GetParam().operations[i]), failure.exception}};
      const ToolRun run = runTool(GetParam().typicalWords());
      EXPECT_EQ(run.output, GetParam().label + failure.output);
      EXPECT_EQ(run.status, 1);
      EXPECT_EQ(daemon_.calls, callsUpTo(i + 1));
    }
  }
}

TEST_P(EveryCommand, PublishesItsUsageBeforeItAsksForAClient) {
  daemon_.Fail(GetParam().factory, boost::bad_any_cast());
  const ToolRun run = runTool(GetParam().typicalWords());
  EXPECT_EQ(run.output, GetParam().usage + "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, callsUpTo(0));
}

TEST_P(DebugOnlyCommand, IsRefusedOutsideDebugLevel) {
  daemon_.isDebugLogLevel = false;
  const ToolRun run = runTool(GetParam().typicalWords());
  EXPECT_EQ(run.output, GetParam().word + " is supported only on debug mode.\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_P(DebugOnlyCommand, IsRefusedOutsideDebugLevelBeforeItsArgumentsAreLookedAt) {
  daemon_.isDebugLogLevel = false;
  const ToolRun run = runTool({GetParam().word, "stray", "--unknown"});
  EXPECT_EQ(run.output, GetParam().word + " is supported only on debug mode.\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_P(DebugOnlyCommand, DoesNotRunWhenTheLogLevelCannotBeLearned) {
  daemon_.Fail("IsDebugLogLevel", DbusError(ErrorCode::NoAnswer, "No log level"));
  const ToolRun run = runTool(GetParam().typicalWords());
  EXPECT_EQ(run.output, "No log level: No answer\n" + helpListing());
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kAskLogLevel}));  // the listing asks for itself
}

TEST_P(CommandOfAnyLevel, NeverAsksForTheLogLevel) {
  daemon_.Fail("IsDebugLogLevel", DbusError(ErrorCode::NoAnswer, "No log level"));
  const ToolRun run = runTool(GetParam().typicalWords());
  EXPECT_EQ(run.output, GetParam().output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, GetParam().typicalCalls());
}

TEST_P(CommandWithoutOptions, IgnoresFurtherWordsAndUnknownOptions) {
  const ToolRun run = runTool({GetParam().word, "stray", "--unknown", "5", "-x", "--name=value", "", "-1"});
  EXPECT_EQ(run.output, GetParam().output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, GetParam().typicalCalls());
}

INSTANTIATE_TEST_SUITE_P(Commands, EveryCommand, testing::ValuesIn(commandCases()), CommandCaseName());
INSTANTIATE_TEST_SUITE_P(Commands, DebugOnlyCommand,
                         testing::ValuesIn(commandCasesWhere([](const CommandCase& command) {
                           return command.debugOnly;
                         })),
                         CommandCaseName());
INSTANTIATE_TEST_SUITE_P(Commands, CommandOfAnyLevel,
                         testing::ValuesIn(commandCasesWhere([](const CommandCase& command) {
                           return !command.debugOnly;
                         })),
                         CommandCaseName());
INSTANTIATE_TEST_SUITE_P(Commands, CommandWithoutOptions,
                         testing::ValuesIn(commandCasesWhere([](const CommandCase& command) {
                           return command.options.empty();
                         })),
                         CommandCaseName());

TEST(CommandCases, HoldEveryCommandButHelp) {
  EXPECT_EQ(commandCases().size(), 58U);
  EXPECT_EQ(commandCasesWhere([](const CommandCase& command) { return command.debugOnly; }).size(), 43U);
}

}  // namespace

}  // namespace TALO::Tool
