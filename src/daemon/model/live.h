#pragma once

#include "daemon/model/state.h"
#include "values/mac_address.h"

#include <optional>
#include <string>
#include <vector>

/// What can be observed, as a driver sees it.
namespace TALO::Wifid {

/// A station connected to a BSS.
struct LiveStation {
  Wifi::Util::MACAddress address;
  std::string name;       ///< as it gave it, empty where unknown
  std::string ipAddress;  ///< empty where unknown
  int signal = 0;         ///< dBm
  int transmitRate = 0;   ///< Mbit/s towards the station
  int receiveRate = 0;    ///< Mbit/s from the station
  int connectedTime = 0;  ///< seconds

  bool operator==(const LiveStation&) const = default;
};

/// One BSS as it is in the air.
struct LiveBSS {
  int networkId = 0;
  std::string interface;
  Wifi::Util::MACAddress bssid;
  bool up = false;
  std::vector<LiveStation> stations;  ///< in the order in which they connected

  bool operator==(const LiveBSS&) const = default;
};

/// A radio's own station towards an upstream access point or a mesh parent.
struct LiveUpstream {
  enum class Phase { Disabled, Scanning, Connecting, Connected, Failed };
  Phase phase = Phase::Disabled;
  std::string reason;  ///< why it failed, empty otherwise
  std::string ssid;    ///< raw bytes
  Wifi::Util::MACAddress bssid;
  int channel = 0;
  int signal = 0;         ///< dBm, 0 while not connected
  int transmitRate = 0;   ///< Mbit/s, 0 while not connected
  int connectedTime = 0;  ///< seconds, 0 while not connected

  bool operator==(const LiveUpstream&) const = default;
};

/// One radio as it is now.
struct LiveRadio {
  RadioFrequency radio = RadioFrequency::Error;
  bool up = false;
  int channel = 0;
  int channelWidth = 0;
  int utilisation = 0;  ///< percent of time the channel is busy
  std::vector<LiveBSS> bsss;
  LiveUpstream station;
  LiveUpstream backhaulStation;

  bool operator==(const LiveRadio&) const = default;
};

/// Another node of the mesh that this one knows.
struct MeshNode {
  std::string serial;
  SupportedModel model = SupportedModel::Error;

  bool operator==(const MeshNode&) const = default;
};

}  // namespace TALO::Wifid
