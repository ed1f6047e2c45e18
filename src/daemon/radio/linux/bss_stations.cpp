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

// What still comes of hostapd's word finds it done.
void BSSStations::Compare(const BSSPlan& bss,
                          const std::function<std::string(const MACAddress&)>& reasonToLeave) {
  const auto linked = Ask(bss.interface);
  if (!linked.Succeeded()) {
    return;
  }
  for (const MACAddress& station : Addresses(stations_[bss.interface])) {
    if (std::ranges::find(linked.Value(), station, &LinkedStation::address) == linked.Value().end()) {
      Leave(bss, station, reasonToLeave(station));
    }
  }
  for (const LinkedStation& station : linked.Value()) {
    if (station.authorized) {
      Come(bss, station.address);
    }
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

// Those in 4-address mode are at interfaces of their own.
Result<std::vector<LinkedStation>> BSSStations::Ask(const std::string& interface) const {
  const auto interfaces = AskKernel(kernel_, &Kernel::GetInterfaces);
  if (!interfaces.Succeeded()) {
    return interfaces.Why();
  }
  std::vector<LinkedStation> stations;
  for (const WirelessInterface& each : interfaces.Value()) {
    const bool isBehindIt =
        each.type == InterfaceType::AccessPointVLAN && each.name.starts_with(interface + ".");
    if (each.name != interface && !isBehindIt) {
      continue;
    }
    auto linked = AskKernel(kernel_, &Kernel::GetStations, each.name);
    if (!linked.Succeeded()) {
      return linked;
    }
    std::ranges::move(linked.Value(), std::back_inserter(stations));
  }
  return stations;
}

const std::vector<LinkedStation>& BSSStations::Hear(const std::string& interface) const {
  constexpr auto kGoodFor = std::chrono::seconds(1);
  const auto heard = heard_.find(interface);
  if (heard != heard_.end() && timers_.Now() - heard->second.at < kGoodFor) {
    return heard->second.stations;
  }
  auto asked = Ask(interface);
  return (heard_[interface] = {timers_.Now(),
                               asked.Succeeded() ? std::move(asked.Value()) : std::vector<LinkedStation>()})
      .stations;
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
