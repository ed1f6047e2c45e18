#pragma once

#include "daemon/main/options.h"
#include "daemon/radio/simulated/scenario.h"

namespace TALO::Wifid {

/// What the simulated radios hear, silence without a file. Throws std::runtime_error for a file that cannot
/// be read or used.
Scenario GivenScenario(const Options& options);

}  // namespace TALO::Wifid
