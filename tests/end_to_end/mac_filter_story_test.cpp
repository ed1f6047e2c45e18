// What MAC filters do to networks and the devices on them.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

const char* kNoRecords = "[]\n\n";

/// A dual-band router with the network Home, a phone that is on it and a laptop that is, too.
class MACFilterStory : public StoryTest {
 protected:
  MACFilterStory() {
    StartStory(R"("devices": [
      {"address": "0a:00:00:00:00:01", "name": "phone", "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]},
      {"address": "0a:00:00:00:00:02", "name": "laptop", "bands": ["Band2_4GHz"],
       "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]}])");
    CreateNetwork("Home", 1);
    ExpectDevicesInTheEnd({"laptop", "phone"});
  }

  /// Waits until just these are connected, the 2.4 GHz ones first.
  void ExpectDevicesInTheEnd(const std::vector<std::string>& names) {
    const auto connected = [](const std::string& output) {
      std::vector<std::string> found;
      const std::string key = "\"name\" : \"";
      for (std::size_t at = output.find(key); at != std::string::npos; at = output.find(key, at)) {
        at += key.size();
        found.push_back(output.substr(at, output.find('"', at) - at));
      }
      return found;
    };
    const ToolRun run =
        RunToolUntil({"getDevices"}, [&](const std::string& output) { return connected(output) == names; });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(connected(run.output), names);
  }

  /// The line of a network in getNetworks.
  void ExpectProfileOfNetwork(const std::string& id, const std::string& name) {
    const std::string output = RunTool({"getNetworks"}).output;
    EXPECT_NE(output.find("\t\t\"macFilterProfileId\" : " + id +
                          ",\n"
                          "\t\t\"macFilterProfileName\" : \"" +
                          name + "\",\n"),
              std::string::npos)
        << output;
  }
};

TEST_F(MACFilterStory, ADenyingProfileDropsADeviceUntilItIsDeleted) {
  ExpectNow({"getMACFilterProfiles"}, kNoRecords);
  ExpectProfileOfNetwork("-1", "");
  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "at night", "--action", "Deny", "--devices", "Phone",
                     "0a:00:00:00:00:01", "--applyToAll", "1"}),
            Success("ID: 1\n"));
  ExpectDevicesInTheEnd({"laptop"});
  ExpectNow({"getMACFilterProfiles"}, Printed(R"(
[
  {
    "action" : "Deny",
    "devices" :
    [
      {
        "address" : "0a:00:00:00:00:01",
        "name" : "Phone"
      }
    ],
    "id" : 1,
    "name" : "at night"
  }
]
)"));
  ExpectProfileOfNetwork("1", "at night");

  Do({"deleteMACFilterProfile", "--id", "1"});
  ExpectDevicesInTheEnd({"laptop", "phone"});
  ExpectNow({"getMACFilterProfiles"}, kNoRecords);
  ExpectProfileOfNetwork("-1", "");
}

TEST_F(MACFilterStory, AProfileTakesEffectWhenItIsModified) {
  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "guests", "--action", "Allow", "--applyToAll", "1",
                     "--devices", "Laptop", "0a:00:00:00:00:02"}),
            Success("ID: 1\n"));
  ExpectDevicesInTheEnd({"laptop"});
  Do({"modifyMACFilterProfile", "--id", "1", "--name", "family", "--action", "Deny", "--devices", "Laptop",
      "0a:00:00:00:00:02"});
  ExpectDevicesInTheEnd({"phone"});
  ExpectProfileOfNetwork("1", "family");
  Do({"modifyMACFilterProfile", "--id", "1", "--name", "family", "--action", "Deny", "--devices"});
  ExpectDevicesInTheEnd({"laptop", "phone"});
  Do({"modifyMACFilterProfile", "--id", "1", "--name", "family", "--action", "Allow", "--devices"});
  ExpectDevicesInTheEnd({});
}

TEST_F(MACFilterStory, AProfileThatIsNotAppliedWaitsUntilANetworkUsesIt) {
  SignalLog signals(Address());
  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "guests", "--action", "Deny", "--applyToAll", "0",
                     "--devices", "Phone", "0a:00:00:00:00:01"}),
            Success("ID: 1\n"));
  ExpectProfileOfNetwork("-1", "");
  ExpectDevicesInTheEnd({"laptop", "phone"});

  Call<&Wifi::WifiClient::AssignMACFilterProfile>(1, 1);
  signals.WaitFor("StationDisconnected 0a:00:00:00:00:01 1 wlan1_1 refused");
  ExpectDevicesInTheEnd({"laptop"});
  ExpectProfileOfNetwork("1", "guests");
  Call<&Wifi::WifiClient::AssignMACFilterProfile>(1, -1);
  ExpectDevicesInTheEnd({"laptop", "phone"});
  ExpectCallRefused<&Wifi::WifiClient::AssignMACFilterProfile>("NotFound", "there is no network 7", 7, 1);
  ExpectCallRefused<&Wifi::WifiClient::AssignMACFilterProfile>("NotFound", "there is no MAC filter profile 7",
                                                               1, 7);
}

TEST_F(MACFilterStory, BadProfilesAreRefusedAndChangeNothing) {
  const auto create = [this](const std::string& name, const std::string& action, const Words& devices) {
    Words words = {
        "createMACFilterProfile", "--name=" + name, "--action", action, "--applyToAll", "1", "--devices"};
    words.insert(words.end(), devices.begin(), devices.end());
    return RunTool(words);
  };
  const Words twice = {"Phone", "0a:00:00:00:00:01", "Again", "0A:00:00:00:00:01"};
  const std::string longName(65, 'n');
  EXPECT_EQ(create(longName, "Deny", {}), Refusal("the MAC filter profile name \"" + longName +
                                                  "\" has 65 bytes, it must have 1 to 64: Invalid argument"));
  EXPECT_EQ(create("guests", "Error", {}),
            Refusal("the MAC filter action Error does not exist: Invalid argument"));
  EXPECT_EQ(create("guests", "Deny", twice),
            Refusal("the MAC filter profile \"guests\" lists the MAC address "
                    "0a:00:00:00:00:01 twice: Invalid argument"));
  EXPECT_EQ(create("guests", "Deny", {longName, "0a:00:00:00:00:01"}),
            Refusal("the name \"" + longName +
                    "\" of the device 0a:00:00:00:00:01 has 65 bytes, it must have at most 64: "
                    "Invalid argument"));
  EXPECT_EQ(
      RunTool({"modifyMACFilterProfile", "--id", "1", "--name", "guests", "--action", "Deny", "--devices"}),
      Refusal("there is no MAC filter profile 1: Not found"));
  EXPECT_EQ(RunTool({"deleteMACFilterProfile", "--id", "1"}),
            Refusal("there is no MAC filter profile 1: Not found"));
  ExpectNow({"getMACFilterProfiles"}, kNoRecords);
  ExpectDevicesInTheEnd({"laptop", "phone"});
}

const char* kNoLimit = R"(
{
  "devices" : [],
  "enablePreventBroadcast" : false,
  "maximumBroadcast" : 0
}
)";

TEST_F(MACFilterStory, TheBroadcastLimitKeepsItsListWhenItIsSwitchedOff) {
  ExpectNow({"getMACFilterGlobal"}, Printed(kNoLimit));
  Do({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100", "--devices",
      "Phone", "0a:00:00:00:00:01"});
  const std::string list = R"(
{
  "devices" :
  [
    {
      "address" : "0a:00:00:00:00:01",
      "name" : "Phone"
    }
  ],
)";
  ExpectNow({"getMACFilterGlobal"}, Printed(list + R"(  "enablePreventBroadcast" : true,
  "maximumBroadcast" : 100
}
)"));
  Do({"setMACFilterGlobal", "--enablePreventBroadcast", "0", "--maximumBroadcast", "50", "--devices"});
  ExpectNow({"getMACFilterGlobal"}, Printed(list + R"(  "enablePreventBroadcast" : false,
  "maximumBroadcast" : 50
}
)"));
  ExpectDevicesInTheEnd({"laptop", "phone"});
}

TEST_F(MACFilterStory, ABadBroadcastLimitIsRefusedAndChangesNothing) {
  EXPECT_EQ(
      RunTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast=-1", "--devices"}),
      Refusal("the maximum of -1 broadcast frames a second is negative, it must be 0 or more: "
              "Invalid argument"));
  EXPECT_EQ(RunTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1",
                     "--devices", "A", "0a:00:00:00:00:01", "B", "0a:00:00:00:00:01"}),
            Refusal("the broadcast limit lists the MAC address 0a:00:00:00:00:01 twice: Invalid argument"));
  ExpectNow({"getMACFilterGlobal"}, Printed(kNoLimit));
}

}  // namespace

}  // namespace TALO::EndToEnd
