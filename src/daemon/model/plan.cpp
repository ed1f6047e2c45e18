#include "daemon/model/plan.h"

#include <algorithm>

namespace TALO::Wifid {

std::vector<RadioPlan> MakePlan(const State& state, const Capabilities& capabilities) {
  std::vector<RadioPlan> plans;
  for (const RadioCapability& capability : capabilities.radios) {
    const auto radio = std::ranges::find(state.radios, capability.radio, &RadioState::radio);
    if (radio == state.radios.end()) {
      continue;
    }
    RadioPlan plan{radio->radio,
                   radio->enable,
                   radio->channel,
                   radio->channelWidth,
                   radio->transmitPower,
                   state.country,
                   {}};
    for (const NetworkState& network : state.networks) {
      if (network.activated) {
        plan.bsss.push_back({network.id, BSSInterface(capability, network.slot),
                             BSSAddress(capability, network.slot), network.ssid, network.hidden,
                             network.securityMode, network.passphrase, network.bridge});
      }
    }
    plans.push_back(std::move(plan));
  }
  return plans;
}

}  // namespace TALO::Wifid
