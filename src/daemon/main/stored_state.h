#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/state.h"
#include "daemon/service/log.h"
#include "daemon/store/state_store.h"

namespace TALO::Wifid {

/// The state of the last run on the radios of this one, or a first one. What was lost of it is logged. Throws
/// std::runtime_error when the store says that it must be left as it is, and for a state of a country that
/// this model may not be used in.
State LoadState(StateStore& store, const Capabilities& capabilities, CountryCode country, const Log& log);

}  // namespace TALO::Wifid
