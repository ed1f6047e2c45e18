#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace TALO::Wifid {

/// Makes lines of what comes in pieces. What a line has beyond 4 KiB is left out, so it never grows.
class LineCutter {
 public:
  static constexpr std::size_t kLongest = 4096;

  /// The lines that this piece ends, without their ends.
  std::vector<std::string> Take(std::string_view piece);

  /// What came after the last line's end, if anything.
  std::vector<std::string> TakeRest();

 private:
  void Append(std::string_view text);

  std::string line_;
};

}  // namespace TALO::Wifid
