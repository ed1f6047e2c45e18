#pragma once

// The one list of a scenario's members; the form of scenario files comes from it.

#include "client/record_members.h"
#include "daemon/radio/simulated/scenario.h"

#include <boost/hana/adapt_struct.hpp>

BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::AccessPoint, ssid, hidden, bssid, channel, channelWidth, signal,
                        securityMode, user, passphrase, wps, backhaul, transmitRate, appearsAt, vanishesAt);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Credential, ssid, passphrase);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Roam, at, radio);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Device, address, name, ipAddress, knows, bands, signal, transmitRate,
                        receiveRate, joinMilliseconds, arrivesAt, leavesAt, pressesAfter, roams,
                        broadcastsPerSecond);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::MeshNode, serial, model);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::ApplyFault, radio, skip, times, reason, milliseconds);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::ScanFault, radio, skip, times, reason);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Faults, apply, scan);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Timings, applyMilliseconds, bssMilliseconds, scanMilliseconds,
                        joinMilliseconds, joinSpreadMilliseconds);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::Scenario, seed, bridges, neighbours, devices, meshNodes, faults,
                        timings);
