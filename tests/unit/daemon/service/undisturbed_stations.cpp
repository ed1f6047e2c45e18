#include "unit/daemon/service/undisturbed_stations.h"

#include "daemon/model/first_state.h"
#include "daemon/radio/simulated/hardware.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr int kRadios = 3;
constexpr int kNetworks = 3;
constexpr int kBackhaulOn = 2;  ///< the radio that carries the backhaul

/// A Monday, at noon.
const std::int64_t kStart = UTC(2026, 1, 5, 12);

std::string NameOf(int networkId) { return "Network " + std::to_string(networkId); }

/// The devices of the upper 5 GHz radio come up on the lower one, the first they see, and move then.
Device DeviceOf(int networkId, int radio, const std::string& ssid, const std::string& passphrase) {
  Device device;
  device.address = FullHouse::AddressOf(networkId, radio);
  device.knows = {{ssid, passphrase}};
  device.bands = {radio == 0 ? RadioFrequency::Band2_4GHz : RadioFrequency::Band5GHz};
  if (radio == 2) {
    device.roams = {{3, RadioFrequency::Band5GHz_2}};
  }
  return device;
}

Scenario WorldWith(Faults faults) {
  Scenario world;
  world.faults = std::move(faults);
  for (int networkId = 1; networkId <= kNetworks; ++networkId) {
    for (int radio = 0; radio < kRadios; ++radio) {
      world.devices.push_back(DeviceOf(networkId, radio, NameOf(networkId), "battery-staple"));
    }
  }
  world.devices.push_back(DeviceOf(kBackhaulNetworkId, kBackhaulOn, "Mesh", "mesh-backhaul"));
  // It knows no network and joins by push button.
  Device printer;
  printer.address = DeviceAddress(0xff);
  printer.pressesAfter = 20;
  world.devices.push_back(printer);
  world.neighbours = {MakeAccessPoint(1, "Uplink", 6, -60), MakeAccessPoint(2, "Parents", 100, -60)};
  world.neighbours[1].backhaul = true;
  return world;
}

/// The 2.4 GHz radio is on a channel that not every country has.
State FullState() {
  State state = MakeFirstState(MakeSimulatedCapabilities(SupportedModel::Alder100), CountryCode::DE);
  state.radios[0].channel = 13;
  for (int id = 1; id <= kNetworks; ++id) {
    state.networks.push_back(MakeNetwork(id, id, NameOf(id)));
  }
  state.nextNetworkId = kNetworks + 1;
  state.backhaul = {true, "Mesh", "mesh-backhaul"};
  state.backhaulSTA = {true, "Parents", "uplink-password"};
  state.stations[0] = {
      true, "Uplink", "", "uplink-password", {}, SecurityMode::PersonalWPA2, RadioFrequency::Band2_4GHz};
  return state;
}

}  // namespace

Wifi::Util::MACAddress FullHouse::AddressOf(int networkId, int radio) {
  return DeviceAddress(networkId * 0x10 + radio);
}

FullHouse::FullHouse(Faults faults)
    : service(SupportedModel::Alder100, WorldWith(std::move(faults)), FullState(), kStart) {
  service.Pass(std::chrono::seconds(10));
  links_ = Links();
  since_ = service.Now();
  std::set<std::string> expected = StationsOf({0, 1, 2, 3});
  expected.insert({"wlan0sta", "wlan2bhs"});
  std::set<std::string> names;
  for (const auto& [key, link] : links_) {
    names.insert(link.name);
  }
  EXPECT_EQ(names, expected);
}

std::map<std::string, FullHouse::Link> FullHouse::Links() const {
  std::map<std::string, Link> links;
  const auto addUpstream = [&links](const std::string& interface, const LiveUpstream& upstream) {
    if (upstream.phase == LiveUpstream::Phase::Connected) {
      links[interface] = {interface, upstream.bssid.ToString(), upstream.connectedTime};
    }
  };
  int number = 0;
  for (const LiveRadio& radio : service.Driver().GetLive()) {
    for (const LiveBSS& bss : radio.bsss) {
      for (const LiveStation& station : bss.stations) {
        links[station.address.ToString()] = {bss.interface, bss.bssid.ToString(), station.connectedTime};
      }
    }
    const std::string interface = "wlan" + std::to_string(number++);
    addUpstream(interface + "sta", radio.station);
    addUpstream(interface + "bhs", radio.backhaulStation);
  }
  return links;
}

bool FullHouse::WasToldDisconnected(const std::string& address) const {
  // The devices that move at the start are told, too.
  const auto& events = service.Events();
  return std::ranges::any_of(events, [&address](const RadioEvent& event) {
    const auto* gone = std::get_if<StationDisconnected>(&event);
    return gone != nullptr && gone->reason != "roamed" && gone->address.ToString() == address;
  });
}

std::set<std::string> FullHouse::Dropped() const {
  const auto passed = std::chrono::duration_cast<std::chrono::seconds>(service.Now() - since_);
  const std::map<std::string, Link> now = Links();
  std::set<std::string> dropped;
  for (const auto& [key, link] : links_) {
    Link wentOn = link;
    wentOn.connectedTime += static_cast<int>(passed.count());
    const auto found = now.find(key);
    const bool stayed = found != now.end() && found->second == wentOn;
    if (!stayed) {
      dropped.insert(link.name);
    }
    if (link.name.find('_') != std::string::npos) {
      EXPECT_EQ(WasToldDisconnected(key), !stayed) << link.name;
    }
  }
  return dropped;
}

std::set<std::string> StationsOf(const std::set<int>& networks) {
  std::set<std::string> stations;
  for (const int networkId : networks) {
    const std::string slot = "_" + std::to_string(networkId);
    if (networkId == kBackhaulNetworkId) {
      stations.insert("wlan2" + slot);
      continue;
    }
    stations.insert({"wlan0" + slot, "wlan1" + slot, "wlan2" + slot});
  }
  return stations;
}

}  // namespace TALO::Wifid
