// Schedules switch networks off and on.

#include "support/descriptors.h"
#include "support/story_test.h"

#include <poll.h>
#include <sys/timerfd.h>

#include <csignal>
#include <ctime>
#include <regex>

namespace TALO::EndToEnd {

namespace {

/// Of the local time, Monday 00:00 being 0.
int MinuteOfWeek() {
  const std::time_t now = std::time(nullptr);
  std::tm parts{};
  localtime_r(&now, &parts);
  return ((parts.tm_wday + 6) % 7 * 24 + parts.tm_hour) * 60 + parts.tm_min;
}

/// Waits until the machine's clock shows this time.
void WaitUntil(std::time_t time) {
  const Descriptor timer = Opened(timerfd_create(CLOCK_REALTIME, TFD_CLOEXEC), "no timer can be made");
  itimerspec due{};
  due.it_value.tv_sec = time;
  if (timerfd_settime(timer.Get(), TFD_TIMER_ABSTIME, &due, nullptr) != 0) {
    ThrowErrno("a timer cannot be set");
  }
  pollfd ready{timer.Get(), POLLIN, 0};
  ASSERT_EQ(poll(&ready, 1, Deadline().ForPoll()), 1);
}

using Wifi::NetworkSchedule;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScheduleMode;

class SchedulesStory : public StoryTest {
 protected:
  SchedulesStory() {
    StartWithPhone();
    CreateNetwork("Home", 1);
    CreateNetwork("Guests", 2);
  }

  void StartWithPhone() {
    StartStory(R"("devices": [
      {"address": "0a:00:00:00:00:01", "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]}])");
  }

  void SetSchedule(const NetworkSchedule& schedule) { Call<&Wifi::WifiClient::SetSchedule>(schedule); }

  /// The interfaces that are up, radio by radio.
  void ExpectUp(const std::string& lower, const std::string& upper) {
    ExpectInTheEnd({"getRadioIfStatuses"},
                   "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
                   "Band2_4GHz          wlan0               " +
                       lower +
                       "\n"
                       "Band5GHz            wlan1               " +
                       upper + "\n");
  }
};

TEST_F(SchedulesStory, ANetworkThatIsValidForASecondGoesOffThenAndStaysOff) {
  ExpectNow({"getScheduleStatus"}, "");
  SetSchedule({1, RadioFrequency::SmartConnect, ScheduleMode::ValidFor, 1, {}});
  ExpectUp("wlan0_2 ", "wlan1_2 ");
  ExpectNow({"getScheduleStatus"}, "ID: 1\n\tBand2_4GHz: -1\n\tBand5GHz: -1\n");
  ExpectNow({"getDevices"}, "[]\n\n");
  Do({"updateSchedule", "--mode", "ValidFor"});
  ExpectUp("wlan0_2 ", "wlan1_2 ");

  SignalLog signals(Address());
  SetSchedule({1, RadioFrequency::SmartConnect, ScheduleMode::ValidFor, 0, {}});
  ExpectUp("wlan0_1 wlan0_2 ", "wlan1_1 wlan1_2 ");
  ExpectNow({"getScheduleStatus"}, "");
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
}

TEST_F(SchedulesStory, ANetworkThatIsStillValidTellsTheSecondsLeft) {
  const std::time_t before = std::time(nullptr);
  SetSchedule({2, RadioFrequency::Band5GHz, ScheduleMode::ValidFor, 3600, {}});
  const std::string output = RunTool({"getScheduleStatus"}).output;
  const auto passed = static_cast<int>(std::time(nullptr) - before);
  std::smatch found;
  ASSERT_TRUE(std::regex_match(output, found, std::regex("ID: 2\n\tBand5GHz: ([0-9]+)\n"))) << output;
  EXPECT_LE(std::stoi(found[1]), 3600);
  EXPECT_GE(std::stoi(found[1]), 3600 - passed);
  ExpectUp("wlan0_1 wlan0_2 ", "wlan1_1 wlan1_2 ");
}

TEST_F(SchedulesStory, ANetworkIsOffOutsideItsWindowsAndOnInsideThem) {
  // No week is over when the case ends.
  SetSchedule({1, RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 0, {{0, 10080}}});
  SetSchedule({2, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, {{0, 5040}, {5040, 10080}}});
  ExpectUp("wlan0_1 wlan0_2 ", "wlan1_1 wlan1_2 ");
  ExpectNow({"getScheduleStatus"}, "ID: 1\n\tBand2_4GHz: -1\nID: 2\n\tBand2_4GHz: -1\n\tBand5GHz: -1\n");

  const int farAway = (MinuteOfWeek() + 5040) % 10080;
  SetSchedule({2, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, {{farAway, farAway + 1}}});
  ExpectUp("wlan0_1 ", "wlan1_1 ");
}

TEST_F(SchedulesStory, ANetworkWhoseTimeRunsOutWhileTheDaemonIsAwayStaysOffAfterwards) {
  SetSchedule({1, RadioFrequency::SmartConnect, ScheduleMode::ValidFor, 2, {}});
  const std::time_t over = std::time(nullptr) + 2;
  SetSchedule({2, RadioFrequency::Band5GHz, ScheduleMode::ValidFor, 36'000, {}});
  EXPECT_EQ(Daemon().Terminate(SIGKILL), -SIGKILL);
  WaitUntil(over);
  StartWithPhone();
  // At once: it was not even on the air when the daemon started.
  ExpectNow({"getRadioIfStatuses"},
            "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
            "Band2_4GHz          wlan0               wlan0_2 \n"
            "Band5GHz            wlan1               wlan1_2 \n");
  const std::string status = RunTool({"getScheduleStatus"}).output;
  EXPECT_TRUE(std::regex_match(
      status, std::regex("ID: 1\n\tBand2_4GHz: -1\n\tBand5GHz: -1\nID: 2\n\tBand5GHz: 3[0-9]{4}\n")))
      << status;
  ExpectNow({"getDevices"}, "[]\n\n");
}

TEST_F(SchedulesStory, NetworksAreWhereTheirWindowsWantThemAfterARestart) {
  const int farAway = (MinuteOfWeek() + 5040) % 10080;
  std::vector<Wifi::ScheduleWindow> allButThat = {{0, farAway}, {farAway + 1, 10080}};
  std::erase_if(allButThat, [](const Wifi::ScheduleWindow& window) { return window.start == window.end; });
  SetSchedule({1, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, allButThat});
  SetSchedule({2, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, {{farAway, farAway + 1}}});
  const auto expect = [this] {
    ExpectNow({"getRadioIfStatuses"},
              "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
              "Band2_4GHz          wlan0               wlan0_1 \n"
              "Band5GHz            wlan1               wlan1_1 \n");
    // Both switch when that minute comes: in half a week.
    const std::string status = RunTool({"getScheduleStatus"}).output;
    EXPECT_TRUE(std::regex_match(
        status,
        std::regex("ID: 1\n\tBand2_4GHz: ((?:29|30)[0-9]{4})\n\tBand5GHz: \\1\nID: 2\n\tBand2_4GHz: \\1\n"
                   "\tBand5GHz: \\1\n")))
        << status;
  };
  expect();
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  SignalLog signals(Address());
  StartWithPhone();
  expect();
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
}

TEST_F(SchedulesStory, UpdatesOfEitherModeLeaveNetworksWhereTheClockWantsThem) {
  for (const char* mode : {"Customized", "ValidFor"}) {
    Do({"updateSchedule", "--mode", mode});
    ExpectUp("wlan0_1 wlan0_2 ", "wlan1_1 wlan1_2 ");
    ExpectNow({"getScheduleStatus"}, "");
  }
  EXPECT_EQ(RunTool({"updateSchedule", "--mode", "Error"}),
            Refusal("the schedule mode Error does not exist: Invalid argument"));
}

TEST_F(SchedulesStory, BadSchedulesAreRefusedAndChangeNothing) {
  struct Bad {
    NetworkSchedule schedule;
    const char* error;
    const char* sentence;
  };
  const auto all = RadioFrequency::SmartConnect;
  const auto windows = ScheduleMode::Customized;
  for (const Bad& bad : std::vector<Bad>{
           {{7, all, ScheduleMode::ValidFor, 60, {}}, "NotFound", "there is no network 7"},
           {{1, RadioFrequency::Error, ScheduleMode::ValidFor, 60, {}},
            "InvalidArgument",
            "the radio Error does not exist"},
           {{1, all, ScheduleMode::Error, 60, {}},
            "InvalidArgument",
            "the schedule mode Error does not exist"},
           {{1, all, ScheduleMode::ValidFor, -1, {}},
            "InvalidArgument",
            "the schedule of network 1 is valid for -1 seconds, it must be at least 1, or 0 for none"},
           {{1, all, ScheduleMode::ValidFor, 60, {{0, 60}}},
            "InvalidArgument",
            "the schedule of network 1 has 1 windows, which ValidFor does not take"},
           {{1, all, windows, 60, {{0, 60}}},
            "InvalidArgument",
            "the schedule of network 1 is valid for 60 seconds, which Customized does not take"},
           {{1, all, windows, 0, {{0, 10081}}},
            "InvalidArgument",
            "the schedule of network 1 has the window 0 to 10081, the week is from 0 to 10080"},
           {{1, all, windows, 0, {{60, 60}}},
            "InvalidArgument",
            "the schedule of network 1 has the window 60 to 60, which is empty"},
           {{1, all, windows, 0, {{60, 0}}},
            "InvalidArgument",
            "the schedule of network 1 has the window 60 to 0, which ends before it starts"},
           {{1, all, windows, 0, {{50, 90}, {0, 60}}},
            "InvalidArgument",
            "the schedule of network 1 has the windows 0 to 60 and 50 to 90, which overlap"},
       }) {
    ExpectCallRefused<&Wifi::WifiClient::SetSchedule>(bad.error, bad.sentence, bad.schedule);
  }
  ExpectNow({"getScheduleStatus"}, "");
  ExpectUp("wlan0_1 wlan0_2 ", "wlan1_1 wlan1_2 ");
}

}  // namespace

}  // namespace TALO::EndToEnd
