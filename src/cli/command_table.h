#pragma once

#include <boost/program_options/options_description.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Tool {

/// Where a handler leaves its usage text for the entry point to print; empty until it has.
using Usage = std::shared_ptr<boost::program_options::options_description>;

/// Runs one command with the tokens that followed the command word. Fails by exception.
using CommandHandler = std::function<void(const std::vector<std::string>& subargs, Usage& usage)>;

/// One row of the command table.
struct Command {
  CommandHandler handler;
  bool debugOnly;    ///< listed and allowed only while the daemon logs at debug level
  std::string name;  ///< compared ignoring case
};

/// The rows in the order of the help listing.
using CommandTable = std::vector<Command>;

/// Appends a row made of its parts.
void addCommand(CommandTable& table, const char* name, CommandHandler handler, bool debugOnly);

/// Appends the `help` row. Its handler lists `table`, which must stay where it is.
void addHelpCommand(CommandTable& table);

/// The first row whose name is `word` ignoring case. Throws std::invalid_argument when there is none.
const Command& findCommand(const CommandTable& table, const std::string& word);

}  // namespace TALO::Tool
