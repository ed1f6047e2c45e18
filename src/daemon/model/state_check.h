#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

namespace TALO::Wifid {

/// Whether the rules can have made this state, on a router with whatever radios: every value within the
/// limits of its field, IDs, SSIDs and slots each used once, the next IDs above all that are in use, no
/// profile used that does not exist, lists in their order. Else a refusal whose sentence names the first
/// thing that is wrong and holds no secret.
Result<void> CheckState(const State& state);

}  // namespace TALO::Wifid
