#pragma once

#include <streambuf>
#include <string>
#include <vector>

namespace TALO::Tool {

/// What one run of the tool inside this process printed and ended with.
struct ToolRun {
  int status = -1;
  std::string output;
};

/// Runs the tool with the words behind the program name, against the fake daemon.
ToolRun runTool(const std::vector<std::string>& words);

/// Runs it with `output` in place of standard output and returns the exit status.
int runToolInto(std::streambuf& output, const std::vector<std::string>& words);

}  // namespace TALO::Tool
