#include "daemon/store/checksum.h"

#include "client/bytes.h"

#include <boost/crc.hpp>

#include <cstdint>
#include <string_view>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kDigits = 8;

/// Where the digits stand; npos where they do not. Inside of a JSON text quotes are escaped, so that no value
/// can look like this.
std::size_t FindDigits(const std::string& text) {
  const std::string mark = std::string("\"") + kChecksumKey + "\" : \"";
  const std::size_t at = text.find(mark);
  return at == std::string::npos || text.size() < at + mark.size() + kDigits ? std::string::npos
                                                                             : at + mark.size();
}

std::string CRCOf(std::string_view text) {
  boost::crc_32_type crc;
  crc.process_bytes(text.data(), text.size());
  std::string bytes;
  for (unsigned shift = 32; shift > 0; shift -= 8) {
    bytes += static_cast<char>((crc.checksum() >> (shift - 8)) & 0xFFU);
  }
  return Wifi::ToHex(bytes);
}

}  // namespace

void PutChecksum(std::string& text) {
  if (const std::size_t at = FindDigits(text); at != std::string::npos) {
    text.replace(at, kDigits, CRCOf(text));
  }
}

bool FitsChecksum(std::string text, const std::string& checksum) {
  const std::size_t at = FindDigits(text);
  if (at == std::string::npos) {
    return false;
  }
  text.replace(at, kDigits, kNoChecksum);
  return CRCOf(text) == checksum;
}

}  // namespace TALO::Wifid
