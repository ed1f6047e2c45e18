#pragma once

#include "client/network_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <cstdint>
#include <string>

/// The rules of networks. Each takes the state as it is and answers the state as it would be, or why not.
namespace TALO::Wifid {

/// The default network of the house: WPA2/WPA3 personal mixed, on all radios, in the current context,
/// activated on `bridge`. `now` is in seconds since 1970, UTC.
Result<Change<int>> CreateNetwork(const State& state, const Capabilities& capabilities,
                                  const Wifi::NetworkCreateInfo& info, const std::string& bridge,
                                  std::int64_t now);

/// NotFound for an unknown ID.
Result<Change<void>> DeleteNetwork(const State& state, int networkId);

/// The network, or NotFound with the sentence that every rule of a network uses.
Result<const NetworkState*> FindNetwork(const State& state, int networkId);

}  // namespace TALO::Wifid
