#pragma once

#include "reference/tool_prose.h"

#include <string>

/// Completion scripts from their sources. In these, lines @commands, @options and @values are replaced by
/// what the shell's array or `case` holds there. Throws SourceError for another line of the kind.
namespace TALO::Reference {

std::string BashCompletion(const std::string& source, const ToolProse& prose);
std::string ZshCompletion(const std::string& source, const ToolProse& prose);

}  // namespace TALO::Reference
