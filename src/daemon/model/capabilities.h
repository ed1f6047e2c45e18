#pragma once

#include "daemon/model/state.h"
#include "values/mac_address.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// What one radio is and can do. Its block is as many addresses as it has slots, one more than `maximumBSSs`:
/// each BSS has that of its slot. They are the radio's alone: no other radio's block and no interface that
/// the driver makes for itself has one of them. Where the hardware's own addresses lie closer, the driver
/// takes a locally administered block instead.
struct RadioCapability {
  RadioFrequency radio = RadioFrequency::Error;
  std::string interface;           ///< the radio's own, as in "wlan0"
  Wifi::Util::MACAddress address;  ///< the first of the radio's block, see below
  int maximumBSSs = 0;             ///< networks it can carry at once, beside the backhaul
  std::vector<int> channels;       ///< that the hardware can use in any country, ascending
  int maximumChannelWidth = 20;    ///< MHz
  bool limitsBroadcasts = true;    ///< can do what MACFilterGlobal asks for
  bool findsRadars = true;         ///< can use the channels that take looking out for radars (DFS)

  bool operator==(const RadioCapability&) const = default;
};

/// What the router's radios are and can do, as their driver says at start. Fixed for the life of the daemon.
struct Capabilities {
  SupportedModel model = SupportedModel::Error;
  std::vector<RadioCapability> radios;  ///< in ascending order of their RadioFrequency

  bool operator==(const Capabilities&) const = default;
};

/// The radios of a model: 2.4 GHz and one or two of 5 GHz.
std::vector<RadioFrequency> RadiosOf(SupportedModel model);

/// The slot of the backhaul's BSS, which no network has.
inline constexpr int kBackhaulSlot = 0;

/// The interface of the BSS in a slot of a radio, as in "wlan0_1".
std::string BSSInterface(const RadioCapability& radio, int slot);

/// The address of the BSS in a slot of a radio: the radio's with the slot added to its last three bytes,
/// which are one number.
Wifi::Util::MACAddress BSSAddress(const RadioCapability& radio, int slot);

}  // namespace TALO::Wifid
