#include "daemon/main/local_calendar.h"

#include <ctime>

namespace TALO::Wifid {

int LocalCalendar::MinuteOfWeek(std::int64_t time) const {
  // localtime_r alone reads the setting once; this looks whether it was changed.
  tzset();
  const std::time_t seconds = time;
  std::tm local{};
  // Both fail for years that an int does not hold. The first second of 1970 then stands for them.
  if (localtime_r(&seconds, &local) == nullptr) {
    const std::time_t epoch = 0;
    gmtime_r(&epoch, &local);
  }
  const int day = (local.tm_wday + 6) % 7;  // Sunday is its first day, ours is Monday
  return (day * 24 + local.tm_hour) * 60 + local.tm_min;
}

}  // namespace TALO::Wifid
