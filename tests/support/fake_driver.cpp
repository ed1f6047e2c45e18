#include "support/fake_driver.h"

#include "daemon/model/text.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

LiveRadio Down(RadioFrequency radio) {
  LiveRadio live;
  live.radio = radio;
  return live;
}

std::string Brief(const RadioPlan& plan) {
  std::string text = NameOrNumber(plan.radio) + ":";
  for (const BSSPlan& bss : plan.bsss) {
    text += " " + std::to_string(bss.networkId);
  }
  return text + (plan.station ? ", joins " + plan.station->ssid : "");
}

Result<void> ResultOf(const std::string& failure) {
  return failure.empty() ? Result<void>() : Refusal{ErrorCode::RadioFailed, failure};
}

}  // namespace

FakeDriver::FakeDriver(Journal& journal, Capabilities capabilities)
    : journal_(journal), capabilities_(std::move(capabilities)) {
  for (const RadioCapability& radio : capabilities_.radios) {
    live_[radio.radio] = Down(radio.radio);
  }
}

std::set<RadioFrequency> FakeDriver::BusyRadios() const {
  std::set<RadioFrequency> radios;
  for (const auto& [radio, finish] : underWay_) {
    radios.insert(radio);
  }
  return radios;
}

void FakeDriver::Begin(RadioFrequency radio, const std::string& note, Finishing finish) {
  EXPECT_FALSE(underWay_.contains(radio)) << note << " came before the one before was done";
  journal_.push_back(note);
  underWay_[radio] = std::move(finish);
}

void FakeDriver::Finish(RadioFrequency radio) {
  const auto operation = underWay_.extract(radio);
  ASSERT_FALSE(operation.empty()) << NameOrNumber(radio) << " has nothing to be done with";
  operation.mapped()(failures_[radio].Take());
}

void FakeDriver::FinishAll() {
  while (IsBusy()) {
    Finish(underWay_.begin()->first);
  }
}

std::vector<RadioPlan> FakeDriver::LastPlans() const {
  std::vector<RadioPlan> plans;
  for (const auto& [radio, plan] : plans_) {
    plans.push_back(plan);
  }
  return plans;
}

void FakeDriver::Apply(const RadioPlan& plan, ApplyMode mode, Done done) {
  plans_[plan.radio] = plan;
  Begin(plan.radio, (mode == ApplyMode::Everything ? "apply everything " : "apply ") + Brief(plan),
        [this, plan, done = std::move(done)](const std::string& failure) {
          live_[plan.radio] = failure.empty() ? LiveAsPlanned({plan}).front() : Down(plan.radio);
          done(ResultOf(failure));
        });
}

std::vector<LiveRadio> FakeDriver::GetLive() const {
  std::vector<LiveRadio> live;
  for (const auto& [radio, entry] : live_) {
    live.push_back(entry);
  }
  return live;
}

void FakeDriver::Scan(RadioFrequency radio, ScanDone done) {
  Begin(radio, "scan " + NameOrNumber(radio),
        [this, radio, done = std::move(done)](const std::string& failure) {
          if (failure.empty()) {
            done(inTheAir[radio]);
          } else {
            done(Refusal{ErrorCode::RadioFailed, failure});
          }
        });
}

void FakeDriver::Reconnect(RadioFrequency radio, Done done) {
  Begin(radio, "reconnect " + NameOrNumber(radio),
        [done = std::move(done)](const std::string& failure) { done(ResultOf(failure)); });
}

void FakeDriver::StartWPS(const std::string& interface, Done done) {
  Begin(RadioOf(interface), "start WPS " + interface,
        [done = std::move(done)](const std::string& failure) { done(ResultOf(failure)); });
}

void FakeDriver::CancelWPS(const std::string& interface, Done done) {
  Begin(RadioOf(interface), "cancel WPS " + interface,
        [this, interface, done = std::move(done)](const std::string& failure) {
          done(ResultOf(failure));
          if (failure.empty() && sink_) {
            Tell(WPSFinished{interface, WPSFinished::Outcome::Cancelled});
          }
        });
}

void FakeDriver::ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) {
  registrarInputs.push_back(input);
  Begin(RadioOf(input.ifName), "registrar " + input.ifName,
        [done = std::move(done)](const std::string& failure) { done(ResultOf(failure)); });
}

RadioFrequency FakeDriver::RadioOf(const std::string& interface) const {
  for (const RadioCapability& radio : capabilities_.radios) {
    if (interface.starts_with(radio.interface + "_")) {
      return radio.radio;
    }
  }
  ADD_FAILURE() << interface << " belongs to no radio";
  return RadioFrequency::Error;
}

}  // namespace TALO::Wifid
