#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Calls = std::vector<std::string>;

namespace {

class TopologyCommand : public testing::Test {
 protected:
  TopologyCommand() { FakeDaemon::Reset(); }

  /// The calls of a command that asks one thing of the topology client.
  static Calls Asked(const std::string& call) {
    return {"IsDebugLogLevel()", "WifiClientFactoryForTopo::GetInstance()", call};
  }

  FakeDaemon& daemon_ = FakeDaemon::Get();
};

class GetIdsForTopo : public TopologyCommand {};

TEST_F(GetIdsForTopo, PrintsTheIdsInAscendingOrderEachFollowedByABlank) {
  daemon_.idsForTopo = {3, 1};
  const ToolRun run = runTool({"getIdsForTopo", "--context", "router"});
  EXPECT_EQ(run.output, "IDs: 1 3 \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked(R"(GetIdsForTopo("router"))"));
}

TEST_F(GetIdsForTopo, PrintsIdsOfAnyValue) {
  daemon_.idsForTopo = {2147483647, -2147483647 - 1, 0, -5};
  const ToolRun run = runTool({"getIdsForTopo", "--context", "router"});
  EXPECT_EQ(run.output, "IDs: -2147483648 -5 0 2147483647 \n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetIdsForTopo, PassesAnyContextOnUnchanged) {
  for (const auto& [context, printed] : std::vector<std::pair<std::string, std::string>>{
           {"", R"(GetIdsForTopo(""))"},
           {" Home Office ", R"(GetIdsForTopo(" Home Office "))"},
           {"-1", R"(GetIdsForTopo("-1"))"},
           {"caf\xC3\xA9", R"(GetIdsForTopo("caf\xc3\xa9"))"},
           {"\xFF", R"(GetIdsForTopo("\xff"))"}}) {
    SCOPED_TRACE(printed);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"getIdsForTopo", "--context", context});
    EXPECT_EQ(run.output, "IDs: \n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, Asked(printed));
  }
}

class GetActivateIdsForTopo : public TopologyCommand {};

TEST_F(GetActivateIdsForTopo, PrintsOnlyTheLabelWhenNoNetworkIsActivated) {
  const ToolRun run = runTool({"getActivateIdsForTopo"});
  EXPECT_EQ(run.output, "IDs: \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked("GetActivatedIdsForTopo()"));
}

TEST_F(GetActivateIdsForTopo, PrintsTheIdsInAscendingOrderEachFollowedByABlank) {
  daemon_.activatedIdsForTopo = {12, 4, 7};
  const ToolRun run = runTool({"getActivateIdsForTopo"});
  EXPECT_EQ(run.output, "IDs: 4 7 12 \n");
  EXPECT_EQ(run.status, 0);
}

class GetInterfacesForTopo : public TopologyCommand {};

TEST_F(GetInterfacesForTopo, PrintsASingleEmptyLineWhenThereIsNoNetwork) {
  const ToolRun run = runTool({"getInterfacesForTopo"});
  EXPECT_EQ(run.output, "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked("GetInterfacesForTopo()"));
}

TEST_F(GetInterfacesForTopo, PrintsTheInterfacesOfANetworkInTheOrderOfTheirBytes) {
  daemon_.interfacesForTopo = {{2, {"wlan1", "wlan0"}}};
  const ToolRun run = runTool({"getInterfacesForTopo"});
  EXPECT_EQ(run.output, "ID: 2, Interface: \n\twlan0\n\twlan1\n\n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetInterfacesForTopo, PrintsTheNetworksInAscendingOrderAndOneEmptyLineBehindAll) {
  daemon_.interfacesForTopo = {{10, {"wlan2"}}, {-1, {}}, {2, {"wlan10", "wlan9", ""}}};
  const ToolRun run = runTool({"getInterfacesForTopo"});
  EXPECT_EQ(run.output,
            "ID: -1, Interface: \n"
            "ID: 2, Interface: \n"
            "\t\n"
            "\twlan10\n"
            "\twlan9\n"
            "ID: 10, Interface: \n"
            "\twlan2\n"
            "\n");
  EXPECT_EQ(run.status, 0);
}

class SetContext : public TopologyCommand {};

TEST_F(SetContext, PassesAnEmptyContextOn) {
  const ToolRun run = runTool({"setContext", "--context", ""});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked(R"(SetContext(""))"));
}

TEST_F(SetContext, PassesAnUnknownContextOn) {
  const ToolRun run = runTool({"setContext", "--context", "no such context"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked(R"(SetContext("no such context"))"));
}

class GetContext : public TopologyCommand {};

TEST_F(GetContext, PrintsTheContextBehindItsLabel) {
  daemon_.context = "repeater";
  const ToolRun run = runTool({"getContext"});
  EXPECT_EQ(run.output, "Context: repeater\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked("GetContext()"));
}

TEST_F(GetContext, PrintsTheLabelAloneForAnEmptyContext) {
  const ToolRun run = runTool({"getContext"});
  EXPECT_EQ(run.output, "Context: \n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetContext, PrintsTheContextAsItComes) {
  daemon_.context = " a\tb%s\xFF ";
  const ToolRun run = runTool({"getContext"});
  EXPECT_EQ(run.output, "Context:  a\tb%s\xFF \n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetContext, LeavesTheLabelInFrontOfTheMessageWhenTheCallFails) {
  daemon_.Fail("GetContext", Wifi::WifiException(make_error_code(Wifi::ErrorCode::Busy), "not now"));
  const ToolRun run = runTool({"getContext"});
  EXPECT_EQ(run.output, "Context: Failed to execute command: not now: Busy\n");
  EXPECT_EQ(run.status, 1);
}

TEST_F(GetContext, PrintsNoLabelWhenTheClientCannotBeObtained) {
  daemon_.Fail("WifiClientFactoryForTopo", std::runtime_error("no client"));
  const ToolRun run = runTool({"getContext"});
  EXPECT_EQ(run.output, "no client\n");
  EXPECT_EQ(run.status, 1);
}

class Activate : public TopologyCommand {};

TEST_F(Activate, PrintsTheUsageAndCallsNothingWithoutTheBridgeThoughTheIdIsGiven) {
  const ToolRun run = runTool({"activate", "--id", "7"});
  EXPECT_EQ(run.output,
            "Usage: activate --id NetworkID --bridge BridgeName:\n"
            "  --id arg              network id\n"
            "  --bridge arg          bridge name\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
}

TEST_F(Activate, PassesAnEmptyBridgeOn) {
  const ToolRun run = runTool({"activate", "--id", "7", "--bridge", ""});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked(R"(Activate({id=7, bridge=""}))"));
}

TEST_F(Activate, PassesANegativeIdOn) {
  const ToolRun run = runTool({"activate", "--id", "-1", "--bridge", "br-lan"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, Asked(R"(Activate({id=-1, bridge="br-lan"}))"));
}

class Deactivate : public TopologyCommand {};

TEST_F(Deactivate, PassesIdsOfAnyValueOn) {
  for (const std::string id : {"0", "-1", "2147483647", "-2147483648"}) {
    SCOPED_TRACE(id);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"deactivate", "--id", id});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, Asked("Deactivate(" + id + ")"));
  }
}

TEST_F(TopologyCommand, IsRefusedAsTypedOutsideDebugLevel) {
  daemon_.isDebugLogLevel = false;
  const ToolRun run = runTool({"GETCONTEXT"});
  EXPECT_EQ(run.output, "GETCONTEXT is supported only on debug mode.\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{"IsDebugLogLevel()"});
}

}  // namespace

}  // namespace TALO::Tool
