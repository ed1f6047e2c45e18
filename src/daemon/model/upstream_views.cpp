#include "daemon/model/capabilities.h"
#include "daemon/model/mesh.h"
#include "daemon/model/stations.h"
#include "daemon/model/views.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

using Phase = LiveUpstream::Phase;

std::string WordOf(Phase phase) {
  switch (phase) {
    case Phase::Disabled:
      return "disabled";
    case Phase::Scanning:
      return "scanning";
    case Phase::Connecting:
      return "connecting";
    case Phase::Connected:
      return "connected";
    case Phase::Failed:
      return "failed";
  }
  return {};
}

const RadioCapability* FindCapability(const Picture& picture, RadioFrequency radio) {
  const auto& radios = picture.capabilities.radios;
  const auto found = std::ranges::find(radios, radio, &RadioCapability::radio);
  return found != radios.end() ? &*found : nullptr;
}

/// The radio that carries the backhaul, where the router has it.
const RadioCapability* BackhaulCapability(const Picture& picture) {
  return FindCapability(picture, BackhaulRadio(picture.state, picture.capabilities));
}

/// The radio that carries the backhaul, while it is to carry any.
std::set<RadioFrequency> RadiosThatCarry(const Picture& picture, const Wifi::BackhaulConfig& config) {
  const RadioCapability* radio = BackhaulCapability(picture);
  return config.enable && radio != nullptr ? std::set{radio->radio} : std::set<RadioFrequency>();
}

}  // namespace

std::vector<Wifi::StationStatus> StationStatuses(const Picture& picture) {
  std::vector<Wifi::StationStatus> statuses;
  for (const RadioCapability& radio : picture.capabilities.radios) {
    const auto live = std::ranges::find(picture.live, radio.radio, &LiveRadio::radio);
    const LiveUpstream station = live != picture.live.end() ? live->station : LiveUpstream();
    statuses.push_back({radio.radio, StationInterface(radio), station.phase == Phase::Connected,
                        WordOf(station.phase), station.reason, station.ssid, station.bssid, station.channel,
                        station.signal, station.transmitRate, station.connectedTime});
  }
  return statuses;
}

std::map<RadioFrequency, std::string> StationInterfaces(const Picture& picture) {
  std::map<RadioFrequency, std::string> interfaces;
  for (const RadioCapability& radio : picture.capabilities.radios) {
    interfaces[radio.radio] = StationInterface(radio);
  }
  return interfaces;
}

Wifi::BackhaulSetting BackhaulSettingOf(const Picture& picture) {
  const Wifi::BackhaulConfig& config = picture.state.backhaul;
  return {config.enable, config.ssid, config.password, RadiosThatCarry(picture, config)};
}

std::map<RadioFrequency, std::string> BackhaulInterfaces(const Picture& picture) {
  std::map<RadioFrequency, std::string> interfaces;
  for (const RadioFrequency radio : RadiosThatCarry(picture, picture.state.backhaul)) {
    interfaces[radio] = BSSInterface(*FindCapability(picture, radio), kBackhaulSlot);
  }
  return interfaces;
}

Wifi::BackhaulSTASetting BackhaulSTASettingOf(const Picture& picture) {
  const Wifi::BackhaulConfig& config = picture.state.backhaulSTA;
  return {config.enable, config.ssid, config.password, RadiosThatCarry(picture, config)};
}

std::map<RadioFrequency, std::string> BackhaulSTAInterfaces(const Picture& picture) {
  std::map<RadioFrequency, std::string> interfaces;
  for (const RadioFrequency radio : RadiosThatCarry(picture, picture.state.backhaulSTA)) {
    interfaces[radio] = BackhaulStationInterface(*FindCapability(picture, radio));
  }
  return interfaces;
}

std::vector<Wifi::BackhaulSTAStatus> BackhaulSTAStatuses(const Picture& picture) {
  std::vector<Wifi::BackhaulSTAStatus> statuses;
  for (const RadioFrequency radio : RadiosThatCarry(picture, picture.state.backhaulSTA)) {
    Wifi::BackhaulSTAStatus status;
    status.radio = radio;
    status.interface = BackhaulStationInterface(*FindCapability(picture, radio));
    status.scanType = picture.state.scanType;
    const auto live = std::ranges::find(picture.live, radio, &LiveRadio::radio);
    if (live != picture.live.end() && live->backhaulStation.phase == Phase::Connected) {
      status.connected = true;
      status.parent = live->backhaulStation.bssid;
      status.channel = live->backhaulStation.channel;
      status.signal = live->backhaulStation.signal;
      status.connectedTime = live->backhaulStation.connectedTime;
    }
    statuses.push_back(status);
  }
  return statuses;
}

}  // namespace TALO::Wifid
