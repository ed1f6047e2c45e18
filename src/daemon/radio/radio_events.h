#pragma once

#include "daemon/model/state.h"
#include "values/mac_address.h"

#include <string>
#include <variant>

/// What a driver tells without being asked.
namespace TALO::Wifid {

struct StationConnected {
  Wifi::Util::MACAddress address;
  int networkId = 0;
  std::string interface;

  bool operator==(const StationConnected&) const = default;
};

struct StationDisconnected {
  Wifi::Util::MACAddress address;
  int networkId = 0;
  std::string interface;
  std::string reason;  ///< "left", "refused", "passphrase changed", "BSS down", ...

  bool operator==(const StationDisconnected&) const = default;
};

struct RadioStateChanged {
  RadioFrequency radio = RadioFrequency::Error;
  bool up = false;

  bool operator==(const RadioStateChanged&) const = default;
};

/// A WPS session of a BSS came to its end.
struct WPSFinished {
  enum class Outcome { Enrolled, TimedOut, Overlap, Cancelled };
  std::string interface;
  Outcome outcome = Outcome::TimedOut;

  bool operator==(const WPSFinished&) const = default;
};

using RadioEvent = std::variant<StationConnected, StationDisconnected, RadioStateChanged, WPSFinished>;

}  // namespace TALO::Wifid
