#include "daemon/main/system_clock.h"

#include <chrono>

namespace TALO::Wifid {

std::int64_t SystemClock::WallNow() const {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

}  // namespace TALO::Wifid
