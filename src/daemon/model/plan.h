#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/state.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// One BSS as it is wanted in the air.
struct BSSPlan {
  int networkId = 0;
  std::string interface;
  Wifi::Util::MACAddress bssid;
  std::string ssid;
  bool hidden = false;
  SecurityMode securityMode = SecurityMode::Error;
  std::string passphrase;
  std::string bridge;

  bool operator==(const BSSPlan&) const = default;
};

/// One radio as it is wanted: complete, so that a driver can find the smallest change from what is there.
struct RadioPlan {
  RadioFrequency radio = RadioFrequency::Error;
  bool enable = false;
  int channel = 0;
  int channelWidth = 0;
  int transmitPower = 0;
  CountryCode country = CountryCode::MaxCountryCode;
  std::vector<BSSPlan> bsss;  ///< in the order of their networks' IDs

  bool operator==(const RadioPlan&) const = default;
};

/// What the state wants of every radio, in the order of the capabilities.
std::vector<RadioPlan> MakePlan(const State& state, const Capabilities& capabilities);

}  // namespace TALO::Wifid
