#pragma once

#include <string>

namespace TALO::Wifid {

/// Whether a passphrase, valid as such, stands for the key itself: 64 hexadecimal digits. WPA and WPA2 take
/// the key that these are, WPA3 takes them as a password like any other.
bool IsKey(const std::string& passphrase);

}  // namespace TALO::Wifid
