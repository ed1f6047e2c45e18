#pragma once

#include "reference/tool_prose.h"

#include <string>

namespace TALO::Reference {

/// talowifitool(1).
std::string ToolPage(const ToolProse& prose);

}  // namespace TALO::Reference
