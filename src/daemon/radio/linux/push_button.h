#pragma once

#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/program.h"
#include "daemon/radio/own_timers.h"
#include "daemon/radio/radio_driver.h"

#include <functional>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// The one session of WPS push button that may run.
class PushButton {
 public:
  using Tell = std::function<void(const RadioEvent&)>;

  PushButton(Program& hostapd, Timers& timers, Tell tell);
  PushButton(const PushButton&) = delete;
  PushButton& operator=(const PushButton&) = delete;

  /// For a BSS that is up and takes WPS. Busy while a session runs.
  void Open(const std::string& interface, RadioDriver::Done done);
  /// NotAllowed where no session runs on the interface.
  void Cancel(const std::string& interface, RadioDriver::Done done);

  void Take(const ControlMessage& message);
  void BSSWentDown(const std::string& interface);

 private:
  void End(WPSFinished::Outcome outcome);

  Program& hostapd_;
  OwnTimers timers_;
  Tell tell_;
  std::optional<std::string> interface_;  ///< while a session runs or is about to
  std::optional<Timers::Id> deadline_;    ///< while it runs
};

}  // namespace TALO::Wifid
