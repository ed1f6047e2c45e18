#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <map>
#include <vector>

/// Which radio is meant.
namespace TALO::Wifid {

/// Which radio serves a band that was asked for: on a dual-band router its one 5 GHz radio serves every 5 GHz
/// band. On a tri-band one `Band5GHz` is served by the fronthaul radio, which is the lower one, or the upper
/// one when the backhaul is swapped; `Band5GHz_1` and `Band5GHz_2` then stand for each other. The map holds
/// every band that a node of the mesh may ask for, those of the models in the mesh and of this router, or all
/// of them while the mesh is not known; a band that no radio of this router serves is left out.
std::map<RadioFrequency, RadioFrequency> ConversionMap(const State& state, const Capabilities& capabilities);

/// The radios of this router that a request means: all for `SmartConnect`, else the one that serves the band.
/// InvalidArgument for `Error` and for a number without a name, NotSupported for a band that none serves.
Result<std::vector<RadioFrequency>> ResolveRadios(const State& state, const Capabilities& capabilities,
                                                  RadioFrequency asked);

/// Whether the router has two 5 GHz radios.
bool IsTriBand(const Capabilities& capabilities);

}  // namespace TALO::Wifid
