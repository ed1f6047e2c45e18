#include "daemon/radio/simulated/wps_session.h"

#include <utility>

namespace TALO::Wifid {

namespace {

constexpr Timers::Duration kSessionTime = std::chrono::seconds(120);

/// Presses that lie no further apart overlap.
constexpr Timers::Duration kOverlapTime = std::chrono::seconds(2);

}  // namespace

WPSSession::WPSSession(const Surroundings& surroundings, Devices& devices, FindBSS findBSS)
    : surroundings_(surroundings), devices_(devices), findBSS_(std::move(findBSS)) {}

void WPSSession::Open(const std::string& interface) {
  interface_ = interface;
  OwnTimers& timers = surroundings_.timers;
  pending_.push_back(timers.After(kSessionTime, [this] { End(WPSFinished::Outcome::TimedOut); }));
  const auto& devices = surroundings_.scenario.devices;
  for (std::size_t i = 0; i < devices.size(); ++i) {
    if (devices[i].pressesAfter) {
      pending_.push_back(timers.After(Seconds(*devices[i].pressesAfter), [this, i] { Press(i); }));
    }
  }
}

void WPSSession::Press(std::size_t device) {
  const auto bss = findBSS_(*interface_);
  if (!bss || !devices_.CanReach(device, *bss)) {
    return;
  }
  if (pressed_) {
    End(WPSFinished::Outcome::Overlap);
    return;
  }
  pressed_ = device;
  pending_.push_back(surroundings_.timers.After(kOverlapTime, [this] { Admit(); }));
}

// It may have left meanwhile.
void WPSSession::Admit() {
  const std::size_t device = *std::exchange(pressed_, std::nullopt);
  const auto bss = findBSS_(*interface_);
  if (bss && devices_.CanReach(device, *bss)) {
    devices_.Enrol(device, *bss);
    End(WPSFinished::Outcome::Enrolled);
  }
}

void WPSSession::End(WPSFinished::Outcome outcome) {
  for (const Timers::Id id : std::exchange(pending_, {})) {
    surroundings_.timers.Cancel(id);
  }
  pressed_.reset();
  surroundings_.emit(WPSFinished{*std::exchange(interface_, std::nullopt), outcome});
}

}  // namespace TALO::Wifid
