#pragma once

#include "daemon/model/state.h"
#include "values/mac_address.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// One BSS as it is in the air.
struct LiveBSS {
  int networkId = 0;
  std::string interface;
  Wifi::Util::MACAddress bssid;
  bool up = false;
  int stations = 0;  ///< connected

  bool operator==(const LiveBSS&) const = default;
};

/// One radio as it is now.
struct LiveRadio {
  RadioFrequency radio = RadioFrequency::Error;
  bool up = false;
  int channel = 0;
  int channelWidth = 0;
  int utilisation = 0;  ///< percent of time the channel is busy
  std::vector<LiveBSS> bsss;

  bool operator==(const LiveRadio&) const = default;
};

}  // namespace TALO::Wifid
