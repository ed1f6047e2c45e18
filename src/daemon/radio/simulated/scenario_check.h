#pragma once

#include "daemon/radio/simulated/scenario.h"

namespace TALO::Wifid {

/// Throws FormError for the first member of a scenario whose value cannot be.
void CheckScenario(const Scenario& scenario);

}  // namespace TALO::Wifid
