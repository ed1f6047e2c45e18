// While an operation takes its time, others are answered.

#include "support/bus_monitor.h"
#include "support/story_test.h"

#include <csignal>

namespace TALO::EndToEnd {

namespace {

class SlowOperationsStory : public StoryTest {
 protected:
  /// Runs the others while the slow command, whose call is `member`, is under way, and ends that then.
  template <typename Others>
  void During(const Words& slow, const std::string& member, Others others) {
    BusMonitor monitor(Address());
    Process tool(ToolProcess(Address(), slow));
    monitor.WaitForCall(member);
    others();
    EXPECT_FALSE(tool.HasEnded());
    tool.SendSignal(SIGKILL);
    EXPECT_EQ(tool.Wait(), -SIGKILL);
  }
};

TEST_F(SlowOperationsStory, QuestionsAreAnsweredDuringAScan) {
  StartStory("", {"--model", "Cedar300"}, R"("scanMilliseconds": 60000)");
  CreateNetwork("Home", 1);
  During({"getScanResults", "--radio", "Band2_4GHz"}, "GetScanResults", [this] {
    ExpectNow({"isAllNetworkAPDisabled"}, "0\n");
    ExpectNow({"getDevices"}, "[]\n\n");
    ExpectNow({"getCountryCode"}, "DE\n");
  });
}

TEST_F(SlowOperationsStory, ChangesOfOtherRadiosAreMadeDuringAScan) {
  StartStory("", {"--model", "Cedar300"}, R"("scanMilliseconds": 60000)");
  During({"getScanResults", "--radio", "Band2_4GHz"}, "GetScanResults", [this] {
    Do({"modifyStation", "--enable", "0", "--radio", "Band5GHz", "--essid", "Uplink", "--user", "",
        "--password", "uplink-password", "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"});
    const std::string stations = RunTool({"getStations"}).output;
    EXPECT_NE(stations.find("\"essid\" : \"Uplink\""), std::string::npos) << stations;
  });
}

// The first plan of the radio is that of the start, the second that of Home.
TEST_F(SlowOperationsStory, QuestionsAreAnsweredDuringARestart) {
  StartStory(R"("faults": {"apply": [{"radio": "Band5GHz", "skip": 2, "milliseconds": 60000}]})");
  CreateNetwork("Home", 1);
  During({"restartNetworks", "--force", "1"}, "RestartNetworks", [this] {
    ExpectNow({"getNetworkInterfaces"},
              "ID: 1, Interface: \n"
              "\twlan0_1\n\twlan1_1\n"
              "\n");
    ExpectNow({"getCountryCode"}, "DE\n");
    ExpectNow({"getMACFilterProfiles"}, "[]\n\n");
  });
}

// A change of every radio, too: who joins keeps no radio from others.
TEST_F(SlowOperationsStory, EverybodyIsAnsweredDuringAJoin) {
  StartStory(R"("neighbours": [{"ssid": "Uplink", "bssid": "06:10:00:00:00:01", "channel": 6,
                                "passphrase": "uplink-password"}])",
             {"--model", "Cedar300"}, R"("joinMilliseconds": 600000)");
  const auto isConnecting = [](const std::string& statuses) {
    return statuses.find(
               "\"radio\" : \"Band2_4GHz\",\n\t\t\"reason\" : \"\",\n\t\t\"signal\" : 0,\n"
               "\t\t\"state\" : \"connecting\",\n") != std::string::npos;
  };
  Do({"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", "Uplink", "--user", "",
      "--password", "uplink-password", "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"});
  EXPECT_PRED1(isConnecting, RunToolUntil({"getStationStatuses"}, isConnecting).output);
  ExpectNow({"getDevices"}, "[]\n\n");
  CreateNetwork("Home", 1);
  Do({"setCountryCode", "--country", "FR"});
  Do({"restartNetworks", "--force", "0"});
  EXPECT_PRED1(isConnecting, RunTool({"getStationStatuses"}).output);
}

}  // namespace

}  // namespace TALO::EndToEnd
