#pragma once

#include "daemon/radio/timers.h"
#include "daemon/service/engine.h"

#include <functional>

namespace TALO::Wifid {

/// The daemon's last moments: what is under way comes to its end, but not at any price.
class Ending {
 public:
  /// How long what is under way may take.
  static constexpr Timers::Duration kPatience = std::chrono::seconds(5);

  Ending(Engine& engine, Timers& timers) : engine_(engine), timers_(timers) {}

  /// Calls `finish` once nothing is under way in the engine, when the patience is over, or at once when asked
  /// for again; it may be called more than once.
  void Begin(const std::function<void()>& finish);

 private:
  Engine& engine_;
  Timers& timers_;
  bool begun_ = false;
};

}  // namespace TALO::Wifid
