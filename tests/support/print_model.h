#pragma once

// Prints the daemon's state, plans and what is in the air for failing tests.

#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/model/state_description.h"
#include "support/print.h"

#include <optional>
#include <ostream>

BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioCapability, radio, interface, address, maximumBSSs, channels,
                        maximumChannelWidth);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Capabilities, model, radios);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveStation, address, name, ipAddress, signal, transmitRate, receiveRate,
                        connectedTime);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveBSS, networkId, interface, bssid, up, stations);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveUpstream, phase, reason, ssid, bssid, channel, signal, transmitRate,
                        connectedTime);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::LiveRadio, radio, up, channel, channelWidth, utilisation, bsss, station,
                        backhaulStation);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::AccessPlan, rule, devices);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::BSSPlan, networkId, interface, bssid, ssid, hidden, securityMode,
                        passphrase, bridge, access);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::StationPlan, interface, ssid, user, passphrase, bssid, securityMode);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::BackhaulStationPlan, interface, ssid, passphrase, scanType);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioPlan, radio, enable, channel, channelWidth, transmitPower, country,
                        bsss, station, backhaulStation, broadcastLimit);

namespace TALO::Wifi::Printing {

template <>
struct Printer<Wifid::LiveUpstream::Phase> {
  static void Print(std::ostream& out, Wifid::LiveUpstream::Phase phase) { out << static_cast<int>(phase); }
};
template <>
struct Printer<Wifid::AccessPlan::Rule> {
  static void Print(std::ostream& out, Wifid::AccessPlan::Rule rule) { out << static_cast<int>(rule); }
};
template <typename T>
struct Printer<std::optional<T>> {
  static void Print(std::ostream& out, const std::optional<T>& value) {
    if (value) {
      Printing::Print(out, *value);
    } else {
      out << "nothing";
    }
  }
};

}  // namespace TALO::Wifi::Printing

namespace TALO::Wifid {

/// Picked up by GoogleTest.
template <Wifi::Record T>
void PrintTo(const T& record, std::ostream* out) {
  Wifi::Printing::Print(*out, record);
}

inline void PrintTo(const Refusal& refusal, std::ostream* out) {
  *out << Wifi::ErrorCategory::get().message(static_cast<int>(refusal.code)) << ": " << refusal.sentence;
}

}  // namespace TALO::Wifid
