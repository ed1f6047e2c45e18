// Devices come and go with the networks that they know.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

const char* kPhone = R"("devices": [
  {"address": "0a:00:00:00:00:01", "name": "phone", "ipAddress": "192.168.1.11",
   "knows": [{"ssid": "Home", "passphrase": "correct-horse"}],
   "signal": -48, "transmitRate": 866, "receiveRate": 433}])";

const char* kPhoneOnHome = R"(
[
  {
    "address" : "0a:00:00:00:00:01",
    "connectedTime" : TIME,
    "interface" : "wlan1_1",
    "ipAddress" : "192.168.1.11",
    "name" : "phone",
    "networkId" : 1,
    "radio" : "Band5GHz",
    "receiveRate" : 433,
    "signal" : -48,
    "ssid" : "Home",
    "ssidHex" : "486f6d65",
    "transmitRate" : 866
  }
]
)";

class DevicesStory : public StoryTest {
 protected:
  int ConnectedTime() {
    const auto devices = Call<&Wifi::WifiClient::GetDevices>();
    EXPECT_EQ(devices.size(), 1U);
    return devices.empty() ? -1 : devices.front().connectedTime;
  }
};

TEST_F(DevicesStory, ADeviceIsListedWhileTheNetworkThatItKnowsIsThere) {
  StartStory(kPhone);
  SignalLog signals(Address());
  ExpectNow({"getDevices"}, "[]\n\n");
  CreateNetwork("Home", 1);
  ExpectInTheEnd({"getDevices"}, Printed(kPhoneOnHome));
  const std::string statuses = RunTool({"getRadioStatuses"}).output;
  EXPECT_NE(statuses.find("\"radio\" : \"Band5GHz\",\n\t\t\"stations\" : 1,\n"), std::string::npos)
      << statuses;
  Do({"deleteNetwork", "--id", "1"});
  ExpectNow({"getDevices"}, "[]\n\n");
  EXPECT_EQ(signals.Get("Station"),
            (std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 1 wlan1_1",
                                      "StationDisconnected 0a:00:00:00:00:01 1 wlan1_1 BSS down"}));
  EXPECT_EQ(signals.Get("NetworksChanged").size(), 2U);
}

TEST_F(DevicesStory, ADeviceWithAnotherPassphraseStaysOutside) {
  StartStory(kPhone);
  SignalLog signals(Address());
  CreateNetwork("Home", 1, "battery-staple");
  CreateNetwork("Guests", 2);
  Do({"deleteNetwork", "--id", "1"});
  CreateNetwork("Home", 3);
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 3 wlan1_1");
  EXPECT_EQ(signals.Get("Station"), std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 3 wlan1_1"});
}

TEST_F(DevicesStory, ADeviceStaysConnectedWhateverHappensToAnotherNetwork) {
  StartStory(kPhone);
  SignalLog signals(Address());
  CreateNetwork("Home", 1);
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
  // From here on, a connection that begins anew shows.
  RunToolUntil({"getDevices"}, [this](const std::string&) { return ConnectedTime() >= 1; });
  int before = ConnectedTime();
  EXPECT_GE(before, 1);
  const auto expectConnected = [&](const std::string& after) {
    const int now = ConnectedTime();
    EXPECT_GE(now, before) << after;
    before = now;
  };
  CreateNetwork("Guests", 2);
  expectConnected("createNetwork");
  for (const Words& words : std::vector<Words>{
           {"rotatePassword", "--id", "2", "--radio", "SmartConnect"},
           {"rotatePassword", "--id", "2", "--radio", "Band5GHz"},
           {"deactivate", "--id", "2"},
           {"activate", "--id", "2", "--bridge", "br-guest"},
           {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "9", "--devices"},
           {"setContext", "--context", "bridge"},
           {"restartNetworks", "--force", "0"},
           {"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"},
           {"deleteNetwork", "--id", "2"},
       }) {
    Do(words);
    expectConnected(words.at(0));
  }
  EXPECT_EQ(signals.Get("Station"), std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 1 wlan1_1"});
}

TEST_F(DevicesStory, OnlyAForcedRestartDropsDevices) {
  StartStory(kPhone);
  SignalLog signals(Address());
  CreateNetwork("Home", 1);
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
  Do({"restartNetworks", "--force", "0"});
  ExpectNow({"getDevices"}, Printed(kPhoneOnHome));
  Do({"restartNetworks", "--force", "1"});
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
  EXPECT_EQ(signals.Get("Station"),
            (std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 1 wlan1_1",
                                      "StationDisconnected 0a:00:00:00:00:01 1 wlan1_1 BSS down",
                                      "StationConnected 0a:00:00:00:00:01 1 wlan1_1"}));
  ExpectNow({"getDevices"}, Printed(kPhoneOnHome));
}

// The first plan of each radio is that of the start, the second that of Home.
TEST_F(DevicesStory, ANetworkThatARadioFailsToCarryIsNotMade) {
  StartStory(
      R"("faults": {"apply": [{"radio": "Band5GHz", "skip": 2, "reason": "the firmware does not answer"}]})");
  CreateNetwork("Home", 1);
  const std::string before = RunTool({"getNetworks"}).output;
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Guests", "--password", "correct-horse"}),
            Failure("Create Network ID: Failed to execute command: the radio Band5GHz cannot be set up: "
                    "the firmware does not answer: Radio failed\n"));
  ExpectNow({"getNetworks"}, before);
}

TEST_F(DevicesStory, ARestartSaysWhichRadioFails) {
  StartStory(
      R"("faults": {"apply": [{"radio": "Band5GHz", "skip": 2, "reason": "the firmware does not answer"}]})");
  CreateNetwork("Home", 1);
  EXPECT_EQ(RunTool({"restartNetworks", "--force", "1"}),
            Refusal("the radio Band5GHz cannot be set up: the firmware does not answer: Radio failed"));
  Do({"restartNetworks", "--force", "0"});
  ExpectNow({"getRadioIfStatuses"},
            "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
            "Band2_4GHz          wlan0               wlan0_1 \n"
            "Band5GHz            wlan1               wlan1_1 \n");
}

}  // namespace

}  // namespace TALO::EndToEnd
