#pragma once

#include "values/mac_address.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What hostapd or wpa_supplicant tells without being asked, as in
/// "IFNAME=wlan0_1 <3>AP-STA-CONNECTED 02:00:00:00:01:00 keyid=guest".
struct ControlMessage {
  std::string interface;           ///< empty where it is about none
  std::string name;                ///< as in "AP-STA-CONNECTED"
  std::vector<std::string> words;  ///< behind the name, those without "="
  /// Behind the name, those with "=". Quotes around a value and brackets around several are taken off; its
  /// escapes are left, see ReadSSID().
  std::map<std::string, std::string> fields;

  bool operator==(const ControlMessage&) const = default;

  /// The first word that is a MAC address.
  std::optional<Wifi::Util::MACAddress> Address() const;
};

/// Nothing for what is no such message.
std::optional<ControlMessage> ReadMessage(const std::string& datagram);

}  // namespace TALO::Wifid
