#pragma once

#include <cstdint>

namespace TALO::Wifid {

/// The door to the time.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since 1970, UTC. Jumps when somebody sets the clock.
  virtual std::int64_t WallNow() const = 0;
};

}  // namespace TALO::Wifid
