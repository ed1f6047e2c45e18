#include "daemon/radio/linux/bss_stations.h"

#include "daemon/radio/linux/questions.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace TALO::Wifid {

using Wifi::Util::MACAddress;

void BSSStations::Come(const BSSPlan& bss, const MACAddress& station) {
  Addresses& here = stations_[bss.interface];
  if (std::ranges::find(here, station) != here.end()) {
    return;
  }
  here.push_back(station);
  heard_.erase(bss.interface);
  if (bss.networkId != kBackhaulNetworkId) {
    tell_(StationConnected{station, bss.networkId, bss.interface});
  }
}

void BSSStations::Leave(const BSSPlan& bss, const MACAddress& station, const std::string& reason) {
  if (std::erase(stations_[bss.interface], station) != 0 && bss.networkId != kBackhaulNetworkId) {
    tell_(StationDisconnected{station, bss.networkId, bss.interface, reason});
  }
}

void BSSStations::Drop(const BSSPlan& bss, const AccessPlan& admitted, const std::string& reason) {
  for (const MACAddress& station : Addresses(stations_[bss.interface])) {
    if (!Admits(admitted, station)) {
      Leave(bss, station, reason);
    }
  }
}

void BSSStations::DropAll(const BSSPlan& bss, const std::string& reason) {
  Drop(bss, {AccessPlan::Rule::OnlyListed, {}}, reason);
}

// A station in 4-address mode is at an interface of its own behind that of the BSS.
std::vector<LinkedStation> BSSStations::Ask(const std::string& interface) const {
  std::vector<LinkedStation> stations = HearFromKernel(kernel_, &Kernel::GetStations, interface);
  for (const WirelessInterface& each : HearFromKernel(kernel_, &Kernel::GetInterfaces)) {
    if (each.type == InterfaceType::AccessPointVLAN && each.name.starts_with(interface + ".")) {
      std::ranges::move(HearFromKernel(kernel_, &Kernel::GetStations, each.name),
                        std::back_inserter(stations));
    }
  }
  return stations;
}

const std::vector<LinkedStation>& BSSStations::Hear(const std::string& interface) const {
  constexpr auto kGoodFor = std::chrono::seconds(1);
  const auto heard = heard_.find(interface);
  if (heard != heard_.end() && timers_.Now() - heard->second.at < kGoodFor) {
    return heard->second.stations;
  }
  return (heard_[interface] = {timers_.Now(), Ask(interface)}).stations;
}

std::vector<LiveStation> BSSStations::GetLive(const std::string& interface) const {
  const auto here = stations_.find(interface);
  if (here == stations_.end() || here->second.empty()) {
    return {};
  }
  const std::vector<LinkedStation>& heard = Hear(interface);
  const std::map<MACAddress, std::string> addresses = HearFromKernel(kernel_, &Kernel::GetNeighbours);
  std::vector<LiveStation> live;
  for (const MACAddress& station : here->second) {
    LiveStation each;
    each.address = station;
    const auto link = std::ranges::find(heard, station, &LinkedStation::address);
    if (link != heard.end()) {
      each.signal = link->signal;
      each.transmitRate = link->transmitRate;
      each.receiveRate = link->receiveRate;
      each.connectedTime = link->connectedTime;
    }
    const auto address = addresses.find(station);
    if (address != addresses.end()) {
      each.ipAddress = address->second;
    }
    live.push_back(std::move(each));
  }
  return live;
}

}  // namespace TALO::Wifid
