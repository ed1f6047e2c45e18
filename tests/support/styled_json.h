#pragma once

#include <algorithm>
#include <string>
#include <vector>

namespace TALO::Wifi {

/// The lines of a styled JSON text as one text, each with its line end. Quotation marks are given as '.
inline std::string StyledJson(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) {
    text += line + "\n";
  }
  std::replace(text.begin(), text.end(), '\'', '"');
  return text;
}

}  // namespace TALO::Wifi
