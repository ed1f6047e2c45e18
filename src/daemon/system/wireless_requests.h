#pragma once

#include "daemon/radio/linux/kernel.h"
#include "daemon/system/netlink_request.h"

#include <string>

/// What nl80211 is asked. `family` is its number, which the kernel gives.
namespace TALO::Wifid {

NetlinkRequest ListWiphys(int family);
NetlinkRequest ListInterfaces(int family);
NetlinkRequest ListStations(int family, unsigned interface);
NetlinkRequest ListSurvey(int family, unsigned interface);
NetlinkRequest AskForCountry(int family);
NetlinkRequest ChangeCountry(int family, const std::string& code);
/// In dBm.
NetlinkRequest ChangeTransmitPower(int family, int wiphy, int power);
/// For an interface of a type that can be made.
NetlinkRequest MakeInterface(int family, const Kernel::NewInterface& interface);
NetlinkRequest EndInterface(int family, unsigned interface);

}  // namespace TALO::Wifid
