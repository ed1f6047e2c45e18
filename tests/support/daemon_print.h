#pragma once

// Prints the daemon's values for failing tests. Every test of the daemon includes this before it compares
// any.

#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/model/state_description.h"
#include "support/print.h"

#include <ostream>

BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioCapability, radio, interface, address, maximumBSSs, channels,
                        maximumChannelWidth);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Capabilities, model, radios);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveBSS, networkId, interface, bssid, up, stations);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveRadio, radio, up, channel, channelWidth, utilisation, bsss);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::BSSPlan, networkId, interface, bssid, ssid, hidden, securityMode,
                        passphrase, bridge);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioPlan, radio, enable, channel, channelWidth, transmitPower, country,
                        bsss);

namespace TALO::Wifid {

/// Picked up by GoogleTest.
template <Wifi::Record T>
void PrintTo(const T& record, std::ostream* out) {
  Wifi::Printing::Print(*out, record);
}

inline void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << "{" << make_error_code(refusal.code).message() << ": " << refusal.sentence << "}";
}

}  // namespace TALO::Wifid
