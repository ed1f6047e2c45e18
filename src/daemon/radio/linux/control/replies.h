#pragma once

#include "client/station_records.h"
#include "daemon/model/live.h"

#include <map>
#include <string>
#include <vector>

/// What hostapd and wpa_supplicant answer. Whatever comes, nothing throws: what cannot be understood is left
/// out.
namespace TALO::Wifid {

/// The lines "key=value" of an answer.
std::map<std::string, std::string> ReadFields(const std::string& reply);

/// The bytes of an SSID as they print it, with its escapes as in "caf\xc3\xa9".
std::string ReadSSID(const std::string& printed);

/// Asks wpa_supplicant for all that an interface heard, by what ReadHeard() reads: ID, BSSID, frequency,
/// signal, age, information elements, flags, SSID, and a line between two.
inline constexpr const char* kListHeard = "BSS RANGE=ALL MASK=0x21e87";
/// Likewise what comes after this ID. An access point may tell so much that no answer holds it: the answer
/// ends before it, and is empty where it would be the first; without its information elements it fits.
enum class Elements { With, Without };
std::string ListHeardAfter(int id, Elements elements = Elements::With);
/// What an answer says of the first alone.
std::string FirstHeard(const std::string& reply);
/// The access points that are on a channel of either band, as this radio heard them. One that offers nothing
/// that is known has the security mode Error.
std::vector<Wifi::ScanResult> ReadHeard(const std::string& reply, Wifi::Util::RadioFrequency radio);
/// The ID that the last one has, to go on from; -1 for none. The answer ends early when it is long.
int LastHeardId(const std::string& reply);

/// wpa_supplicant's "STATUS" and "SIGNAL_POLL" of a station, as far as they tell: not why it failed, nor how
/// long it is connected. Between two tries it is scanning, and so is one that is told not to look.
LiveUpstream ReadUpstream(const std::string& status, const std::string& signal);

}  // namespace TALO::Wifid
