#pragma once

#include "client/mac_filter_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"

#include <cstddef>
#include <set>

/// The rules of MAC filter profiles and of the broadcast limit.
namespace TALO::Wifid {

/// How many profiles there can be.
inline constexpr std::size_t kMaximumMACFilterProfiles = 64;

/// InvalidArgument for a name that does not have 1 to 64 bytes, for `Error` or a number without a name as
/// action, for a MAC address that is listed twice, and for a device's name of more than 64 bytes;
/// LimitReached for more than 1024 devices.
Result<void> CheckMACFilterProfile(const Wifi::MACFilterProfile& profile);

/// InvalidArgument for a negative maximum, for a MAC address that is listed twice, and for a device's name of
/// more than 64 bytes; LimitReached for more than 1024 devices.
Result<void> CheckMACFilterGlobal(const Wifi::MACFilterGlobal& global);

/// NotSupported for a limit that is on where a radio cannot limit broadcasts; the sentence names the radios.
Result<void> CheckRadiosLimitBroadcasts(const Capabilities& capabilities,
                                        const Wifi::MACFilterGlobal& global);

/// A profile with the next ID; the one in `profile` is ignored. With `applyToAll` every network uses it.
/// LimitReached for a 65th profile.
Result<Change<int>> CreateMACFilterProfile(const State& state, const Wifi::MACFilterProfile& profile,
                                           bool applyToAll);

/// The same limits; NotFound for an unknown ID.
Result<Change<void>> ModifyMACFilterProfile(const State& state, const Wifi::MACFilterProfile& profile);

/// All or none: NotFound for an unknown ID among them. Networks that used one have none then.
Result<Change<void>> DeleteMACFilterProfiles(const State& state, const std::set<int>& profileIds);

/// Makes a network use a profile, or none for kNoMACFilterProfile. NotFound for an unknown network or
/// profile.
Result<Change<void>> AssignMACFilterProfile(const State& state, int networkId, int profileId);

/// Switched off with no device listed, it keeps the list it had. NotSupported where a radio cannot do it.
Result<Change<void>> SetMACFilterGlobal(const State& state, const Capabilities& capabilities,
                                        const Wifi::MACFilterGlobal& global);

/// What the profile of a network means for its BSSs; everybody is admitted where it has none.
AccessPlan AccessOf(const State& state, const NetworkState& network);

}  // namespace TALO::Wifid
