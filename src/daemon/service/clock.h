#pragma once

#include <cstdint>
#include <functional>

namespace TALO::Wifid {

/// The door to the time of day.
class Clock {
 public:
  virtual ~Clock() = default;

  /// Seconds since 1970, UTC. Jumps when somebody sets the clock.
  virtual std::int64_t WallNow() const = 0;

  /// Calls `action` on the event loop each time the clock has been set; replaces the action before.
  virtual void WhenSet(std::function<void()> action) = 0;
};

}  // namespace TALO::Wifid
