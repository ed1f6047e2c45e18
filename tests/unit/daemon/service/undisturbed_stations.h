#pragma once

#include "support/simulated_service.h"

#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A tri-band router with the networks 1 to 3 and a backhaul. Every BSS has one station, and the router's own
/// stations have joined an upstream access point and a mesh parent. Each is called by its interface:
/// "wlan0_1" to "wlan2_3" for the networks' stations, "wlan2_0" for the backhaul's, "wlan0sta" and "wlan2bhs"
/// for the router's own.
class FullHouse {
 public:
  /// Everybody is connected.
  explicit FullHouse(Faults faults = {});

  /// The address of the station that is called so.
  static Wifi::Util::MACAddress AddressOf(int networkId, int radio);

  /// The stations that were dropped since everybody was connected, whether they are back or not. A test fails
  /// where what the radios told and how long the stations are connected do not agree.
  std::set<std::string> Dropped() const;

  SimulatedService service;

 private:
  struct Link {
    std::string name;
    std::string peer;   ///< where it is connected
    int connectedTime;  ///< seconds

    bool operator==(const Link&) const = default;
  };

  /// By the station's address, or the interface of one of the router's own.
  std::map<std::string, Link> Links() const;
  bool WasToldDisconnected(const std::string& address) const;

  std::map<std::string, Link> links_;
  Timers::Duration since_{};
};

/// All stations of those networks, 0 being the backhaul.
std::set<std::string> StationsOf(const std::set<int>& networks);

}  // namespace TALO::Wifid
