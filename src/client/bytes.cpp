#include "client/bytes.h"

#include <cstddef>
#include <cstdint>

namespace TALO::Wifi {

namespace {

std::uint8_t ByteAt(std::string_view bytes, std::size_t i) { return static_cast<std::uint8_t>(bytes[i]); }

/// The length of the UTF-8 sequence at the start of `bytes`, 0 where none stands there. `bytes` is not empty.
std::size_t SequenceLength(std::string_view bytes) {
  const std::uint8_t lead = ByteAt(bytes, 0);
  if (lead < 0x80) {
    return 1;
  }
  // The second byte's range excludes overlong forms, surrogates and what lies above U+10FFFF.
  std::size_t length = 0;
  std::uint8_t low = 0x80;
  std::uint8_t high = 0xBF;
  if (lead >= 0xC2 && lead <= 0xDF) {
    length = 2;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    length = 3;
    low = lead == 0xE0 ? 0xA0 : low;
    high = lead == 0xED ? 0x9F : high;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    length = 4;
    low = lead == 0xF0 ? 0x90 : low;
    high = lead == 0xF4 ? 0x8F : high;
  }
  if (length == 0 || bytes.size() < length || ByteAt(bytes, 1) < low || ByteAt(bytes, 1) > high) {
    return 0;
  }
  for (std::size_t i = 2; i < length; ++i) {
    if ((ByteAt(bytes, i) & 0xC0U) != 0x80) {
      return 0;
    }
  }
  return length;
}

}  // namespace

bool IsUTF8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) {
      return false;
    }
    bytes.remove_prefix(length);
  }
  return true;
}

std::string ToReadableText(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    const std::size_t length = SequenceLength(bytes);
    if (length == 0) {
      text += "\xEF\xBF\xBD";
      bytes.remove_prefix(1);
    } else {
      text += bytes.substr(0, length);
      bytes.remove_prefix(length);
    }
  }
  return text;
}

std::string ToHex(std::string_view bytes) {
  constexpr char kDigits[] = "0123456789abcdef";
  std::string hex;
  hex.reserve(2 * bytes.size());
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    hex += kDigits[byte >> 4U];
    hex += kDigits[byte & 0x0FU];
  }
  return hex;
}

}  // namespace TALO::Wifi
