#pragma once

#include "values/export.h"

#include <string>
#include <string_view>

namespace TALO::Wifi {

/// True when `bytes` is valid UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF). NUL counts as
/// valid.
TALO_WIFI_API bool IsUTF8(std::string_view bytes);

/// `bytes` with everything that is not UTF-8 replaced by U+FFFD, one for each byte that does not fit.
TALO_WIFI_API std::string ToReadableText(std::string_view bytes);

/// Two lower-case hexadecimal digits a byte.
TALO_WIFI_API std::string ToHex(std::string_view bytes);

}  // namespace TALO::Wifi
