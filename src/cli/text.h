#pragma once

#include <string>

namespace TALO::Tool {

/// Equal lengths, and equal characters once both are upper case.
bool equalsIgnoreCase(const std::string& a, const std::string& b);

}  // namespace TALO::Tool
