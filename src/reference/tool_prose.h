#pragma once

#include "reference/command_reference.h"
#include "reference/page_source.h"

#include <string>
#include <vector>

namespace TALO::Reference {

/// A command with what is written of it by hand.
struct CommandProse {
  CommandReference command;
  Piece purpose;
  std::vector<Piece> options = {};  ///< one for each option of the command, in their order
  Piece prints = {};
  std::vector<Piece> refusals = {};  ///< none or one
  std::vector<Piece> examples = {};  ///< at least one, of lines as on a terminal
};

/// The page of the tool: what stands before and behind the commands, and the commands.
struct ToolProse {
  std::string before;
  std::vector<CommandProse> commands;
  std::string after;
};

/// Reads the source of the tool's page. Of each command it has, in the order of the table,
///   @command NAME SENTENCE, for each option @option NAME SENTENCE, @prints, @refused where there is
///   something to say, one or more @example,
/// and behind the last @end. Throws SourceError where one is missing, or is of something that there is not.
ToolProse ReadToolProse(const std::string& source, const std::vector<CommandReference>& commands);

}  // namespace TALO::Reference
