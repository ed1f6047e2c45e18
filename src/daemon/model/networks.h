#pragma once

#include "client/network_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <cstdint>
#include <string>

/// The rules of networks. Each takes the state as it is and answers the state as it would be, or why not.
namespace TALO::Wifid {

/// A new state and what the request answers.
template <typename Answer>
struct Change {
  State state;
  Answer answer;
};

template <>
struct Change<void> {
  State state;
};

/// The default network of the house: WPA2/WPA3 personal mixed, on all radios, in the current context,
/// activated on `bridge`. `now` is in seconds since 1970, UTC.
Result<Change<int>> CreateNetwork(const State& state, const Capabilities& capabilities,
                                  const Wifi::NetworkCreateInfo& info, const std::string& bridge,
                                  std::int64_t now);

Result<Change<void>> DeleteNetwork(const State& state, int networkId);

}  // namespace TALO::Wifid
