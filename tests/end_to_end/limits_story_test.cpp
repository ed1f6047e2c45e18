// How much of each there may be, and one more.

#include "support/story_test.h"

#include <algorithm>

namespace TALO::EndToEnd {

namespace {

class LimitsStory : public StoryTest {
 protected:
  LimitsStory() { StartStory(""); }

  /// The words for the devices 0a:00:00:00:00:00 and on.
  static Words Devices(int count) {
    const std::string digits = "0123456789abcdef";
    Words words;
    for (int i = 0; i < count; ++i) {
      std::string address = "0a:00:00:00:00:00";
      address[13] = digits[static_cast<std::size_t>(i / 256)];
      address[15] = digits[static_cast<std::size_t>(i / 16 % 16)];
      address[16] = digits[static_cast<std::size_t>(i % 16)];
      words.insert(words.end(), {"device", address});
    }
    return words;
  }

  ToolRun RunToolWithDevices(Words words, int count) {
    words.emplace_back("--devices");
    const Words devices = Devices(count);
    words.insert(words.end(), devices.begin(), devices.end());
    return RunTool(words);
  }

  /// How often a text stands in what a command prints.
  long CountIn(const Words& words, const std::string& text) {
    const std::string output = RunTool(words).output;
    long count = 0;
    for (std::size_t at = output.find(text); at != std::string::npos; at = output.find(text, at + 1)) {
      ++count;
    }
    return count;
  }
};

TEST_F(LimitsStory, ThereAre64MACFilterProfilesAndNoMore) {
  const auto create = [this](int number) {
    return RunTool({"createMACFilterProfile", "--name", "profile " + std::to_string(number), "--action",
                    "Deny", "--applyToAll", "0", "--devices"});
  };
  for (int id = 1; id <= 64; ++id) {
    ASSERT_EQ(create(id), Success("ID: " + std::to_string(id) + "\n"));
  }
  EXPECT_EQ(create(65), Refusal("there are 64 MAC filter profiles, no more are possible: Limit reached"));
  EXPECT_EQ(CountIn({"getMACFilterProfiles"}, "\"name\" : \"profile "), 64);
  // The refused one took no ID, and a deleted one leaves room.
  Do({"deleteMACFilterProfile", "--id", "7"});
  EXPECT_EQ(create(65), Success("ID: 65\n"));
  EXPECT_EQ(CountIn({"getMACFilterProfiles"}, "\"name\" : \"profile "), 64);
}

TEST_F(LimitsStory, AMACFilterProfileLists1024DevicesAndNoMore) {
  const auto profile = [](const char* command) {
    return Words{command, "--name", "all", "--action", "Deny"};
  };
  Words create = profile("createMACFilterProfile");
  create.insert(create.end(), {"--applyToAll", "0"});
  const ToolRun refusal =
      Refusal("the MAC filter profile \"all\" lists 1025 devices, it can hold 1024: Limit reached");
  EXPECT_EQ(RunToolWithDevices(create, 1025), refusal);
  ExpectNow({"getMACFilterProfiles"}, "[]\n\n");
  EXPECT_EQ(RunToolWithDevices(create, 1024), Success("ID: 1\n"));
  Words modify = profile("modifyMACFilterProfile");
  modify.insert(modify.end(), {"--id", "1"});
  EXPECT_EQ(RunToolWithDevices(modify, 1025), refusal);
  EXPECT_EQ(CountIn({"getMACFilterProfiles"}, "\"address\""), 1024);
  EXPECT_EQ(CountIn({"getMACFilterProfiles"}, "\"0a:00:00:00:03:ff\""), 1);
}

TEST_F(LimitsStory, TheBroadcastLimitLists1024DevicesAndNoMore) {
  const Words set = {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100"};
  EXPECT_EQ(RunToolWithDevices(set, 1024), Success());
  EXPECT_EQ(RunToolWithDevices(set, 1025),
            Refusal("the broadcast limit lists 1025 devices, it can hold 1024: Limit reached"));
  EXPECT_EQ(CountIn({"getMACFilterGlobal"}, "\"address\""), 1024);
}

TEST_F(LimitsStory, AScheduleHas64WindowsAndNoMore) {
  CreateNetwork("Home", 1);
  // Every second minute of the week's first hours.
  Wifi::NetworkSchedule schedule{
      1, Wifi::Util::RadioFrequency::Band5GHz, Wifi::Util::ScheduleMode::Customized, 0, {}};
  while (schedule.windows.size() < 65) {
    const int start = 2 * static_cast<int>(schedule.windows.size());
    schedule.windows.push_back({start, start + 1});
  }
  ExpectCallRefused<&Wifi::WifiClient::SetSchedule>(
      "LimitReached", "the schedule of network 1 has 65 windows, it may have 64", schedule);
  ExpectNow({"getScheduleStatus"}, "");
  schedule.windows.pop_back();
  Call<&Wifi::WifiClient::SetSchedule>(schedule);
  EXPECT_EQ(CountIn({"getScheduleStatus"}, "\tBand5GHz: "), 1);
}

TEST_F(LimitsStory, ARadioCarries16NetworksAndNoMoreAndTheBackhaulBeside) {
  std::string upper;
  for (int id = 1; id <= 16; ++id) {
    CreateNetwork("Network " + std::to_string(id), id);
    upper += "wlan1_" + std::to_string(id) + " ";
  }
  const auto createOneMore = [this] {
    return RunTool({"createNetwork", "--ssid", "One more", "--password", "correct-horse"});
  };
  const ToolRun refusal = Failure(
      "Create Network ID: Failed to execute command: the radio Band2_4GHz carries 16 networks "
      "and cannot carry one more: Limit reached\n");
  EXPECT_EQ(createOneMore(), refusal);
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  EXPECT_EQ(CountIn({"getRadioIfStatuses"}, "wlan1_0 " + upper + "\n"), 1);
  // One that is off the air keeps its place.
  Do({"deactivate", "--id", "16"});
  EXPECT_EQ(createOneMore(), refusal);
  Do({"deleteNetwork", "--id", "16"});
  EXPECT_EQ(createOneMore(), Success("Create Network ID: 17\n"));
  EXPECT_EQ(CountIn({"getInterfaceRadioMap"}, "wlan1_16            Band5GHz            \n"), 1);
}

}  // namespace

}  // namespace TALO::EndToEnd
