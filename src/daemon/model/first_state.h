#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/state.h"

namespace TALO::Wifid {

/// The state of a router that was never set up: no network, every radio on with the defaults of its band as
/// far as it has them, see AdaptToRadios().
State MakeFirstState(const Capabilities& capabilities, CountryCode country);

/// `state` with a setting for each radio that is there and none for one that is not, as after a change of
/// hardware. A channel that the radio cannot use in the country is automatic then, and a width that it does
/// not have its widest. A broadcast limit that a radio cannot keep to is off then; its list stays.
State AdaptToRadios(State state, const Capabilities& capabilities);

}  // namespace TALO::Wifid
