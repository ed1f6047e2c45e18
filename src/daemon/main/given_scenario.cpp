#include "daemon/main/given_scenario.h"

#include <stdexcept>
#include <utility>

namespace TALO::Wifid {

Scenario GivenScenario(const Options& options) {
  if (options.scenario.empty()) {
    return {};
  }
  auto scenario = LoadScenario(options.scenario);
  if (!scenario.Succeeded()) {
    throw std::runtime_error(scenario.Why().sentence);
  }
  return std::move(scenario.Value());
}

}  // namespace TALO::Wifid
