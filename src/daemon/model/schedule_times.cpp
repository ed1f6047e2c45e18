#include "daemon/model/schedules.h"

#include <algorithm>
#include <set>
#include <vector>

namespace TALO::Wifid {

using Wifi::ScheduleWindow;

namespace {

constexpr int kMinutesPerDay = 24 * 60;
constexpr int kMinutesPerWeek = 7 * kMinutesPerDay;
constexpr std::int64_t kSecondsPerMinute = 60;
constexpr std::int64_t kSecondsPerDay = kMinutesPerDay * kSecondsPerMinute;

/// A week in which local time does not jump shows every minute. A jump may skip the only window of a week, so
/// one week is not enough; eight hold a quiet one whatever a country did to its clocks so far.
constexpr int kSearchDays = 8 * 7;

bool IsOnInMinute(const std::vector<ScheduleWindow>& windows, int minute) {
  return std::ranges::any_of(
      windows, [minute](const ScheduleWindow& w) { return w.start <= minute && minute < w.end; });
}

/// The minutes of the week at which the windows begin or cease to hold.
std::set<int> ChangesOf(const std::vector<ScheduleWindow>& windows) {
  std::set<int> changes;
  // Where one window ends and the next one starts nothing changes. The week's end is its start.
  const auto toggle = [&changes](int minute) {
    if (const auto [same, isNew] = changes.insert(minute); !isNew) {
      changes.erase(same);
    }
  };
  for (const ScheduleWindow& window : windows) {
    toggle(window.start);
    toggle(window.end % kMinutesPerWeek);
  }
  return changes;
}

/// Looks for the first second at which the windows differ from how they were at the start.
class SwitchSearch {
 public:
  SwitchSearch(const std::vector<ScheduleWindow>& windows, const Calendar& calendar)
      : windows_(windows), changes_(ChangesOf(windows)), calendar_(calendar) {}

  std::optional<std::int64_t> After(std::int64_t start) const {
    if (changes_.empty()) {
      return std::nullopt;
    }
    Moment from = At(start);
    for (int day = 0; day < kSearchDays; ++day) {
      const Moment to = At(from.time + kSecondsPerDay);
      if (const auto found = Search(from, to)) {
        return found;
      }
      from = to;
    }
    return std::nullopt;
  }

 private:
  /// A point in time with the minute of the week that the local clock shows.
  struct Moment {
    std::int64_t time;
    int minute;
  };

  Moment At(std::int64_t time) const { return {time, calendar_.MinuteOfWeek(time)}; }

  bool IsOnAt(const Moment& moment) const { return IsOnInMinute(windows_, moment.minute); }

  /// From 1; there is a change.
  int MinutesToChange(int minute) const {
    const auto next = changes_.upper_bound(minute);
    return next != changes_.end() ? *next - minute : *changes_.begin() + kMinutesPerWeek - minute;
  }

  /// After `from` and not after `to`, some whole minutes later. Where the local clock got as far as time did,
  /// it did not jump in between, and the next change says the answer; else each half is searched by itself,
  /// down to the minute of the jump.
  std::optional<std::int64_t> Search(const Moment& from, const Moment& to) const {
    const auto length = static_cast<int>((to.time - from.time) / kSecondsPerMinute);
    if (to.minute == (from.minute + length) % kMinutesPerWeek) {
      const int distance = MinutesToChange(from.minute);
      return distance > length ? std::nullopt
                               : std::optional(SearchMinute(from.time + distance * kSecondsPerMinute));
    }
    if (length == 1) {
      return IsOnAt(from) == IsOnAt(to) ? std::nullopt : std::optional(SearchMinute(to.time));
    }
    const Moment middle = At(from.time + length / 2 * kSecondsPerMinute);
    const auto found = Search(from, middle);
    return found ? found : Search(middle, to);
  }

  /// In the minute that ends at `changed`, which differs from where it began: minutes of the local clock need
  /// not begin with those of UTC.
  std::int64_t SearchMinute(std::int64_t changed) const {
    const bool wanted = IsOnAt(At(changed));
    std::int64_t unchanged = changed - kSecondsPerMinute;
    while (changed - unchanged > 1) {
      const std::int64_t middle = unchanged + (changed - unchanged) / 2;
      (IsOnAt(At(middle)) == wanted ? changed : unchanged) = middle;
    }
    return changed;
  }

  const std::vector<ScheduleWindow>& windows_;
  const std::set<int> changes_;
  const Calendar& calendar_;
};

}  // namespace

bool IsOn(const ScheduleState& schedule, std::int64_t now, const Calendar& calendar) {
  switch (schedule.mode) {
    case ScheduleMode::ValidFor:
      return now < schedule.validUntil;
    case ScheduleMode::Customized:
      return IsOnInMinute(schedule.windows, calendar.MinuteOfWeek(now));
    case ScheduleMode::Error:
      break;
  }
  return true;
}

std::optional<std::int64_t> NextSwitch(const ScheduleState& schedule, std::int64_t now,
                                       const Calendar& calendar) {
  switch (schedule.mode) {
    case ScheduleMode::ValidFor:
      return now < schedule.validUntil ? std::optional(schedule.validUntil) : std::nullopt;
    case ScheduleMode::Customized:
      return SwitchSearch(schedule.windows, calendar).After(now);
    case ScheduleMode::Error:
      break;
  }
  return std::nullopt;
}

}  // namespace TALO::Wifid
