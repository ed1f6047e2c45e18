#include "daemon/model/radios.h"
#include "daemon/model/views.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

const LiveRadio& LiveOf(const Picture& picture, RadioFrequency radio) {
  static const LiveRadio kAbsent;
  const auto live = std::ranges::find(picture.live, radio, &LiveRadio::radio);
  return live != picture.live.end() ? *live : kAbsent;
}

std::vector<std::string> InterfacesThatAreUp(const LiveRadio& live) {
  std::vector<std::string> names;
  for (const LiveBSS& bss : live.bsss) {
    if (bss.up) {
      names.push_back(bss.interface);
    }
  }
  return names;
}

int StationsOf(const LiveRadio& live) {
  int stations = 0;
  for (const LiveBSS& bss : live.bsss) {
    stations += static_cast<int>(bss.stations.size());
  }
  return stations;
}

}  // namespace

std::vector<Wifi::RadioSetting> RadioSettings(const Picture& picture) {
  std::vector<Wifi::RadioSetting> settings;
  for (const RadioState& radio : picture.state.radios) {
    settings.push_back({radio.radio, radio.enable, radio.channel, radio.channelWidth, radio.transmitPower,
                        radio.wifiGeneration, picture.state.country});
  }
  return settings;
}

std::vector<Wifi::RadioStatus> RadioStatuses(const Picture& picture) {
  std::vector<Wifi::RadioStatus> statuses;
  for (const RadioCapability& radio : picture.capabilities.radios) {
    const LiveRadio& live = LiveOf(picture, radio.radio);
    statuses.push_back({radio.radio, live.up, live.channel, live.channelWidth, live.utilisation,
                        StationsOf(live), radio.address, InterfacesThatAreUp(live)});
  }
  return statuses;
}

std::vector<Wifi::RadioStatusSimple> RadioStatusesSimple(const Picture& picture) {
  std::vector<Wifi::RadioStatusSimple> statuses;
  for (const RadioCapability& radio : picture.capabilities.radios) {
    const LiveRadio& live = LiveOf(picture, radio.radio);
    statuses.push_back({radio.radio, live.up, live.channel, radio.address, InterfacesThatAreUp(live)});
  }
  return statuses;
}

std::vector<Wifi::RadioIfStatus> RadioIfStatuses(const Picture& picture) {
  std::vector<Wifi::RadioIfStatus> statuses;
  for (const RadioCapability& radio : picture.capabilities.radios) {
    statuses.push_back({radio.radio, radio.interface, InterfacesThatAreUp(LiveOf(picture, radio.radio))});
  }
  return statuses;
}

std::map<std::string, RadioFrequency> InterfaceRadioMap(const Picture& picture) {
  std::map<std::string, RadioFrequency> radios;
  for (const NetworkState& network : picture.state.networks) {
    for (const RadioCapability& radio : picture.capabilities.radios) {
      radios[BSSInterface(radio, network.slot)] = radio.radio;
    }
  }
  return radios;
}

Wifi::RadioConversionInfo ConversionInfo(const Picture& picture) {
  return {ConversionMap(picture.state, picture.capabilities), picture.state.backhaulSwapped};
}

}  // namespace TALO::Wifid
