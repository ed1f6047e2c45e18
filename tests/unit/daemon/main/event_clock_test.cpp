#include "daemon/main/event_clock.h"

#include "support/loop_test.h"

#include <gtest/gtest.h>

#include <ctime>

namespace TALO::Wifid {

namespace {

using EventClockTest = LoopTest;

TEST_F(EventClockTest, TellsTheTimeOfTheMachineInSecondsSince1970) {
  const EventClock clock(loop_.GetEvent());
  timespec before{};
  timespec after{};
  ASSERT_EQ(clock_gettime(CLOCK_REALTIME, &before), 0);
  const std::int64_t now = clock.WallNow();
  ASSERT_EQ(clock_gettime(CLOCK_REALTIME, &after), 0);
  EXPECT_GE(now, before.tv_sec);
  EXPECT_LE(now, after.tv_sec);
}

TEST_F(EventClockTest, IsSilentWhileNobodySetsTheClock) {
  EventClock clock(loop_.GetEvent());
  bool wasSet = false;
  clock.WhenSet([&] { wasSet = true; });
  // Everything that waits is handled.
  while (sd_event_run(loop_.GetEvent(), 0) > 0) {
  }
  EXPECT_FALSE(wasSet);
}

TEST_F(EventClockTest, LeavesTheLoopAsItWas) {
  {
    EventClock clock(loop_.GetEvent());
    clock.WhenSet([] {});
  }
  while (sd_event_run(loop_.GetEvent(), 0) > 0) {
  }
  const EventClock again(loop_.GetEvent());
  EXPECT_GT(again.WallNow(), 0);
}

}  // namespace

}  // namespace TALO::Wifid
