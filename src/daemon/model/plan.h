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

bool Admits(const AccessPlan& access, const Wifi::Util::MACAddress& device);

/// One BSS as it is wanted in the air.
struct BSSPlan {
  int networkId = 0;             ///< kBackhaulNetworkId for the backhaul's
  std::string interface;         ///< the BSS's own from plan to plan; the driver makes and removes it
  Wifi::Util::MACAddress bssid;  ///< of the radio's block, see RadioCapability
  std::string ssid;              ///< raw bytes
  bool hidden = false;
  SecurityMode securityMode = SecurityMode::Error;
  std::string passphrase;  ///< empty for modes that have none
  std::string bridge;      ///< where its stations' traffic goes; empty where the driver decides, see below
  AccessPlan access;

  bool operator==(const BSSPlan&) const = default;
};

/// Stands for the backhaul access point, which is no network. Other nodes join it with all that is behind
/// them, that is in 4-address mode. Their traffic goes to the bridge that new networks get, which the state
/// does not hold: a driver that carries traffic is told of it when it is made.
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

/// The parent that a radio's backhaul station is to join, with WPA2 personal and in 4-address mode. Its
/// traffic goes where that of the backhaul access point does.
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
  int channel = 0;        ///< or kAutomaticChannel: one that the country allows, kept until it does not
  int channelWidth = 0;   ///< MHz at most, 0 for the radio's widest; less where radio or country lack room
  int transmitPower = 0;  ///< percent of what the country allows
  CountryCode country = CountryCode::MaxCountryCode;
  std::vector<BSSPlan> bsss;  ///< the backhaul's first, then in the order of the networks' IDs
  std::optional<StationPlan> station;
  std::optional<BackhaulStationPlan> backhaulStation;
  Wifi::MACFilterGlobal broadcastLimit;  ///< holds for each device by itself

  bool operator==(const RadioPlan&) const = default;
};

/// A network on a radio.
using NetworkOnRadio = std::pair<int, RadioFrequency>;

/// What the state wants of every radio, in the order of the capabilities. What `scheduledOff` names is left
/// out. A radio that has no channel in the country is not enabled, so that the others serve.
std::vector<RadioPlan> MakePlan(const State& state, const Capabilities& capabilities,
                                const std::set<NetworkOnRadio>& scheduledOff);

}  // namespace TALO::Wifid
