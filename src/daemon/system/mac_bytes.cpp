#include "daemon/system/mac_bytes.h"

#include "client/bytes.h"

#include <charconv>
#include <cstddef>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kBytes = 6;
constexpr std::size_t kTextOfByte = 3;  ///< two digits and ':'

}  // namespace

Wifi::Util::MACAddress MACOf(const std::string& bytes) {
  if (bytes.size() != kBytes) {
    return {};
  }
  const std::string digits = Wifi::ToHex(bytes);
  std::string text;
  for (std::size_t index = 0; index < digits.size(); index += 2) {
    text += (text.empty() ? "" : ":") + digits.substr(index, 2);
  }
  return Wifi::Util::MACAddress(text);
}

std::string BytesOf(const Wifi::Util::MACAddress& address) {
  std::string bytes;
  for (std::size_t index = 0; index < kBytes; ++index) {
    const char* digits = address.ToString().data() + index * kTextOfByte;
    unsigned char byte = 0;
    std::from_chars(digits, digits + 2, byte, 16);
    bytes += static_cast<char>(byte);
  }
  return bytes;
}

}  // namespace TALO::Wifid
