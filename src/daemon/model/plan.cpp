#include "daemon/model/plan.h"

#include "daemon/model/country.h"
#include "daemon/model/mac_filter.h"
#include "daemon/model/mesh.h"
#include "daemon/model/passwords.h"
#include "daemon/model/stations.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

BSSPlan PlanBackhaul(const State& state, const RadioCapability& radio) {
  BSSPlan bss;
  bss.networkId = kBackhaulNetworkId;
  bss.interface = BSSInterface(radio, kBackhaulSlot);
  bss.bssid = BSSAddress(radio, kBackhaulSlot);
  bss.ssid = state.backhaul.ssid;
  bss.hidden = true;
  bss.securityMode = SecurityMode::PersonalWPA2;
  bss.passphrase = state.backhaul.password;
  return bss;
}

BSSPlan PlanNetwork(const State& state, const NetworkState& network, const RadioCapability& radio) {
  return {network.id,
          BSSInterface(radio, network.slot),
          BSSAddress(radio, network.slot),
          network.ssid,
          network.hidden,
          network.securityMode,
          PassphraseOn(network, radio.radio),
          network.bridge,
          AccessOf(state, network)};
}

std::optional<StationPlan> PlanStation(const State& state, const RadioCapability& radio) {
  const auto station = std::ranges::find(state.stations, radio.radio, &Wifi::StationSetting::radio);
  if (station == state.stations.end() || !station->enable) {
    return std::nullopt;
  }
  return StationPlan{StationInterface(radio), station->essid, station->user,
                     station->password,       station->bssid, station->securityMode};
}

}  // namespace

bool Admits(const AccessPlan& access, const Wifi::Util::MACAddress& device) {
  switch (access.rule) {
    case AccessPlan::Rule::Everybody:
      return true;
    case AccessPlan::Rule::OnlyListed:
      return access.devices.contains(device);
    case AccessPlan::Rule::AllButListed:
      return !access.devices.contains(device);
  }
  return false;
}

std::vector<RadioPlan> MakePlan(const State& state, const Capabilities& capabilities,
                                const std::set<NetworkOnRadio>& scheduledOff) {
  const RadioFrequency backhaulRadio = BackhaulRadio(state, capabilities);
  std::vector<RadioPlan> plans;
  for (const RadioCapability& capability : capabilities.radios) {
    const auto radio = std::ranges::find(state.radios, capability.radio, &RadioState::radio);
    if (radio == state.radios.end()) {
      continue;
    }
    RadioPlan plan{radio->radio,
                   radio->enable && WhyOff(state.country, capability).empty(),
                   radio->channel,
                   radio->channelWidth,
                   radio->transmitPower,
                   state.country,
                   {},
                   PlanStation(state, capability),
                   std::nullopt,
                   state.macFilterGlobal};
    if (radio->radio == backhaulRadio) {
      if (state.backhaul.enable) {
        plan.bsss.push_back(PlanBackhaul(state, capability));
      }
      if (state.backhaulSTA.enable) {
        plan.backhaulStation =
            BackhaulStationPlan{BackhaulStationInterface(capability), state.backhaulSTA.ssid,
                                state.backhaulSTA.password, state.scanType};
      }
    }
    for (const NetworkState& network : state.networks) {
      if (network.activated && !scheduledOff.contains({network.id, radio->radio})) {
        plan.bsss.push_back(PlanNetwork(state, network, capability));
      }
    }
    plans.push_back(std::move(plan));
  }
  return plans;
}

}  // namespace TALO::Wifid
