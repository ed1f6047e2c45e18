// WPS lets a device in that presses its button.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

/// Three that know nothing: a printer that presses its button at once, a lamp that only listens, and a camera
/// at 5 GHz that presses, too.
const char* kStrangers = R"("devices": [
  {"address": "0a:00:00:00:00:01", "name": "printer", "bands": ["Band2_4GHz"], "pressesAfter": 0},
  {"address": "0a:00:00:00:00:02", "name": "lamp", "bands": ["Band2_4GHz"]},
  {"address": "0a:00:00:00:00:03", "name": "camera", "bands": ["Band5GHz"], "pressesAfter": 0}])";

/// Nobody presses before the case is over.
const char* kNobody = R"("devices": [])";

class WPSStory : public StoryTest {
 protected:
  void Start(const char* devices) {
    StartStory(devices);
    CreateNetwork("Home", 1);
  }

  void ExpectSessionOn(const std::string& interface) {
    EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"}),
              Refusal("a WPS session runs on the interface \"" + interface + "\": Busy"));
    ExpectNow({"isDefaultWPS_PBCAvalible"}, "0\n");
  }
};

TEST_F(WPSStory, ASessionLetsTheOneDeviceInThatPresses) {
  Start(kStrangers);
  SignalLog signals(Address());
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
  ExpectNow({"getDevices"}, "[]\n\n");
  Do({"triggerDefaultWPS_PBC"});
  signals.WaitFor("WPSFinished wlan0_1 enrolled");
  EXPECT_EQ(signals.Get(), (std::vector<std::string>{"StationConnected 0a:00:00:00:00:01 1 wlan0_1",
                                                     "WPSFinished wlan0_1 enrolled"}));
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
  ExpectNow({"getDevices"}, Printed(R"(
[
  {
    "address" : "0a:00:00:00:00:01",
    "connectedTime" : TIME,
    "interface" : "wlan0_1",
    "ipAddress" : "",
    "name" : "printer",
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

TEST_F(WPSStory, ASessionIsOfTheRadioThatItIsOpenedOn) {
  Start(kStrangers);
  SignalLog signals(Address());
  Do({"triggerWPS_PBC", "--id", "1", "--radio", "Band5GHz_2"});
  signals.WaitFor("WPSFinished wlan1_1 enrolled");
  EXPECT_EQ(signals.Get(), (std::vector<std::string>{"StationConnected 0a:00:00:00:00:03 1 wlan1_1",
                                                     "WPSFinished wlan1_1 enrolled"}));
}

TEST_F(WPSStory, TwoDevicesThatPressTogetherEndTheSessionOutside) {
  Start(R"("devices": [{"address": "0a:00:00:00:00:01", "pressesAfter": 0},
                       {"address": "0a:00:00:00:00:02", "pressesAfter": 1}])");
  SignalLog signals(Address());
  Do({"triggerHWButton"});
  signals.WaitFor("WPSFinished wlan0_1 overlap");
  EXPECT_EQ(signals.Get(), std::vector<std::string>{"WPSFinished wlan0_1 overlap"});
  ExpectNow({"getDevices"}, "[]\n\n");
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
}

TEST_F(WPSStory, ASessionEndsWhenItIsToldThatSomebodyConnected) {
  Start(kNobody);
  SignalLog signals(Address());
  EXPECT_EQ(RunTool({"triggerWPSConnected", "--ifName", "wlan0_1"}),
            Refusal("no WPS session runs on the interface \"wlan0_1\": Not allowed"));
  Do({"triggerHWButton"});
  ExpectSessionOn("wlan0_1");
  EXPECT_EQ(RunTool({"triggerWPSConnected", "--ifName", "wlan1_1"}),
            Refusal("no WPS session runs on the interface \"wlan1_1\": Not allowed"));
  EXPECT_EQ(RunTool({"triggerWPSConnected", "--ifName", "wlan0_2"}),
            Refusal("no network has the interface \"wlan0_2\": Not found"));
  ExpectSessionOn("wlan0_1");
  Do({"triggerWPSConnected", "--ifName", "wlan0_1"});
  EXPECT_EQ(signals.Get(), std::vector<std::string>{"WPSFinished wlan0_1 cancelled"});
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
  Do({"triggerDefaultWPS_PBC"});
  EXPECT_EQ(RunTool({"triggerHWButton"}), Refusal("a WPS session runs on the interface \"wlan0_1\": Busy"));
}

TEST_F(WPSStory, ASessionEndsWithItsNetwork) {
  Start(kNobody);
  CreateNetwork("Guests", 2);
  SignalLog signals(Address());
  Do({"triggerWPS_PBC", "--id", "2", "--radio", "Band2_4GHz"});
  ExpectSessionOn("wlan0_2");
  Do({"deactivate", "--id", "2"});
  EXPECT_EQ(signals.Get(), (std::vector<std::string>{"WPSFinished wlan0_2 cancelled", "NetworksChanged"}));
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
  EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "2", "--radio", "Band2_4GHz"}),
            Refusal("network 2 is not up on the radio Band2_4GHz, WPS cannot be opened there: Radio failed"));
}

TEST_F(WPSStory, WPSNeedsANetwork) {
  StartStory(kNobody);
  const ToolRun refusal = Refusal("there is no activated network to open WPS on: Not found");
  for (const char* word : {"isDefaultWPS_PBCAvalible", "triggerDefaultWPS_PBC", "triggerHWButton"}) {
    EXPECT_EQ(RunTool({word}), refusal);
  }
  CreateNetwork("Home", 1);
  Do({"deactivate", "--id", "1"});
  for (const char* word : {"isDefaultWPS_PBCAvalible", "triggerDefaultWPS_PBC", "triggerHWButton"}) {
    EXPECT_EQ(RunTool({word}), refusal);
  }
}

TEST_F(WPSStory, WPSIsForOneRadioOfANetworkThatIsThere) {
  Start(kNobody);
  EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "2", "--radio", "Band2_4GHz"}),
            Refusal("there is no network 2: Not found"));
  EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "1", "--radio", "SmartConnect"}),
            Refusal("WPS is for one radio, SmartConnect stands for 2: Invalid argument"));
  ExpectNow({"isDefaultWPS_PBCAvalible"}, "1\n");
}

// A registrar is asked by others; what it was told shows nowhere else.
TEST_F(WPSStory, ARegistrarTakesWhatIsWithinTheLimits) {
  Start(kNobody);
  const auto configure = [this](const std::string& interface, const std::string& ssid, const std::string& key,
                                const std::string& mode) {
    return RunTool(
        {"wpsERConfig", "--ifName=" + interface, "--ssid=" + ssid, "--key", key, "--mode=" + mode});
  };
  EXPECT_EQ(configure("wlan0_1", "Home", "correct-horse", "PersonalWPA2"), Success());
  EXPECT_EQ(configure("wlan1_1", "Cafe", "", "Disabled"), Success());
  EXPECT_EQ(configure("wlan0", "Home", "correct-horse", "PersonalWPA2"),
            Refusal("no network has the interface \"wlan0\": Not found"));
  EXPECT_EQ(configure("wlan0_1", std::string(33, 'a'), "correct-horse", "PersonalWPA2"),
            Refusal("the SSID \"" + std::string(33, 'a') +
                    "\" has 33 bytes, it must have 1 to 32: Invalid argument"));
  EXPECT_EQ(configure("wlan0_1", "Home", "correct-horse", "Disabled"),
            Refusal("the security mode \"Disabled\" takes no key: Invalid argument"));
  EXPECT_EQ(configure("wlan0_1", "Home", "correct-horse", "WEP"),
            Refusal("a registrar cannot be given the security mode \"WEP\": Invalid argument"));
  EXPECT_EQ(configure("wlan0_1", "Home", "short", "PersonalWPA2"),
            Refusal("the passphrase has 5 characters, it must have 8 to 63, or 64 hexadecimal digits: "
                    "Invalid argument"));
}

}  // namespace

}  // namespace TALO::EndToEnd
