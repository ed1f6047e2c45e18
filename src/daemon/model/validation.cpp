#include "daemon/model/validation.h"

#include "daemon/model/text.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kMaximumSSID = 32;
constexpr std::size_t kMinimumPassphrase = 8;
constexpr std::size_t kMaximumPassphrase = 63;
constexpr std::size_t kKeyDigits = 64;

bool IsPrintable(char c) { return c >= ' ' && c <= '~'; }

bool IsHexDigit(char c) {
  constexpr std::string_view kDigits = "0123456789abcdefABCDEF";
  return kDigits.find(c) != std::string_view::npos;
}

}  // namespace

Result<void> CheckSSID(const std::string& ssid, const std::string& what) {
  if (ssid.empty() || ssid.size() > kMaximumSSID) {
    return Refusal{ErrorCode::InvalidArgument, "the " + what + " " + Quoted(ssid) + " has " +
                                                   std::to_string(ssid.size()) +
                                                   " bytes, it must have 1 to 32"};
  }
  return {};
}

Result<void> CheckPassphrase(const std::string& passphrase) {
  const std::size_t size = passphrase.size();
  if (size == kKeyDigits) {
    if (!std::ranges::all_of(passphrase, IsHexDigit)) {
      return Refusal{ErrorCode::InvalidArgument,
                     "a passphrase of 64 characters must be hexadecimal digits, this one is not"};
    }
    return {};
  }
  if (size < kMinimumPassphrase || size > kMaximumPassphrase) {
    return Refusal{ErrorCode::InvalidArgument,
                   "the passphrase has " + std::to_string(size) +
                       " characters, it must have 8 to 63, or 64 hexadecimal digits"};
  }
  if (!std::ranges::all_of(passphrase, IsPrintable)) {
    return Refusal{ErrorCode::InvalidArgument,
                   "the passphrase holds a character that is not printable ASCII"};
  }
  return {};
}

}  // namespace TALO::Wifid
