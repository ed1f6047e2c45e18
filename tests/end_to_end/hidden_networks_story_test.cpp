// Networks that do not tell their SSIDs. Nothing but the state file makes one yet.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

class HiddenNetworksStory : public StoryTest {};

TEST_F(HiddenNetworksStory, AHiddenNetworkLetsWhoKnowsItInAndNobodyByWPS) {
  const char* devices = R"("devices": [
    {"address": "0a:00:00:00:00:01", "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]},
    {"address": "0a:00:00:00:00:02", "bands": ["Band2_4GHz"], "pressesAfter": 0}])";
  StartStory(devices);
  CreateNetwork("Home", 1);
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
  EditState({{"\"hidden\" : false", "\"hidden\" : true"}});

  SignalLog signals(Address());
  StartStory(devices);
  const std::string networks = RunTool({"getNetworks"}).output;
  EXPECT_NE(networks.find("\t\t\"hidden\" : true,\n\t\t\"id\" : 1,\n"), std::string::npos) << networks;
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "0\n");
  const ToolRun refusal = Refusal("network 1 is hidden, which excludes WPS: Not allowed");
  EXPECT_EQ(RunTool({"triggerDefaultWPS_PBC"}), refusal);
  EXPECT_EQ(RunTool({"triggerHWButton"}), refusal);
  EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "1", "--radio", "Band5GHz"}), refusal);
  EXPECT_EQ(signals.Get("WPS"), std::vector<std::string>{});
}

}  // namespace

}  // namespace TALO::EndToEnd
