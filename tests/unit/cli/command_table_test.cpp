#include "cli/command_table.h"

#include "commands/commands.h"
#include "support/captured_output.h"
#include "support/command_rows.h"
#include "support/fake_daemon.h"
#include "support/letter_case.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace {

using Wifi::FakeDaemon;

void doNothing(const std::vector<std::string>&, Usage&) {}

std::string failureToFind(const CommandTable& table, const std::string& word) {
  try {
    return "found " + findCommand(table, word).name;
  } catch (const std::invalid_argument& error) {
    return error.what();
  }
}

TEST(AddCommand, AppendsOneRowMadeOfItsParts) {
  CommandTable table;
  std::string calledWith;
  addCommand(table, "first", doNothing, true);
  addCommand(
      table, "second", [&](const std::vector<std::string>& subargs, Usage&) { calledWith = subargs.at(0); },
      false);
  ASSERT_EQ(table.size(), 2U);
  EXPECT_EQ(table[0].name, "first");
  EXPECT_TRUE(table[0].debugOnly);
  EXPECT_EQ(table[1].name, "second");
  EXPECT_FALSE(table[1].debugOnly);
  Usage usage;
  table[1].handler({"word"}, usage);
  EXPECT_EQ(calledWith, "word");
}

TEST(AddCommand, KeepsTheNameAsItsOwn) {
  CommandTable table;
  char name[] = "first";
  addCommand(table, name, doNothing, false);
  name[0] = 'F';
  EXPECT_EQ(table[0].name, "first");
}

TEST(FillCommandTable, MakesEveryRowInOrder) {
  CommandTable table;
  fillCommandTable(table);
  ASSERT_EQ(table.size(), 59U);
  ASSERT_EQ(commandRows().size(), 59U);
  for (std::size_t i = 0; i < table.size(); ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(table[i].name, commandRows()[i].name);
    EXPECT_EQ(table[i].debugOnly, commandRows()[i].debugOnly);
    EXPECT_TRUE(static_cast<bool>(table[i].handler));
  }
}

TEST(FillCommandTable, LeavesSixteenCommandsForEveryLogLevel) {
  CommandTable table;
  fillCommandTable(table);
  std::vector<std::string> names;
  for (const Command& command : table) {
    if (!command.debugOnly) {
      names.push_back(command.name);
    }
  }
  EXPECT_EQ(names, (std::vector<std::string>{
                       "help", "getNetworks", "isAllNetworkAPDisabled", "getRadioIfStatuses",
                       "updateSchedule", "getScheduleStatus", "rotatePassword", "wpsERConfig", "getDevices",
                       "isDefaultWPS_PBCAvalible", "triggerWPSConnected", "triggerDefaultWPS_PBC",
                       "triggerWPS_PBC", "triggerHWButton", "modifyLogLevel", "getRadioConversionInfo"}));
}

TEST(FillCommandTable, UsesNoNameTwiceInWhateverLetterCase) {
  CommandTable table;
  fillCommandTable(table);
  std::set<std::string> names;
  for (const Command& command : table) {
    EXPECT_TRUE(names.insert(inLowerCase(command.name)).second) << command.name;
  }
}

TEST(FindCommand, FindsEveryRowInAnyLetterCase) {
  CommandTable table;
  fillCommandTable(table);
  for (const CommandRow& row : commandRows()) {
    EXPECT_EQ(findCommand(table, row.name).name, row.name);
    EXPECT_EQ(findCommand(table, inUpperCase(row.name)).name, row.name);
    EXPECT_EQ(findCommand(table, inLowerCase(row.name)).name, row.name);
  }
}

TEST(FindCommand, TakesTheFirstRowThatFits) {
  CommandTable table;
  addCommand(table, "other", doNothing, false);
  addCommand(table, "Twice", doNothing, false);
  addCommand(table, "twice", doNothing, true);
  EXPECT_EQ(&findCommand(table, "twice"), &table[1]);
}

TEST(FindCommand, RefusesAnythingElseWithTheWordAsTyped) {
  CommandTable table;
  fillCommandTable(table);
  for (const std::string word : {"", "getNetwork", "getNetworkss", "GETNETWORK", " help", "help ", "--help",
                                 "get", "isDefaultWPS_PBCAvailable", "get_networks", "%s"}) {
    EXPECT_EQ(failureToFind(table, word), "Failed to find command: " + word);
  }
}

TEST(FindCommand, FindsNothingInAnEmptyTable) {
  EXPECT_EQ(failureToFind({}, "help"), "Failed to find command: help");
}

class HelpCommand : public testing::Test {
 protected:
  HelpCommand() { FakeDaemon::Reset(); }
};

TEST_F(HelpCommand, IsForEveryLogLevel) {
  CommandTable table;
  addHelpCommand(table);
  ASSERT_EQ(table.size(), 1U);
  EXPECT_EQ(table[0].name, "help");
  EXPECT_FALSE(table[0].debugOnly);
}

TEST_F(HelpCommand, ListsTheRowsThatWereAddedAfterIt) {
  CommandTable table;
  addHelpCommand(table);
  addCommand(table, "getNetworks", doNothing, true);
  Usage usage;
  const std::string output = outputOf([&] { findCommand(table, "help").handler({}, usage); });
  EXPECT_EQ(output,
            "Usage: talowifitool [option] command args\n"
            "  Options are:\n"
            "    help                                    help                                              \n"
            "    getNetworks                             get networks                                      \n"
            "\n");
}

TEST_F(HelpCommand, LooksNeitherAtItsWordsNorAtTheUsage) {
  CommandTable table;
  fillCommandTable(table);
  Usage usage;
  const std::string output = outputOf([&] {
    table.front().handler({"getNetworks", "--unknown", "--id", "x"}, usage);
  });
  EXPECT_EQ(output, helpListing(true));
  EXPECT_EQ(usage, nullptr);
}

}  // namespace

}  // namespace TALO::Tool
