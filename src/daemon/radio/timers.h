#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace TALO::Wifid {

/// The door to time that passes: a clock that only goes forward, and calls when it gets somewhere. Tests own
/// one.
class Timers {
 public:
  using Duration = std::chrono::milliseconds;
  using Id = std::uint64_t;

  virtual ~Timers() = default;

  /// Since some fixed point.
  virtual Duration Now() const = 0;

  /// Calls `action` once on the event loop, `delay` from now or later, never from inside this call; in the
  /// order of their times, and of their making where those are equal.
  virtual Id After(Duration delay, std::function<void()> action) = 0;

  /// Nothing is called any more; an Id that is over is ignored.
  virtual void Cancel(Id id) = 0;
};

}  // namespace TALO::Wifid
