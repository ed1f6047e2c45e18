// Devices, and the node itself, that move to another access point of the same SSID.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

class RoamingStory : public StoryTest {};

/// A phone that wants to be on 2.4 GHz from each second of the first two minutes on.
std::string RestlessPhone() {
  std::string roams;
  for (int second = 1; second <= 120; ++second) {
    roams +=
        (roams.empty() ? "" : ",") + (R"({"radio": "Band2_4GHz", "at": )" + std::to_string(second)) + "}";
  }
  return R"("devices": [{"address": "0a:00:00:00:00:01", "name": "phone",
    "knows": [{"ssid": "Home", "passphrase": "correct-horse"}], "roams": [)" +
         roams + "]}]";
}

TEST_F(RoamingStory, ADeviceIsListedOnTheRadioThatItMovedTo) {
  StartStory(RestlessPhone());
  SignalLog signals(Address());
  CreateNetwork("Home", 1);
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan0_1");
  EXPECT_EQ(signals.Get("Station"),
            (std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 1 wlan1_1",
                                      "StationDisconnected 0a:00:00:00:00:01 1 wlan1_1 roamed",
                                      "StationConnected 0a:00:00:00:00:01 1 wlan0_1"}));
  ExpectNow({"getDevices"}, Printed(R"(
[
  {
    "address" : "0a:00:00:00:00:01",
    "connectedTime" : TIME,
    "interface" : "wlan0_1",
    "ipAddress" : "",
    "name" : "phone",
    "networkId" : 1,
    "radio" : "Band2_4GHz",
    "receiveRate" : 150,
    "signal" : -55,
    "ssid" : "Home",
    "ssidHex" : "486f6d65",
    "transmitRate" : 300
  }
]
)"));
}

TEST_F(RoamingStory, ANodeThatLooksForTheBestParentMovesToABetterOneThatAppears) {
  const auto parent = [](const std::string& number, int channel, int signal, const std::string& more) {
    return R"({"ssid": "Mesh", "backhaul": true, "passphrase": "mesh-backhaul", "bssid": "06:30:00:00:00:0)" +
           number + R"(", "channel": )" + std::to_string(channel) + R"(, "signal": )" +
           std::to_string(signal) + more + "}";
  };
  StartStory(R"("neighbours": [)" + parent("1", 44, -72, "") + "," +
             parent("2", 48, -55, R"(, "appearsAt": 10)") + "]");
  const auto connected = [](const std::string& number, int channel, int signal) {
    return Printed(R"(
[
  {
    "channel" : )" +
                   std::to_string(channel) +
                   R"(,
    "connected" : true,
    "connectedTime" : TIME,
    "interface" : "wlan1bhs",
    "parent" : "06:30:00:00:00:0)" +
                   number + R"(",
    "radio" : "Band5GHz",
    "scanType" : "BestAP",
    "signal" : )" + std::to_string(signal) +
                   R"(
  }
]
)");
  };
  Do({"enableScan", "--type", "BestAP"});
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, connected("1", 44, -72));
  ExpectInTheEnd({"getBackhaulSTAStatuses"}, connected("2", 48, -55));
}

}  // namespace

}  // namespace TALO::EndToEnd
