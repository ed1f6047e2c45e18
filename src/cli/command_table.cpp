#include "cli/command_table.h"

#include "cli/help_listing.h"
#include "cli/text.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace TALO::Tool {

void addCommand(CommandTable& table, const char* name, CommandHandler handler, bool debugOnly) {
  table.push_back(Command{std::move(handler), debugOnly, name});
}

void addHelpCommand(CommandTable& table) {
  addCommand(
      table, "help", [&table](const std::vector<std::string>&, Usage&) { printHelp(table); }, false);
}

const Command& findCommand(const CommandTable& table, const std::string& word) {
  const auto found = std::find_if(table.begin(), table.end(), [&word](const Command& command) {
    return equalsIgnoreCase(command.name, word);
  });
  if (found == table.end()) {
    throw std::invalid_argument("Failed to find command: " + word);
  }
  return *found;
}

}  // namespace TALO::Tool
