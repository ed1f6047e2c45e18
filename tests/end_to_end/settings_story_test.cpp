// Every setting is there again after the daemon was killed.

#include "support/story_test.h"

#include <csignal>

namespace TALO::EndToEnd {

namespace {

class SettingsStory : public StoryTest {
 protected:
  /// Everything that is remembered, as the tool prints it.
  std::string Picture() {
    std::string picture;
    for (const char* word :
         {"getNetworks", "getRadios", "getStations", "getBackhaul", "getBackhaulSTA", "isBackhaulBandSwapped",
          "getRadioConversionInfo", "getMACFilterGlobal", "getMACFilterProfiles", "getScheduleStatus",
          "getCountryCode", "getContext", "getActivateIdsForTopo", "getRadioIfStatuses"}) {
      const ToolRun run = RunTool({word});
      EXPECT_EQ(run.status, 0) << word;
      picture += word + ("\n" + run.output);
    }
    return picture;
  }
};

TEST_F(SettingsStory, EverySettingSurvivesADaemonThatIsKilled) {
  StartStory("", {"--model", "Alder100"});
  std::string before = Picture();
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  // Each of them shows.
  for (const Words& words : std::vector<Words>{
           {"rotatePassword", "--id", "1", "--radio", "Band5GHz_2"},
           {"activate", "--id", "2", "--bridge", "br-guest"},
           {"deactivate", "--id", "1"},
           {"setContext", "--context", "holidays"},
           {"setCountryCode", "--country", "FR"},
           {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "9", "--devices"},
           {"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", "Uplink", "--user", "",
            "--password", "uplink-password", "--bssid", "00:00:00:00:00:00", "--securityMode",
            "PersonalWPA2"},
           {"modifyBackhaul", "--enable", "1", "--ssid", "Hall", "--password", "mesh-backhaul"},
           {"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"},
           {"swapBackhaulBand", "--enable", "1"},
           {"modifyMeshInfo", "--models", "Alder100", "--isRepeater", "0"},
       }) {
    Do(words);
    const std::string after = Picture();
    EXPECT_TRUE(after != before) << words.at(0);
    before = after;
  }
  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "guests", "--action", "Deny", "--applyToAll", "1",
                     "--devices", "Phone", "0a:00:00:00:00:01"}),
            Success("ID: 1\n"));
  Call<&Wifi::WifiClient::SetSchedule>(Wifi::NetworkSchedule{
      2, Wifi::Util::RadioFrequency::SmartConnect, Wifi::Util::ScheduleMode::Customized, 0, {{0, 10080}}});
  EXPECT_NE(RunTool({"getScheduleStatus"}).output, "");
  before = Picture();
  EXPECT_EQ(Daemon().Terminate(SIGKILL), -SIGKILL);
  StartStory("", {"--model", "Alder100"});
  EXPECT_EQ(Picture(), before);
}

}  // namespace

}  // namespace TALO::EndToEnd
