#pragma once

#include "cli/command_table.h"

#include <string>

namespace TALO::Tool {

/// Prints the commands that may run at the daemon's log level, one a line. Never fails for want of a daemon:
/// while the log level cannot be learned, the debug-only commands are left out.
void printHelp(const CommandTable& table);

/// The words of a camel-case name: "getMACFilterGlobal" is "get mac filter global".
std::string describeCommand(const std::string& name);

}  // namespace TALO::Tool
