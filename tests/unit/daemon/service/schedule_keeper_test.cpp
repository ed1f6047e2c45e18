#include "daemon/service/schedule_keeper.h"

#include "support/engine_test.h"

#include <chrono>
#include <optional>

namespace TALO::Wifid {

namespace {

using std::chrono::seconds;

constexpr std::int64_t kMonday = 4 * 24 * 60 * 60;  // 5 January 1970, 00:00
constexpr std::int64_t kWeek = 7 * 24 * 60 * 60;

class ScheduleKeepers : public EngineTest {
 protected:
  /// Network 2 with these schedules, at this time.
  void StartAt(std::int64_t now, std::vector<ScheduleState> schedules) {
    clock_.now = now;
    State state = two_;
    state.networks[1].schedules = std::move(schedules);
    StartWith(state);
    keeper_.emplace(*engine_, timers_);
    keeper_->Rearm();
  }

  /// Lets time pass and the radios be done with what it brings.
  void Pass(seconds time) {
    clock_.now += time.count();
    timers_.Advance(time);
    driver_.FinishAll();
  }

  ~ScheduleKeepers() override { keeper_.reset(); }

  ManualTimers timers_;
  std::optional<ScheduleKeeper> keeper_;
};

TEST_F(ScheduleKeepers, SleepWhereThereIsNoSchedule) {
  StartAt(kMonday, {});
  EXPECT_EQ(timers_.CountWaiting(), 0U);
  clock_.Set(kMonday + 7);
  driver_.FinishAll();
  EXPECT_EQ(timers_.CountWaiting(), 0U);
  EXPECT_EQ(TakeJournal(), Journal{});
}

TEST_F(ScheduleKeepers, SwitchOffWhenTheTimeIsOverAndSleepThen) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  EXPECT_EQ(timers_.UntilNext(), seconds(60));
  Pass(seconds(59));
  EXPECT_EQ(TakeJournal(), Journal{});
  Pass(seconds(1));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.CountWaiting(), 0U);
}

TEST_F(ScheduleKeepers, SwitchOnAndOffWeekAfterWeek) {
  // On from 01:00 to 02:00 on Mondays.
  StartAt(kMonday, {{Band2_4GHz, ScheduleMode::Customized, 0, {{60, 120}}}});
  EXPECT_EQ(timers_.UntilNext(), seconds(3600));
  for (int week = 0; week < 3; ++week) {
    Pass(seconds(3600));
    EXPECT_EQ(TakeJournal(), (Journal{"apply Band2_4GHz: 1 2"}));
    EXPECT_EQ(timers_.UntilNext(), seconds(3600));
    Pass(seconds(3600));
    EXPECT_EQ(TakeJournal(), (Journal{"apply Band2_4GHz: 1"}));
    EXPECT_EQ(timers_.UntilNext(), seconds(kWeek - 3600));
    Pass(seconds(kWeek - 2 * 3600));
    EXPECT_EQ(TakeJournal(), Journal{});
  }
}

TEST_F(ScheduleKeepers, WakeForTheEarliestOfSeveral) {
  StartAt(kMonday, {{Band2_4GHz, ScheduleMode::ValidFor, kMonday + 90, {}},
                    {Band5GHz_1, ScheduleMode::ValidFor, kMonday + 30, {}},
                    {Band5GHz_2, ScheduleMode::ValidFor, kMonday + 90, {}}});
  EXPECT_EQ(timers_.CountWaiting(), 1U);
  Pass(seconds(30));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.UntilNext(), seconds(60));
  Pass(seconds(60));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band2_4GHz: 1", "apply Band5GHz_2: 1"}));
}

TEST_F(ScheduleKeepers, LookAgainOnceAWeekWhereTheNextSwitchIsFarAway) {
  StartAt(kMonday, {{Band2_4GHz, ScheduleMode::ValidFor, kMonday + kWeek + 5, {}}});
  EXPECT_EQ(timers_.UntilNext(), seconds(kWeek));
  Pass(seconds(kWeek));
  EXPECT_EQ(TakeJournal(), Journal{});
  EXPECT_EQ(timers_.UntilNext(), seconds(5));
  Pass(seconds(5));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band2_4GHz: 1"}));
}

TEST_F(ScheduleKeepers, EvaluateWhenTheClockIsSet) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  clock_.Set(kMonday + 1000);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.CountWaiting(), 0U);
  // And back again.
  clock_.Set(kMonday + 50);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1 2"}));
  EXPECT_EQ(timers_.UntilNext(), seconds(10));
}

TEST_F(ScheduleKeepers, ArmOneTimerHoweverOftenTheyLook) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  keeper_->Rearm();
  clock_.Set(kMonday + 20);
  clock_.Set(kMonday + 30);
  driver_.FinishAll();
  EXPECT_EQ(timers_.CountWaiting(), 1U);
  EXPECT_EQ(timers_.UntilNext(), seconds(30));
}

TEST_F(ScheduleKeepers, WaitForAChangeThatIsUnderWay) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  JoinUpstream(Band2_4GHz, "Cafe");
  TakeJournal();
  clock_.now += 60;
  timers_.Advance(seconds(60));
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"done", "apply Band5GHz_1: 1"}));
}

TEST_F(ScheduleKeepers, SayThatARadioDidNotSwitchAndGoOn) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}},
                    {Band5GHz_2, ScheduleMode::ValidFor, kMonday + 90, {}}});
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Pass(seconds(60));
  EXPECT_EQ(errors_.Text(), "err: a schedule could not switch: wlan1 does not come up\n");
  EXPECT_EQ(timers_.UntilNext(), seconds(30));
  TakeJournal();
  Pass(seconds(30));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1", "apply Band5GHz_2: 1"}));
}

TEST_F(ScheduleKeepers, TryAgainEveryMinuteUntilTheRadioFollows) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Pass(seconds(60));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.UntilNext(), seconds(60));
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Pass(seconds(60));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.UntilNext(), seconds(60));
  Pass(seconds(60));
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1"}));
  EXPECT_EQ(timers_.CountWaiting(), 0U);
}

TEST_F(ScheduleKeepers, LeaveNothingBehind) {
  StartAt(kMonday, {{Band5GHz_1, ScheduleMode::ValidFor, kMonday + 60, {}}});
  keeper_.reset();
  EXPECT_EQ(timers_.CountWaiting(), 0U);
  clock_.Set(kMonday + 100);
  EXPECT_FALSE(driver_.IsBusy());
}

}  // namespace

}  // namespace TALO::Wifid
