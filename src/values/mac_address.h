#pragma once

#include "values/export.h"

#include <compare>
#include <string>

namespace TALO::Wifi::Util {

/// A MAC address, kept and given in its canonical text form: six groups of two lower-case hexadecimal digits
/// separated by ':'.
class TALO_WIFI_API MACAddress {
 public:
  /// The address 00:00:00:00:00:00, which stands for "none".
  MACAddress();

  /// Takes six groups of two hexadecimal digits in any letter case, all separated by ':' or all by '-'.
  /// Throws std::invalid_argument "Invalid MAC address: " and the text for anything else.
  explicit MACAddress(const std::string& text);

  MACAddress(const MACAddress&);
  MACAddress(MACAddress&&) noexcept;
  MACAddress& operator=(const MACAddress&);
  MACAddress& operator=(MACAddress&&) noexcept;
  ~MACAddress();

  /// The canonical text form.
  const std::string& ToString() const noexcept { return text_; }

  friend bool operator==(const MACAddress&, const MACAddress&) = default;
  // clang-tidy 14 takes the generated comparison with 0 for a pointer's.
  // NOLINTNEXTLINE(modernize-use-nullptr)
  friend std::strong_ordering operator<=>(const MACAddress&, const MACAddress&) = default;

 private:
  std::string text_;
};

}  // namespace TALO::Wifi::Util
