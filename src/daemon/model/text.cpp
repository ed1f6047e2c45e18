#include "daemon/model/text.h"

#include "client/bytes.h"

#include <array>
#include <cstddef>
#include <ctime>

namespace TALO::Wifid {

namespace {

/// How many bytes at the start of `text` are to be shown by number, 0 where a readable character stands.
/// `text` is not empty.
std::size_t UnreadableLength(std::string_view text, bool isUTF8) {
  const auto byte = static_cast<unsigned char>(text.front());
  if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && !isUTF8)) {
    return 1;
  }
  // The control characters U+0080 to U+009F.
  if (byte == 0xC2 && static_cast<unsigned char>(text[1]) < 0xA0) {
    return 2;
  }
  // Line and paragraph separator.
  return text.starts_with("\xE2\x80\xA8") || text.starts_with("\xE2\x80\xA9") ? 3 : 0;
}

}  // namespace

std::string Quoted(std::string_view bytes) {
  const bool isUTF8 = Wifi::IsUTF8(bytes);
  std::string text = "\"";
  while (!bytes.empty()) {
    std::size_t length = UnreadableLength(bytes, isUTF8);
    if (length == 0) {
      if (bytes.front() == '"' || bytes.front() == '\\') {
        text += '\\';
      }
      text += bytes.front();
      length = 1;
    } else {
      for (const char& c : bytes.substr(0, length)) {
        text += "\\x" + Wifi::ToHex(std::string_view(&c, 1));
      }
    }
    bytes.remove_prefix(length);
  }
  return text + "\"";
}

std::string FormatTime(std::int64_t secondsSince1970) {
  const std::time_t time = secondsSince1970;
  std::tm parts{};
  if (gmtime_r(&time, &parts) == nullptr) {
    return {};
  }
  std::array<char, 64> text{};
  const std::size_t length = std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return {text.data(), length};
}

}  // namespace TALO::Wifid
