#include "daemon/model/first_state.h"

#include "daemon/model/country.h"
#include "daemon/model/mac_filter.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

RadioState DefaultRadio(RadioFrequency radio) {
  RadioState state;
  state.radio = radio;
  switch (radio) {
    case RadioFrequency::Band2_4GHz:
      state.channel = 6;
      state.channelWidth = 20;
      break;
    case RadioFrequency::Band5GHz:
    case RadioFrequency::Band5GHz_1:
      state.channel = 36;
      state.channelWidth = 80;
      break;
    case RadioFrequency::Band5GHz_2:
      state.channel = 100;
      state.channelWidth = 80;
      break;
    case RadioFrequency::Error:
    case RadioFrequency::SmartConnect:
      break;
  }
  return state;
}

RadioState Fitted(RadioState state, const RadioCapability& radio, CountryCode country) {
  if (!std::ranges::binary_search(UsableChannels(country, radio), state.channel)) {
    state.channel = kAutomaticChannel;
  }
  state.channelWidth = std::min(state.channelWidth, radio.maximumChannelWidth);
  return state;
}

Wifi::StationSetting DefaultStation(RadioFrequency radio) {
  Wifi::StationSetting station;
  station.securityMode = SecurityMode::Disabled;
  station.radio = radio;
  return station;
}

}  // namespace

State MakeFirstState(const Capabilities& capabilities, CountryCode country) {
  State state;
  state.country = country;
  return AdaptToRadios(std::move(state), capabilities);
}

State AdaptToRadios(State state, const Capabilities& capabilities) {
  std::vector<RadioState> radios;
  for (const RadioCapability& capability : capabilities.radios) {
    const auto known = std::ranges::find(state.radios, capability.radio, &RadioState::radio);
    radios.push_back(Fitted(known != state.radios.end() ? *known : DefaultRadio(capability.radio), capability,
                            state.country));
  }
  state.radios = std::move(radios);

  std::vector<Wifi::StationSetting> stations;
  for (const RadioCapability& capability : capabilities.radios) {
    const auto known = std::ranges::find(state.stations, capability.radio, &Wifi::StationSetting::radio);
    stations.push_back(known != state.stations.end() ? *known : DefaultStation(capability.radio));
  }
  state.stations = std::move(stations);

  if (!CheckRadiosLimitBroadcasts(capabilities, state.macFilterGlobal).Succeeded()) {
    state.macFilterGlobal.enablePreventBroadcast = false;
  }
  return state;
}

}  // namespace TALO::Wifid
