#include "daemon/main/local_calendar.h"

#include "support/zone_calendar.h"

#include <gtest/gtest.h>
#include <stdlib.h>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

constexpr const char* kBerlin = "CET-1CEST,M3.5.0,M10.5.0/3";
constexpr const char* kNewYork = "EST5EDT,M3.2.0,M11.1.0";
constexpr const char* kKolkata = "IST-5:30";
constexpr const char* kUTC = "UTC0";

constexpr int kDay = 1'440;
enum Weekday { Monday, Tuesday, Wednesday, Thursday, Friday, Saturday, Sunday };

int Minute(Weekday day, int hour, int minute) { return day * kDay + hour * 60 + minute; }

/// Sets the machine's time zone for this process.
class LocalCalendarTest : public testing::Test {
 protected:
  LocalCalendarTest() {
    if (const char* zone = getenv("TZ"); zone != nullptr) {
      before_ = zone;
    }
  }
  ~LocalCalendarTest() override {
    if (before_) {
      SetZone(before_->c_str());
    } else {
      unsetenv("TZ");
    }
  }

  static void SetZone(const char* zone) { setenv("TZ", zone, 1); }

  const LocalCalendar calendar_;

 private:
  std::optional<std::string> before_;
};

TEST_F(LocalCalendarTest, TellsTheMinuteOfTheLocalWeek) {
  struct Row {
    const char* zone;
    std::int64_t time;
    int minute;
  };
  const std::vector<Row> rows = {
      {kUTC, 0, Minute(Thursday, 0, 0)},
      {kUTC, -1, Minute(Wednesday, 23, 59)},
      {kUTC, UTC(2026, 1, 5), 0},
      {kUTC, UTC(2026, 1, 5, 0, 0, 59), 0},
      {kUTC, UTC(2026, 1, 5, 0, 1), 1},
      {kUTC, UTC(2026, 1, 4, 23, 59, 59), 10'079},
      // The two ends of summer in Berlin.
      {kBerlin, UTC(2026, 1, 4, 23), 0},
      {kBerlin, UTC(2026, 1, 4, 22, 59, 59), 10'079},
      {kBerlin, UTC(2026, 3, 29, 0, 59, 59), Minute(Sunday, 1, 59)},
      {kBerlin, UTC(2026, 3, 29, 1), Minute(Sunday, 3, 0)},
      {kBerlin, UTC(2026, 7, 5, 22), 0},
      {kBerlin, UTC(2026, 10, 25, 0, 59, 59), Minute(Sunday, 2, 59)},
      {kBerlin, UTC(2026, 10, 25, 1), Minute(Sunday, 2, 0)},
      {kBerlin, UTC(2026, 10, 25, 2), Minute(Sunday, 3, 0)},
      // And in New York.
      {kNewYork, UTC(2026, 1, 5, 4, 59, 59), 10'079},
      {kNewYork, UTC(2026, 1, 5, 5), 0},
      {kNewYork, UTC(2026, 3, 8, 6, 59, 59), Minute(Sunday, 1, 59)},
      {kNewYork, UTC(2026, 3, 8, 7), Minute(Sunday, 3, 0)},
      {kNewYork, UTC(2026, 11, 1, 5, 59, 59), Minute(Sunday, 1, 59)},
      {kNewYork, UTC(2026, 11, 1, 6), Minute(Sunday, 1, 0)},
      {kKolkata, UTC(2026, 1, 4, 18, 29, 59), 10'079},
      {kKolkata, UTC(2026, 1, 4, 18, 30), 0},
      {kKolkata, UTC(2026, 7, 1), Minute(Wednesday, 5, 30)},
      // Times that 32 bits do not hold: 1 January 2100 is a Friday.
      {kUTC, UTC(2100, 1, 1), Minute(Friday, 0, 0)},
      {kBerlin, UTC(2100, 7, 1), Minute(Thursday, 2, 0)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(std::string(row.zone) + " at " + std::to_string(row.time));
    SetZone(row.zone);
    EXPECT_EQ(calendar_.MinuteOfWeek(row.time), row.minute);
  }
}

TEST_F(LocalCalendarTest, FollowsAZoneThatIsSetAnew) {
  const std::int64_t time = UTC(2026, 7, 1, 12);
  SetZone(kBerlin);
  EXPECT_EQ(calendar_.MinuteOfWeek(time), Minute(Wednesday, 14, 0));
  SetZone(kNewYork);
  EXPECT_EQ(calendar_.MinuteOfWeek(time), Minute(Wednesday, 8, 0));
  SetZone(kBerlin);
  EXPECT_EQ(calendar_.MinuteOfWeek(time), Minute(Wednesday, 14, 0));
}

TEST_F(LocalCalendarTest, AgreesWithTheTableOfBerlinThroughAYear) {
  SetZone(kBerlin);
  const ZoneCalendar berlin = Berlin2026();
  for (std::int64_t time = UTC(2026, 1, 1); time < UTC(2027, 1, 1); time += 300) {
    ASSERT_EQ(calendar_.MinuteOfWeek(time), berlin.MinuteOfWeek(time)) << time;
  }
}

TEST_F(LocalCalendarTest, GivesAMinuteOfTheWeekForTimesThatHaveNoDate) {
  SetZone(kBerlin);
  EXPECT_EQ(calendar_.MinuteOfWeek(std::numeric_limits<std::int64_t>::max()), Minute(Thursday, 0, 0));
  EXPECT_EQ(calendar_.MinuteOfWeek(std::numeric_limits<std::int64_t>::min()), Minute(Thursday, 0, 0));
}

TEST_F(LocalCalendarTest, ScheduleSwitchesByTheLocalClockOverTheEndOfSummer) {
  // Every day from 02:30 to 04:00 in New York, where 01:00 to 02:00 comes twice on 1 November 2026, and
  // 02:00 to 03:00 not at all on 8 March.
  ScheduleState schedule{RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 0, {}};
  for (int day = 0; day < 7; ++day) {
    schedule.windows.push_back({day * kDay + 150, day * kDay + 240});
  }
  SetZone(kNewYork);
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 10, 31, 12), calendar_), UTC(2026, 11, 1, 7, 30));
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 11, 1, 7, 30), calendar_), UTC(2026, 11, 1, 9));
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 3, 7, 12), calendar_), UTC(2026, 3, 8, 7));
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 3, 8, 7), calendar_), UTC(2026, 3, 8, 8));
}

}  // namespace
}  // namespace TALO::Wifid
