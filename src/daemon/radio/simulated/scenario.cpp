#include "daemon/radio/simulated/scenario.h"

#include "daemon/json/record_json.h"
#include "daemon/radio/simulated/scenario_check.h"
#include "daemon/radio/simulated/scenario_description.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <system_error>

namespace TALO::Wifid {

Result<Scenario> ParseScenario(const std::string& text) {
  try {
    auto scenario = DecodeRecord<Scenario, RecordForm::Handwritten>(ParseJson(text));
    CheckScenario(scenario);
    return scenario;
  } catch (const FormError& error) {
    return Refusal{ErrorCode::InvalidArgument, error.what()};
  }
}

Result<Scenario> LoadScenario(const std::string& path) {
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::string text;
  std::array<char, 65536> chunk{};
  while (file.read(chunk.data(), chunk.size()) || file.gcount() > 0) {
    text.append(chunk.data(), static_cast<std::size_t>(file.gcount()));
  }
  if (!file.is_open() || file.bad()) {
    return Refusal{ErrorCode::NotFound,
                   "the scenario " + path + " cannot be read: " + std::generic_category().message(errno)};
  }
  auto scenario = ParseScenario(text);
  if (!scenario.Succeeded()) {
    return Refusal{scenario.Why().code, "the scenario " + path + ": " + scenario.Why().sentence};
  }
  return scenario;
}

}  // namespace TALO::Wifid
