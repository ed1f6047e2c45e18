#pragma once

#include "values/enums.h"
#include "values/mac_address.h"

#include <string>
#include <vector>

namespace TALO::Wifi {

/// A device in a filter list.
struct MACFilterDevice {
  std::string name;  ///< what operators call it
  Util::MACAddress address;

  bool operator==(const MACFilterDevice&) const = default;
};

/// Protection of all networks against broadcast floods.
struct MACFilterGlobal {
  std::vector<MACFilterDevice> devices;  ///< whom it concerns; none listed: every device
  bool enablePreventBroadcast = false;
  int maximumBroadcast = 0;  ///< frames a second of each device that pass

  bool operator==(const MACFilterGlobal&) const = default;
};

/// A named list of devices that a network admits or refuses.
struct MACFilterProfile {
  int id = -1;  ///< -1 while not yet created
  std::string name;
  MACFilterAction action = MACFilterAction::Error;
  std::vector<MACFilterDevice> devices;

  bool operator==(const MACFilterProfile&) const = default;
};

}  // namespace TALO::Wifi
