#include "support/tool_run.h"

#include "main/dispatch.h"
#include "support/captured_output.h"

#include <iostream>
#include <sstream>

namespace TALO::Tool {

ToolRun runTool(const std::vector<std::string>& words) {
  std::stringbuf output;
  ToolRun run;
  run.status = runToolInto(output, words);
  run.output = output.str();
  return run;
}

int runToolInto(std::streambuf& output, const std::vector<std::string>& words) {
  std::vector<const char*> arguments = {"talowifitool"};
  for (const std::string& word : words) {
    arguments.push_back(word.c_str());
  }
  const auto count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);

  const RedirectedStream redirected(std::cout, output);
  return dispatch(count, arguments.data());
}

}  // namespace TALO::Tool
