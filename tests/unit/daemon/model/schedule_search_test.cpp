// What NextSwitch finds against a look at every minute of a year.

#include "daemon/model/schedules.h"
#include "support/print_model.h"
#include "support/zone_calendar.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

using Wifi::ScheduleWindow;

constexpr std::size_t kMinutesOfYear = 365 * 1'440;

struct Place {
  std::string name;
  ZoneCalendar calendar;
};

std::vector<Place> Places() {
  constexpr std::int64_t kHalf = kHour / 2;
  return {
      {"Greenwich", Greenwich()},
      {"Berlin", Berlin2026()},
      {"New York",
       ZoneCalendar(-5 * kHour, {{UTC(2026, 3, 8, 7), -4 * kHour}, {UTC(2026, 11, 1, 6), -5 * kHour}})},
      {"Kolkata", ZoneCalendar(5 * kHour + kHalf)},
      {"Lord Howe", ZoneCalendar(11 * kHour, {{UTC(2026, 4, 4, 15), 10 * kHour + kHalf},
                                              {UTC(2026, 10, 3, 15, 30), 11 * kHour}})},
      {"a month without summer time",
       ZoneCalendar(kHour, {{UTC(2026, 2, 15, 2), 0}, {UTC(2026, 3, 22, 2), kHour}})},
      {"over the date line", ZoneCalendar(-10 * kHour, {{UTC(2026, 7, 3, 10), 14 * kHour}})},
  };
}

/// Weeks of all kinds, the same in every run.
std::vector<std::vector<ScheduleWindow>> Weeks() {
  std::vector<std::vector<ScheduleWindow>> weeks = {
      {{480, 1'020}},
      {{0, 360}, {9'960, 10'080}},
      {{8'770, 8'810}},  // within the hour that Berlin skips and repeats
      {{8'640, 8'760}, {8'790, 8'880}},
      {{0, 10'079}},
      {{10'079, 10'080}},
      {{0, 1'440}, {1'440, 2'880}, {5'760, 7'200}},
  };
  std::mt19937 random(7);
  for (const int count : {1, 2, 5, 20, 64}) {
    // Among as many minutes as there are, touching ones included.
    std::vector<ScheduleWindow> week;
    int minute = 0;
    const int share = 10'080 / count;
    for (int i = 0; i < count; ++i) {
      const int start = minute + static_cast<int>(random() % static_cast<unsigned>(share / 2));
      const int end = start + 1 + static_cast<int>(random() % static_cast<unsigned>(share / 2));
      week.push_back({start, end});
      minute = random() % 4 == 0 ? end : (i + 1) * share;
    }
    weeks.push_back(week);
  }
  return weeks;
}

std::string Name(const Place& place, const std::vector<ScheduleWindow>& windows) {
  return place.name + ", first window " + std::to_string(windows.front().start) + " to " +
         std::to_string(windows.front().end) + " of " + std::to_string(windows.size());
}

/// What the place's clock shows at each minute of the year and of some weeks more, so that the last minute
/// that is asked about has its answer in here.
std::vector<int> LocalMinutes(const Calendar& calendar, std::int64_t begin) {
  std::vector<int> minutes(kMinutesOfYear + 3 * 10'080);
  for (std::size_t i = 0; i < minutes.size(); ++i) {
    minutes[i] = calendar.MinuteOfWeek(begin + static_cast<std::int64_t>(i) * 60);
  }
  return minutes;
}

/// The minutes to ask about: some of every day, and all that lie about a jump of the local clock.
std::vector<std::size_t> MinutesToAsk(const std::vector<int>& localMinutes) {
  constexpr std::size_t kAbout = 100;
  std::set<std::size_t> ask;
  for (std::size_t i = 0; i < kMinutesOfYear; i += 179) {
    ask.insert(i);
  }
  for (std::size_t i = kAbout; i < kMinutesOfYear - kAbout; ++i) {
    if (localMinutes[i] != (localMinutes[i - 1] + 1) % 10'080) {
      for (std::size_t near = i - kAbout; near < i + kAbout; ++near) {
        ask.insert(near);
      }
    }
  }
  return {ask.begin(), ask.end()};
}

std::vector<bool> OnInEachMinute(const std::vector<ScheduleWindow>& windows,
                                 const std::vector<int>& localMinutes) {
  std::vector<bool> week(10'080);
  for (const ScheduleWindow& window : windows) {
    std::fill(week.begin() + window.start, week.begin() + window.end, true);
  }
  std::vector<bool> on;
  for (const int minute : localMinutes) {
    on.push_back(week[static_cast<std::size_t>(minute)]);
  }
  return on;
}

/// For each minute, the first later one at which it is not as in that one.
std::vector<std::size_t> NextDifferent(const std::vector<bool>& on) {
  std::vector<std::size_t> next(on.size(), on.size());
  for (std::size_t i = on.size() - 1; i-- > 0;) {
    next[i] = on[i + 1] != on[i] ? i + 1 : next[i + 1];
  }
  return next;
}

TEST(NextSwitch, FindsWhatALookAtEveryMinuteOfAYearFinds) {
  const std::int64_t begin = UTC(2026, 1, 1);
  for (const Place& place : Places()) {
    const std::vector<int> localMinutes = LocalMinutes(place.calendar, begin);
    const std::vector<std::size_t> ask = MinutesToAsk(localMinutes);
    for (const auto& windows : Weeks()) {
      SCOPED_TRACE(Name(place, windows));
      const ScheduleState schedule{RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 0, windows};
      const std::vector<bool> on = OnInEachMinute(windows, localMinutes);
      const std::vector<std::size_t> next = NextDifferent(on);
      for (const std::size_t i : ask) {
        ASSERT_LT(next[i], on.size());
        const std::int64_t expected = begin + static_cast<std::int64_t>(next[i]) * 60;
        const auto now = begin + static_cast<std::int64_t>(i * 60 + i % 60);
        ASSERT_EQ(NextSwitch(schedule, now, place.calendar), expected) << "asked at " << now;
        ASSERT_EQ(IsOn(schedule, now, place.calendar), on[i]) << "asked at " << now;
      }
    }
  }
}

TEST(NextSwitch, IsTheSecondAtWhichTheScheduleTurns) {
  for (const Place& place : Places()) {
    for (const auto& windows : Weeks()) {
      SCOPED_TRACE(Name(place, windows));
      const ScheduleState schedule{RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 0, windows};
      std::int64_t now = UTC(2026, 1, 1, 0, 0, 13);
      bool on = IsOn(schedule, now, place.calendar);
      int switches = 0;
      while (now < UTC(2027, 1, 1)) {
        const auto next = NextSwitch(schedule, now, place.calendar);
        ASSERT_TRUE(next.has_value());
        ASSERT_GT(*next, now);
        // As before from now to the second before, the other way from then on.
        for (std::int64_t time = now; time < *next; time += 600) {
          ASSERT_EQ(IsOn(schedule, time, place.calendar), on) << time;
        }
        ASSERT_EQ(IsOn(schedule, *next - 1, place.calendar), on) << *next;
        ASSERT_EQ(IsOn(schedule, *next, place.calendar), !on) << *next;
        on = !on;
        now = *next;
        ++switches;
      }
      EXPECT_GE(switches, 100);
    }
  }
}

}  // namespace
}  // namespace TALO::Wifid
