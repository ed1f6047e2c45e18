#pragma once

#include "daemon/model/state.h"
#include "values/mac_address.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// What one radio is and can do.
struct RadioCapability {
  RadioFrequency radio = RadioFrequency::Error;
  std::string interface;           ///< the radio's own, as in "wlan0"
  Wifi::Util::MACAddress address;  ///< the radio's own; its BSSs count up from it
  int maximumBSSs = 0;             ///< networks it can carry at once
  std::vector<int> channels;       ///< usable, ascending
  int maximumChannelWidth = 20;    ///< MHz

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

/// The address of the BSS in a slot of a radio: the radio's own with the slot added to its last byte.
Wifi::Util::MACAddress BSSAddress(const RadioCapability& radio, int slot);

}  // namespace TALO::Wifid
