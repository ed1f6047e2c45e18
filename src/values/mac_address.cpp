#include "values/mac_address.h"

#include <cstddef>
#include <stdexcept>

namespace TALO::Wifi::Util {

namespace {

constexpr std::size_t kTextLength = 17;

// Not std::isxdigit: its answer depends on the locale.
bool IsHexDigit(char c) { return (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }

char ToLower(char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c; }

bool IsMACAddress(const std::string& text) {
  if (text.size() != kTextLength) {
    return false;
  }
  const char separator = text[2];
  if (separator != ':' && separator != '-') {
    return false;
  }
  for (std::size_t i = 0; i < kTextLength; ++i) {
    const bool fits = i % 3 == 2 ? text[i] == separator : IsHexDigit(text[i]);
    if (!fits) {
      return false;
    }
  }
  return true;
}

}  // namespace

MACAddress::MACAddress() : text_("00:00:00:00:00:00") {}

MACAddress::MACAddress(const std::string& text) {
  if (!IsMACAddress(text)) {
    throw std::invalid_argument("Invalid MAC address: " + text);
  }
  text_ = text;
  for (std::size_t i = 0; i < kTextLength; ++i) {
    text_[i] = i % 3 == 2 ? ':' : ToLower(text_[i]);
  }
}

MACAddress::MACAddress(const MACAddress&) = default;
MACAddress::MACAddress(MACAddress&&) noexcept = default;
MACAddress& MACAddress::operator=(const MACAddress&) = default;
MACAddress& MACAddress::operator=(MACAddress&&) noexcept = default;
MACAddress::~MACAddress() = default;

}  // namespace TALO::Wifi::Util
