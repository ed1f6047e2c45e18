#include "daemon/model/text.h"

#include "client/bytes.h"

#include <array>
#include <ctime>

namespace TALO::Wifid {

std::string Quoted(std::string_view bytes) {
  const bool readable = Wifi::IsUTF8(bytes);
  std::string text = "\"";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    const bool control = byte < 0x20 || byte == 0x7F;
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (control || (!readable && byte >= 0x80)) {
      text += "\\x" + Wifi::ToHex(std::string_view(&c, 1));
    } else {
      text += c;
    }
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
