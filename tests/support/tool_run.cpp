#include "support/tool_run.h"

#include "main/dispatch.h"

#include <iostream>
#include <sstream>

namespace TALO::Tool {

ToolRun runTool(const std::vector<std::string>& words) {
  std::vector<const char*> arguments = {"talowifitool"};
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  const auto count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);

  std::ostringstream output;
  std::streambuf* const before = std::cout.rdbuf(output.rdbuf());
  ToolRun run;
  run.status = dispatch(count, arguments.data());
  std::cout.rdbuf(before);
  run.output = output.str();
  return run;
}

}  // namespace TALO::Tool
