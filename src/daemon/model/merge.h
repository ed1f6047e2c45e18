#pragma once

#include "daemon/model/state.h"

namespace TALO::Wifid {

/// `current` without the change that led from `before` to `after`, as when the radios refuse what was
/// remembered already. Other changes that were made since stay: only the members that the change touched go
/// back to what they were. Radios, stations, networks and MAC filter profiles count one by one, a network
/// member by member, its passphrases and schedules radio by radio. What the change made is gone again,
/// whatever was done to it since; what it took away is there again; what another change took away stays away.
/// An ID that was given out is never given again, so the counters stay.
///
/// A member that both touched goes back all the same, and what the change freed (a slot, an SSID) must still
/// be free: changes that can collide like this are made one after the other.
State Revert(const State& current, const State& before, const State& after);

}  // namespace TALO::Wifid
