#pragma once

#include "daemon/radio/linux/wiphy.h"
#include "daemon/system/netlink_message.h"

#include <string>
#include <vector>

/// What nl80211 answers, but for the radios themselves.
namespace TALO::Wifid {

/// The interfaces that have a name, in the order of their numbers.
std::vector<WirelessInterface> ReadInterfaces(const Messages& messages);

std::vector<LinkedStation> ReadStations(const Messages& messages);

/// The channels whose time is counted.
std::vector<ChannelSurvey> ReadSurvey(const Messages& messages);

/// Two letters or digits; empty where no message tells.
std::string ReadCountry(const Messages& messages);

/// Whether it tells that another country came into force.
bool IsCountryChange(const std::string& message);

}  // namespace TALO::Wifid
