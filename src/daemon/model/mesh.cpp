#include "daemon/model/mesh.h"

#include "daemon/model/country.h"
#include "daemon/model/radios.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

/// Whether it has a channel in the country.
bool IsWorking(const State& state, const Capabilities& capabilities, RadioFrequency radio) {
  return CheckIsWorking(state, capabilities, radio).Succeeded();
}

}  // namespace

Result<void> CheckBackhaul(const State& state, const Wifi::BackhaulConfig& config) {
  if (!config.enable && config.ssid.empty() && config.password.empty()) {
    return {};
  }
  if (auto check = CheckSSID(config.ssid, "backhaul SSID"); !check.Succeeded()) {
    return check;
  }
  if (auto check = CheckPassphrase(config.password); !check.Succeeded()) {
    return check;
  }
  const auto same = std::ranges::find(state.networks, config.ssid, &NetworkState::ssid);
  if (same != state.networks.end()) {
    return Refusal{ErrorCode::AlreadyExists,
                   "the SSID " + Quoted(config.ssid) + " is in use by network " + std::to_string(same->id)};
  }
  return {};
}

RadioFrequency BackhaulRadio(const State& state, const Capabilities& capabilities) {
  if (!IsTriBand(capabilities)) {
    return capabilities.radios.empty() ? RadioFrequency::Error : capabilities.radios.back().radio;
  }
  return state.backhaulSwapped || !IsWorking(state, capabilities, RadioFrequency::Band5GHz_2)
             ? RadioFrequency::Band5GHz_1
             : RadioFrequency::Band5GHz_2;
}

Result<Change<void>> ModifyBackhaul(const State& state, const Wifi::BackhaulConfig& config) {
  if (auto check = CheckBackhaul(state, config); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  change.state.backhaul = config;
  return change;
}

Result<Change<void>> ModifyBackhaulSTA(const State& state, const Wifi::BackhaulConfig& config) {
  if (auto check = CheckBackhaul(state, config); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  change.state.backhaulSTA = config;
  return change;
}

Result<Change<void>> EnableScan(const State& state, ScanType type) {
  if (!IsReal(type)) {
    return Refusal{ErrorCode::InvalidArgument, "the scan type " + NameOrNumber(type) + " does not exist"};
  }
  Change<void> change{state};
  change.state.scanType = type;
  return change;
}

Result<Change<void>> ModifyMeshInfo(const State& state, const Wifi::MeshInfo& info) {
  for (const SupportedModel model : info.models) {
    if (!IsReal(model)) {
      return Refusal{ErrorCode::InvalidArgument, "the model " + NameOrNumber(model) + " does not exist"};
    }
  }
  Change<void> change{state};
  change.state.mesh = info;
  return change;
}

Result<Change<void>> SwapBackhaulBand(const State& state, const Capabilities& capabilities, bool swap) {
  if (!IsTriBand(capabilities)) {
    return Refusal{ErrorCode::NotSupported, "the router " + NameOrNumber(capabilities.model) +
                                                " does not have two 5 GHz radios, there is nothing to swap"};
  }
  if (auto check = CheckIsWorking(state, capabilities, RadioFrequency::Band5GHz_2);
      swap && !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  change.state.backhaulSwapped = swap;
  return change;
}

bool IsWifiAdjustNeeded(const State& state, const Capabilities& capabilities,
                        const std::vector<LiveRadio>& live) {
  const RadioFrequency backhaulRadio = BackhaulRadio(state, capabilities);
  return std::ranges::any_of(state.radios, [&](const RadioState& wanted) {
    if (!wanted.enable || !IsWorking(state, capabilities, wanted.radio)) {
      return false;
    }
    const auto radio = std::ranges::find(live, wanted.radio, &LiveRadio::radio);
    if (radio == live.end() || !radio->up) {
      return true;
    }
    const bool follows = state.mesh.isRepeater && wanted.radio == backhaulRadio &&
                         radio->backhaulStation.phase == LiveUpstream::Phase::Connected;
    const int channel = follows ? radio->backhaulStation.channel : wanted.channel;
    return channel != kAutomaticChannel && radio->channel != channel;
  });
}

}  // namespace TALO::Wifid
