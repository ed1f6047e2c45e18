// The backhaul, with which the nodes of a mesh find each other.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

const char* kParents = R"("neighbours": [
  {"ssid": "Mesh", "hidden": true, "backhaul": true, "bssid": "06:30:00:00:00:01", "channel": 44,
   "channelWidth": 80, "signal": -55, "passphrase": "mesh-backhaul"},
  {"ssid": "Mesh", "hidden": true, "backhaul": true, "bssid": "06:30:00:00:00:02", "channel": 108,
   "channelWidth": 80, "signal": -72, "passphrase": "mesh-backhaul"}])";

const char* kNoBackhaul = R"(
{
  "enable" : false,
  "password" : "",
  "radios" : [],
  "ssid" : "",
  "ssidHex" : ""
}
)";

std::string Backhaul(const std::string& radio) {
  return Printed(R"(
{
  "enable" : true,
  "password" : "mesh-backhaul",
  "radios" :
  [
    ")" + radio + R"("
  ],
  "ssid" : "Mesh",
  "ssidHex" : "4d657368"
}
)");
}

std::string Connected(const std::string& radio, const std::string& interface, const std::string& parent,
                      int channel, int signal, const std::string& scanType = "Default") {
  return Printed(R"(
[
  {
    "channel" : )" +
                 std::to_string(channel) + R"(,
    "connected" : true,
    "connectedTime" : TIME,
    "interface" : ")" +
                 interface + R"(",
    "parent" : ")" +
                 parent + R"(",
    "radio" : ")" +
                 radio + R"(",
    "scanType" : ")" +
                 scanType + R"(",
    "signal" : )" +
                 std::to_string(signal) + R"(
  }
]
)");
}

/// A tri-band router between two mesh parents.
class MeshStory : public StoryTest {
 protected:
  MeshStory() { StartStory(kParents, {"--model", "Alder100"}); }

  const std::string kUpperParent = Connected("Band5GHz_2", "wlan2bhs", "06:30:00:00:00:02", 108, -72);
};

TEST_F(MeshStory, ANodeJoinsItsParentAndLeavesIt) {
  ExpectNow({"getBackhaulSTA"}, Printed(kNoBackhaul));
  ExpectNow({"getBackhaulSTAStatuses"}, "[]\n\n");
  ExpectNow({"getBackhaulSTAInterfaces"}, "Interfaces: \n\n");
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectNow({"getBackhaulSTA"}, Backhaul("Band5GHz_2"));
  ExpectNow({"getBackhaulSTAInterfaces"}, "Interfaces: \n\t Band5GHz_2 : wlan2bhs\n\n");
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, kUpperParent);

  Do({"modifyBackhaulSTA", "--enable", "0", "--ssid", "", "--password", ""});
  ExpectNow({"getBackhaulSTA"}, Printed(kNoBackhaul));
  ExpectNow({"getBackhaulSTAStatuses"}, "[]\n\n");
}

TEST_F(MeshStory, ANodeKeepsItsParentWhileItsScanTypeChanges) {
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, kUpperParent);
  for (const char* type : {"Disable", "BestAP", "Default"}) {
    Do({"enableScan", "--type", type});
    ExpectNow({"getBackhaulSTAStatuses"},
              Connected("Band5GHz_2", "wlan2bhs", "06:30:00:00:00:02", 108, -72, type));
  }
  EXPECT_EQ(RunTool({"enableScan", "--type", "Error"}),
            Refusal("the scan type Error does not exist: Invalid argument"));
  ExpectNow({"getBackhaulSTAStatuses"}, kUpperParent);
}

TEST_F(MeshStory, SwappedBandsExchangeFronthaulAndBackhaul) {
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Hall", "--password", "mesh-backhaul"});
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, kUpperParent);
  ExpectNow({"isBackhaulBandSwapped"}, "no\n");
  ExpectNow({"getBackhaulInterfaces"}, "Interfaces: \n\t Band5GHz_2 : wlan2_0\n\n");

  Do({"swapBackhaulBand", "--enable", "1"});
  ExpectNow({"isBackhaulBandSwapped"}, "yes\n");
  ExpectNow({"getRadioConversionInfo"},
            "Radio conversion map:\n"
            "\tBand2_4GHz => Band2_4GHz\n"
            "\tBand5GHz => Band5GHz_2\n"
            "\tBand5GHz_1 => Band5GHz_2\n"
            "\tBand5GHz_2 => Band5GHz_1\n"
            "Backhaul swapped: 1\n");
  ExpectNow({"getBackhaulInterfaces"}, "Interfaces: \n\t Band5GHz_1 : wlan1_0\n\n");
  ExpectNow({"getBackhaulSTAInterfaces"}, "Interfaces: \n\t Band5GHz_1 : wlan1bhs\n\n");
  ExpectInTheEnd({"getBackhaulSTAStatuses"},
                 Connected("Band5GHz_1", "wlan1bhs", "06:30:00:00:00:01", 44, -55));
  Do({"swapBackhaulBand", "--enable", "0"});
  ExpectNow({"isBackhaulBandSwapped"}, "no\n");
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, kUpperParent);
}

TEST_F(MeshStory, ARouterWithOneUpperRadioHasNothingToSwap) {
  StartStory("", {"--model", "Cedar300"});
  EXPECT_EQ(RunTool({"swapBackhaulBand", "--enable", "1"}),
            Refusal("the router Cedar300 does not have two 5 GHz radios, there is nothing to swap: "
                    "Not supported"));
  ExpectNow({"isBackhaulBandSwapped"}, "no\n");
}

TEST_F(MeshStory, TheBackhaulIsInTheAirButNoNetwork) {
  ExpectNow({"getBackhaul"}, Printed(kNoBackhaul));
  ExpectNow({"getBackhaulInterfaces"}, "Interfaces: \n\n");
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectNow({"getBackhaul"}, Backhaul("Band5GHz_2"));
  ExpectNow({"getRadioIfStatuses"},
            "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
            "Band2_4GHz          wlan0               \n"
            "Band5GHz_1          wlan1               \n"
            "Band5GHz_2          wlan2               wlan2_0 \n");
  ExpectNow({"isAllNetworkAPDisabled"}, "1\n");
  ExpectNow({"getNetworks"}, "[]\n\n");
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Mesh", "--password", "correct-horse"}),
            Failure("Create Network ID: Failed to execute command: the SSID \"Mesh\" is in use by the "
                    "backhaul: Already exists\n"));
}

TEST_F(MeshStory, BadBackhaulsAreRefusedAndChangeNothing) {
  CreateNetwork("Home", 1);
  for (const char* command : {"modifyBackhaul", "modifyBackhaulSTA"}) {
    SCOPED_TRACE(command);
    EXPECT_EQ(RunTool({command, "--enable", "1", "--ssid", "Home", "--password", "mesh-backhaul"}),
              Refusal("the SSID \"Home\" is in use by network 1: Already exists"));
    EXPECT_EQ(RunTool({command, "--enable", "1", "--ssid", "", "--password", "mesh-backhaul"}),
              Refusal("the backhaul SSID \"\" has 0 bytes, it must have 1 to 32: Invalid argument"));
    EXPECT_EQ(RunTool({command, "--enable", "1", "--ssid", "Mesh", "--password", "short"}),
              Refusal("the passphrase has 5 characters, it must have 8 to 63, or 64 hexadecimal digits: "
                      "Invalid argument"));
  }
  ExpectNow({"getBackhaul"}, Printed(kNoBackhaul));
  ExpectNow({"getBackhaulSTA"}, Printed(kNoBackhaul));
}

TEST_F(MeshStory, TheModelsOfTheMeshDecideWhichBandsAreAskedFor) {
  StartStory("", {"--model", "Cedar300"});
  Do({"modifyMeshInfo", "--models", "Cedar300", "--isRepeater", "0"});
  ExpectNow({"getRadioConversionInfo"},
            "Radio conversion map:\n"
            "\tBand2_4GHz => Band2_4GHz\n"
            "\tBand5GHz => Band5GHz\n"
            "Backhaul swapped: 0\n");
  Do({"modifyMeshInfo", "--models", "Cedar300", "Alder100", "--isRepeater", "0"});
  ExpectNow({"getRadioConversionInfo"},
            "Radio conversion map:\n"
            "\tBand2_4GHz => Band2_4GHz\n"
            "\tBand5GHz => Band5GHz\n"
            "\tBand5GHz_1 => Band5GHz\n"
            "\tBand5GHz_2 => Band5GHz\n"
            "Backhaul swapped: 0\n");
  EXPECT_EQ(RunTool({"modifyMeshInfo", "--models", "Error", "--isRepeater", "1"}),
            Refusal("the model Error does not exist: Invalid argument"));
}

TEST_F(MeshStory, ARouterIsToAdjustWhileARadioThatItWantsIsDown) {
  StartStory(R"("faults": {"apply": [{"radio": "Band5GHz_1", "reason": "the firmware does not answer"}]})",
             {"--model", "Alder100"});
  ExpectNow({"isWifiAdjustNeeded"}, "yes\n");
  const std::string statuses = RunTool({"getRadioStatusesSimple"}).output;
  EXPECT_NE(statuses.find("\"radio\" : \"Band5GHz_1\",\n\t\t\"up\" : false\n"), std::string::npos)
      << statuses;
  EXPECT_EQ(RunTool({"getScanResults", "--radio", "Band5GHz_1"}),
            Refusal("the radio Band5GHz_1 is not up: Radio failed"));
  Do({"restartNetworks", "--force", "0"});
  ExpectNow({"isWifiAdjustNeeded"}, "no\n");
}

TEST_F(MeshStory, ARepeaterIsToAdjustUntilItIsOnItsParentsChannel) {
  ExpectNow({"isWifiAdjustNeeded"}, "no\n");
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, kUpperParent);
  ExpectNow({"isWifiAdjustNeeded"}, "no\n");
  // Its own upper radio is on channel 100, the parent on 108.
  Do({"modifyMeshInfo", "--models", "Alder100", "--isRepeater", "1"});
  ExpectNow({"isWifiAdjustNeeded"}, "yes\n");
  Do({"modifyMeshInfo", "--models", "Alder100", "--isRepeater", "0"});
  ExpectNow({"isWifiAdjustNeeded"}, "no\n");
}

}  // namespace

}  // namespace TALO::EndToEnd
