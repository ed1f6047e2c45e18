#pragma once

#include "daemon/model/plan.h"

#include <string>

/// What wpa_supplicant is told.
namespace TALO::Wifid {

/// The configuration of an interface that only listens.
std::string ListenerFile();
/// Of a radio's station towards its access point. In an enterprise mode it asks for PEAP with MSCHAPv2 and
/// believes the server whatever certificate it shows. Modes that wpa_supplicant cannot join with are not for
/// here, see CanJoin().
std::string StationFile(const StationPlan& station);
/// Of the backhaul station; it comes in 4-address mode, which its interface must be in. With the scan type
/// Disable it never looks for one.
std::string BackhaulStationFile(const BackhaulStationPlan& station);

/// Whether wpa_supplicant can join an access point of this mode: not WEP.
bool CanJoin(SecurityMode mode);

/// Takes an interface in, on the global control socket. `bridge` is the one it belongs to, empty for none.
std::string AddStation(const std::string& interface, const std::string& path,
                       const std::string& controlDirectory, const std::string& bridge);
std::string RemoveStation(const std::string& interface);

/// For one interface, as the global control socket takes it.
std::string ToInterface(const std::string& interface, const std::string& command);

}  // namespace TALO::Wifid
