#include "daemon/radio/linux/control/config_text.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

/// wpa_supplicant reads a network's lines by 2000 bytes and hostapd by 4096, the end of the line included;
/// what is beyond is the next line.
constexpr std::size_t kMaximumLine = 1998;

bool EndsLine(char c) { return c == '\n' || c == '\r' || c == '\0'; }

}  // namespace

ConfigText& ConfigText::Set(const std::string& key, const std::string& value) {
  if (std::ranges::any_of(value, EndsLine)) {
    throw std::invalid_argument("the value of " + key + " would begin another line");
  }
  const std::string line = key + "=" + value;
  if (line.size() > kMaximumLine) {
    throw std::invalid_argument("the value of " + key + " is too long for a line");
  }
  text_ += line + "\n";
  return *this;
}

ConfigText& ConfigText::Set(const std::string& key, int value) { return Set(key, std::to_string(value)); }

}  // namespace TALO::Wifid
