#pragma once

#include <string>
#include <vector>

/// The rules of what may include what in src/, checked on the text of its files.
namespace TALO::Contract {

struct SourceFile {
  std::string path;  ///< from src/ on, as in "bus/codec.h"
  std::string text;
};

/// The room of a file, empty for one in no room: "daemon/radio" for
/// "daemon/radio/simulated/simulated_driver.h".
std::string RoomOf(const std::string& path);

/// One sentence for each break of a rule, beginning with "src/PATH:LINE: ", in the order of the files.
std::vector<std::string> FindViolations(const std::vector<SourceFile>& files);

}  // namespace TALO::Contract
