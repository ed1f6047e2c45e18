#pragma once

#include "client/mac_filter_records.h"
#include "client/mesh_records.h"
#include "client/service_records.h"
#include "client/station_records.h"
#include "values/enums.h"

#include <cstdint>
#include <set>
#include <string>
#include <vector>

/// What the daemon remembers: everything that was asked of it and nothing that can be observed. Plain values;
/// whoever changes one makes a new one.
namespace TALO::Wifid {

using Wifi::CountryCode;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScanType;
using Wifi::Util::ScheduleMode;
using Wifi::Util::SecurityMode;
using Wifi::Util::SupportedModel;

/// The channel of a radio that finds its own.
inline constexpr int kAutomaticChannel = 0;

/// The profile ID of a network that uses none.
inline constexpr int kNoMACFilterProfile = -1;

/// The passphrase that a network has on one radio, where that differs from the network's.
struct RadioPassphrase {
  RadioFrequency radio = RadioFrequency::Error;
  std::string passphrase;
  std::int64_t passphraseChangedAt = 0;  ///< seconds since 1970, UTC

  bool operator==(const RadioPassphrase&) const = default;
};

/// When a network is on the air on one radio.
struct ScheduleState {
  RadioFrequency radio = RadioFrequency::Error;
  ScheduleMode mode = ScheduleMode::ValidFor;
  std::int64_t validUntil = 0;                ///< of `ValidFor`: seconds since 1970, UTC; off from then on
  std::vector<Wifi::ScheduleWindow> windows;  ///< of `Customized`: in their order, none overlapping

  bool operator==(const ScheduleState&) const = default;
};

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
  int macFilterProfileId = kNoMACFilterProfile;
  std::vector<RadioPassphrase> radioPassphrases;  ///< at most one a radio, in their order
  std::vector<ScheduleState> schedules;           ///< at most one a radio, in their order

  bool operator==(const NetworkState&) const = default;
};

struct RadioState {
  RadioFrequency radio = RadioFrequency::Error;
  bool enable = true;
  int channel = 0;          ///< IEEE channel number, or kAutomaticChannel
  int channelWidth = 0;     ///< MHz
  int transmitPower = 100;  ///< percent
  int wifiGeneration = 6;

  bool operator==(const RadioState&) const = default;
};

struct State {
  int nextNetworkId = 1;
  int nextMACFilterProfileId = 1;
  std::string context = "router";
  CountryCode country = CountryCode::DE;
  std::vector<RadioState> radios;              ///< one for each radio of the router, in their order
  std::vector<NetworkState> networks;          ///< in the order of their IDs
  std::vector<Wifi::StationSetting> stations;  ///< one for each radio of the router, in their order
  std::vector<Wifi::MACFilterProfile> macFilterProfiles;  ///< in the order of their IDs
  Wifi::MACFilterGlobal macFilterGlobal;
  Wifi::BackhaulConfig backhaul;
  Wifi::BackhaulConfig backhaulSTA;
  ScanType scanType = ScanType::Default;
  Wifi::MeshInfo mesh;
  bool backhaulSwapped = false;

  bool operator==(const State&) const = default;
};

}  // namespace TALO::Wifid
