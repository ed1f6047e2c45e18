#pragma once

#include "daemon/radio/radio_driver.h"

#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// A driver as it is, which must live longer, and the plan that each radio reached last.
class PlanRecord final : public RadioDriver {
 public:
  explicit PlanRecord(RadioDriver& driver) : driver_(driver) {}

  /// A radio whose last plan failed or is on its way is absent.
  const std::map<RadioFrequency, RadioPlan>& Reached() const { return reached_; }

  void SetEventSink(EventSink sink) override { driver_.SetEventSink(std::move(sink)); }
  const Capabilities& GetCapabilities() const override { return driver_.GetCapabilities(); }
  std::set<std::string> GetBridges() const override { return driver_.GetBridges(); }
  std::vector<MeshNode> GetMeshNodes() const override { return driver_.GetMeshNodes(); }
  void Apply(const RadioPlan& plan, ApplyMode mode, Done done) override {
    reached_.erase(plan.radio);
    driver_.Apply(plan, mode, [this, plan, done = std::move(done)](const Result<void>& result) {
      if (result.Succeeded()) {
        reached_[plan.radio] = plan;
      }
      done(result);
    });
  }
  std::vector<LiveRadio> GetLive() const override { return driver_.GetLive(); }
  void Scan(RadioFrequency radio, ScanDone done) override { driver_.Scan(radio, std::move(done)); }
  void Reconnect(RadioFrequency radio, Done done) override { driver_.Reconnect(radio, std::move(done)); }
  void StartWPS(const std::string& interface, Done done) override {
    driver_.StartWPS(interface, std::move(done));
  }
  void CancelWPS(const std::string& interface, Done done) override {
    driver_.CancelWPS(interface, std::move(done));
  }
  void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) override {
    driver_.ConfigureRegistrar(input, std::move(done));
  }

 private:
  RadioDriver& driver_;
  std::map<RadioFrequency, RadioPlan> reached_;
};

}  // namespace TALO::Wifid
