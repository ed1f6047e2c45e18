#include "daemon/store/state_upgrade.h"

#include <cstddef>

namespace TALO::Wifid {

const std::vector<UpgradeStep>& UpgradeSteps() {
  static const std::vector<UpgradeStep> kSteps = {
      // 2 came with the checksum, which no version must have.
      [](Json::Value&) {},
  };
  return kSteps;
}

void UpgradeState(Json::Value& root, int from, const std::vector<UpgradeStep>& steps) {
  for (auto step = static_cast<std::size_t>(from - 1); step < steps.size(); ++step) {
    steps[step](root);
  }
}

}  // namespace TALO::Wifid
