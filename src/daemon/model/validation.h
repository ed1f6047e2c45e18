#pragma once

#include "daemon/model/result.h"

#include <string>

/// Limits of the field, checked the same way wherever such a value comes in.
namespace TALO::Wifid {

/// 1 to 32 bytes of any value. `what` names the value in the sentence, as in "SSID".
Result<void> CheckSSID(const std::string& ssid, const std::string& what = "SSID");

/// 8 to 63 printable ASCII characters, or 64 hexadecimal digits. The sentence does not hold the passphrase.
Result<void> CheckPassphrase(const std::string& passphrase);

}  // namespace TALO::Wifid
