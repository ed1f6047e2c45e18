#pragma once

#include "daemon/radio/radio_driver.h"

#include <vector>

namespace TALO::Wifid {

/// Radios that exist in memory only: those of a model, with no neighbours and no stations. Does at once what
/// it is told, and the same each time.
class SimulatedDriver final : public RadioDriver {
 public:
  explicit SimulatedDriver(SupportedModel model);

  const Capabilities& GetCapabilities() const override { return capabilities_; }
  void Apply(const std::vector<RadioPlan>& plan, ApplyMode mode, Done done) override;
  std::vector<LiveRadio> GetLive() const override;

 private:
  Capabilities capabilities_;
  std::vector<RadioPlan> inTheAir_;
};

}  // namespace TALO::Wifid
