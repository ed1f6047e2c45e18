#include "cli/help_listing.h"

#include "commands/commands.h"
#include "support/captured_output.h"
#include "support/command_rows.h"
#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <new>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

namespace {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

TEST(DescribeCommand, FindsTheWordsOfEveryCommand) {
  for (const CommandRow& row : commandRows()) {
    EXPECT_EQ(describeCommand(row.name), row.description);
  }
}

TEST(DescribeCommand, FindsTheWordsOfOtherNames) {
  const std::vector<std::pair<std::string, std::string>> names = {
      {"", ""},
      {"a", "a"},
      // A leading capital starts a word too.
      {"A", " a"},
      {"Activate", " activate"},
      {"WPS", " wps"},
      {"aB", "a b"},
      {"aBC", "a bc"},
      {"aBCd", "a b cd"},
      {"aBCDe", "a bc de"},
      {"aBcD", "a bc d"},
      {"getURLs", "get ur ls"},
      // Digits end a run of capitals and start no word.
      {"wpa2", "wpa2"},
      {"wpa2Mode", "wpa2 mode"},
      {"getWPA2", "get wpa2"},
      {"getWPA2Mode", "get wpa2 mode"},
      {"getA1B", "get a1 b"},
      // An underscore ends a run of capitals and is dropped.
      {"_", ""},
      {"a_b", "ab"},
      {"_a", "a"},
      {"a_", "a"},
      {"A_B", " a b"},
      {"A__B", " a b"},
      {"WPS_PBC", " wps pbc"},
      {"WPS_pbc", " wpspbc"},
      {"aB_c", "a bc"},
      {"two words", "two words"},
      {"a-B", "a- b"},
  };
  for (const auto& [name, description] : names) {
    SCOPED_TRACE(name);
    EXPECT_EQ(describeCommand(name), description);
  }
}

class PrintHelp : public testing::Test {
 protected:
  PrintHelp() { FakeDaemon::Reset(); }

  static std::string listingOf(const CommandTable& table) {
    return outputOf([&] { printHelp(table); });
  }
  static std::string listing() {
    CommandTable table;
    fillCommandTable(table);
    return listingOf(table);
  }

  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(PrintHelp, ListsOutsideDebugLevelTheSixteenCommandsForEveryLevel) {
  daemon_.isDebugLogLevel = false;
  EXPECT_EQ(listing(),
            "Usage: talowifitool [option] command args\n"
            "  Options are:\n"
            "    help                                    help                                              \n"
            "    getNetworks                             get networks                                      \n"
            "    isAllNetworkAPDisabled                  is all network ap disabled                        \n"
            "    getRadioIfStatuses                      get radio if statuses                             \n"
            "    updateSchedule                          update schedule                                   \n"
            "    getScheduleStatus                       get schedule status                               \n"
            "    rotatePassword                          rotate password                                   \n"
            "    wpsERConfig                             wps er config                                     \n"
            "    getDevices                              get devices                                       \n"
            "    isDefaultWPS_PBCAvalible                is default wps pbc avalible                       \n"
            "    triggerWPSConnected                     trigger wps connected                             \n"
            "    triggerDefaultWPS_PBC                   trigger default wps pbc                           \n"
            "    triggerWPS_PBC                          trigger wps pbc                                   \n"
            "    triggerHWButton                         trigger hw button                                 \n"
            "    modifyLogLevel                          modify log level                                  \n"
            "    getRadioConversionInfo                  get radio conversion info                         \n"
            "\n");
}

TEST_F(PrintHelp, ListsAllFiftyNineCommandsAtDebugLevel) { EXPECT_EQ(listing(), helpListing(true)); }

TEST_F(PrintHelp, MakesEachLineNinetyFourCharactersLongBetweenItsHeadingAndOneEmptyLine) {
  std::istringstream output(listing());
  std::vector<std::string> lines;
  for (std::string line; std::getline(output, line);) {
    lines.push_back(line);
  }
  ASSERT_EQ(lines.size(), 2U + 59U + 1U);
  EXPECT_EQ(lines[0], "Usage: talowifitool [option] command args");
  EXPECT_EQ(lines[1], "  Options are:");
  for (std::size_t i = 2; i < lines.size() - 1; ++i) {
    EXPECT_EQ(lines[i].size(), 94U) << lines[i];
  }
  EXPECT_EQ(lines.back(), "");
}

TEST_F(PrintHelp, PrintsTheHeadingAndAnEmptyLineWhereNoRowIsListed) {
  const std::string empty =
      "Usage: talowifitool [option] command args\n"
      "  Options are:\n"
      "\n";
  EXPECT_EQ(listingOf({}), empty);
  daemon_.isDebugLogLevel = false;
  CommandTable table;
  addCommand(table, "getRadios", nullptr, true);
  EXPECT_EQ(listingOf(table), empty);
}

TEST_F(PrintHelp, PrintsALongNameAndALongDescriptionWhole) {
  CommandTable table;
  const std::string name = std::string(45, 'n');
  const std::string longer = std::string(60, 'm');
  addCommand(table, name.c_str(), nullptr, false);
  addCommand(table, longer.c_str(), nullptr, false);
  EXPECT_EQ(listingOf(table),
            "Usage: talowifitool [option] command args\n"
            "  Options are:\n"
            "    " +
                name + name + "     \n    " + longer + longer + "\n\n");
}

TEST_F(PrintHelp, AsksForTheLogLevelOnce) {
  listing();
  EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
}

TEST_F(PrintHelp, ListsWhatIsForEveryLevelWhenTheLogLevelCannotBeLearned) {
  const std::vector<std::exception_ptr> failures = {
      std::make_exception_ptr(talo::dbus::DbusError(Wifi::ErrorCode::DaemonNotRunning, "IsDebugLogLevel")),
      std::make_exception_ptr(Wifi::WifiException(Wifi::ErrorCode::Busy, "IsDebugLogLevel")),
      std::make_exception_ptr(std::bad_alloc()),
      std::make_exception_ptr(42),
  };
  for (const std::exception_ptr& failure : failures) {
    FakeDaemon::Reset();
    daemon_.failures["IsDebugLogLevel"] = failure;
    EXPECT_EQ(listing(), helpListing(false));
    EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
  }
}

TEST_F(PrintHelp, IsWhatTheHelpCommandPrintsWithStatusZero) {
  for (const bool debug : {false, true}) {
    daemon_.isDebugLogLevel = debug;
    const ToolRun run = runTool({"help"});
    EXPECT_EQ(run.output, helpListing(debug));
    EXPECT_EQ(run.status, 0);
  }
}

TEST_F(PrintHelp, IsWhatFollowsTheMessageOfAFailureWithStatusOne) {
  for (const bool debug : {false, true}) {
    daemon_.isDebugLogLevel = debug;
    const ToolRun run = runTool({"halp"});
    EXPECT_EQ(run.output, "Failed to find command: halp\n" + helpListing(debug));
    EXPECT_EQ(run.status, 1);
  }
}

}  // namespace

}  // namespace TALO::Tool
