// Schedules of a daemon that lives on, and of one that is started anew on what the one before stored.

#include "support/daemon_run.h"

#include <memory>

namespace TALO::Wifid {

namespace {

using Wifi::NetworkSchedule;
using Wifi::ScheduleStatus;
using Wifi::WifiClient;

/// What holds at a time.
struct Moment {
  std::int64_t time;
  bool on;
  int secondsToSwitch;
};

enum class Between { LivesOn, IsRestarted };

/// A schedule of the network Home, in Berlin.
class SchedulesOverTime : public testing::TestWithParam<Between> {
 protected:
  /// Sets it at `start` and looks at each of the moments.
  static void Expect(std::int64_t start, const NetworkSchedule& schedule,
                     const std::vector<Moment>& moments) {
    World world(start, Berlin2026());
    auto daemon = std::make_unique<DaemonRun>(world);
    daemon->CreateHome();
    EXPECT_EQ(daemon->ErrorOfCall<&WifiClient::SetSchedule>(schedule), "none");
    for (const Moment& moment : moments) {
      SCOPED_TRACE(moment.time - start);
      if (GetParam() == Between::IsRestarted) {
        daemon.reset();
        EXPECT_EQ(world.timers.CountWaiting(), 0U);
        world.PassUntil(moment.time);
        daemon = std::make_unique<DaemonRun>(world);
      } else {
        world.PassUntil(moment.time);
      }
      EXPECT_EQ(daemon->InterfacesUp(), moment.on ? "wlan0_1 wlan1_1 " : "");
      EXPECT_EQ(daemon->Value<&WifiClient::GetScheduleStatus>(),
                (ScheduleStatus{{1,
                                 {{RadioFrequency::Band2_4GHz, schedule.mode, moment.secondsToSwitch},
                                  {RadioFrequency::Band5GHz, schedule.mode, moment.secondsToSwitch}}}}));
    }
  }

  static NetworkSchedule Windows(std::vector<Wifi::ScheduleWindow> windows) {
    return {1, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, std::move(windows)};
  }

  static constexpr int kDay = 24 * 60;  ///< in minutes
};

TEST_P(SchedulesOverTime, SwitchOffAtMidnight) {
  // On Tuesdays from 23:00 to 24:00.
  Expect(UTC(2026, 3, 10, 20), Windows({{kDay + 23 * 60, 2 * kDay}}),
         {{UTC(2026, 3, 10, 21, 59, 59), false, 1},
          {UTC(2026, 3, 10, 22, 30), true, 1'800},
          {UTC(2026, 3, 10, 22, 59, 59), true, 1},
          {UTC(2026, 3, 10, 23, 0, 1), false, 7 * 86'400 - 3'600 - 1}});
}

TEST_P(SchedulesOverTime, StayOnOverTheEndOfTheWeek) {
  // From Sundays, 22:00, to Mondays, 06:00.
  Expect(UTC(2026, 3, 8, 20), Windows({{6 * kDay + 22 * 60, 7 * kDay}, {0, 6 * 60}}),
         {{UTC(2026, 3, 8, 20, 59, 59), false, 1},
          {UTC(2026, 3, 8, 21, 0, 1), true, 8 * 3'600 - 1},
          {UTC(2026, 3, 8, 23, 30), true, 19'800},
          {UTC(2026, 3, 9, 4, 59, 59), true, 1},
          {UTC(2026, 3, 9, 5, 0, 1), false, 7 * 86'400 - 8 * 3'600 - 1},
          {UTC(2026, 3, 15, 21, 0, 1), true, 8 * 3'600 - 1}});
}

TEST_P(SchedulesOverTime, FollowTheLocalClockWhenSummerBegins) {
  // On Sundays from 01:30 to 03:30; 02:00 becomes 03:00 on the 29th.
  Expect(UTC(2026, 3, 28, 12), Windows({{6 * kDay + 90, 6 * kDay + 210}}),
         {{UTC(2026, 3, 29, 0, 29, 59), false, 1},
          {UTC(2026, 3, 29, 0, 30, 1), true, 3'599},
          {UTC(2026, 3, 29, 1, 15), true, 900},
          {UTC(2026, 3, 29, 1, 30, 1), false, 7 * 86'400 - 2 * 3'600 - 1},
          {UTC(2026, 4, 4, 23, 30, 1), true, 2 * 3'600 - 1}});
}

TEST_P(SchedulesOverTime, FollowTheLocalClockWhenSummerEnds) {
  // On Sundays from 02:15 to 02:45; 03:00 becomes 02:00 on the 25th.
  Expect(UTC(2026, 10, 24, 12), Windows({{6 * kDay + 135, 6 * kDay + 165}}),
         {{UTC(2026, 10, 25, 0, 15, 1), true, 1'799},
          {UTC(2026, 10, 25, 0, 45, 1), false, 1'799},
          {UTC(2026, 10, 25, 1, 15, 1), true, 1'799},
          {UTC(2026, 10, 25, 1, 45, 1), false, 7 * 86'400 - 1'800 - 1}});
}

TEST_P(SchedulesOverTime, CountTheSecondsThatTheyAreValidForWhateverTheLocalClockShows) {
  Expect(UTC(2026, 3, 28, 23), {1, RadioFrequency::SmartConnect, ScheduleMode::ValidFor, 3 * 3'600, {}},
         {{UTC(2026, 3, 29, 0, 59, 59), true, 3'601},
          {UTC(2026, 3, 29, 1, 59, 59), true, 1},
          {UTC(2026, 3, 29, 2, 0, 1), false, -1},
          {UTC(2026, 4, 5), false, -1}});
}

INSTANTIATE_TEST_SUITE_P(Daemon, SchedulesOverTime, testing::Values(Between::LivesOn, Between::IsRestarted),
                         [](const auto& test) {
                           return test.param == Between::LivesOn ? "LivesOn" : "IsRestarted";
                         });

}  // namespace

}  // namespace TALO::Wifid
