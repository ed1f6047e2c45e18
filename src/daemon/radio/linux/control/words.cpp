#include "daemon/radio/linux/control/words.h"

#include <charconv>
#include <cstddef>
#include <stdexcept>
#include <system_error>

namespace TALO::Wifid {

namespace {

template <typename Number>
std::optional<Number> ReadWhole(std::string_view word, int base) {
  Number number{};
  const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number, base);
  if (word.empty() || error != std::errc() || end != word.data() + word.size()) {
    return std::nullopt;
  }
  return number;
}

}  // namespace

std::optional<int> ReadNumber(std::string_view word) { return ReadWhole<int>(word, 10); }

std::optional<Wifi::Util::MACAddress> ReadAddress(const std::string& word) {
  try {
    return Wifi::Util::MACAddress(word);
  } catch (const std::invalid_argument&) {
    return std::nullopt;
  }
}

std::optional<std::string> ReadHex(std::string_view digits) {
  if (digits.size() % 2 != 0) {
    return std::nullopt;
  }
  std::string bytes;
  for (std::size_t i = 0; i < digits.size(); i += 2) {
    const auto byte = ReadWhole<unsigned char>(digits.substr(i, 2), 16);
    if (!byte) {
      return std::nullopt;
    }
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

}  // namespace TALO::Wifid
