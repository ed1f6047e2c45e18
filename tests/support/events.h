#pragma once

#include "daemon/model/live.h"
#include "daemon/model/result.h"
#include "daemon/radio/radio_events.h"

#include <string>

namespace TALO::Wifid {

/// As in "0a:00:00:00:00:01 connected to wlan0_1 (1)", "0a:00:00:00:00:01 left wlan0_1 (1): BSS down",
/// "Band2_4GHz up" and "WPS on wlan0_1: enrolled".
std::string Describe(const RadioEvent& event);

/// As in "RadioFailed the radio is broken".
std::string Describe(const Refusal& refusal);

/// As in "connected to Uplink 06:00:00:00:00:01 on channel 6, -60 dBm, 300 Mbit/s for 5 s" or
/// "failed to join Uplink: wrong password".
std::string Describe(const LiveUpstream& upstream);

}  // namespace TALO::Wifid
