#include "support/daemon_samples.h"

#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

const std::vector<int> kLowChannels = {1, 6, 11};
const std::vector<int> kLowerChannels = {36, 40, 44, 48};
const std::vector<int> kUpperChannels = {100, 104, 108, 112};

RadioCapability Radio(RadioFrequency radio, const std::string& number, int maximumBSSs,
                      const std::vector<int>& channels) {
  return {radio, "wlan" + number, MACAddress("02:00:00:00:0" + number + ":00"), maximumBSSs, channels, 80};
}

}  // namespace

Capabilities TriBandRadios(int maximumBSSs) {
  return {SupportedModel::Alder100,
          {Radio(RadioFrequency::Band2_4GHz, "0", maximumBSSs, kLowChannels),
           Radio(RadioFrequency::Band5GHz_1, "1", maximumBSSs, kLowerChannels),
           Radio(RadioFrequency::Band5GHz_2, "2", maximumBSSs, kUpperChannels)}};
}

Capabilities DualBandRadios(int maximumBSSs) {
  return {SupportedModel::Dune40,
          {Radio(RadioFrequency::Band2_4GHz, "0", maximumBSSs, kLowChannels),
           Radio(RadioFrequency::Band5GHz, "1", maximumBSSs, kLowerChannels)}};
}

NetworkState MakeNetwork(int id, int slot, const std::string& ssid) {
  NetworkState network;
  network.id = id;
  network.networkName = ssid;
  network.ssid = ssid;
  network.hidden = false;
  network.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  network.passphrase = "battery-staple";
  network.passphraseChangedAt = 1000;
  network.activated = true;
  network.context = "router";
  network.bridge = "br0";
  network.slot = slot;
  return network;
}

std::vector<RadioState> TriBandSettings() {
  return {{RadioFrequency::Band2_4GHz, true, 6, 20, 100, 6},
          {RadioFrequency::Band5GHz_1, true, 36, 80, 100, 6},
          {RadioFrequency::Band5GHz_2, true, 100, 80, 100, 6}};
}

std::vector<Wifi::StationSetting> StationsOff(const std::vector<RadioFrequency>& radios) {
  std::vector<Wifi::StationSetting> stations;
  for (const RadioFrequency radio : radios) {
    Wifi::StationSetting& station = stations.emplace_back();
    station.securityMode = SecurityMode::Disabled;
    station.radio = radio;
  }
  return stations;
}

State MakeState(int nextNetworkId, std::vector<NetworkState> networks) {
  State state;
  state.nextNetworkId = nextNetworkId;
  state.context = "router";
  state.country = CountryCode::DE;
  state.radios = TriBandSettings();
  state.stations =
      StationsOff({RadioFrequency::Band2_4GHz, RadioFrequency::Band5GHz_1, RadioFrequency::Band5GHz_2});
  state.networks = std::move(networks);
  return state;
}

Wifi::NetworkCreateInfo InfoOf(const std::string& ssid) { return {ssid, ssid, "battery-staple"}; }

std::vector<LiveRadio> LiveAsPlanned(const std::vector<RadioPlan>& plan) {
  std::vector<LiveRadio> live;
  for (const RadioPlan& radio : plan) {
    LiveRadio entry;
    entry.radio = radio.radio;
    if (radio.enable) {
      entry.up = true;
      entry.channel = radio.channel;
      entry.channelWidth = radio.channelWidth;
      for (const BSSPlan& bss : radio.bsss) {
        entry.bsss.push_back({bss.networkId, bss.interface, bss.bssid, true, {}});
      }
    }
    live.push_back(std::move(entry));
  }
  return live;
}

}  // namespace TALO::Wifid
