#pragma once

#include "daemon/radio/timers.h"
#include "daemon/service/engine.h"

#include <optional>

namespace TALO::Wifid {

/// Has the schedules evaluated whenever one of them switches, and when the clock has been set. Sleeps
/// otherwise.
class ScheduleKeeper {
 public:
  ScheduleKeeper(Engine& engine, Timers& timers);
  ScheduleKeeper(const ScheduleKeeper&) = delete;
  ScheduleKeeper& operator=(const ScheduleKeeper&) = delete;
  ~ScheduleKeeper();

  /// Looks again at when the next switch is; call after every change of the schedules.
  void Rearm();

 private:
  void Evaluate();

  Engine& engine_;
  Timers& timers_;
  std::optional<Timers::Id> timer_;
};

}  // namespace TALO::Wifid
