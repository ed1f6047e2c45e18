#include "daemon/model/networks.h"

#include "daemon/model/text.h"
#include "daemon/model/validation.h"

#include <algorithm>
#include <limits>
#include <set>

namespace TALO::Wifid {

namespace {

/// The lowest BSS slot that no network has; every radio has the same ones, so the smallest radio sets the
/// limit.
Result<int> FindFreeSlot(const State& state, const Capabilities& capabilities) {
  std::set<int> taken;
  for (const NetworkState& network : state.networks) {
    taken.insert(network.slot);
  }
  int slot = 1;
  while (taken.contains(slot)) {
    ++slot;
  }
  for (const RadioCapability& radio : capabilities.radios) {
    if (slot > radio.maximumBSSs) {
      return Refusal{ErrorCode::LimitReached, "the radio " + NameOrNumber(radio.radio) + " carries " +
                                                  std::to_string(state.networks.size()) +
                                                  " networks and cannot carry one more"};
    }
  }
  return slot;
}

}  // namespace

Result<Change<int>> CreateNetwork(const State& state, const Capabilities& capabilities,
                                  const Wifi::NetworkCreateInfo& info, const std::string& bridge,
                                  std::int64_t now) {
  // The SSID first: the tool sends one word as both, and calls it that.
  if (auto check = CheckSSID(info.ssid); !check.Succeeded()) {
    return check.Why();
  }
  if (auto check = CheckSSID(info.networkName, "network name"); !check.Succeeded()) {
    return check.Why();
  }
  if (auto check = CheckPassphrase(info.passphrase); !check.Succeeded()) {
    return check.Why();
  }
  const auto same = std::ranges::find(state.networks, info.ssid, &NetworkState::ssid);
  if (same != state.networks.end()) {
    return Refusal{ErrorCode::AlreadyExists,
                   "the SSID " + Quoted(info.ssid) + " is in use by network " + std::to_string(same->id)};
  }
  if (state.nextNetworkId == std::numeric_limits<int>::max()) {
    return Refusal{ErrorCode::LimitReached, "all network IDs have been used"};
  }
  if (info.ssid == state.backhaul.ssid) {
    return Refusal{ErrorCode::AlreadyExists, "the SSID " + Quoted(info.ssid) + " is in use by the backhaul"};
  }
  if (info.ssid == state.backhaulSTA.ssid) {
    return Refusal{ErrorCode::AlreadyExists,
                   "the SSID " + Quoted(info.ssid) + " is in use by the backhaul station"};
  }
  const auto slot = FindFreeSlot(state, capabilities);
  if (!slot.Succeeded()) {
    return slot.Why();
  }

  Change<int> change{state, state.nextNetworkId};
  NetworkState network;
  network.id = change.state.nextNetworkId++;
  network.networkName = info.networkName;
  network.ssid = info.ssid;
  network.passphrase = info.passphrase;
  network.passphraseChangedAt = now;
  network.activated = true;
  network.context = state.context;
  network.bridge = bridge;
  network.slot = slot.Value();
  change.state.networks.push_back(std::move(network));
  return change;
}

Result<Change<void>> DeleteNetwork(const State& state, int networkId) {
  if (auto network = FindNetwork(state, networkId); !network.Succeeded()) {
    return network.Why();
  }
  Change<void> change{state};
  std::erase_if(change.state.networks,
                [networkId](const NetworkState& network) { return network.id == networkId; });
  return change;
}

Result<const NetworkState*> FindNetwork(const State& state, int networkId) {
  const auto network = std::ranges::find(state.networks, networkId, &NetworkState::id);
  if (network == state.networks.end()) {
    return Refusal{ErrorCode::NotFound, "there is no network " + std::to_string(networkId)};
  }
  return &*network;
}

}  // namespace TALO::Wifid
