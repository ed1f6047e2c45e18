#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

namespace TALO::Tool {

enum class OptionKind { Text, Boolean, Integer, List };

/// An option of a command with the words of a typical value.
struct OptionCase {
  std::string name;  ///< with its dashes
  OptionKind kind = OptionKind::Text;
  std::vector<std::string> values =
      {};                      ///< true for the only boolean, 4711 for the only integer of a command
  bool optional = false;       ///< may be left out
  bool valueOptional = false;  ///< may stand without a value
};

/// A command in a typical run against a new fake daemon.
struct CommandCase {
  std::string word;  ///< as in the table
  bool debugOnly = true;
  std::string usage = {};  ///< what the options description prints of itself
  std::vector<OptionCase> options = {};
  std::string factory = "WifiClientFactory";
  std::vector<std::string> operations = {};  ///< as the fake daemon lists them
  std::string output = {};
  std::string label = {};  ///< the part of the output that is printed before the daemon is asked

  /// The command word and all its options.
  std::vector<std::string> typicalWords() const;
  /// The same without the option at `left`.
  std::vector<std::string> wordsWithout(std::size_t left) const;
  /// The question for the log level, where it is asked.
  std::vector<std::string> gateCalls() const;
  /// All calls of a typical run.
  std::vector<std::string> typicalCalls() const;
};

/// All commands but `help`.
const std::vector<CommandCase>& commandCases();

/// Those of them for which `wanted` holds.
template <typename Predicate>
std::vector<CommandCase> commandCasesWhere(Predicate wanted) {
  std::vector<CommandCase> chosen;
  for (const CommandCase& command : commandCases()) {
    if (wanted(command)) {
      chosen.push_back(command);
    }
  }
  return chosen;
}

void PrintTo(const CommandCase& command, std::ostream* out);

/// Names a parametrised test after its command.
struct CommandCaseName {
  template <typename Info>
  std::string operator()(const Info& info) const {
    return info.param.word;
  }
};

}  // namespace TALO::Tool
