#pragma once

#include "daemon/main/event_loop.h"
#include "daemon/main/options.h"
#include "daemon/radio/radio_driver.h"
#include "daemon/radio/timers.h"
#include "daemon/service/log.h"

#include <memory>

namespace TALO::Wifid {

/// The radios that the options ask for, with what they need of the machine.
class ChosenDriver {
 public:
  /// The others must live longer. Throws std::exception with a sentence where the radios cannot be had.
  ChosenDriver(const Options& options, EventLoop& loop, Timers& timers, const Log& log);
  ~ChosenDriver();

  RadioDriver& Get() const { return *driver_; }

 private:
  struct Machine;

  std::unique_ptr<Machine> machine_;  ///< of real radios
  std::unique_ptr<RadioDriver> driver_;
};

}  // namespace TALO::Wifid
