#include "daemon/main/system_clock.h"

#include <gtest/gtest.h>

#include <ctime>

namespace TALO::Wifid {

namespace {

TEST(SystemClock, TellsTheTimeOfTheMachineInSecondsSince1970) {
  timespec before{};
  timespec after{};
  ASSERT_EQ(clock_gettime(CLOCK_REALTIME, &before), 0);
  const std::int64_t now = SystemClock().WallNow();
  ASSERT_EQ(clock_gettime(CLOCK_REALTIME, &after), 0);
  EXPECT_GE(now, before.tv_sec);
  EXPECT_LE(now, after.tv_sec);
}

}  // namespace

}  // namespace TALO::Wifid
