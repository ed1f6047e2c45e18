#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace TALO::Wifi::Bus {

/// A text that is part of a type: the name of an operation, a signature put together while compiling.
template <std::size_t Size>
struct FixedString {
  char text[Size + 1] = {};

  constexpr FixedString() = default;
  // Implicit, so that a literal can stand as a template argument.
  constexpr FixedString(const char (&literal)[Size + 1]) {  // NOLINT(google-explicit-constructor)
    std::copy_n(literal, Size, text);
  }

  constexpr std::string_view View() const { return text; }
};

template <std::size_t SizeWithZero>
FixedString(const char (&)[SizeWithZero]) -> FixedString<SizeWithZero - 1>;

template <std::size_t Left, std::size_t Right>
constexpr FixedString<Left + Right> operator+(const FixedString<Left>& left,
                                              const FixedString<Right>& right) {
  FixedString<Left + Right> sum;
  std::copy_n(left.text, Left, sum.text);
  std::copy_n(right.text, Right, sum.text + Left);
  return sum;
}

}  // namespace TALO::Wifi::Bus
