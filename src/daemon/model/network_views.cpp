#include "daemon/model/passwords.h"
#include "daemon/model/plan.h"
#include "daemon/model/text.h"
#include "daemon/model/views.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

std::vector<std::string> KeyManagement(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::OWE:
      return {"OWE"};
    case SecurityMode::PersonalWPA:
    case SecurityMode::PersonalWPA2:
    case SecurityMode::PersonalWPAMixed:
      return {"WPA-PSK"};
    case SecurityMode::PersonalWPA3:
      return {"SAE"};
    case SecurityMode::PersonalWPA2_3Mixed:
      return {"WPA-PSK", "SAE"};
    case SecurityMode::EnterpriseWPA:
    case SecurityMode::EnterpriseWPA2:
    case SecurityMode::EnterpriseWPA3:
    case SecurityMode::EnterpriseWPAMixed:
      return {"WPA-EAP"};
    case SecurityMode::Error:
    case SecurityMode::Disabled:
    case SecurityMode::WEP:
      break;
  }
  return {};
}

const LiveBSS* FindLiveBSS(const std::vector<LiveRadio>& live, RadioFrequency radio, int networkId) {
  for (const LiveRadio& candidate : live) {
    if (candidate.radio == radio) {
      const auto bss = std::ranges::find(candidate.bsss, networkId, &LiveBSS::networkId);
      return bss != candidate.bsss.end() ? &*bss : nullptr;
    }
  }
  return nullptr;
}

Wifi::NetworkRadioSetting RadioOfNetwork(const Picture& picture, const NetworkState& network,
                                         const RadioCapability& radio) {
  Wifi::NetworkRadioSetting setting;
  setting.radio = radio.radio;
  setting.enable = network.activated;
  setting.interface = BSSInterface(radio, network.slot);
  setting.radioInterface = radio.interface;
  setting.ssid = network.ssid;
  setting.passphrase = PassphraseOn(network, radio.radio);
  setting.passphraseChangedAt = FormatTime(PassphraseChangedAt(network, radio.radio));
  setting.keyManagement = KeyManagement(network.securityMode);
  const LiveBSS* bss = FindLiveBSS(picture.live, radio.radio, network.id);
  if (bss != nullptr && bss->up) {
    setting.up = true;
    setting.bssid = bss->bssid.ToString();
  }
  return setting;
}

}  // namespace

Wifi::NetworkSetting NetworkSettingOf(const Picture& picture, const NetworkState& network) {
  Wifi::NetworkSetting setting;
  setting.id = network.id;
  setting.networkName = network.networkName;
  setting.ssid = network.ssid;
  setting.hidden = network.hidden;
  setting.securityMode = network.securityMode;
  setting.passphrase = network.passphrase;
  setting.passphraseChangedAt = FormatTime(network.passphraseChangedAt);
  setting.activated = network.activated;
  setting.context = network.context;
  setting.bridge = network.bridge;
  setting.macFilterProfileId = network.macFilterProfileId;
  const auto& profiles = picture.state.macFilterProfiles;
  const auto profile = std::ranges::find(profiles, network.macFilterProfileId, &Wifi::MACFilterProfile::id);
  if (profile != profiles.end()) {
    setting.macFilterProfileName = profile->name;
  }
  for (const RadioCapability& radio : picture.capabilities.radios) {
    setting.radios.push_back(RadioOfNetwork(picture, network, radio));
    setting.interfaces.push_back(setting.radios.back().interface);
    setting.up = setting.up || setting.radios.back().up;
  }
  return setting;
}

std::vector<Wifi::NetworkSetting> NetworkSettings(const Picture& picture) {
  std::vector<Wifi::NetworkSetting> settings;
  for (const NetworkState& network : picture.state.networks) {
    settings.push_back(NetworkSettingOf(picture, network));
  }
  return settings;
}

std::map<int, std::set<std::string>> NetworkInterfaces(const Picture& picture) {
  std::map<int, std::set<std::string>> interfaces;
  for (const NetworkState& network : picture.state.networks) {
    auto& names = interfaces[network.id];
    for (const RadioCapability& radio : picture.capabilities.radios) {
      names.insert(BSSInterface(radio, network.slot));
    }
  }
  return interfaces;
}

bool IsAllNetworkAPDisabled(const Picture& picture) {
  return std::ranges::all_of(picture.live, [](const LiveRadio& radio) {
    return std::ranges::none_of(
        radio.bsss, [](const LiveBSS& bss) { return bss.up && bss.networkId != kBackhaulNetworkId; });
  });
}

std::vector<Wifi::DeviceInfo> ConnectedDevices(const Picture& picture) {
  std::vector<Wifi::DeviceInfo> devices;
  for (const LiveRadio& radio : picture.live) {
    for (const LiveBSS& bss : radio.bsss) {
      const auto& networks = picture.state.networks;
      const auto network = std::ranges::find(networks, bss.networkId, &NetworkState::id);
      if (network == networks.end()) {
        continue;  // the backhaul's stations are nodes, not devices
      }
      for (const LiveStation& station : bss.stations) {
        devices.push_back({station.address, station.name, station.ipAddress, bss.networkId, network->ssid,
                           radio.radio, bss.interface, station.signal, station.transmitRate,
                           station.receiveRate, station.connectedTime});
      }
    }
  }
  return devices;
}

}  // namespace TALO::Wifid
