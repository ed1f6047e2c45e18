#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/result.h"

#include <string>
#include <vector>

/// The rules of the router's own stations towards upstream access points.
namespace TALO::Wifid {

/// The interface of a radio's station, as in "wlan0sta", and of its backhaul station, as in "wlan0bhs".
std::string StationInterface(const RadioCapability& radio);
std::string BackhaulStationInterface(const RadioCapability& radio);

/// Validates all of the record but its radio, enabled or not: the essid has 1 to 32 bytes, or none in a
/// setting that is not enabled; the security mode has a name and is not `Error` or `WEP`; personal modes need
/// a passphrase of the field, `Disabled` and `OWE` an empty one, enterprise modes a user and a password of at
/// most 253 bytes each; a user is for enterprise modes only; the BSSID is not a group address.
/// InvalidArgument else.
Result<void> CheckStation(const Wifi::StationSetting& setting);

/// The record must pass CheckStation, and its radio be one of this router (`SmartConnect`, `Error` and bands
/// it does not have are InvalidArgument). NotSupported for one that is enabled on a radio without a channel
/// in the country.
Result<Change<void>> ModifyStation(const State& state, const Capabilities& capabilities,
                                   const Wifi::StationSetting& setting);

}  // namespace TALO::Wifid
