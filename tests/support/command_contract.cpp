#include "support/command_contract.h"

#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <algorithm>
#include <iterator>
#include <new>
#include <stdexcept>
#include <system_error>
#include <utility>

namespace TALO::Tool {

using Wifi::ErrorCode;
using Wifi::FakeDaemon;
using Words = std::vector<std::string>;

std::vector<std::string> CommandContract::Words() const {
  std::vector<std::string> words = {command};
  for (const OptionUse& option : options) {
    words.push_back("--" + option.name);
    words.push_back(option.value);
  }
  return words;
}

std::vector<std::string> CommandContract::CallsUpTo(std::size_t count) const {
  std::vector<std::string> result;
  if (debugOnly) {
    result.emplace_back("IsDebugLogLevel()");
  }
  std::copy_n(calls.begin(), count, std::back_inserter(result));
  return result;
}

std::ostream& operator<<(std::ostream& out, const CommandContract& contract) {
  return out << contract.command;
}

EveryCommand::EveryCommand() { FakeDaemon::Reset(); }

namespace {

template <typename Predicate>
std::vector<CommandContract> Select(const std::vector<CommandContract>& contracts, Predicate predicate) {
  std::vector<CommandContract> selected;
  std::ranges::copy_if(contracts, std::back_inserter(selected), predicate, &CommandContract::options);
  return selected;
}

}  // namespace

std::vector<CommandContract> WithOptions(const std::vector<CommandContract>& contracts) {
  return Select(contracts, [](const std::vector<OptionUse>& options) { return !options.empty(); });
}

std::vector<CommandContract> WithIntegers(const std::vector<CommandContract>& contracts) {
  return Select(contracts, [](const std::vector<OptionUse>& options) {
    return std::ranges::any_of(options, &OptionUse::isInteger);
  });
}

std::vector<CommandContract> WithoutOptions(const std::vector<CommandContract>& contracts) {
  return Select(contracts, [](const std::vector<OptionUse>& options) { return options.empty(); });
}

std::string CommandOf(const testing::TestParamInfo<CommandContract>& info) { return info.param.command; }

namespace {

/// A failure of the client, and what the tool prints for it.
struct ClientFailure {
  std::exception_ptr exception;
  std::string printed;
};

std::vector<ClientFailure> ClientFailures() {
  const auto make = [](const auto& exception) { return std::make_exception_ptr(exception); };
  return {
      {make(Wifi::WifiException(make_error_code(ErrorCode::NotFound), "network 7 is unknown")),
       "Failed to execute command: network 7 is unknown: Not found\n"},
      {make(Wifi::RuntimeError("radio %d is odd", 9)),
       "Failed to execute command: radio 9 is odd: Runtime error\n"},
      {make(talo::dbus::DbusError(make_error_code(ErrorCode::DaemonNotRunning),
                                  "the wifi daemon is not running")),
       "the wifi daemon is not running: Daemon not running\n"},
      {make(std::system_error(EPIPE, std::generic_category(), "write")), "write: Broken pipe\n"},
      {make(std::invalid_argument("not like this")), "not like this\n"},
      {make(std::bad_alloc()), "std::bad_alloc\n"},
      {make(42), "Unexpected error occurred, should be fixed.\n"},
  };
}

/// What the fake daemon calls a call: "GetContext()" is "GetContext", "WifiClientFactory::GetInstance()" is
/// "WifiClientFactory".
std::string NameOfCall(const std::string& call) { return call.substr(0, call.find_first_of(":(")); }

bool IsFactory(const std::string& call) { return call.find("::GetInstance()") != std::string::npos; }

TEST_P(EveryCommand, MakesItsCallsAndPrintsItsAnswer) {
  const ToolRun run = runTool(contract_.Words());
  EXPECT_EQ(run.output, contract_.output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(FakeDaemon::Get().calls, contract_.CallsUpTo(contract_.calls.size()));
}

TEST_P(EveryCommand, ReportsEveryFailureOfTheClientAndAsksNothingMore) {
  for (std::size_t i = 0; i < contract_.calls.size(); ++i) {
    const std::string& call = contract_.calls[i];
    for (const ClientFailure& failure : ClientFailures()) {
      SCOPED_TRACE(call + " fails: " + failure.printed);
      FakeDaemon::Reset();
      FakeDaemon::Get().failures[NameOfCall(call)] = failure.exception;
      const ToolRun run = runTool(contract_.Words());
      EXPECT_EQ(run.output, (IsFactory(call) ? "" : contract_.label) + failure.printed);
      EXPECT_EQ(run.status, 1);
      EXPECT_EQ(FakeDaemon::Get().calls, contract_.CallsUpTo(i + 1));
    }
  }
}

TEST_P(EveryCommand, RunsOutsideDebugLevelUnlessItIsDebugOnly) {
  FakeDaemon::Get().isDebugLogLevel = false;
  const ToolRun run = runTool(contract_.Words());
  if (contract_.debugOnly) {
    EXPECT_EQ(run.output, contract_.command + " is supported only on debug mode.\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(FakeDaemon::Get().calls, Words{"IsDebugLogLevel()"});
  } else {
    EXPECT_EQ(run.output, contract_.output);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(FakeDaemon::Get().calls, contract_.calls);
  }
}

TEST_P(EveryCommandWithoutOptions, IgnoresExtraWords) {
  Words words = contract_.Words();
  words.insert(words.end(), {"stray", "--odd", "7", "-x", "--id=abc"});
  const ToolRun run = runTool(words);
  EXPECT_EQ(run.output, contract_.output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(FakeDaemon::Get().calls, contract_.CallsUpTo(contract_.calls.size()));
}

/// Runs `words`, which must fail before any client is obtained, though obtaining one would fail as well.
void ExpectRefused(const CommandContract& contract, const Words& words, const std::string& output) {
  SCOPED_TRACE(testing::PrintToString(words));
  FakeDaemon::Reset();
  FakeDaemon::Get().Fail(NameOfCall(contract.calls.front()), std::runtime_error("no client"));
  const ToolRun run = runTool(words);
  EXPECT_EQ(run.output, output);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(FakeDaemon::Get().calls, contract.CallsUpTo(0));
}

TEST_P(EveryCommandWithOptions, PrintsItsUsageWhenAnOptionIsMissing) {
  ExpectRefused(contract_, {contract_.command}, contract_.usage + "\n");
  for (std::size_t i = 0; i < contract_.options.size(); ++i) {
    CommandContract without = contract_;
    without.options.erase(without.options.begin() + static_cast<std::ptrdiff_t>(i));
    ExpectRefused(contract_, without.Words(), contract_.usage + "\n");
  }
}

TEST_P(EveryCommandWithOptions, PrintsItsUsageWhenOnlyStrayWordsAreGiven) {
  ExpectRefused(contract_, {contract_.command, "stray", "7"}, contract_.usage + "\n");
}

TEST_P(EveryCommandWithOptions, TakesItsOptionsInAnyOrder) {
  CommandContract reversed = contract_;
  std::ranges::reverse(reversed.options);
  const ToolRun run = runTool(reversed.Words());
  EXPECT_EQ(run.output, contract_.output);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(FakeDaemon::Get().calls, contract_.CallsUpTo(contract_.calls.size()));
}

TEST_P(EveryCommandWithOptions, RefusesAnUnknownOption) {
  Words words = contract_.Words();
  words.insert(words.end(), {"--odd", "7"});
  ExpectRefused(contract_, words, "unrecognised option '--odd'\n");
  // Before it notices that others are missing.
  ExpectRefused(contract_, {contract_.command, "--odd"}, "unrecognised option '--odd'\n");
}

TEST_P(EveryCommandWithOptions, RefusesAnOptionGivenTwice) {
  for (const OptionUse& option : contract_.options) {
    Words words = contract_.Words();
    words.insert(words.end(), {"--" + option.name, option.value});
    ExpectRefused(contract_, words, "option '--" + option.name + "' cannot be specified more than once\n");
  }
}

TEST_P(EveryCommandWithOptions, RefusesAnOptionWithoutItsValue) {
  for (const OptionUse& option : contract_.options) {
    ExpectRefused(contract_, {contract_.command, "--" + option.name},
                  "the required argument for option '--" + option.name + "' is missing\n");
  }
}

TEST_P(EveryCommandWithIntegers, RefusesAnIntegerThatIsNone) {
  for (std::size_t i = 0; i < contract_.options.size(); ++i) {
    if (!contract_.options[i].isInteger) {
      continue;
    }
    const std::string option = "'--" + contract_.options[i].name + "'";
    for (const std::string bad : {"seven", "7x", "1.5", " 7", "0x7", "2147483648", "-2147483649"}) {
      CommandContract changed = contract_;
      changed.options[i].value = bad;
      ExpectRefused(contract_, changed.Words(),
                    "the argument ('" + bad + "') for option " + option + " is invalid\n");
    }
    CommandContract changed = contract_;
    changed.options[i].value = "";
    ExpectRefused(contract_, changed.Words(), "the argument for option " + option + " is invalid\n");
  }
}

}  // namespace

// A test program need not hold commands of every kind.
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EveryCommand);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EveryCommandWithOptions);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EveryCommandWithIntegers);
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(EveryCommandWithoutOptions);

}  // namespace TALO::Tool
