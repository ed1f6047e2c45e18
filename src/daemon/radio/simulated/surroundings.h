#pragma once

#include "daemon/radio/own_timers.h"
#include "daemon/radio/radio_events.h"
#include "daemon/radio/simulated/scenario.h"

#include <functional>

namespace TALO::Wifid {

/// What every part of the simulation has in common. Parts change in calls of `timers` only, never in a
/// caller's call.
struct Surroundings {
  OwnTimers& timers;
  const Scenario& scenario;
  std::function<void(RadioEvent)> emit;  ///< tells the event after the call that is under way
};

inline Timers::Duration Seconds(int count) { return std::chrono::seconds(count); }
inline Timers::Duration Milliseconds(int count) { return Timers::Duration(count); }

/// Whole seconds that have passed since a moment.
inline int SecondsSince(const OwnTimers& timers, Timers::Duration moment) {
  return static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(timers.Now() - moment).count());
}

}  // namespace TALO::Wifid
