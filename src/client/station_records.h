#pragma once

#include "values/enums.h"
#include "values/mac_address.h"

#include <string>

namespace TALO::Wifi {

/// One access point in the air, as a scan found it.
struct ScanResult {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;  ///< the radio that heard it
  std::string ssid;                                          ///< raw bytes, empty when hidden
  Util::MACAddress bssid;
  int channel = 0;
  int channelWidth = 0;  ///< MHz
  int signal = 0;        ///< dBm
  Util::SecurityMode securityMode = Util::SecurityMode::Error;
  bool wps = false;  ///< announces WPS
  int age = 0;       ///< seconds since it was last heard

  bool operator==(const ScanResult&) const = default;
};

/// The upstream access point that a radio's station joins.
struct StationSetting {
  bool enable = false;
  std::string essid;       ///< raw bytes
  std::string user;        ///< identity, for the enterprise modes only
  std::string password;    ///< passphrase, or the identity's password
  Util::MACAddress bssid;  ///< the only access point to join, none (all zero) for any
  Util::SecurityMode securityMode = Util::SecurityMode::Error;
  Util::RadioFrequency radio = Util::RadioFrequency::Error;

  bool operator==(const StationSetting&) const = default;
};

/// How far a radio's station got.
struct StationStatus {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  std::string interface;
  bool connected = false;
  std::string state;   ///< "disabled", "scanning", "connecting", "connected" or "failed"
  std::string reason;  ///< why it failed, empty otherwise
  std::string essid;   ///< raw bytes
  Util::MACAddress bssid;
  int channel = 0;
  int signal = 0;         ///< dBm, 0 while not connected
  int transmitRate = 0;   ///< Mbit/s, 0 while not connected
  int connectedTime = 0;  ///< seconds, 0 while not connected

  bool operator==(const StationStatus&) const = default;
};

}  // namespace TALO::Wifi
