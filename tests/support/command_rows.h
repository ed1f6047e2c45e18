#pragma once

#include <string>
#include <vector>

namespace TALO::Tool {

/// A command as users know it.
struct CommandRow {
  std::string name;
  bool debugOnly;
  std::string description;
};

/// All commands in the order of the help listing.
const std::vector<CommandRow>& commandRows();

/// What the tool lists at debug level or outside it.
std::string helpListing(bool debug);

}  // namespace TALO::Tool
