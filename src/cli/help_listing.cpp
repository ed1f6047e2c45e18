#include "cli/help_listing.h"

#include "client/log_level_helper.h"

#include <cctype>
#include <cstddef>
#include <iomanip>
#include <iostream>

namespace TALO::Tool {

namespace {

constexpr int kNameWidth = 40;
constexpr int kDescriptionWidth = 50;

bool isUpper(char c) { return std::isupper(static_cast<unsigned char>(c)) != 0; }
bool isLower(char c) { return std::islower(static_cast<unsigned char>(c)) != 0; }

bool debugCommandsAllowed() {
  try {
    return Wifi::Daemon::LogLevelHelper::IsDebugLogLevel();
  } catch (...) {
    return false;
  }
}

}  // namespace

std::string describeCommand(const std::string& name) {
  std::string description;
  bool afterCapital = false;
  for (std::size_t i = 0; i < name.size(); ++i) {
    const char c = name[i];
    if (c == '_') {
      afterCapital = false;
      continue;
    }
    if (!isUpper(c)) {
      description += c;
      afterCapital = false;
      continue;
    }
    // Inside an acronym only its last capital starts a word, and only where a lower-case letter follows.
    const bool beforeLower = i + 1 < name.size() && isLower(name[i + 1]);
    if (!afterCapital || beforeLower) {
      description += ' ';
    }
    description += static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    afterCapital = true;
  }
  return description;
}

void printHelp(const CommandTable& table) {
  const bool debug = debugCommandsAllowed();
  std::cout << "Usage: talowifitool [option] command args" << std::endl << "  Options are:" << std::endl;
  for (const Command& command : table) {
    if (command.debugOnly && !debug) {
      continue;
    }
    std::cout << "    " << std::left << std::setw(kNameWidth) << command.name << std::setw(kDescriptionWidth)
              << describeCommand(command.name) << std::endl;
  }
  std::cout << std::endl;
}

}  // namespace TALO::Tool
