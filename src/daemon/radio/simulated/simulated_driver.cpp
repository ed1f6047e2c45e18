#include "daemon/radio/simulated/simulated_driver.h"

#include "daemon/model/text.h"
#include "daemon/radio/plan_check.h"
#include "daemon/radio/simulated/hardware.h"
#include "daemon/radio/simulated/security.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

Refusal RadioFailure(const std::string& sentence) { return {ErrorCode::RadioFailed, sentence}; }

}  // namespace

SimulatedDriver::SimulatedDriver(SupportedModel model, Scenario scenario, Timers& timers)
    : scenario_(std::move(scenario)),
      capabilities_(MakeSimulatedCapabilities(model)),
      timers_(timers),
      surroundings_{timers_, scenario_,
                    [this](RadioEvent event) {
                      Later([this, event = std::move(event)] {
                        if (sink_) {
                          sink_(event);
                        }
                      });
                    }},
      applyFaults_(scenario_.faults.apply, capabilities_),
      scanFaults_(scenario_.faults.scan, capabilities_),
      air_(surroundings_,
           [this] {
             for (const auto& radio : radios_) {
               radio->simulated.NoticeAir();
             }
           }),
      devices_(surroundings_, capabilities_, [this] { return FindOpenBSSs(); }),
      wps_(surroundings_, devices_, [this](const std::string& interface) { return FindOpenBSS(interface); }) {
  const auto bssWentDown = [this](const std::string& interface) {
    if (wps_.GetInterface() == interface) {
      wps_.End(WPSFinished::Outcome::Cancelled);
    }
  };
  for (const RadioCapability& capability : capabilities_.radios) {
    radios_.push_back(std::unique_ptr<Radio>(new Radio{
        {capability, surroundings_, air_, devices_, bssWentDown}, {capability, surroundings_, air_}, false}));
  }
}

void SimulatedDriver::Apply(const RadioPlan& plan, ApplyMode mode, Done done) {
  Radio* radio = Occupy(plan.radio, done);
  if (radio == nullptr) {
    return;
  }
  done = Releasing(*radio, std::move(done));
  if (auto check = CheckPlan(plan, radio->simulated.GetCapability(), scenario_.bridges); !check.Succeeded()) {
    done(check.Why());
    return;
  }
  radio->simulated.Apply(plan, mode, applyFaults_.Next(plan.radio), std::move(done));
}

std::vector<LiveRadio> SimulatedDriver::GetLive() const {
  std::vector<LiveRadio> live;
  for (const auto& radio : radios_) {
    live.push_back(radio->simulated.GetLive());
  }
  return live;
}

void SimulatedDriver::Scan(RadioFrequency frequency, ScanDone done) {
  Radio* radio = Occupy(frequency, done);
  if (radio == nullptr) {
    return;
  }
  ScanDone answer = [this, radio, done = std::move(done)](Result<std::vector<Wifi::ScanResult>> results) {
    Later([radio, done, results = std::move(results)] {
      radio->busy = false;
      done(results);
    });
  };
  if (!radio->simulated.IsUp()) {
    answer(RadioFailure("the radio " + NameOrNumber(frequency) + " is not up"));
    return;
  }
  const bool listens = !radio->scanner.Remembers();
  radio->scanner.Scan(listens ? scanFaults_.Next(frequency) : std::nullopt, std::move(answer));
}

void SimulatedDriver::Reconnect(RadioFrequency frequency, Done done) {
  Radio* radio = Occupy(frequency, done);
  if (radio == nullptr) {
    return;
  }
  Later([radio, done = Releasing(*radio, std::move(done))] {
    radio->simulated.Reconnect();
    done({});
  });
}

void SimulatedDriver::StartWPS(const std::string& interface, Done done) {
  Later([this, interface, done = std::move(done)] { done(OpenWPS(interface)); });
}

Result<void> SimulatedDriver::OpenWPS(const std::string& interface) {
  const auto bss = FindOpenBSS(interface);
  if (!bss) {
    return RadioFailure("the BSS " + interface + " is not up");
  }
  if (!IsForWPS(bss->plan->securityMode)) {
    return Refusal{ErrorCode::NotSupported, "the BSS " + interface +
                                                " cannot use WPS with the security mode " +
                                                NameOrNumber(bss->plan->securityMode)};
  }
  if (wps_.GetInterface()) {
    return Refusal{ErrorCode::Busy, "a WPS session runs on " + *wps_.GetInterface()};
  }
  wps_.Open(interface);
  return {};
}

void SimulatedDriver::CancelWPS(const std::string& interface, Done done) {
  Later([this, interface, done = std::move(done)] {
    const Result<void> result = CloseWPS(interface);
    Later([done, result] { done(result); });
  });
}

Result<void> SimulatedDriver::CloseWPS(const std::string& interface) {
  if (wps_.GetInterface() != interface) {
    return Refusal{ErrorCode::NotAllowed, "no WPS session runs on " + interface};
  }
  wps_.End(WPSFinished::Outcome::Cancelled);
  return {};
}

void SimulatedDriver::ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) {
  Later([this, input, done = std::move(done)] {
    if (!HasInterface(input.ifName)) {
      done(Refusal{ErrorCode::NotSupported, "there is no registrar on " + input.ifName});
      return;
    }
    registrars_[input.ifName] = input;
    done({});
  });
}

SimulatedDriver::Radio* SimulatedDriver::FindRadio(RadioFrequency frequency) {
  const auto found = std::ranges::find(
      radios_, frequency, [](const auto& radio) { return radio->simulated.GetCapability().radio; });
  return found != radios_.end() ? found->get() : nullptr;
}

SimulatedDriver::Radio* SimulatedDriver::Occupy(RadioFrequency frequency,
                                                const std::function<void(Refusal)>& refuse) {
  Radio* radio = FindRadio(frequency);
  if (radio == nullptr) {
    Later(
        [refuse, frequency] { refuse(RadioFailure("this router has no radio " + NameOrNumber(frequency))); });
    return nullptr;
  }
  if (radio->busy) {
    Later([refuse, frequency] {
      refuse({ErrorCode::Busy, "the radio " + NameOrNumber(frequency) + " is busy with another operation"});
    });
    return nullptr;
  }
  radio->busy = true;
  return radio;
}

// The answer comes after the events of what it answers, which are under way already.
RadioDriver::Done SimulatedDriver::Releasing(Radio& radio, Done done) {
  return [this, &radio, done = std::move(done)](const Result<void>& result) {
    Later([&radio, done, result] {
      radio.busy = false;
      done(result);
    });
  };
}

std::vector<OpenBSS> SimulatedDriver::FindOpenBSSs() const {
  std::vector<OpenBSS> bsss;
  for (const auto& radio : radios_) {
    radio->simulated.AddOpenBSSs(bsss);
  }
  return bsss;
}

std::optional<OpenBSS> SimulatedDriver::FindOpenBSS(const std::string& interface) const {
  for (const OpenBSS& bss : FindOpenBSSs()) {
    if (bss.plan->interface == interface) {
      return bss;
    }
  }
  return std::nullopt;
}

bool SimulatedDriver::HasInterface(const std::string& interface) const {
  return std::ranges::any_of(
      radios_, [&interface](const auto& radio) { return radio->simulated.HasInterface(interface); });
}

}  // namespace TALO::Wifid
