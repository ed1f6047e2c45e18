// Contexts, and networks that are taken off the air and put back.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

class TopologyStory : public StoryTest {
 protected:
  TopologyStory() {
    StartStory(R"("bridges": ["br0", "br-guest"], "devices": [
      {"address": "0a:00:00:00:00:01", "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]}])");
  }
};

TEST_F(TopologyStory, ADeactivatedNetworkIsOffTheAirUntilItIsActivatedOnABridge) {
  SignalLog signals(Address());
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  ExpectNow({"getActivateIdsForTopo"}, "IDs: 1 2 \n");
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");

  Do({"deactivate", "--id", "1"});
  ExpectNow({"getActivateIdsForTopo"}, "IDs: 2 \n");
  ExpectNow({"getDevices"}, "[]\n\n");
  ExpectNow({"getRadioIfStatuses"},
            "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
            "Band2_4GHz          wlan0               wlan0_2 \n"
            "Band5GHz            wlan1               wlan1_2 \n");
  // It keeps its interfaces.
  ExpectNow({"getInterfacesForTopo"},
            "ID: 1, Interface: \n"
            "\twlan0_1\n\twlan1_1\n"
            "ID: 2, Interface: \n"
            "\twlan0_2\n\twlan1_2\n"
            "\n");
  Do({"deactivate", "--id", "2"});
  ExpectNow({"getActivateIdsForTopo"}, "IDs: \n");
  ExpectNow({"isAllNetworkAPDisabled"}, "1\n");

  Do({"activate", "--id", "1", "--bridge", "br-guest"});
  ExpectNow({"getActivateIdsForTopo"}, "IDs: 1 \n");
  ExpectNow({"isAllNetworkAPDisabled"}, "0\n");
  const std::string networks = RunTool({"getNetworks"}).output;
  EXPECT_NE(networks.find("\t\t\"activated\" : true,\n\t\t\"bridge\" : \"br-guest\",\n"), std::string::npos)
      << networks;
  EXPECT_NE(networks.find("\t\t\"activated\" : false,\n\t\t\"bridge\" : \"br0\",\n"), std::string::npos)
      << networks;
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
}

TEST_F(TopologyStory, ActivationNeedsANetworkAndABridgeThatAreThere) {
  CreateNetwork("Home", 1);
  const std::string before = RunTool({"getNetworks"}).output;
  EXPECT_EQ(RunTool({"activate", "--id", "2", "--bridge", "br0"}),
            Refusal("there is no network 2: Not found"));
  EXPECT_EQ(RunTool({"activate", "--id", "1", "--bridge", "br9"}),
            Refusal("there is no bridge \"br9\": Not found"));
  EXPECT_EQ(RunTool({"deactivate", "--id", "2"}), Refusal("there is no network 2: Not found"));
  ExpectNow({"getNetworks"}, before);
}

TEST_F(TopologyStory, NewNetworksBelongToTheContextThatIsSet) {
  ExpectNow({"getContext"}, "Context: router\n");
  CreateNetwork("Home", 1);
  Do({"setContext", "--context", "holidays"});
  ExpectNow({"getContext"}, "Context: holidays\n");
  ExpectNow({"getIdsForTopo", "--context", "holidays"}, "IDs: \n");
  CreateNetwork("Guests", 2);
  CreateNetwork("Attic", 3);
  ExpectNow({"getIdsForTopo", "--context", "router"}, "IDs: 1 \n");
  ExpectNow({"getIdsForTopo", "--context", "holidays"}, "IDs: 2 3 \n");
  ExpectNow({"getIdsForTopo", "--context", "bridge"}, "IDs: \n");
  ExpectNow({"getIdsForTopo", "--context", "repeater"}, "IDs: \n");
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "work"}),
            Refusal("there is no context \"work\": Not found"));

  // A context is known as long as a network is of it.
  Do({"setContext", "--context", "router"});
  Do({"deleteNetwork", "--id", "2"});
  ExpectNow({"getIdsForTopo", "--context", "holidays"}, "IDs: 3 \n");
  Do({"deleteNetwork", "--id", "3"});
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "holidays"}),
            Refusal("there is no context \"holidays\": Not found"));
}

TEST_F(TopologyStory, AContextHas1To64Bytes) {
  const std::string longest(64, 'c');
  Do({"setContext", "--context", longest});
  ExpectNow({"getContext"}, "Context: " + longest + "\n");
  EXPECT_EQ(RunTool({"setContext", "--context", longest + "c"}),
            Refusal("the context \"" + longest + "c\" has 65 bytes, it must have 1 to 64: Invalid argument"));
  EXPECT_EQ(RunTool({"setContext", "--context", ""}),
            Refusal("the context \"\" has 0 bytes, it must have 1 to 64: Invalid argument"));
  ExpectNow({"getContext"}, "Context: " + longest + "\n");
}

}  // namespace

}  // namespace TALO::EndToEnd
