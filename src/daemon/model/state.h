#pragma once

#include "values/enums.h"

#include <cstdint>
#include <string>
#include <vector>

/// What the daemon remembers: everything that was asked of it and nothing that can be observed. Plain values;
/// whoever changes one makes a new one.
namespace TALO::Wifid {

using Wifi::CountryCode;
using Wifi::Util::RadioFrequency;
using Wifi::Util::SecurityMode;
using Wifi::Util::SupportedModel;

struct NetworkState {
  int id = 0;
  std::string networkName;  ///< raw bytes
  std::string ssid;         ///< raw bytes
  bool hidden = false;
  SecurityMode securityMode = SecurityMode::PersonalWPA2_3Mixed;
  std::string passphrase;
  std::int64_t passphraseChangedAt = 0;  ///< seconds since 1970, UTC
  bool activated = false;
  std::string context;
  std::string bridge;
  int slot =
      0;  ///< the BSS it has on each radio, from 1; kept for life, so that interface names and BSSIDs stay

  bool operator==(const NetworkState&) const = default;
};

struct RadioState {
  RadioFrequency radio = RadioFrequency::Error;
  bool enable = true;
  int channel = 0;          ///< IEEE channel number, 0 for automatic
  int channelWidth = 0;     ///< MHz
  int transmitPower = 100;  ///< percent
  int wifiGeneration = 6;

  bool operator==(const RadioState&) const = default;
};

struct State {
  int nextNetworkId = 1;
  std::string context = "router";
  CountryCode country = CountryCode::DE;
  std::vector<RadioState> radios;      ///< one for each radio of the router, in their order
  std::vector<NetworkState> networks;  ///< in the order of their IDs

  bool operator==(const State&) const = default;
};

}  // namespace TALO::Wifid
