#include "daemon/service/wps_sessions.h"

#include <utility>

namespace TALO::Wifid {

template <typename Ask>
auto WPSSessions::Look(Ask ask) const {
  const auto live = engine_.GetDoors().driver.GetLive();
  return ask(WPSPicture{engine_.GetState(), engine_.GetCapabilities(), live, session_});
}

Result<Wifi::NetworkRadioPair> WPSSessions::DefaultTarget() const {
  return DefaultWPSTarget(engine_.GetState(), engine_.GetCapabilities());
}

void WPSSessions::UseRadioOf(const std::string& interface, std::function<void(std::function<void()>)> use) {
  engine_.Use(engine_.Ask(InterfaceRadioMap).at(interface), std::move(use));
}

// A target that does not exist is the caller's mistake; anything else that stands in the way is the answer.
Result<bool> WPSSessions::IsAvailable(const Wifi::NetworkRadioPair& target) const {
  const auto interface = Look([&target](const WPSPicture& picture) { return WPSInterface(picture, target); });
  if (interface.Succeeded()) {
    return true;
  }
  const ErrorCode code = interface.Why().code;
  if (code == ErrorCode::NotFound || code == ErrorCode::InvalidArgument) {
    return interface.Why();
  }
  return false;
}

void WPSSessions::Open(const Wifi::NetworkRadioPair& target, Engine::Done<void> done) {
  const auto interface = Look([&target](const WPSPicture& picture) { return WPSInterface(picture, target); });
  if (!interface.Succeeded()) {
    done(interface.Why());
    return;
  }
  UseRadioOf(interface.Value(), [this, target, expected = interface.Value(),
                                 done = std::move(done)](const std::function<void()>& leave) {
    if (!done.IsAwaited()) {
      leave();
      return;
    }
    // Whatever had the radio before may have changed what was there: then it is looked at anew.
    const auto now = Look([&target](const WPSPicture& picture) { return WPSInterface(picture, target); });
    if (!now.Succeeded() || now.Value() != expected) {
      leave();
      Open(target, done);
      return;
    }
    // Taken before the driver has answered: a second caller meanwhile is told that one runs.
    session_ = expected;
    engine_.GetDoors().driver.StartWPS(expected, [this, expected, done, leave](const Result<void>& started) {
      leave();
      if (!started.Succeeded() && session_ == expected) {
        session_.reset();
      }
      done(started);
    });
  });
}

void WPSSessions::PushButton(Engine::Done<void> done) {
  const auto target = DefaultTarget();
  if (!target.Succeeded()) {
    done(target.Why());
    return;
  }
  Open(target.Value(), std::move(done));
}

void WPSSessions::End(const std::string& interface, Engine::Done<void> done) {
  const auto check =
      Look([&interface](const WPSPicture& picture) { return CheckWPSConnected(picture, interface); });
  if (!check.Succeeded()) {
    done(check);
    return;
  }
  UseRadioOf(interface, [this, interface, done = std::move(done)](const std::function<void()>& leave) {
    if (!done.IsAwaited()) {
      leave();
      return;
    }
    const auto still =
        Look([&interface](const WPSPicture& picture) { return CheckWPSConnected(picture, interface); });
    if (!still.Succeeded()) {
      leave();
      done(still);
      return;
    }
    engine_.GetDoors().driver.CancelWPS(interface, [done, leave](const Result<void>& cancelled) {
      leave();
      done(cancelled);
    });
  });
}

void WPSSessions::ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Engine::Done<void> done) {
  const auto check = CheckRegistrarInput(engine_.GetState(), engine_.GetCapabilities(), input);
  if (!check.Succeeded()) {
    done(check);
    return;
  }
  UseRadioOf(input.ifName, [this, input, done = std::move(done)](const std::function<void()>& leave) {
    if (!done.IsAwaited()) {
      leave();
      return;
    }
    const auto still = CheckRegistrarInput(engine_.GetState(), engine_.GetCapabilities(), input);
    if (!still.Succeeded()) {
      leave();
      done(still);
      return;
    }
    engine_.GetDoors().driver.ConfigureRegistrar(input, [done, leave](const Result<void>& configured) {
      leave();
      done(configured);
    });
  });
}

void WPSSessions::Finished(const WPSFinished& event) {
  if (session_ == event.interface) {
    session_.reset();
  }
}

}  // namespace TALO::Wifid
