#include "support/command_case_groups.h"

#include <ostream>

namespace TALO::Tool {

std::vector<std::string> CommandCase::typicalWords() const { return wordsWithout(options.size()); }

std::vector<std::string> CommandCase::wordsWithout(std::size_t left) const {
  std::vector<std::string> words = {word};
  for (std::size_t i = 0; i < options.size(); ++i) {
    if (i != left) {
      words.push_back(options[i].name);
      words.insert(words.end(), options[i].values.begin(), options[i].values.end());
    }
  }
  return words;
}

std::vector<std::string> CommandCase::gateCalls() const {
  return debugOnly ? std::vector<std::string>{"IsDebugLogLevel()"} : std::vector<std::string>{};
}

std::vector<std::string> CommandCase::typicalCalls() const {
  std::vector<std::string> calls = gateCalls();
  calls.push_back(factory + "::GetInstance()");
  calls.insert(calls.end(), operations.begin(), operations.end());
  return calls;
}

const std::vector<CommandCase>& commandCases() {
  static const std::vector<CommandCase> cases = [] {
    std::vector<CommandCase> all;
    for (const auto& group : {networkCases(), radioCases(), stationCases(), meshCases(), macFilterCases(),
                              scheduleAndWPSCases(), countryCases(), topologyAndLogLevelCases()}) {
      all.insert(all.end(), group.begin(), group.end());
    }
    return all;
  }();
  return cases;
}

void PrintTo(const CommandCase& command, std::ostream* out) { *out << command.word; }

}  // namespace TALO::Tool
