#pragma once

#include <string>
#include <vector>

namespace TALO::Reference {

/// What the declaration of an option says of it.
struct OptionReference {
  enum class Kind { Text, Integer, Boolean };

  std::string name;                     ///< without its dashes
  Kind kind = Kind::Text;               ///< of its value, or of each of its values
  bool isList = false;                  ///< takes all words up to the next option
  bool isOptional = false;              ///< may be left out
  std::vector<std::string> words = {};  ///< what the values may be; empty where that is not a matter of names

  bool operator==(const OptionReference&) const = default;
};

/// What the tool itself says of a command.
struct CommandReference {
  std::string name;
  bool debugOnly = false;
  std::vector<OptionReference> options = {};

  bool operator==(const CommandReference&) const = default;
};

/// All commands of the tool in the order of its table, as their handlers declare them: each is run without
/// words. It gets no further than its first missing option or its client, so a program that calls this has
/// factories without a daemon behind them.
std::vector<CommandReference> ReadCommands();

}  // namespace TALO::Reference
