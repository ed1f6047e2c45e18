#include "cli/text.h"

#include <algorithm>
#include <cctype>

namespace TALO::Tool {

bool equalsIgnoreCase(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char left, unsigned char right) {
    return left == right || std::toupper(left) == std::toupper(right);
  });
}

}  // namespace TALO::Tool
