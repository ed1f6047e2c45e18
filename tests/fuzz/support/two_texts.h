#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

namespace TALO::Fuzz {

/// An input up to its first zero byte, and what stands behind that.
struct TwoTexts {
  TwoTexts(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const std::size_t end = std::min(input.find('\0'), input.size());
    first = input.substr(0, end);
    second = end < input.size() ? input.substr(end + 1) : "";
  }

  std::string first;
  std::string second;
};

}  // namespace TALO::Fuzz
