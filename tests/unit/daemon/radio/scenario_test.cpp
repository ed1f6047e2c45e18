#include "daemon/radio/simulated/scenario.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

const std::string kSource = TALOWIFI_SOURCE_DIR;

std::string SentenceOf(const std::string& text) {
  const auto scenario = ParseScenario(text);
  if (scenario.Succeeded()) {
    return "accepted";
  }
  EXPECT_EQ(ErrorCode::InvalidArgument, scenario.Why().code);
  return scenario.Why().sentence;
}

std::string NeighbourWith(const std::string& members) {
  return R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 6, "securityMode": "Disabled", )" +
         members + "}]}";
}

std::string DeviceWith(const std::string& members) {
  return R"({"devices": [{"address": "0a:00:00:00:00:01", )" + members + "}]}";
}

Scenario Shipped(const std::string& name) {
  auto scenario = LoadScenario(kSource + "/scenarios/" + name);
  EXPECT_TRUE(scenario.Succeeded()) << scenario.Why().sentence;
  return scenario.Succeeded() ? scenario.Value() : Scenario();
}

std::string ExampleOfTheDocument() {
  std::ifstream file(kSource + "/docs/scenarios.md");
  const std::string page{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const std::string opening = "```json\n";
  const std::size_t start = page.find(opening) + opening.size();
  return page.substr(start, page.find("```", start) - start);
}

}  // namespace

TEST(ScenarioTest, AnEmptyObjectIsTheDefaultScenario) {
  const auto scenario = ParseScenario("{}");
  ASSERT_TRUE(scenario.Succeeded());
  EXPECT_TRUE(Scenario() == scenario.Value());
  EXPECT_EQ((std::set<std::string>{"br-guest", "br0"}), scenario.Value().bridges);
}

TEST(ScenarioTest, TheExampleOfTheDocumentIsWhatItSays) {
  const auto scenario = ParseScenario(ExampleOfTheDocument());
  ASSERT_TRUE(scenario.Succeeded()) << scenario.Why().sentence;

  Scenario expected;
  expected.seed = 42;
  expected.bridges = {"br0", "br-guest"};
  AccessPoint neighbour;
  neighbour.ssid = std::string("\xff\x00\xfe\x57", 4);
  neighbour.bssid = MACAddress("06:00:00:00:00:01");
  neighbour.channel = 36;
  neighbour.channelWidth = 80;
  neighbour.signal = -71;
  neighbour.securityMode = SecurityMode::PersonalWPA2;
  neighbour.passphrase = "not-yours-at-all";
  expected.neighbours = {neighbour};
  Device device;
  device.address = MACAddress("0a:00:00:00:00:01");
  device.name = "phone";
  device.ipAddress = "192.168.1.11";
  device.knows = {{"Home", "correct-horse"}, {"Café", ""}};
  device.bands = {RadioFrequency::Band5GHz, RadioFrequency::Band2_4GHz};
  device.arrivesAt = 5;
  device.leavesAt = 3600;
  expected.devices = {device};
  expected.meshNodes = {{"AL100-0001", SupportedModel::Alder100}};
  expected.faults.apply = {{RadioFrequency::Band2_4GHz, 1, 1, "the firmware does not answer", std::nullopt}};
  expected.timings.scanMilliseconds = 1500;
  EXPECT_TRUE(expected == scenario.Value());
}

TEST(ScenarioTest, ReadsTheMembersThatTheExampleLacks) {
  const auto scenario = ParseScenario(R"({
    "neighbours": [{"ssid": "Campus", "hidden": true, "bssid": "06:00:00:00:00:02", "channel": 1, "wps": true,
                    "securityMode": "EnterpriseWPA2", "user": "student", "passphrase": "x", "backhaul": true,
                    "transmitRate": 54, "appearsAt": 1, "vanishesAt": 2}],
    "devices": [{"address": "0A-00-00-00-00-01", "signal": -1, "transmitRate": 2, "receiveRate": 3,
                 "joinMilliseconds": 0, "pressesAfter": 0, "roams": [{"at": 9, "radio": "Band5GHz_2"}],
                 "broadcastsPerSecond": 40}],
    "faults": {"apply": [{"radio": "Band5GHz", "milliseconds": 9000}],
               "scan": [{"radio": "Band5GHz_1", "skip": 2, "times": 3, "reason": "no antenna"}]},
    "timings": {"applyMilliseconds": 1, "bssMilliseconds": 2, "joinMilliseconds": 3,
                "joinSpreadMilliseconds": 4}
  })");
  ASSERT_TRUE(scenario.Succeeded()) << scenario.Why().sentence;

  Scenario expected;
  expected.neighbours = {{"Campus", true, MACAddress("06:00:00:00:00:02"), 1, 20, -65,
                          SecurityMode::EnterpriseWPA2, "student", "x", true, true, 54, 1, 2}};
  Device device;
  device.address = MACAddress("0a:00:00:00:00:01");
  device.signal = -1;
  device.transmitRate = 2;
  device.receiveRate = 3;
  device.joinMilliseconds = 0;
  device.pressesAfter = 0;
  device.roams = {{9, RadioFrequency::Band5GHz_2}};
  device.broadcastsPerSecond = 40;
  expected.devices = {device};
  expected.faults.apply = {{RadioFrequency::Band5GHz, 0, 1, "", 9000}};
  expected.faults.scan = {{RadioFrequency::Band5GHz_1, 2, 3, "no antenna"}};
  expected.timings = {1, 2, 800, 3, 4};
  EXPECT_TRUE(expected == scenario.Value());
}

TEST(ScenarioTest, AcceptsValuesAtTheirLimits) {
  const std::vector<std::string> texts = {
      NeighbourWith(R"("signal": -100)"),
      NeighbourWith(R"("signal": -1)"),
      NeighbourWith(R"("channelWidth": 160)"),
      NeighbourWith(R"("appearsAt": 0, "vanishesAt": 1)"),
      DeviceWith(R"("signal": -100)"),
      DeviceWith(R"("arrivesAt": 3, "leavesAt": 4)"),
      DeviceWith(R"("knows": [{"ssid": "12345678901234567890123456789012", "passphrase": "12345678"}])"),
      DeviceWith(R"("bands": ["Band2_4GHz"])"),
      DeviceWith(R"("broadcastsPerSecond": 0)"),
      DeviceWith(R"("broadcastsPerSecond": 10000)"),
      R"({"bridges": []})",
      R"({"timings": {"applyMilliseconds": 0, "bssMilliseconds": 0, "scanMilliseconds": 0, "joinMilliseconds": 0}})",
  };
  for (const std::string& text : texts) {
    EXPECT_EQ("accepted", SentenceOf(text)) << text;
  }
}

TEST(ScenarioTest, RefusesWhatCannotBeAndNamesTheMember) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "it is not JSON (line 1, column 1)"},
      {"[]", "it is not an object"},
      {R"({"colour": 1})", "colour is unknown"},
      {R"({"bridges": ["br0", "br0"]})", "bridges[1] is listed twice"},
      {R"({"bridges": [""]})", "bridges holds an empty name"},
      {R"({"devices": [{}]})", "devices[0].address is missing or all zero"},
      {R"({"devices": [{"adress": "0a:00:00:00:00:01"}]})", "devices[0].adress is unknown"},
      {R"({"devices": [{"address": "phone"}]})", "devices[0].address is not a MAC address"},
      {R"({"devices": [{"address": "0b:00:00:00:00:01"}]})", "devices[0].address is a group address"},
      {R"({"devices": [{"address": "0a:00:00:00:00:01"}, {"address": "0a-00-00-00-00-01"}]})",
       "devices[1].address is used twice"},
      {DeviceWith(R"("knows": [{"ssid": ""}])"),
       R"(devices[0].knows[0].ssid: the SSID "" has 0 bytes, it must have 1 to 32)"},
      {DeviceWith(R"("knows": [{"ssid": "a"}, {"ssid": "b", "passphrase": "1234567"}])"),
       "devices[0].knows[1].passphrase: the passphrase has 7 characters, it must have 8 to 63, or 64 "
       "hexadecimal digits"},
      {DeviceWith(R"("bands": [])"), "devices[0].bands is empty"},
      {DeviceWith(R"("bands": ["Band5GHz", "Band5GHz_1"])"),
       "devices[0].bands[1] is neither Band2_4GHz nor Band5GHz"},
      {DeviceWith(R"("bands": ["Band5GHz", "Band5GHz"])"), "devices[0].bands[1] is listed twice"},
      {DeviceWith(R"("signal": -101)"), "devices[0].signal is not from -100 to -1"},
      {DeviceWith(R"("signal": 0)"), "devices[0].signal is not from -100 to -1"},
      {DeviceWith(R"("transmitRate": -1)"), "devices[0].transmitRate is negative"},
      {DeviceWith(R"("receiveRate": -1)"), "devices[0].receiveRate is negative"},
      {DeviceWith(R"("joinMilliseconds": -1)"), "devices[0].joinMilliseconds is negative"},
      {DeviceWith(R"("arrivesAt": -1)"), "devices[0].arrivesAt is negative"},
      {DeviceWith(R"("arrivesAt": 3, "leavesAt": 3)"), "devices[0].leavesAt is not after arrivesAt"},
      {DeviceWith(R"("pressesAfter": -1)"), "devices[0].pressesAfter is negative"},
      {DeviceWith(R"("roams": [{"radio": "Band5GHz", "at": -1}])"), "devices[0].roams[0].at is negative"},
      {DeviceWith(R"("roams": [{"at": 1}])"), "devices[0].roams[0].radio is missing or no single radio"},
      {DeviceWith(R"("roams": [{"radio": "SmartConnect"}])"),
       "devices[0].roams[0].radio is missing or no single radio"},
      {DeviceWith(R"("broadcastsPerSecond": -1)"), "devices[0].broadcastsPerSecond is not from 0 to 10000"},
      {DeviceWith(R"("broadcastsPerSecond": 10001)"),
       "devices[0].broadcastsPerSecond is not from 0 to 10000"},
      {DeviceWith(R"("broadcastsPerSecond": "many")"),
       "devices[0].broadcastsPerSecond is not a whole number in range"},
      {NeighbourWith(R"("ssidHex": "61")"), "neighbours[0].ssidHex and ssid exclude each other"},
      {R"({"neighbours": [{"bssid": "06:00:00:00:00:01"}]})",
       R"(neighbours[0].ssid: the SSID "" has 0 bytes, it must have 1 to 32)"},
      {R"({"neighbours": [{"ssid": "a"}]})", "neighbours[0].bssid is missing or all zero"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01"}]})",
       "neighbours[0].channel is not a channel of 2.4 or 5 GHz"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 14}]})",
       "neighbours[0].channel is not a channel of 2.4 or 5 GHz"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 38}]})",
       "neighbours[0].channel is not a channel of 2.4 or 5 GHz"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 6}]})",
       "neighbours[0].passphrase: the passphrase has 0 characters, it must have 8 to 63, or 64 hexadecimal "
       "digits"},
      {NeighbourWith(R"("channelWidth": 60)"), "neighbours[0].channelWidth is none of 20, 40, 80 and 160"},
      {NeighbourWith(R"("signal": -101)"), "neighbours[0].signal is not from -100 to -1"},
      {NeighbourWith(R"("passphrase": "12345678")"), "neighbours[0].passphrase is of no use with Disabled"},
      {NeighbourWith(R"("user": "a")"), "neighbours[0].user is for enterprise modes"},
      {NeighbourWith(R"("transmitRate": -1)"), "neighbours[0].transmitRate is negative"},
      {NeighbourWith(R"("appearsAt": -1)"), "neighbours[0].appearsAt is negative"},
      {NeighbourWith(R"("appearsAt": 1, "vanishesAt": 1)"),
       "neighbours[0].vanishesAt is not after appearsAt"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 6, "securityMode": "Error"}]})",
       "neighbours[0].securityMode is no security mode"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 6,
           "securityMode": "EnterpriseWPA2", "passphrase": "x"}]})",
       "neighbours[0].user is missing"},
      {R"({"neighbours": [{"ssid": "a", "bssid": "06:00:00:00:00:01", "channel": 6,
           "securityMode": "EnterpriseWPA2", "user": "x"}]})",
       "neighbours[0].passphrase is missing"},
      {R"({"meshNodes": [{"model": "Dune40"}]})", "meshNodes[0].serial is missing"},
      {R"({"meshNodes": [{"serial": "1"}]})", "meshNodes[0].model is missing or no model"},
      {R"({"meshNodes": [{"serial": "1", "model": "Dune40"}, {"serial": "1", "model": "Dune40"}]})",
       "meshNodes[1].serial is used twice"},
      {R"({"faults": {"apply": [{"reason": "x"}]}})", "faults.apply[0].radio is missing or no single radio"},
      {R"({"faults": {"apply": [{"radio": "Band5GHz"}]}})",
       "faults.apply[0] has neither reason nor milliseconds"},
      {R"({"faults": {"apply": [{"radio": "Band5GHz", "milliseconds": -1}]}})",
       "faults.apply[0].milliseconds is negative"},
      {R"({"faults": {"apply": [{"radio": "Band5GHz", "reason": "a\nb"}]}})",
       "faults.apply[0].reason is more than one line of text"},
      {R"({"faults": {"scan": [{"radio": "Band5GHz"}]}})", "faults.scan[0].reason is missing"},
      {R"({"faults": {"scan": [{"radio": "Band5GHz", "reason": "x", "times": 0}]}})",
       "faults.scan[0].times is less than 1"},
      {R"({"faults": {"scan": [{"radio": "Band5GHz", "reason": "x", "skip": -1}]}})",
       "faults.scan[0].skip is negative"},
      {R"({"timings": {"applyMilliseconds": -1}})", "timings.applyMilliseconds is negative"},
      {R"({"timings": {"bssMilliseconds": -1}})", "timings.bssMilliseconds is negative"},
      {R"({"timings": {"scanMilliseconds": -1}})", "timings.scanMilliseconds is negative"},
      {R"({"timings": {"joinMilliseconds": -1}})", "timings.joinMilliseconds is negative"},
      {R"({"timings": {"joinSpreadMilliseconds": -1}})", "timings.joinSpreadMilliseconds is negative"},
  };
  for (const auto& [text, sentence] : cases) {
    EXPECT_EQ(sentence, SentenceOf(text)) << text;
  }
}

TEST(ScenarioTest, NoPassphraseIsInASentence) {
  const std::string sentence = SentenceOf(DeviceWith(R"("knows": [{"ssid": "a", "passphrase": "secret"}])"));
  EXPECT_EQ(std::string::npos, sentence.find("secret")) << sentence;
}

TEST(ScenarioTest, AFileThatCannotBeReadIsNotFound) {
  const auto scenario = LoadScenario("/nowhere/scenario.json");
  ASSERT_FALSE(scenario.Succeeded());
  EXPECT_EQ((Refusal{ErrorCode::NotFound,
                     "the scenario /nowhere/scenario.json cannot be read: No such file or directory"}),
            scenario.Why());
  EXPECT_EQ((Refusal{ErrorCode::NotFound, "the scenario /tmp cannot be read: Is a directory"}),
            LoadScenario("/tmp").Why());
}

TEST(ScenarioTest, AMistakeInAFileIsToldWithTheFilesName) {
  const std::string path = testing::TempDir() + "scenario_test_mistake.json";
  std::ofstream(path) << R"({"seed": "one"})";
  const auto scenario = LoadScenario(path);
  ASSERT_FALSE(scenario.Succeeded());
  EXPECT_EQ(
      (Refusal{ErrorCode::InvalidArgument, "the scenario " + path + ": seed is not a whole number in range"}),
      scenario.Why());
}

TEST(ShippedScenarioTest, TheHomeHasDevicesThatKnowItsNetworksAndOneThatIsWrong) {
  const Scenario scenario = Shipped("home-router.json");
  const auto knowing = [&scenario](const Credential& credential) {
    return std::ranges::count_if(scenario.devices, [&credential](const Device& device) {
      return std::ranges::find(device.knows, credential) != device.knows.end();
    });
  };
  EXPECT_EQ(4, knowing({"Home", "correct-horse"}));
  EXPECT_EQ(3, knowing({"Guest", "welcome-guest"}));
  EXPECT_EQ(1, knowing({"Home", "wrong-horse"}));
  EXPECT_EQ(1, std::ranges::count_if(scenario.devices,
                                     [](const Device& device) { return device.pressesAfter.has_value(); }));
  EXPECT_EQ(3, std::ranges::count_if(scenario.neighbours, [](const AccessPoint& neighbour) {
              return neighbour.ssid == "Uplink" && neighbour.passphrase == "uplink-password";
            }));
}

TEST(ShippedScenarioTest, TheMeshHasAParentAndABetterOneLater) {
  const Scenario scenario = Shipped("mesh-repeater.json");
  std::vector<std::pair<int, int>> parents;
  for (const AccessPoint& neighbour : scenario.neighbours) {
    if (neighbour.backhaul) {
      EXPECT_EQ("Mesh", neighbour.ssid);
      EXPECT_EQ("mesh-backhaul", neighbour.passphrase);
      parents.emplace_back(neighbour.appearsAt, neighbour.signal);
    }
  }
  EXPECT_EQ((std::vector<std::pair<int, int>>{{0, -72}, {0, -72}, {60, -55}, {60, -55}}), parents);
  EXPECT_EQ((std::vector<MeshNode>{{"AL100-0001", SupportedModel::Alder100},
                                   {"CE300-0002", SupportedModel::Cedar300},
                                   {"DU040-0003", SupportedModel::Dune40}}),
            scenario.meshNodes);
}

TEST(ShippedScenarioTest, TheCrowdIsThere) {
  const Scenario scenario = Shipped("crowded-building.json");
  EXPECT_EQ(200U, scenario.neighbours.size());
  EXPECT_EQ(128U, scenario.devices.size());
  for (const Device& device : scenario.devices) {
    EXPECT_EQ((std::vector<Credential>{{"Home", "correct-horse"}}), device.knows);
  }
}

}  // namespace TALO::Wifid
