#include "main/arguments.h"

#include "cli/command_table.h"
#include "cli/text.h"
#include "commands/commands.h"

#include <algorithm>
#include <cstring>

namespace TALO::Tool {

namespace {

bool namesCommand(const CommandTable& table, const std::string& word) {
  return std::ranges::any_of(table, [&word](const Command& row) { return equalsIgnoreCase(row.name, word); });
}

}  // namespace

TakenArguments::TakenArguments(int argc, char** argv) : words_(argv, argv + argc) {
  CommandTable table;
  fillCommandTable(table);
  bool isCommandSeen = false;
  for (int i = 1; i < argc; ++i) {
    const std::string& word = words_[static_cast<std::size_t>(i)];
    if (!isCommandSeen && namesCommand(table, word)) {
      isCommandSeen = true;
    } else {
      explicit_bzero(argv[i], word.size());
    }
  }
  for (const std::string& word : words_) {
    pointers_.push_back(word.c_str());
  }
  pointers_.push_back(nullptr);
}

}  // namespace TALO::Tool
