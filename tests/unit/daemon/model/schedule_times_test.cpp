#include "daemon/model/schedules.h"
#include "support/print_model.h"
#include "support/zone_calendar.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

using Wifi::ScheduleWindow;

constexpr int kDay = 1'440;
constexpr int kSunday = 6 * kDay;

ScheduleState Weekly(std::vector<ScheduleWindow> windows) {
  return {RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 0, std::move(windows)};
}

ScheduleState Until(std::int64_t time) {
  return {RadioFrequency::Band2_4GHz, ScheduleMode::ValidFor, time, {}};
}

/// The first switches after a time, one after the other.
std::vector<std::int64_t> Switches(const ScheduleState& schedule, std::int64_t now, const Calendar& calendar,
                                   std::size_t count) {
  std::vector<std::int64_t> switches;
  while (switches.size() < count) {
    const auto next = NextSwitch(schedule, now, calendar);
    if (!next) {
      break;
    }
    switches.push_back(*next);
    now = *next;
  }
  return switches;
}

using Times = std::vector<std::int64_t>;

// 5 January 2026 is a Monday.

TEST(ValidForSchedule, IsOnUntilItsTimeAndOffForGood) {
  const ScheduleState schedule = Until(1'000);
  const auto calendar = Greenwich();
  EXPECT_TRUE(IsOn(schedule, 0, calendar));
  EXPECT_TRUE(IsOn(schedule, 999, calendar));
  EXPECT_FALSE(IsOn(schedule, 1'000, calendar));
  EXPECT_FALSE(IsOn(schedule, 1'000'000'000'000, calendar));
  EXPECT_EQ(NextSwitch(schedule, 0, calendar), 1'000);
  EXPECT_EQ(NextSwitch(schedule, 999, calendar), 1'000);
  EXPECT_EQ(NextSwitch(schedule, 1'000, calendar), std::nullopt);
  EXPECT_EQ(NextSwitch(schedule, 1'001, calendar), std::nullopt);
  EXPECT_EQ(calendar.Questions(), 0);
}

TEST(ValidForSchedule, IsOnAgainWhenTheClockIsSetBack) {
  const ScheduleState schedule = Until(1'000);
  EXPECT_FALSE(IsOn(schedule, 2'000, Greenwich()));
  EXPECT_TRUE(IsOn(schedule, 500, Greenwich()));
  EXPECT_EQ(NextSwitch(schedule, 500, Greenwich()), 1'000);
}

TEST(CustomizedSchedule, IsOnFromTheStartOfAWindowToItsEnd) {
  const ScheduleState schedule = Weekly({{480, 1'020}});  // Monday 08:00 to 17:00
  struct Row {
    std::int64_t now;
    bool on;
    std::int64_t next;
  };
  const std::int64_t start = UTC(2026, 1, 5, 8);
  const std::int64_t end = UTC(2026, 1, 5, 17);
  const std::vector<Row> rows = {
      {UTC(2026, 1, 4, 23, 59, 59), false, start},
      {UTC(2026, 1, 5), false, start},
      {UTC(2026, 1, 5, 7, 59, 0), false, start},
      {UTC(2026, 1, 5, 7, 59, 59), false, start},
      {UTC(2026, 1, 5, 8), true, end},
      {UTC(2026, 1, 5, 8, 0, 1), true, end},
      {UTC(2026, 1, 5, 16, 59, 59), true, end},
      {UTC(2026, 1, 5, 17), false, UTC(2026, 1, 12, 8)},
      {UTC(2026, 1, 6), false, UTC(2026, 1, 12, 8)},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.now);
    EXPECT_EQ(IsOn(schedule, row.now, Greenwich()), row.on);
    EXPECT_EQ(NextSwitch(schedule, row.now, Greenwich()), row.next);
  }
}

TEST(CustomizedSchedule, AWindowThatEndsWithTheWeekEndsAtMidnightToMonday) {
  const ScheduleState schedule = Weekly({{kSunday + 1'320, 10'080}});  // Sunday 22:00 to 24:00
  EXPECT_EQ(Switches(schedule, UTC(2026, 1, 5), Greenwich(), 3),
            (Times{UTC(2026, 1, 11, 22), UTC(2026, 1, 12), UTC(2026, 1, 18, 22)}));
  EXPECT_TRUE(IsOn(schedule, UTC(2026, 1, 11, 23, 59, 59), Greenwich()));
  EXPECT_FALSE(IsOn(schedule, UTC(2026, 1, 12), Greenwich()));
}

TEST(CustomizedSchedule, LooksThroughWindowsThatTouch) {
  const std::int64_t monday = UTC(2026, 1, 5);
  EXPECT_EQ(Switches(Weekly({{60, 120}, {120, 180}, {180, 240}}), monday, Greenwich(), 3),
            (Times{UTC(2026, 1, 5, 1), UTC(2026, 1, 5, 4), UTC(2026, 1, 12, 1)}));
  // Over midnight.
  EXPECT_EQ(Switches(Weekly({{kDay - 60, kDay}, {kDay, kDay + 60}}), monday, Greenwich(), 2),
            (Times{UTC(2026, 1, 5, 23), UTC(2026, 1, 6, 1)}));
  // Over the week's end, wherever it begins to look.
  const ScheduleState weekend = Weekly({{0, 360}, {kSunday + 1'320, 10'080}});
  EXPECT_EQ(Switches(weekend, monday, Greenwich(), 3),
            (Times{UTC(2026, 1, 5, 6), UTC(2026, 1, 11, 22), UTC(2026, 1, 12, 6)}));
  EXPECT_EQ(Switches(weekend, UTC(2026, 1, 11, 23), Greenwich(), 1), (Times{UTC(2026, 1, 12, 6)}));
}

TEST(CustomizedSchedule, AGapOfOneMinuteIsSeen) {
  EXPECT_EQ(Switches(Weekly({{0, 60}, {61, 120}}), UTC(2026, 1, 5), Greenwich(), 3),
            (Times{UTC(2026, 1, 5, 1), UTC(2026, 1, 5, 1, 1), UTC(2026, 1, 5, 2)}));
  EXPECT_EQ(Switches(Weekly({{0, 10'079}}), UTC(2026, 1, 5), Greenwich(), 2),
            (Times{UTC(2026, 1, 11, 23, 59), UTC(2026, 1, 12)}));
  EXPECT_EQ(Switches(Weekly({{1, 10'080}}), UTC(2026, 1, 5), Greenwich(), 2),
            (Times{UTC(2026, 1, 5, 0, 1), UTC(2026, 1, 12)}));
}

TEST(CustomizedSchedule, OverTheWholeWeekIsOnAndNeverSwitches) {
  for (const ScheduleState& schedule : {Weekly({{0, 10'080}}), Weekly({{0, 5'000}, {5'000, 10'080}}),
                                        Weekly({{0, 1}, {1, 10'079}, {10'079, 10'080}})}) {
    for (const std::int64_t now : {UTC(2026, 1, 5), UTC(2026, 1, 11, 23, 59, 59), UTC(2026, 3, 29, 1)}) {
      EXPECT_TRUE(IsOn(schedule, now, Berlin2026()));
      EXPECT_EQ(NextSwitch(schedule, now, Berlin2026()), std::nullopt);
    }
  }
}

TEST(CustomizedSchedule, FollowsTheClockWhereverItIsSet) {
  const ScheduleState schedule = Weekly({{480, 1'020}});
  const auto calendar = Greenwich();
  // Forward by a year, back to when the clock was never set, before 1970, and forward again.
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 1, 5, 9), calendar), UTC(2026, 1, 5, 17));
  EXPECT_EQ(NextSwitch(schedule, UTC(2027, 1, 5, 9), calendar), UTC(2027, 1, 11, 8));
  EXPECT_EQ(NextSwitch(schedule, 0, calendar), UTC(1970, 1, 5, 8));
  EXPECT_FALSE(IsOn(schedule, 0, calendar));
  EXPECT_EQ(NextSwitch(schedule, UTC(1969, 12, 29, 7), calendar), UTC(1969, 12, 29, 8));
  EXPECT_TRUE(IsOn(schedule, UTC(1969, 12, 29, 8), calendar));
  EXPECT_EQ(NextSwitch(schedule, UTC(2026, 1, 5, 9), calendar), UTC(2026, 1, 5, 17));
}

TEST(CustomizedSchedule, WithoutWindowsIsOffAndNeverSwitches) {
  EXPECT_FALSE(IsOn(Weekly({}), UTC(2026, 1, 5), Greenwich()));
  EXPECT_EQ(NextSwitch(Weekly({}), UTC(2026, 1, 5), Greenwich()), std::nullopt);
}

TEST(ScheduleOfNoMode, IsOnAndNeverSwitches) {
  ScheduleState schedule;
  schedule.mode = ScheduleMode::Error;
  EXPECT_TRUE(IsOn(schedule, 0, Greenwich()));
  EXPECT_EQ(NextSwitch(schedule, 0, Greenwich()), std::nullopt);
}

TEST(CustomizedSchedule, IsRightInZonesThatAreNotWholeHours) {
  // Monday 00:00 to 01:00 in Kolkata, 5:30 ahead; and in a place 30 seconds ahead of a whole minute.
  EXPECT_EQ(Switches(Weekly({{0, 60}}), UTC(2026, 1, 4), ZoneCalendar(19'800), 2),
            (Times{UTC(2026, 1, 4, 18, 30), UTC(2026, 1, 4, 19, 30)}));
  EXPECT_EQ(Switches(Weekly({{0, 60}}), UTC(2026, 1, 4), ZoneCalendar(30), 2),
            (Times{UTC(2026, 1, 4, 23, 59, 30), UTC(2026, 1, 5, 0, 59, 30)}));
  EXPECT_EQ(Switches(Weekly({{0, 60}}), UTC(2026, 1, 4, 0, 0, 17), ZoneCalendar(-30), 2),
            (Times{UTC(2026, 1, 5, 0, 0, 30), UTC(2026, 1, 5, 1, 0, 30)}));
}

struct JumpRow {
  std::string name;
  std::vector<ScheduleWindow> windows;
  std::int64_t now;
  Times switches;
};

void ExpectSwitches(const std::vector<JumpRow>& rows, const Calendar& calendar) {
  for (const JumpRow& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(Switches(Weekly(row.windows), row.now, calendar, row.switches.size()), row.switches);
  }
}

TEST(CustomizedSchedule, SkipsWhatTheLocalClockSkips) {
  // On Sunday 29 March 2026 at 01:00 UTC, Berlin's clocks go from 02:00 to 03:00.
  const std::int64_t saturday = UTC(2026, 3, 28, 12);
  const std::int64_t jump = UTC(2026, 3, 29, 1);
  const int two = kSunday + 120;
  const std::vector<JumpRow> rows = {
      {"all of it is skipped",
       {{two + 10, two + 50}},
       saturday,
       {UTC(2026, 4, 5, 0, 10), UTC(2026, 4, 5, 0, 50)}},
      {"its start is skipped", {{two + 30, two + 120}}, saturday, {jump, UTC(2026, 3, 29, 2)}},
      {"its end is skipped", {{two - 60, two + 30}}, saturday, {UTC(2026, 3, 29), jump}},
      {"it ends where the clock arrives", {{two - 60, two + 60}}, saturday, {UTC(2026, 3, 29), jump}},
      {"it starts where the clock arrives", {{two + 60, two + 120}}, saturday, {jump, UTC(2026, 3, 29, 2)}},
      {"it ends where the clock leaves", {{two - 60, two}}, saturday, {UTC(2026, 3, 29), jump}},
      {"it starts where the clock leaves",
       {{two, two + 60}},
       saturday,
       {UTC(2026, 4, 5), UTC(2026, 4, 5, 1)}},
      {"it is around", {{two - 60, two + 120}}, saturday, {UTC(2026, 3, 29), UTC(2026, 3, 29, 2)}},
      {"a gap is skipped",
       {{two - 60, two + 10}, {two + 50, two + 120}},
       saturday,
       {UTC(2026, 3, 29), UTC(2026, 3, 29, 2)}},
      {"the second before", {{two + 30, two + 120}}, jump - 1, {jump, UTC(2026, 3, 29, 2)}},
      {"the first second", {{two + 30, two + 120}}, jump, {UTC(2026, 3, 29, 2)}},
      {"an hour of Monday after it", {{0, 60}}, saturday, {UTC(2026, 3, 29, 22), UTC(2026, 3, 29, 23)}},
  };
  ExpectSwitches(rows, Berlin2026());
}

TEST(CustomizedSchedule, RepeatsWhatTheLocalClockRepeats) {
  // On Sunday 25 October 2026 at 01:00 UTC, Berlin's clocks go from 03:00 to 02:00.
  const std::int64_t saturday = UTC(2026, 10, 24, 12);
  const std::int64_t jump = UTC(2026, 10, 25, 1);
  const int two = kSunday + 120;
  const std::vector<JumpRow> rows = {
      {"all of it is repeated",
       {{two + 10, two + 50}},
       saturday,
       {UTC(2026, 10, 25, 0, 10), UTC(2026, 10, 25, 0, 50), UTC(2026, 10, 25, 1, 10),
        UTC(2026, 10, 25, 1, 50)}},
      {"its start is repeated",
       {{two + 30, two + 120}},
       saturday,
       {UTC(2026, 10, 25, 0, 30), jump, UTC(2026, 10, 25, 1, 30), UTC(2026, 10, 25, 3)}},
      {"its end is repeated",
       {{two - 60, two + 30}},
       saturday,
       {UTC(2026, 10, 24, 23), UTC(2026, 10, 25, 0, 30), jump, UTC(2026, 10, 25, 1, 30)}},
      {"it is the repeated hour", {{two, two + 60}}, saturday, {UTC(2026, 10, 25), UTC(2026, 10, 25, 2)}},
      {"it starts where the clock leaves", {{two + 60, two + 120}}, saturday, {UTC(2026, 10, 25, 2)}},
      {"it ends where the clock arrives",
       {{two - 60, two}},
       saturday,
       {UTC(2026, 10, 24, 23), UTC(2026, 10, 25), UTC(2026, 10, 31, 24)}},
      {"it is around", {{two - 60, two + 120}}, saturday, {UTC(2026, 10, 24, 23), UTC(2026, 10, 25, 3)}},
      {"between the two", {{two + 10, two + 50}}, UTC(2026, 10, 25, 0, 55), {UTC(2026, 10, 25, 1, 10)}},
      {"the second before", {{two + 30, two + 120}}, jump - 1, {jump, UTC(2026, 10, 25, 1, 30)}},
      {"the first second", {{two + 30, two + 120}}, jump, {UTC(2026, 10, 25, 1, 30)}},
  };
  ExpectSwitches(rows, Berlin2026());
}

TEST(CustomizedSchedule, SkipsADayThatAPlaceSkips) {
  // A place that crosses the date line at local midnight: Thursday 29 December 2011 is followed by Saturday.
  const ZoneCalendar calendar(-10 * kHour, {{UTC(2011, 12, 30, 10), 14 * kHour}});
  const int friday = 4 * kDay;
  EXPECT_EQ(Switches(Weekly({{friday, friday + 60}}), UTC(2011, 12, 28), calendar, 1),
            (Times{UTC(2012, 1, 5, 10)}));
  EXPECT_EQ(Switches(Weekly({{friday, friday + kDay + 60}}), UTC(2011, 12, 28), calendar, 2),
            (Times{UTC(2011, 12, 30, 10), UTC(2011, 12, 30, 11)}));
}

TEST(NextSwitch, AsksTheCalendarAFewTimesOnly) {
  struct Row {
    std::vector<ScheduleWindow> windows;
    std::int64_t now;
    int atMost;
  };
  const std::vector<Row> rows = {
      {{{480, 1'020}}, UTC(2026, 1, 5, 7), 12},    // within the day
      {{{480, 1'020}}, UTC(2026, 1, 5, 18), 24},   // almost a week ahead
      {{{480, 1'020}}, UTC(2026, 3, 23, 18), 48},  // the same over a jump
      {{{0, 10'080}}, UTC(2026, 1, 5, 18), 2},     // never
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.now);
    const auto calendar = Berlin2026();
    NextSwitch(Weekly(row.windows), row.now, calendar);
    EXPECT_LE(calendar.Questions(), row.atMost);
  }
}

}  // namespace
}  // namespace TALO::Wifid
