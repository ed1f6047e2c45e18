#include "daemon/model/wps.h"

#include "daemon/model/networks.h"
#include "daemon/model/radios.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"

#include <algorithm>
#include <array>

namespace TALO::Wifid {

namespace {

/// Push button hands out a WPA2 personal passphrase.
bool OffersWPA2Personal(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::PersonalWPA2:
    case SecurityMode::PersonalWPAMixed:
    case SecurityMode::PersonalWPA2_3Mixed:
      return true;
    case SecurityMode::Error:
    case SecurityMode::Disabled:
    case SecurityMode::OWE:
    case SecurityMode::WEP:
    case SecurityMode::PersonalWPA:
    case SecurityMode::PersonalWPA3:
    case SecurityMode::EnterpriseWPA:
    case SecurityMode::EnterpriseWPA2:
    case SecurityMode::EnterpriseWPA3:
    case SecurityMode::EnterpriseWPAMixed:
      break;
  }
  return false;
}

Refusal NoRadio(RadioFrequency radio) {
  return {ErrorCode::NotFound, "this router has no radio " + NameOrNumber(radio)};
}

bool IsUp(const std::vector<LiveRadio>& live, const std::string& interface) {
  return std::ranges::any_of(live, [&](const LiveRadio& radio) {
    return std::ranges::any_of(radio.bsss,
                               [&](const LiveBSS& bss) { return bss.up && bss.interface == interface; });
  });
}

Result<void> CheckNetworkInterface(const State& state, const Capabilities& capabilities,
                                   const std::string& interface) {
  for (const NetworkState& network : state.networks) {
    for (const RadioCapability& radio : capabilities.radios) {
      if (BSSInterface(radio, network.slot) == interface) {
        return {};
      }
    }
  }
  return Refusal{ErrorCode::NotFound, "no network has the interface " + Quoted(interface)};
}

}  // namespace

Result<Wifi::NetworkRadioPair> DefaultWPSTarget(const State& state, const Capabilities& capabilities) {
  constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;
  if (std::ranges::find(capabilities.radios, kRadio, &RadioCapability::radio) == capabilities.radios.end()) {
    return NoRadio(kRadio);
  }
  const auto network = std::ranges::find(state.networks, true, &NetworkState::activated);
  if (network == state.networks.end()) {
    return Refusal{ErrorCode::NotFound, "there is no activated network to open WPS on"};
  }
  return Wifi::NetworkRadioPair{network->id, kRadio};
}

Result<std::string> WPSInterface(const WPSPicture& picture, const Wifi::NetworkRadioPair& target) {
  const auto found = FindNetwork(picture.state, target.id);
  if (!found.Succeeded()) {
    return found.Why();
  }
  const NetworkState& network = *found.Value();
  const auto radios = ResolveRadios(picture.state, picture.capabilities, target.radio);
  if (!radios.Succeeded()) {
    return radios.Why();
  }
  if (radios.Value().size() != 1) {
    return Refusal{ErrorCode::InvalidArgument, "WPS is for one radio, " + NameOrNumber(target.radio) +
                                                   " stands for " + std::to_string(radios.Value().size())};
  }
  const RadioFrequency radio = radios.Value().front();
  const auto& capabilities = picture.capabilities.radios;
  const auto capability = std::ranges::find(capabilities, radio, &RadioCapability::radio);
  if (capability == capabilities.end()) {
    return NoRadio(radio);
  }
  if (picture.session) {
    return Refusal{ErrorCode::Busy, "a WPS session runs on the interface " + Quoted(*picture.session)};
  }
  const std::string name = "network " + std::to_string(network.id);
  if (network.hidden) {
    return Refusal{ErrorCode::NotAllowed, name + " is hidden, which excludes WPS"};
  }
  if (!OffersWPA2Personal(network.securityMode)) {
    return Refusal{ErrorCode::NotAllowed, "the security mode " + NameOrNumber(network.securityMode) + " of " +
                                              name + " excludes WPS, which needs WPA2 personal"};
  }
  const std::string interface = BSSInterface(*capability, network.slot);
  if (!IsUp(picture.live, interface)) {
    return Refusal{ErrorCode::RadioFailed,
                   name + " is not up on the radio " + NameOrNumber(radio) + ", WPS cannot be opened there"};
  }
  return interface;
}

Result<void> CheckWPSConnected(const WPSPicture& picture, const std::string& interface) {
  if (auto check = CheckNetworkInterface(picture.state, picture.capabilities, interface);
      !check.Succeeded()) {
    return check;
  }
  if (picture.session != interface) {
    return Refusal{ErrorCode::NotAllowed, "no WPS session runs on the interface " + Quoted(interface)};
  }
  return {};
}

Result<void> CheckRegistrarInput(const State& state, const Capabilities& capabilities,
                                 const Wifi::WPS_ERConfigInput& input) {
  if (auto check = CheckNetworkInterface(state, capabilities, input.ifName); !check.Succeeded()) {
    return check;
  }
  if (auto check = CheckSSID(input.ssid); !check.Succeeded()) {
    return check;
  }
  constexpr std::array kKeyless = {SecurityMode::Disabled, SecurityMode::OWE};
  constexpr std::array kKeyed = {SecurityMode::PersonalWPA, SecurityMode::PersonalWPA2,
                                 SecurityMode::PersonalWPA3, SecurityMode::PersonalWPAMixed,
                                 SecurityMode::PersonalWPA2_3Mixed};
  const auto isNamed = [&input](SecurityMode mode) { return Wifi::Util::FindEnumName(mode) == input.mode; };
  if (std::ranges::any_of(kKeyless, isNamed)) {
    return input.key.empty() ? Result<void>()
                             : Refusal{ErrorCode::InvalidArgument,
                                       "the security mode " + Quoted(input.mode) + " takes no key"};
  }
  if (!std::ranges::any_of(kKeyed, isNamed)) {
    return Refusal{ErrorCode::InvalidArgument,
                   "a registrar cannot be given the security mode " + Quoted(input.mode)};
  }
  return CheckPassphrase(input.key);
}

}  // namespace TALO::Wifid
