#include "daemon/model/topology.h"

#include "daemon/model/networks.h"
#include "daemon/model/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kMaximumContextBytes = 64;
constexpr std::array<std::string_view, 3> kContextsOfTheHouse = {"router", "bridge", "repeater"};

NetworkState& NetworkOf(State& state, int networkId) {
  return *std::ranges::find(state.networks, networkId, &NetworkState::id);
}

}  // namespace

Result<void> CheckContext(const std::string& context) {
  if (context.empty() || context.size() > kMaximumContextBytes) {
    return Refusal{ErrorCode::InvalidArgument,
                   "the context " + Quoted(context) + " has " + std::to_string(context.size()) +
                       " bytes, it must have 1 to " + std::to_string(kMaximumContextBytes)};
  }
  return {};
}

Result<Change<void>> SetContext(const State& state, const std::string& context) {
  if (auto check = CheckContext(context); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  change.state.context = context;
  return change;
}

Result<std::set<int>> IdsForTopo(const State& state, const std::string& context) {
  std::set<int> ids;
  for (const NetworkState& network : state.networks) {
    if (network.context == context) {
      ids.insert(network.id);
    }
  }
  const bool known = !ids.empty() || context == state.context ||
                     std::ranges::find(kContextsOfTheHouse, context) != kContextsOfTheHouse.end();
  if (!known) {
    return Refusal{ErrorCode::NotFound, "there is no context " + Quoted(context)};
  }
  return ids;
}

std::set<int> ActivatedIds(const State& state) {
  std::set<int> ids;
  for (const NetworkState& network : state.networks) {
    if (network.activated) {
      ids.insert(network.id);
    }
  }
  return ids;
}

Result<Change<void>> Activate(const State& state, const Wifi::ActivationInfo& activation,
                              const std::set<std::string>& bridges) {
  if (auto known = FindNetwork(state, activation.id); !known.Succeeded()) {
    return known.Why();
  }
  if (!bridges.contains(activation.bridge)) {
    return Refusal{ErrorCode::NotFound, "there is no bridge " + Quoted(activation.bridge)};
  }
  Change<void> change{state};
  NetworkState& network = NetworkOf(change.state, activation.id);
  network.activated = true;
  network.bridge = activation.bridge;
  return change;
}

Result<Change<void>> Deactivate(const State& state, int networkId) {
  if (auto known = FindNetwork(state, networkId); !known.Succeeded()) {
    return known.Why();
  }
  Change<void> change{state};
  NetworkOf(change.state, networkId).activated = false;
  return change;
}

}  // namespace TALO::Wifid
