#pragma once

// What every command owes whatever it is for, written down once and tested for each command that a test file
// names: usage text, refused arguments, failures of the client, words that are ignored.

#include <gtest/gtest.h>

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace TALO::Tool {

/// An option with a value that the command takes.
struct OptionUse {
  std::string name;
  std::string value;
  bool isInteger = false;
};

/// One command, against a daemon that answers with defaults.
struct CommandContract {
  std::string command;
  bool debugOnly = false;
  std::vector<OptionUse> options;  ///< all of them, in the order in which they are declared
  std::string usage;               ///< caption and options, each with its line end
  std::vector<std::string> calls;  ///< the client obtained and what is asked of it, in order
  std::string output;              ///< of a run that succeeds
  /// Printed by the time that something is asked of the client.
  std::string label;

  /// The words of a full command line.
  std::vector<std::string> Words() const;
  /// The first `count` of the calls, and before them that of the debug gate where there is one.
  std::vector<std::string> CallsUpTo(std::size_t count) const;
};

std::ostream& operator<<(std::ostream& out, const CommandContract& contract);

/// Instantiate each with the contracts that it concerns.
class EveryCommand : public testing::TestWithParam<CommandContract> {
 protected:
  EveryCommand();
  const CommandContract& contract_ = GetParam();
};
class EveryCommandWithOptions : public EveryCommand {};
class EveryCommandWithIntegers : public EveryCommand {};
class EveryCommandWithoutOptions : public EveryCommand {};

/// The contracts with options, those with an integer among them, and those without options.
std::vector<CommandContract> WithOptions(const std::vector<CommandContract>& contracts);
std::vector<CommandContract> WithIntegers(const std::vector<CommandContract>& contracts);
std::vector<CommandContract> WithoutOptions(const std::vector<CommandContract>& contracts);

/// Names a test by its command.
std::string CommandOf(const testing::TestParamInfo<CommandContract>& info);

}  // namespace TALO::Tool
