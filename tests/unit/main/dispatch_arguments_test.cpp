#include "support/command_rows.h"
#include "support/fake_daemon.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// How the words behind the program name reach a command's handler.

namespace TALO::Tool {

namespace {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;
using Words = std::vector<std::string>;

const Calls kOnlyLogLevel = {"IsDebugLogLevel()"};
const Calls kDeleteNetwork7 = {"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "DeleteNetwork(7)"};
const std::string kDeleteNetworkUsage =
    "Usage: deleteNetwork --id ID:\n"
    "  --id arg              network id\n"
    "\n";

class DispatchArguments : public testing::Test {
 protected:
  DispatchArguments() { FakeDaemon::Reset(); }

  static ToolRun runAnew(const Words& words) {
    FakeDaemon::Reset();
    return runTool(words);
  }

  void expectRun(const Words& words, const std::string& output, int status, const Calls& calls) const {
    SCOPED_TRACE(testing::PrintToString(words));
    const ToolRun run = runAnew(words);
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(daemon_.calls, calls);
  }

  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(DispatchArguments, ReachTheHandlerWithoutTheCommandWord) {
  expectRun({"deleteNetwork", "--id", "7"}, "", 0, kDeleteNetwork7);
}

TEST_F(DispatchArguments, ReachTheHandlerInTheOrderTyped) {
  expectRun({"modifyMACFilterProfile", "--devices", "b", "00:00:00:00:00:02", "a", "00:00:00:00:00:01", "c",
             "00:00:00:00:00:03", "--id", "7", "--name", "TV", "--action", "Deny"},
            "", 0,
            {"IsDebugLogLevel()", "WifiClientFactory::GetInstance()",
             R"(ModifyMACFilterProfile({id=7, name="TV", action=Deny, devices=[)"
             R"({name="b", address=00:00:00:00:00:02}, {name="a", address=00:00:00:00:00:01}, )"
             R"({name="c", address=00:00:00:00:00:03}]}))"});
}

TEST_F(DispatchArguments, ReachTheHandlerAsTyped) {
  expectRun({"deleteNetwork", "--id=7"}, "", 0, kDeleteNetwork7);
  expectRun({"setContext", "--context", ""}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext(""))"});
  expectRun({"setContext", "--context", " a  b "}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext(" a  b "))"});
  expectRun({"setContext", "--context=a=b"}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext("a=b"))"});
  expectRun({"setContext", "--context", "-x"}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext("-x"))"});
  expectRun({"setContext", "--context", "--y"}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext("--y"))"});
  expectRun({"setContext", "--context", "\xFF\x80"}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", R"(SetContext("\xff\x80"))"});
  expectRun({"deleteNetwork", "--id", "-7"}, "", 0,
            {"IsDebugLogLevel()", "WifiClientFactory::GetInstance()", "DeleteNetwork(-7)"});
}

TEST_F(DispatchArguments, ReachTheHandlerWithoutTheOptionsOfTheToolItself) {
  expectRun({"deleteNetwork", "--help", "--id", "7"}, "", 0, kDeleteNetwork7);
  expectRun({"deleteNetwork", "--subargs", "--id", "--id", "7"}, "", 0, kDeleteNetwork7);
}

TEST_F(DispatchArguments, LoseTheirFirstWordWhereAnOptionStandsBeforeTheCommand) {
  expectRun({"--id=8", "deleteNetwork", "--id=7"}, "", 0, kDeleteNetwork7);
  expectRun({"--id=7", "deleteNetwork"}, kDeleteNetworkUsage, 1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, TakeTheValueOfAnOptionBeforeTheCommandForTheCommand) {
  expectRun({"--id", "7", "deleteNetwork"}, "Failed to find command: 7\n" + helpListing(true), 1,
            kOnlyLogLevel);
}

TEST_F(DispatchArguments, MayGiveTheCommandAsAnOption) {
  const Calls getNetworks = {"WifiClientFactory::GetInstance()", "GetNetworkSettings()"};
  expectRun({"--command", "getNetworks"}, "[]\n\n", 0, getNetworks);
  expectRun({"--command=GETNETWORKS"}, "[]\n\n", 0, getNetworks);
  expectRun({"--com", "getNetworks"}, "[]\n\n", 0, getNetworks);
  expectRun({"--help", "--command", "getNetworks"}, "[]\n\n", 0, getNetworks);
}

TEST_F(DispatchArguments, LoseTheFirstWordBehindACommandGivenAsAnOption) {
  expectRun({"--command", "deleteNetwork", "--id=7"}, kDeleteNetworkUsage, 1, kOnlyLogLevel);
  expectRun({"--command", "deleteNetwork", "--first", "--id=7"}, "", 0, kDeleteNetwork7);
  expectRun({"--first", "--command=deleteNetwork", "--id=7"}, "", 0, kDeleteNetwork7);
}

TEST_F(DispatchArguments, LoseNothingWhereNoWordFollowsACommandGivenAsAnOption) {
  expectRun({"--command", "deleteNetwork"}, kDeleteNetworkUsage, 1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, NameTheCommandOnlyOnce) {
  const std::string refusal = "option '--command' cannot be specified more than once\n" + helpListing(true);
  expectRun({"--command", "getNetworks", "--command", "getNetworks"}, refusal, 1, kOnlyLogLevel);
  expectRun({"--command=getNetworks", "--command=getDevices"}, refusal, 1, kOnlyLogLevel);
  // The bare word takes the place of the command as well.
  expectRun({"--command", "getNetworks", "getNetworks"}, refusal, 1, kOnlyLogLevel);
  expectRun({"getNetworks", "--command", "getNetworks"}, refusal, 1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedWithTheListingWhereTheToolsOwnOptionsAreWrong) {
  expectRun({"--command"}, "the required argument for option '--command' is missing\n" + helpListing(true), 1,
            kOnlyLogLevel);
  expectRun({"getNetworks", "--subargs"},
            "the required argument for option '--subargs' is missing\n" + helpListing(true), 1,
            kOnlyLogLevel);
  expectRun({"--help=yes", "getNetworks"},
            "option '--help' does not take any arguments\n" + helpListing(true), 1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedWithTheListingWhereNothingFollowsAnEqualSign) {
  expectRun(
      {"deleteNetwork", "--id="},
      "the argument for option '--id' should follow immediately after the equal sign\n" + helpListing(true),
      1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedWithTheListingOutsideDebugLevelToo) {
  daemon_.isDebugLogLevel = false;
  const ToolRun run = runTool({"--command"});
  EXPECT_EQ(run.output, "the required argument for option '--command' is missing\n" + helpListing(false));
  EXPECT_EQ(run.status, 1);
}

TEST_F(DispatchArguments, PrintTheUsageWhereAnOptionIsMissing) {
  expectRun({"deleteNetwork"}, kDeleteNetworkUsage, 1, kOnlyLogLevel);
  expectRun({"setCountryCode"},
            "Usage: setCountryCode --country country:\n"
            "  --country arg         country\n"
            "\n",
            1, kOnlyLogLevel);
  expectRun({"createNetwork", "--ssid", "Home"},
            "Usage: createNetwork --ssid SSID --password Password:\n"
            "  --ssid arg            network ssid\n"
            "  --password arg        ap password\n"
            "\n",
            1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreIgnoredByAHandlerWithoutOptions) {
  const Calls getNetworks = {"WifiClientFactory::GetInstance()", "GetNetworkSettings()"};
  expectRun({"getNetworks", "stray", "--id", "7", "-x", "--colour=blue", "words"}, "[]\n\n", 0, getNetworks);
}

TEST_F(DispatchArguments, AreRefusedByAHandlerThatDoesNotDeclareThem) {
  expectRun({"setCountryCode", "--country", "DE", "--colour", "blue"}, "unrecognised option '--colour'\n", 1,
            kOnlyLogLevel);
  expectRun({"setCountryCode", "--colour"}, "unrecognised option '--colour'\n", 1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedByAHandlerWhereTheirValueIsBad) {
  expectRun({"deleteNetwork", "--id", "seven"}, "the argument ('seven') for option '--id' is invalid\n", 1,
            kOnlyLogLevel);
  expectRun({"swapBackhaulBand", "--enable", "maybe"},
            "the argument ('maybe') for option '--enable' is invalid. Valid choices are 'on|off', 'yes|no', "
            "'1|0' and 'true|false'\n",
            1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedByAHandlerWhereAnOptionIsGivenTwice) {
  expectRun({"deleteNetwork", "--id", "7", "--id", "7"}, "option '--id' cannot be specified more than once\n",
            1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, MakeAnEmptyDeviceListOfDevicesWithoutWords) {
  const Calls calls = {"IsDebugLogLevel()", "WifiClientFactory::GetInstance()",
                       "SetMACFilterGlobal({devices=[], enablePreventBroadcast=true, maximumBroadcast=100})"};
  expectRun({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100", "--devices"},
            "", 0, calls);
  expectRun({"setMACFilterGlobal", "--devices", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100"},
            "", 0, calls);
}

TEST_F(DispatchArguments, PrintTheUsageWhereDevicesIsLeftOut) {
  expectRun(
      {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100"},
      "Usage: SetMACFilterGlobal --enablePreventBroadcast 0/1 --maximumBroadcast 100 --devices DeviceName "
      "MACAddress:\n"
      "  --enablePreventBroadcast arg enablePreventBroadcast\n"
      "  --maximumBroadcast arg       maximumBroadcast\n"
      "  --devices arg                devices\n"
      "\n",
      1, kOnlyLogLevel);
}

TEST_F(DispatchArguments, AreRefusedWhereDevicesHasAnOddNumberOfWords) {
  const ToolRun run = runTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast",
                               "100", "--devices", "a", "00:11:22:33:44:55", "b"});
  EXPECT_EQ(run.output, "input of column devices is not correct.\n");
  EXPECT_EQ(run.status, 1);
}

TEST_F(DispatchArguments, AreRefusedWhereADeviceHasNoMACAddress) {
  const ToolRun run = runTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast",
                               "100", "--devices", "a", "00:11:22:33:44"});
  EXPECT_EQ(run.output, "Invalid MAC address: 00:11:22:33:44\n");
  EXPECT_EQ(run.status, 1);
}

}  // namespace

}  // namespace TALO::Tool
