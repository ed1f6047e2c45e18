#pragma once

// The one list of the state's members; the state file's form comes from it.

#include "client/record_members.h"
#include "daemon/model/state.h"

#include <boost/hana/adapt_struct.hpp>

BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioPassphrase, radio, passphrase, passphraseChangedAt);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::ScheduleState, radio, mode, validUntil, windows);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::NetworkState, id, networkName, ssid, hidden, securityMode, passphrase,
                        passphraseChangedAt, activated, context, bridge, slot, macFilterProfileId,
                        radioPassphrases, schedules);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::RadioState, radio, enable, channel, channelWidth, transmitPower,
                        wifiGeneration);
BOOST_HANA_ADAPT_STRUCT(TALO::Wifid::State, nextNetworkId, nextMACFilterProfileId, context, country, radios,
                        networks, stations, macFilterProfiles, macFilterGlobal, backhaul, backhaulSTA,
                        scanType, mesh, backhaulSwapped);
