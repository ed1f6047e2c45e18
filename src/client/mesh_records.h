#pragma once

#include "values/enums.h"
#include "values/mac_address.h"

#include <set>
#include <string>

namespace TALO::Wifi {

/// Wanted settings of the backhaul access point or of the backhaul station.
struct BackhaulConfig {
  bool enable = false;
  std::string ssid;      ///< raw bytes
  std::string password;  ///< passphrase

  bool operator==(const BackhaulConfig&) const = default;
};

/// The backhaul access point, which other mesh nodes join.
struct BackhaulSetting {
  bool enable = false;
  std::string ssid;  ///< raw bytes
  std::string password;
  std::set<Util::RadioFrequency> radios;  ///< which carry it

  bool operator==(const BackhaulSetting&) const = default;
};

/// The backhaul station, with which this node joins its parent.
struct BackhaulSTASetting {
  bool enable = false;
  std::string ssid;  ///< raw bytes
  std::string password;
  std::set<Util::RadioFrequency> radios;  ///< which carry it

  bool operator==(const BackhaulSTASetting&) const = default;
};

/// The backhaul station on one radio.
struct BackhaulSTAStatus {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  std::string interface;
  bool connected = false;
  Util::ScanType scanType = Util::ScanType::Default;
  Util::MACAddress parent;  ///< BSSID of the parent, none while not connected
  int channel = 0;
  int signal = 0;         ///< dBm, 0 while not connected
  int connectedTime = 0;  ///< seconds, 0 while not connected

  bool operator==(const BackhaulSTAStatus&) const = default;
};

/// What this node is told of its mesh.
struct MeshInfo {
  std::set<Util::SupportedModel> models;  ///< of all nodes in the mesh
  bool isRepeater = false;                ///< this node has a parent

  bool operator==(const MeshInfo&) const = default;
};

}  // namespace TALO::Wifi
