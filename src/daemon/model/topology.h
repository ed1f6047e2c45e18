#pragma once

#include "client/service_records.h"
#include "daemon/model/change.h"
#include "daemon/model/result.h"

#include <set>
#include <string>

/// The rules of contexts and activation.
namespace TALO::Wifid {

/// InvalidArgument for a context that does not have 1 to 64 bytes.
Result<void> CheckContext(const std::string& context);

/// InvalidArgument for what CheckContext refuses.
Result<Change<void>> SetContext(const State& state, const std::string& context);

/// The networks of a context. NotFound for one that is neither "router", "bridge" or "repeater", nor the
/// current one, nor that of any network.
Result<std::set<int>> IdsForTopo(const State& state, const std::string& context);

std::set<int> ActivatedIds(const State& state);

/// NotFound for an unknown network, and for a bridge that is not among `bridges`.
Result<Change<void>> Activate(const State& state, const Wifi::ActivationInfo& activation,
                              const std::set<std::string>& bridges);

/// NotFound for an unknown network. One that is not activated stays so.
Result<Change<void>> Deactivate(const State& state, int networkId);

}  // namespace TALO::Wifid
