#pragma once

#include "daemon/radio/linux/actions.h"

#include <map>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// A BSS that hostapd has.
struct PresentBSS {
  BSSPlan bss;
  bool sound = true;  ///< false when a change of it failed halfway

  bool operator==(const PresentBSS&) const = default;
};

/// A station that wpa_supplicant has.
template <typename Plan>
struct PresentStation {
  std::optional<Plan> plan;
  bool sound = true;  ///< false when a change of it failed halfway

  bool operator==(const PresentStation&) const = default;
};

/// What a radio is, as far as the driver brought it there.
struct Present {
  std::optional<ChannelSettings> channel;  ///< nothing while the radio is down
  int lastChannel = 0;                     ///< that it was on when it was up last
  bool sound = true;                       ///< false when the radio itself may be in between up and down
  std::map<std::string, PresentBSS> bsss;  ///< by interface
  std::optional<int> power;                ///< dBm, where it was set since the radio came up
  bool powerWasSet = false;                ///< ever, so that it does not send as it would by itself
  PresentStation<StationPlan> station;
  PresentStation<BackhaulStationPlan> backhaulStation;

  bool operator==(const Present&) const = default;

  /// Takes over what a task has come to.
  void Reach(const Outcome& outcome);
  /// What a task that failed speaks of is not relied on any more.
  void Doubt(const Outcome& outcome);
};

}  // namespace TALO::Wifid
