#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/state.h"

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// Which stations a BSS admits.
struct AccessPlan {
  enum class Rule { Everybody, OnlyListed, AllButListed };
  Rule rule = Rule::Everybody;
  std::set<Wifi::Util::MACAddress> devices;

  bool operator==(const AccessPlan&) const = default;
};

/// One BSS as it is wanted in the air.
struct BSSPlan {
  int networkId = 0;  ///< kBackhaulNetworkId for the backhaul's
  std::string interface;
  Wifi::Util::MACAddress bssid;
  std::string ssid;
  bool hidden = false;
  SecurityMode securityMode = SecurityMode::Error;
  std::string passphrase;
  std::string bridge;
  AccessPlan access;

  bool operator==(const BSSPlan&) const = default;
};

/// Stands for the backhaul access point, which is no network.
inline constexpr int kBackhaulNetworkId = 0;

/// The upstream access point that a radio's station is to join.
struct StationPlan {
  std::string interface;
  std::string ssid;
  std::string user;
  std::string passphrase;
  Wifi::Util::MACAddress bssid;  ///< the only one to join; none for any
  SecurityMode securityMode = SecurityMode::Error;

  bool operator==(const StationPlan&) const = default;
};

/// The parent that a radio's backhaul station is to join.
struct BackhaulStationPlan {
  std::string interface;
  std::string ssid;
  std::string passphrase;
  ScanType scanType = ScanType::Default;

  bool operator==(const BackhaulStationPlan&) const = default;
};

/// One radio as it is wanted: complete, so that a driver can find the smallest change from what is there.
struct RadioPlan {
  RadioFrequency radio = RadioFrequency::Error;
  bool enable = false;
  int channel = 0;
  int channelWidth = 0;
  int transmitPower = 0;
  CountryCode country = CountryCode::MaxCountryCode;
  std::vector<BSSPlan> bsss;  ///< the backhaul's first, then in the order of the networks' IDs
  std::optional<StationPlan> station;
  std::optional<BackhaulStationPlan> backhaulStation;
  Wifi::MACFilterGlobal broadcastLimit;

  bool operator==(const RadioPlan&) const = default;
};

/// A network on a radio.
using NetworkOnRadio = std::pair<int, RadioFrequency>;

/// What the state wants of every radio, in the order of the capabilities. What `scheduledOff` names is left
/// out.
std::vector<RadioPlan> MakePlan(const State& state, const Capabilities& capabilities,
                                const std::set<NetworkOnRadio>& scheduledOff);

}  // namespace TALO::Wifid
