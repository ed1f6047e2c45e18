#pragma once

// Local time of a place by a table, without the machine's own.

#include "daemon/model/schedules.h"

#include <chrono>
#include <cstdint>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// Seconds since 1970 of a time in UTC.
inline std::int64_t UTC(int year, unsigned month, unsigned day, int hour = 0, int minute = 0,
                        int second = 0) {
  const std::chrono::sys_days date =
      std::chrono::year(year) / std::chrono::month(month) / std::chrono::day(day);
  const std::int64_t days = date.time_since_epoch().count();
  return ((days * 24 + hour) * 60 + minute) * 60 + second;
}

class ZoneCalendar final : public Calendar {
 public:
  /// Before the first jump local time is `offset` seconds ahead of UTC; from the first member of each jump on
  /// it is the second.
  explicit ZoneCalendar(std::int64_t offset, std::vector<std::pair<std::int64_t, std::int64_t>> jumps = {})
      : offset_(offset), jumps_(std::move(jumps)) {}

  int MinuteOfWeek(std::int64_t time) const override {
    ++questions_;
    std::int64_t offset = offset_;
    for (const auto& [from, then] : jumps_) {
      if (time >= from) {
        offset = then;
      }
    }
    constexpr std::int64_t kWeek = 7 * 24 * 60 * 60;
    constexpr std::int64_t kThursday = 3 * 24 * 60 * 60;  // the day on which 1970 began
    const std::int64_t second = (time + offset + kThursday) % kWeek;
    return static_cast<int>((second + kWeek) % kWeek / 60);
  }

  int Questions() const { return questions_; }

 private:
  std::int64_t offset_;
  std::vector<std::pair<std::int64_t, std::int64_t>> jumps_;
  mutable int questions_ = 0;
};

inline constexpr std::int64_t kHour = 3'600;

inline ZoneCalendar Greenwich() { return ZoneCalendar(0); }

/// Berlin in 2026: 02:00 becomes 03:00 on Sunday 29 March, 03:00 becomes 02:00 on Sunday 25 October.
inline ZoneCalendar Berlin2026() {
  return ZoneCalendar(kHour, {{UTC(2026, 3, 29, 1), 2 * kHour}, {UTC(2026, 10, 25, 1), kHour}});
}

}  // namespace TALO::Wifid
