// What holds for the options of all commands alike: each must be given once and with a value of its kind, or
// nothing is asked of the client.

#include "support/command_cases.h"
#include "support/command_test.h"

#include <algorithm>
#include <cstddef>

namespace TALO::Tool {

namespace {

class EveryCommandWithOptions : public CommandTest, public testing::WithParamInterface<CommandCase> {
 protected:
  /// Expects the words to fail in parsing with the option library's message alone.
  void expectRefused(const std::vector<std::string>& words, const std::string& message) {
    SCOPED_TRACE(testing::PrintToString(words));
    daemon_.calls.clear();
    const ToolRun run = runTool(words);
    EXPECT_EQ(run.output, message + "\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, GetParam().gateCalls());
  }

  /// Expects the words to print the usage.
  void expectUsage(const std::vector<std::string>& words) {
    SCOPED_TRACE(testing::PrintToString(words));
    daemon_.calls.clear();
    const ToolRun run = runTool(words);
    EXPECT_EQ(run.output, GetParam().usage + "\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, GetParam().gateCalls());
  }

  /// Expects the words to do what the typical ones do, with `value` in the calls in place of `typical`.
  void expectAccepted(const std::vector<std::string>& words, const std::string& typical = "",
                      const std::string& value = "") {
    SCOPED_TRACE(testing::PrintToString(words));
    daemon_.calls.clear();
    const ToolRun run = runTool(words);
    EXPECT_EQ(run.output, GetParam().output);
    EXPECT_EQ(run.status, 0);
    Calls calls = GetParam().typicalCalls();
    if (typical != value) {
      std::string& last = calls.back();
      ASSERT_NE(last.find(typical), std::string::npos);
      last.replace(last.find(typical), typical.size(), value);
    }
    EXPECT_EQ(daemon_.calls, calls);
  }

  /// The typical words with another value for the option at `index`.
  static std::vector<std::string> wordsWith(std::size_t index, const std::string& value) {
    CommandCase command = GetParam();
    command.options[index].values = {value};
    return command.typicalWords();
  }

  /// Where the command's first option of the kind stands.
  static std::size_t indexOf(OptionKind kind) {
    const auto& options = GetParam().options;
    const auto found = std::find_if(options.begin(), options.end(),
                                    [kind](const OptionCase& option) { return option.kind == kind; });
    return static_cast<std::size_t>(found - options.begin());
  }
};
class CommandWithBoolean : public EveryCommandWithOptions {
 protected:
  static std::size_t index() { return indexOf(OptionKind::Boolean); }
};
class CommandWithInteger : public EveryCommandWithOptions {
 protected:
  static std::size_t index() { return indexOf(OptionKind::Integer); }
};

TEST_P(EveryCommandWithOptions, PrintsItsUsageWhenNoOptionIsGiven) { expectUsage({GetParam().word}); }

TEST_P(EveryCommandWithOptions, PrintsItsUsageWhenOneOptionIsLeftOut) {
  for (std::size_t i = 0; i < GetParam().options.size(); ++i) {
    if (!GetParam().options[i].optional) {
      expectUsage(GetParam().wordsWithout(i));
    }
  }
}

TEST_P(EveryCommandWithOptions, TakesItsOptionsInAnyOrder) {
  CommandCase command = GetParam();
  std::reverse(command.options.begin(), command.options.end());
  expectAccepted(command.typicalWords());
}

TEST_P(EveryCommandWithOptions, TakesAValueBehindAnEqualSign) {
  std::vector<std::string> words = {GetParam().word};
  for (const OptionCase& option : GetParam().options) {
    words.push_back(option.name + "=" + option.values.front());
    words.insert(words.end(), option.values.begin() + 1, option.values.end());
  }
  expectAccepted(words);
}

TEST_P(EveryCommandWithOptions, RefusesAnOptionGivenTwice) {
  for (const OptionCase& option : GetParam().options) {
    if (option.kind != OptionKind::List) {
      std::vector<std::string> words = GetParam().typicalWords();
      words.insert(words.end(), {option.name, option.values.front()});
      expectRefused(words, "option '" + option.name + "' cannot be specified more than once");
    }
  }
}

TEST_P(EveryCommandWithOptions, RefusesAnOptionWithoutItsValue) {
  for (std::size_t i = 0; i < GetParam().options.size(); ++i) {
    const OptionCase& option = GetParam().options[i];
    if (!option.valueOptional) {
      std::vector<std::string> words = GetParam().wordsWithout(i);
      words.push_back(option.name);
      expectRefused(words, "the required argument for option '" + option.name + "' is missing");
    }
  }
}

TEST_P(EveryCommandWithOptions, RefusesAnUnknownOption) {
  std::vector<std::string> words = GetParam().typicalWords();
  words.insert(words.begin() + 1, {"--unknown"});
  expectRefused(words, "unrecognised option '--unknown'");
}

TEST_P(EveryCommandWithOptions, RefusesAnUnknownOptionBeforeItMissesAnother) {
  expectRefused({GetParam().word, "--unknown"}, "unrecognised option '--unknown'");
}

TEST_P(EveryCommandWithOptions, RefusesAnOptionInAnotherLetterCase) {
  for (const OptionCase& option : GetParam().options) {
    std::string name = option.name;
    name[2] = static_cast<char>(name[2] - 'a' + 'A');
    expectRefused({GetParam().word, name, "1"}, "unrecognised option '" + name + "'");
  }
}

// The option library drops words that belong to no option when it was told of no positional ones.
TEST_P(EveryCommandWithOptions, IgnoresAStrayWord) {
  std::vector<std::string> words = GetParam().typicalWords();
  words.insert(words.begin() + 1, {"stray"});
  expectAccepted(words);
}

TEST_P(CommandWithBoolean, TakesTheOptionLibrarysBooleanWords) {
  for (const char* word : {"1", "true", "yes", "on", "TRUE", "Yes", "oN", ""}) {
    expectAccepted(wordsWith(index(), word));
  }
  for (const char* word : {"0", "false", "no", "off", "FALSE", "No", "oFF"}) {
    expectAccepted(wordsWith(index(), word), "true", "false");
  }
}

TEST_P(CommandWithBoolean, RefusesOtherWords) {
  for (const char* word : {"2", "01", "-1", "t", "enable", "1 "}) {
    expectRefused(wordsWith(index(), word), "the argument ('" + std::string(word) + "') for option '" +
                                                GetParam().options[index()].name +
                                                "' is invalid. Valid choices are 'on|off', 'yes|no', '1|0' "
                                                "and 'true|false'");
  }
}

TEST_P(CommandWithBoolean, RefusesAnotherWordBeforeItMissesAnOption) {
  const std::string& name = GetParam().options[index()].name;
  expectRefused({GetParam().word, name, "maybe"},
                "the argument ('maybe') for option '" + name +
                    "' is invalid. Valid choices are 'on|off', 'yes|no', '1|0' and 'true|false'");
}

TEST_P(CommandWithInteger, PassesAnyIntegerOfItsRange) {
  for (const char* word : {"0", "1", "-1", "2147483647", "-2147483648"}) {
    expectAccepted(wordsWith(index(), word), "4711", word);
  }
  expectAccepted(wordsWith(index(), "+7"), "4711", "7");
  expectAccepted(wordsWith(index(), "007"), "4711", "7");
}

TEST_P(CommandWithInteger, RefusesOtherWords) {
  for (const char* word : {"seven", "7x", "7.5", "0x10", "1e3", " 7", "7 ", "-", "--7", "2147483648",
                           "-2147483649", "99999999999999999999"}) {
    expectRefused(wordsWith(index(), word), "the argument ('" + std::string(word) + "') for option '" +
                                                GetParam().options[index()].name + "' is invalid");
  }
}

TEST_P(CommandWithInteger, RefusesAnEmptyWord) {
  expectRefused(wordsWith(index(), ""),
                "the argument for option '" + GetParam().options[index()].name + "' is invalid");
}

TEST_P(CommandWithInteger, RefusesAnotherWordBeforeItMissesAnOption) {
  const std::string& name = GetParam().options[index()].name;
  expectRefused({GetParam().word, name, "seven"},
                "the argument ('seven') for option '" + name + "' is invalid");
}

std::vector<CommandCase> casesWith(OptionKind kind) {
  return commandCasesWhere([kind](const CommandCase& command) {
    return std::any_of(command.options.begin(), command.options.end(),
                       [kind](const OptionCase& option) { return option.kind == kind; });
  });
}

INSTANTIATE_TEST_SUITE_P(Commands, EveryCommandWithOptions,
                         testing::ValuesIn(commandCasesWhere([](const CommandCase& command) {
                           return !command.options.empty();
                         })),
                         CommandCaseName());
INSTANTIATE_TEST_SUITE_P(Commands, CommandWithBoolean, testing::ValuesIn(casesWith(OptionKind::Boolean)),
                         CommandCaseName());
INSTANTIATE_TEST_SUITE_P(Commands, CommandWithInteger, testing::ValuesIn(casesWith(OptionKind::Integer)),
                         CommandCaseName());

}  // namespace

}  // namespace TALO::Tool
