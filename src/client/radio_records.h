#pragma once

#include "values/enums.h"
#include "values/mac_address.h"

#include <map>
#include <string>
#include <vector>

namespace TALO::Wifi {

/// How a radio is set up.
struct RadioSetting {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  bool enable = false;
  int channel = 0;         ///< IEEE channel number, 0 for automatic
  int channelWidth = 0;    ///< MHz
  int transmitPower = 0;   ///< percent of what the country allows
  int wifiGeneration = 0;  ///< 4 for 802.11n, 5 for 802.11ac, 6 for 802.11ax
  CountryCode country = CountryCode::MaxCountryCode;

  bool operator==(const RadioSetting&) const = default;
};

/// What a radio does now.
struct RadioStatus {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  bool up = false;
  int channel = 0;       ///< in use, 0 while the radio is down
  int channelWidth = 0;  ///< MHz in use, 0 while the radio is down
  int utilisation = 0;   ///< percent of time the channel is busy
  int stations = 0;      ///< connected to any BSS of the radio
  Util::MACAddress bssid;
  std::vector<std::string> interfaces;  ///< of the BSSs that are up

  bool operator==(const RadioStatus&) const = default;
};

/// The part of RadioStatus that costs no survey of the channel.
struct RadioStatusSimple {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  bool up = false;
  int channel = 0;  ///< in use, 0 while the radio is down
  Util::MACAddress bssid;
  std::vector<std::string> interfaces;  ///< of the BSSs that are up

  bool operator==(const RadioStatusSimple&) const = default;
};

/// A radio's own interface and the interfaces of the BSSs that are up on it.
struct RadioIfStatus {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  std::string radioInterface;
  std::vector<std::string> enabledInterfaces;

  bool operator==(const RadioIfStatus&) const = default;
};

/// Which radio serves a band that was asked for, on this model and in this mesh.
struct RadioConversionInfo {
  std::map<Util::RadioFrequency, Util::RadioFrequency> conversionMap;
  bool backhaulSwapped = false;  ///< the two 5 GHz radios have exchanged fronthaul and backhaul

  bool operator==(const RadioConversionInfo&) const = default;
};

}  // namespace TALO::Wifi
