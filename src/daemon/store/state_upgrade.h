#pragma once

#include "daemon/json/record_json.h"

#include <vector>

namespace TALO::Wifid {

/// Makes of a state's JSON of one version that of the next. Throws FormError for one that it cannot be made
/// of.
using UpgradeStep = void (*)(Json::Value& root);

/// The steps from version 1 on, in their order.
const std::vector<UpgradeStep>& UpgradeSteps();

/// Takes a state's JSON from version `from`, which is at least 1, to the one behind the last step.
void UpgradeState(Json::Value& root, int from, const std::vector<UpgradeStep>& steps = UpgradeSteps());

}  // namespace TALO::Wifid
