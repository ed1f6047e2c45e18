// Measures what the products cost and prints one table. ./test --bench builds and runs it.
//
// usage: talowifi-bench [--quick] [SUBJECT...], of runs, listings, calls, daemon and change; all without one.
// Exit status 1 where a goal is missed, but not with --quick: such figures say nothing.

#include "bench/bench.h"
#include "bench/table.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iostream>
#include <utility>
#include <vector>

namespace {

using namespace TALO::Bench;

constexpr std::pair<const char*, void (*)(const Effort&)> kSubjects[] = {{"runs", MeasureRuns},
                                                                         {"listings", MeasureListings},
                                                                         {"calls", MeasureCalls},
                                                                         {"daemon", MeasureDaemon},
                                                                         {"change", MeasureChange}};

int Run(std::vector<std::string> words) {
  const Effort effort{.quick = std::erase(words, "--quick") > 0};
  for (const std::string& word : words) {
    if (std::ranges::none_of(kSubjects, [&word](const auto& subject) { return word == subject.first; })) {
      std::cerr << "talowifi-bench: there is no subject \"" << word << "\"\n";
      return 2;
    }
  }
  for (const auto& [name, measure] : kSubjects) {
    if (words.empty() || std::ranges::find(words, name) != words.end()) {
      measure(effort);
    }
  }
  const std::size_t missed = MissedGoals();
  if (missed > 0) {
    std::cerr << "talowifi-bench: goals that are missed: " << missed
              << (effort.quick ? "; with --quick they do not count\n" : "\n");
  }
  return missed > 0 && !effort.quick ? 1 : 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& failure) {
    std::cerr << "talowifi-bench: " << failure.what() << "\n";
    return 1;
  }
}
