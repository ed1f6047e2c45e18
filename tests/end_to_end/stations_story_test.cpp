// Scans, and the stations with which the router joins access points of others.

#include "support/story_test.h"

#include <chrono>

namespace TALO::EndToEnd {

namespace {

const char* kNeighbours = R"("neighbours": [
  {"ssid": "Miller", "bssid": "06:20:00:00:00:01", "channel": 1, "signal": -71, "securityMode": "PersonalWPA2",
   "passphrase": "millers-secret"},
  {"ssid": "Uplink", "bssid": "06:10:00:00:00:01", "channel": 6, "signal": -58, "passphrase": "uplink-password",
   "wps": true, "transmitRate": 144},
  {"ssid": "office", "hidden": true, "bssid": "06:20:00:00:00:05", "channel": 100, "channelWidth": 40,
   "signal": -74, "securityMode": "PersonalWPA3", "passphrase": "office-secret"}])";

class StationsStory : public StoryTest {
 protected:
  ToolRun ModifyStation(const std::string& enable, const std::string& essid, const std::string& password,
                        const std::string& bssid = "00:00:00:00:00:00",
                        const std::string& mode = "PersonalWPA2", const std::string& radio = "Band2_4GHz",
                        const std::string& user = "") {
    return RunTool({"modifyStation", "--enable", enable, "--radio", radio, "--essid", essid, "--user", user,
                    "--password", password, "--bssid", bssid, "--securityMode", mode});
  }

  /// Waits until getStationStatuses shows this for 2.4 GHz, with the other station disabled.
  void ExpectStatusInTheEnd(const std::string& status) {
    ExpectInTheEnd({"getStationStatuses"}, Printed("\n[\n" + status + R"(  {
    "bssid" : "00:00:00:00:00:00",
    "channel" : 0,
    "connected" : false,
    "connectedTime" : TIME,
    "essid" : "",
    "essidHex" : "",
    "interface" : "wlan1sta",
    "radio" : "Band5GHz",
    "reason" : "",
    "signal" : 0,
    "state" : "disabled",
    "transmitRate" : 0
  }
]
)"));
  }

  static std::string NotConnected(const std::string& state, const std::string& reason,
                                  const std::string& essid, const std::string& essidHex) {
    return R"(  {
    "bssid" : "00:00:00:00:00:00",
    "channel" : 0,
    "connected" : false,
    "connectedTime" : TIME,
    "essid" : ")" +
           essid + R"(",
    "essidHex" : ")" +
           essidHex + R"(",
    "interface" : "wlan0sta",
    "radio" : "Band2_4GHz",
    "reason" : ")" +
           reason + R"(",
    "signal" : 0,
    "state" : ")" +
           state + R"(",
    "transmitRate" : 0
  },
)";
  }
};

const char* kConnected = R"(  {
    "bssid" : "06:10:00:00:00:01",
    "channel" : 6,
    "connected" : true,
    "connectedTime" : TIME,
    "essid" : "Uplink",
    "essidHex" : "55706c696e6b",
    "interface" : "wlan0sta",
    "radio" : "Band2_4GHz",
    "reason" : "",
    "signal" : -58,
    "state" : "connected",
    "transmitRate" : 144
  },
)";

TEST_F(StationsStory, AScanListsTheNeighboursThatTheRadioHearsTheStrongestFirst) {
  StartStory(kNeighbours);
  ExpectNow({"getScanResults", "--radio", "Band2_4GHz"}, Printed(R"(
[
  {
    "age" : TIME,
    "bssid" : "06:10:00:00:00:01",
    "channel" : 6,
    "channelWidth" : 20,
    "radio" : "Band2_4GHz",
    "securityMode" : "PersonalWPA2",
    "signal" : -58,
    "ssid" : "Uplink",
    "ssidHex" : "55706c696e6b",
    "wps" : true
  },
  {
    "age" : TIME,
    "bssid" : "06:20:00:00:00:01",
    "channel" : 1,
    "channelWidth" : 20,
    "radio" : "Band2_4GHz",
    "securityMode" : "PersonalWPA2",
    "signal" : -71,
    "ssid" : "Miller",
    "ssidHex" : "4d696c6c6572",
    "wps" : false
  }
]
)"));
  ExpectNow({"getScanResults", "--radio", "Band5GHz"}, Printed(R"(
[
  {
    "age" : TIME,
    "bssid" : "06:20:00:00:00:05",
    "channel" : 100,
    "channelWidth" : 40,
    "radio" : "Band5GHz",
    "securityMode" : "PersonalWPA3",
    "signal" : -74,
    "ssid" : "",
    "ssidHex" : "",
    "wps" : false
  }
]
)"));
}

TEST_F(StationsStory, AScanOfAllRadiosListsThoseOfEach) {
  StartStory(kNeighbours);
  const std::string output = RunTool({"getScanResults", "--radio", "SmartConnect"}).output;
  const std::size_t uplink = output.find("06:10:00:00:00:01");
  const std::size_t miller = output.find("06:20:00:00:00:01");
  const std::size_t office = output.find("06:20:00:00:00:05");
  ASSERT_NE(office, std::string::npos) << output;
  EXPECT_LT(uplink, miller);
  EXPECT_LT(miller, office);
}

TEST_F(StationsStory, AScanOfNothingIsRefused) {
  StartStory(R"("faults": {"scan": [{"radio": "Band5GHz", "reason": "the antenna is off"}]})");
  EXPECT_EQ(RunTool({"getScanResults", "--radio", "Error"}),
            Refusal("the radio Error does not exist: Invalid argument"));
  EXPECT_EQ(RunTool({"getScanResults", "--radio", "Band5GHz"}),
            Refusal("the radio Band5GHz cannot listen: the antenna is off: Radio failed"));
  ExpectNow({"getScanResults", "--radio", "Band5GHz"}, "[]\n\n");
}

TEST_F(StationsStory, AStationJoinsWhatItIsToldToAndLeavesWhenItIsDisabled) {
  StartStory(kNeighbours);
  ExpectNow({"getStationInterfaces"},
            "Interfaces: \n"
            "\t Band2_4GHz : wlan0sta\n"
            "\t Band5GHz : wlan1sta\n"
            "\n");
  ExpectStatusInTheEnd(NotConnected("disabled", "", "", ""));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password"), Success());
  ExpectStatusInTheEnd(kConnected);
  ExpectNow({"getStations"}, Printed(R"(
[
  {
    "bssid" : "00:00:00:00:00:00",
    "enable" : true,
    "essid" : "Uplink",
    "essidHex" : "55706c696e6b",
    "password" : "uplink-password",
    "radio" : "Band2_4GHz",
    "securityMode" : "PersonalWPA2",
    "user" : "",
    "userHex" : ""
  },
  {
    "bssid" : "00:00:00:00:00:00",
    "enable" : false,
    "essid" : "",
    "essidHex" : "",
    "password" : "",
    "radio" : "Band5GHz",
    "securityMode" : "Disabled",
    "user" : "",
    "userHex" : ""
  }
]
)"));
  EXPECT_EQ(ModifyStation("0", "Uplink", "uplink-password"), Success());
  ExpectStatusInTheEnd(NotConnected("disabled", "", "", ""));
}

TEST_F(StationsStory, AStationTellsWhyItDoesNotJoin) {
  StartStory(kNeighbours);
  EXPECT_EQ(ModifyStation("1", "Uplink", "not-the-password"), Success());
  ExpectStatusInTheEnd(NotConnected("failed", "wrong password", "Uplink", "55706c696e6b"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", "06:10:00:00:00:09"), Success());
  ExpectStatusInTheEnd(NotConnected("failed", "no such access point", "Uplink", "55706c696e6b"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "", "00:00:00:00:00:00", "OWE"), Success());
  ExpectStatusInTheEnd(NotConnected("failed", "security mode differs", "Uplink", "55706c696e6b"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password"), Success());
  ExpectStatusInTheEnd(kConnected);
}

TEST_F(StationsStory, AStationThatReconnectsIsConnectedAnew) {
  StartStory(kNeighbours);
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password"), Success());
  ExpectStatusInTheEnd(kConnected);
  const auto connectedTime = [this] {
    return Call<&Wifi::WifiClient::GetStationStatuses>().at(0).connectedTime;
  };
  RunToolUntil({"getStationStatuses"}, [&](const std::string&) { return connectedTime() >= 2; });
  EXPECT_GE(connectedTime(), 2);
  const auto start = std::chrono::steady_clock::now();
  Do({"reconnectAllSTA"});
  const int connected = connectedTime();
  // One that had gone on would be two seconds older.
  EXPECT_LE(connected,
            std::chrono::ceil<std::chrono::seconds>(std::chrono::steady_clock::now() - start).count());
  ExpectStatusInTheEnd(kConnected);
}

TEST_F(StationsStory, ANetworksDevicesDoNotNoticeAStation) {
  StartStory(std::string(kNeighbours) + R"(, "devices": [
    {"address": "0a:00:00:00:00:01", "bands": ["Band2_4GHz"],
     "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]}])");
  SignalLog signals(Address());
  CreateNetwork("Home", 1);
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan0_1");
  const auto before = signals.Get();
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password"), Success());
  ExpectStatusInTheEnd(kConnected);
  EXPECT_EQ(signals.Get(), before);
}

TEST_F(StationsStory, BadSettingsAreRefusedAndChangeNothing) {
  StartStory(kNeighbours);
  const std::string before = RunTool({"getStations"}).output;
  const std::string any = "00:00:00:00:00:00";
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", any, "PersonalWPA2", "SmartConnect"),
            Refusal("this router has no radio SmartConnect for a station: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "", "uplink-password"),
            Refusal("the essid \"\" has 0 bytes, it must have 1 to 32: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "short"),
            Refusal("the passphrase has 5 characters, it must have 8 to 63, or 64 hexadecimal digits: "
                    "Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "", any, "WEP"),
            Refusal("a station cannot use the security mode WEP: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", any, "OWE"),
            Refusal("the security mode OWE takes no password: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", any, "PersonalWPA2", "Band2_4GHz", "guest"),
            Refusal("the user \"guest\" is for enterprise modes, not for PersonalWPA2: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", any, "EnterpriseWPA2"),
            Refusal("the security mode EnterpriseWPA2 needs a user and a password: Invalid argument"));
  EXPECT_EQ(ModifyStation("1", "Uplink", "uplink-password", "01:00:00:00:00:00"),
            Refusal("the BSSID 01:00:00:00:00:00 is a group address: Invalid argument"));
  ExpectNow({"getStations"}, before);
}

}  // namespace

}  // namespace TALO::EndToEnd
