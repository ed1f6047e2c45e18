#pragma once

#include "daemon/radio/timers.h"
#include "daemon/service/engine.h"

#include <optional>

namespace TALO::Wifid {

/// Has the schedules evaluated whenever one of them switches, when the clock has been set, and every minute
/// while a radio has not followed. Sleeps otherwise.
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
  bool behind_ = false;  ///< a radio did not follow the last switch
};

}  // namespace TALO::Wifid
