#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/live.h"
#include "daemon/model/result.h"

#include <set>
#include <vector>

/// The rules of the backhaul and the mesh.
namespace TALO::Wifid {

/// The radio that carries the backhaul: the upper 5 GHz radio, or the lower one when the bands are swapped or
/// the upper one has no channel in the country; on a router that does not have two, the radio of its highest
/// band. `Error` where there is no radio at all.
RadioFrequency BackhaulRadio(const State& state, const Capabilities& capabilities);

/// SSID and passphrase must be within the limits of the field, and the SSID not that of a network; both may
/// be empty in one that is not enabled.
Result<void> CheckBackhaul(const State& state, const Wifi::BackhaulConfig& config);

/// What CheckBackhaul refuses.
Result<Change<void>> ModifyBackhaul(const State& state, const Wifi::BackhaulConfig& config);
Result<Change<void>> ModifyBackhaulSTA(const State& state, const Wifi::BackhaulConfig& config);

/// InvalidArgument for `Error` and for a number without a name.
Result<Change<void>> EnableScan(const State& state, ScanType type);

/// InvalidArgument for `Error` or a number without a name among the models.
Result<Change<void>> ModifyMeshInfo(const State& state, const Wifi::MeshInfo& info);

/// NotSupported on a router that does not have two 5 GHz radios, or whose upper one has no channel in the
/// country.
Result<Change<void>> SwapBackhaulBand(const State& state, const Capabilities& capabilities, bool swap);

/// True when an enabled radio is down, or is on another channel than its setting or, for the backhaul radio
/// of a repeater that is connected, than its parent's. A radio that finds its own channel is right on any.
bool IsWifiAdjustNeeded(const State& state, const Capabilities& capabilities,
                        const std::vector<LiveRadio>& live);

}  // namespace TALO::Wifid
