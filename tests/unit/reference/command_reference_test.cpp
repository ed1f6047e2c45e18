#include "reference/command_reference.h"

#include "support/captured_stream.h"
#include "support/command_cases.h"
#include "support/command_rows.h"
#include "support/command_test.h"

#include <algorithm>
#include <iostream>
#include <map>

namespace TALO::Reference {

namespace {

using Kind = OptionReference::Kind;
using Tool::CommandCase;
using Tool::OptionCase;
using Tool::OptionKind;
using Words = std::vector<std::string>;

/// The commands as they are read here, where a daemon answers; what they print to that is not looked at.
const std::vector<CommandReference>& Commands() {
  static const auto commands = [] {
    const CapturedStream unused(std::cout);
    return ReadCommands();
  }();
  return commands;
}

const CommandReference& CommandNamed(const std::string& name) {
  return *std::ranges::find(Commands(), name, &CommandReference::name);
}

TEST(CommandReference, HasEveryCommandInTheOrderOfTheTable) {
  std::vector<std::pair<std::string, bool>> found;
  for (const CommandReference& command : Commands()) {
    found.emplace_back(command.name, command.debugOnly);
  }
  std::vector<std::pair<std::string, bool>> expected;
  for (const Tool::CommandRow& row : Tool::commandRows()) {
    expected.emplace_back(row.name, row.debugOnly);
  }
  EXPECT_EQ(found, expected);
}

TEST(CommandReference, HasTheOptionsOfEachInTheOrderOfTheirDeclaration) {
  for (const CommandCase& command : Tool::commandCases()) {
    SCOPED_TRACE(command.word);
    const auto& options = CommandNamed(command.word).options;
    ASSERT_EQ(options.size(), command.options.size());
    for (std::size_t i = 0; i < options.size(); ++i) {
      const OptionCase& expected = command.options[i];
      EXPECT_EQ("--" + options[i].name, expected.name);
      EXPECT_EQ(options[i].isList, expected.kind == OptionKind::List);
      EXPECT_EQ(options[i].kind, expected.kind == OptionKind::Boolean   ? Kind::Boolean
                                 : expected.kind == OptionKind::Integer ? Kind::Integer
                                                                        : Kind::Text);
      EXPECT_EQ(options[i].isOptional, expected.optional);
    }
  }
}

const Words kRadios = {"SmartConnect", "Band2_4GHz", "Band5GHz", "Band5GHz_1", "Band5GHz_2"};
const Words kModels = {"Alder100", "Birch200", "Cedar300", "Dune40"};
const Words kSecurityModes = {"Disabled",
                              "OWE",
                              "WEP",
                              "PersonalWPA",
                              "PersonalWPA2",
                              "PersonalWPA3",
                              "PersonalWPAMixed",
                              "PersonalWPA2_3Mixed",
                              "EnterpriseWPA",
                              "EnterpriseWPA2",
                              "EnterpriseWPA3",
                              "EnterpriseWPAMixed"};

TEST(CommandReference, HasTheWordsOfOptionsThatTakeNames) {
  std::map<std::string, Words> found;
  for (const CommandReference& command : Commands()) {
    for (const OptionReference& option : command.options) {
      if (!option.words.empty()) {
        found[command.name + " " + option.name] = option.words;
      }
    }
  }
  const Words countries = found["setCountryCode country"];
  found.erase("setCountryCode country");
  EXPECT_EQ(found, (std::map<std::string, Words>{
                       {"getScanResults radio", kRadios},
                       {"modifyStation radio", kRadios},
                       {"modifyStation securityMode", kSecurityModes},
                       {"enableScan type", {"Disable", "Default", "BestAP"}},
                       {"modifyMeshInfo models", kModels},
                       {"createMACFilterProfile action", {"Allow", "Deny"}},
                       {"modifyMACFilterProfile action", {"Allow", "Deny"}},
                       {"updateSchedule mode", {"ValidFor", "Customized"}},
                       {"rotatePassword radio", kRadios},
                       {"wpsERConfig mode", kSecurityModes},
                       {"triggerWPS_PBC radio", kRadios},
                       {"getRemoteCountryCodeCapability model", kModels},
                       {"modifyLogLevel level", {"Error", "Warning", "Information", "Debug"}},
                   }));
  EXPECT_EQ(countries.size(), 197U);
  EXPECT_EQ(countries.front(), "AD");
  EXPECT_EQ(countries.back(), "ZW");
}

class EveryCommandsWords : public Tool::CommandTest {
 protected:
  /// Runs the command's typical words with another value for one option.
  static Tool::ToolRun RunWith(CommandCase command, std::size_t option, const std::string& value) {
    command.options[option].values = {value};
    return Tool::runTool(command.typicalWords());
  }
};

TEST_F(EveryCommandsWords, AreThoseThatTheToolTakes) {
  for (const CommandCase& command : Tool::commandCases()) {
    for (std::size_t i = 0; i < command.options.size(); ++i) {
      for (const std::string& word : CommandNamed(command.word).options[i].words) {
        EXPECT_EQ(RunWith(command, i, word).status, 0) << command.word << " " << word;
      }
    }
  }
}

TEST_F(EveryCommandsWords, AreDeclaredWhereverTheToolConverts) {
  for (const CommandCase& command : Tool::commandCases()) {
    for (std::size_t i = 0; i < command.options.size(); ++i) {
      const OptionReference& option = CommandNamed(command.word).options[i];
      if (option.kind != Kind::Text) {
        continue;
      }
      const bool converts =
          RunWith(command, i, "no-such-name").output.find("Failed to convert string to enum class") !=
          std::string::npos;
      // The daemon converts this one.
      const bool isMode = command.word == "wpsERConfig" && option.name == "mode";
      EXPECT_EQ(converts || isMode, !option.words.empty()) << command.word << " " << option.name;
    }
  }
}

}  // namespace

}  // namespace TALO::Reference
