#pragma once

#include "values/enums.h"

#include <string>
#include <vector>

namespace TALO::Wifi {

/// What a new network is made from. Everything else gets the daemon's defaults.
struct NetworkCreateInfo {
  std::string networkName;  ///< what operators call the network, 1 to 32 bytes of any value
  std::string ssid;         ///< 1 to 32 bytes of any value, not used by another network
  std::string passphrase;   ///< 8 to 63 printable ASCII characters, or 64 hexadecimal digits

  bool operator==(const NetworkCreateInfo&) const = default;
};

/// One network on one radio, that is one BSS.
struct NetworkRadioSetting {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  bool enable = false;                     ///< wanted on this radio
  bool up = false;                         ///< in the air now
  std::string interface;                   ///< the BSS's own interface
  std::string radioInterface;              ///< the interface of the radio it belongs to
  std::string bssid;                       ///< text of the MAC address, empty while the BSS is not up
  std::string ssid;                        ///< raw bytes
  std::string passphrase;                  ///< may differ from the network's after a rotation on this radio
  std::string passphraseChangedAt;         ///< UTC, as in 2026-01-31T12:00:00Z
  std::vector<std::string> keyManagement;  ///< suites offered, as in WPA-PSK and SAE

  bool operator==(const NetworkRadioSetting&) const = default;
};

/// A network with all its BSSs.
struct NetworkSetting {
  int id = 0;               ///< counts up from 1, never used again after deletion
  std::string networkName;  ///< raw bytes
  std::string ssid;         ///< raw bytes
  bool hidden = false;      ///< the SSID is left out of beacons
  Util::SecurityMode securityMode = Util::SecurityMode::Error;
  std::string passphrase;               ///< the one for every radio that has none of its own
  std::string passphraseChangedAt;      ///< UTC, as in 2026-01-31T12:00:00Z
  bool activated = false;               ///< its BSSs are wanted in the air
  std::string context;                  ///< the topology it belongs to
  std::string bridge;                   ///< where the traffic of its stations goes
  int macFilterProfileId = -1;          ///< -1: no profile is assigned
  std::string macFilterProfileName;     ///< empty where no profile is assigned
  std::vector<std::string> interfaces;  ///< of all its BSSs, in the order of the radios
  bool up = false;                      ///< at least one BSS is in the air
  std::vector<NetworkRadioSetting> radios;

  bool operator==(const NetworkSetting&) const = default;
};

/// One network on one radio; `SmartConnect` means all its radios.
struct NetworkRadioPair {
  int id = 0;
  Util::RadioFrequency radio = Util::RadioFrequency::Error;

  bool operator==(const NetworkRadioPair&) const = default;
};

}  // namespace TALO::Wifi
