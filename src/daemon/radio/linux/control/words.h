#pragma once

#include "values/mac_address.h"

#include <optional>
#include <string>
#include <string_view>

/// Words of what hostapd and wpa_supplicant say. What is not of the form is nothing.
namespace TALO::Wifid {

/// A whole decimal number that an int holds.
std::optional<int> ReadNumber(std::string_view word);

std::optional<Wifi::Util::MACAddress> ReadAddress(const std::string& word);

/// Two hexadecimal digits a byte.
std::optional<std::string> ReadHex(std::string_view digits);

}  // namespace TALO::Wifid
