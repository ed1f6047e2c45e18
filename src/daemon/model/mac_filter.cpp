#include "daemon/model/mac_filter.h"

#include "daemon/model/networks.h"
#include "daemon/model/text.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace TALO::Wifid {

namespace {

constexpr std::size_t kMaximumNameBytes = 64;
constexpr std::size_t kMaximumDevices = 1024;

using Devices = std::vector<Wifi::MACFilterDevice>;
using Profiles = std::vector<Wifi::MACFilterProfile>;

Refusal Invalid(std::string sentence) { return {ErrorCode::InvalidArgument, std::move(sentence)}; }

/// `owner` names the list in the sentence.
Result<void> CheckDevices(const Devices& devices, const std::string& owner) {
  if (devices.size() > kMaximumDevices) {
    return Refusal{ErrorCode::LimitReached, owner + " lists " + std::to_string(devices.size()) +
                                                " devices, it can hold " + std::to_string(kMaximumDevices)};
  }
  std::set<Wifi::Util::MACAddress> seen;
  for (const Wifi::MACFilterDevice& device : devices) {
    if (device.name.size() > kMaximumNameBytes) {
      return Invalid("the name " + Quoted(device.name) + " of the device " + device.address.ToString() +
                     " has " + std::to_string(device.name.size()) + " bytes, it must have at most " +
                     std::to_string(kMaximumNameBytes));
    }
    if (!seen.insert(device.address).second) {
      return Invalid(owner + " lists the MAC address " + device.address.ToString() + " twice");
    }
  }
  return {};
}

Result<Profiles::const_iterator> FindProfile(const State& state, int profileId) {
  const auto profile = std::ranges::find(state.macFilterProfiles, profileId, &Wifi::MACFilterProfile::id);
  if (profile == state.macFilterProfiles.end()) {
    return Refusal{ErrorCode::NotFound, "there is no MAC filter profile " + std::to_string(profileId)};
  }
  return profile;
}

}  // namespace

Result<void> CheckMACFilterProfile(const Wifi::MACFilterProfile& profile) {
  if (profile.name.empty() || profile.name.size() > kMaximumNameBytes) {
    return Invalid("the MAC filter profile name " + Quoted(profile.name) + " has " +
                   std::to_string(profile.name.size()) + " bytes, it must have 1 to " +
                   std::to_string(kMaximumNameBytes));
  }
  if (!IsReal(profile.action)) {
    return Invalid("the MAC filter action " + NameOrNumber(profile.action) + " does not exist");
  }
  return CheckDevices(profile.devices, "the MAC filter profile " + Quoted(profile.name));
}

Result<void> CheckMACFilterGlobal(const Wifi::MACFilterGlobal& global) {
  if (global.maximumBroadcast < 0) {
    return Invalid("the maximum of " + std::to_string(global.maximumBroadcast) +
                   " broadcast frames a second is negative, it must be 0 or more");
  }
  return CheckDevices(global.devices, "the broadcast limit");
}

Result<Change<int>> CreateMACFilterProfile(const State& state, const Wifi::MACFilterProfile& profile,
                                           bool applyToAll) {
  if (auto check = CheckMACFilterProfile(profile); !check.Succeeded()) {
    return check.Why();
  }
  if (state.macFilterProfiles.size() >= kMaximumMACFilterProfiles) {
    return Refusal{ErrorCode::LimitReached, "there are " + std::to_string(state.macFilterProfiles.size()) +
                                                " MAC filter profiles, no more are possible"};
  }
  if (state.nextMACFilterProfileId == std::numeric_limits<int>::max()) {
    return Refusal{ErrorCode::LimitReached, "all MAC filter profile IDs have been used"};
  }
  Change<int> change{state, state.nextMACFilterProfileId};
  ++change.state.nextMACFilterProfileId;
  change.state.macFilterProfiles.push_back(profile);
  change.state.macFilterProfiles.back().id = change.answer;
  if (applyToAll) {
    for (NetworkState& network : change.state.networks) {
      network.macFilterProfileId = change.answer;
    }
  }
  return change;
}

Result<Change<void>> ModifyMACFilterProfile(const State& state, const Wifi::MACFilterProfile& profile) {
  const auto known = FindProfile(state, profile.id);
  if (!known.Succeeded()) {
    return known.Why();
  }
  if (auto check = CheckMACFilterProfile(profile); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  *std::ranges::find(change.state.macFilterProfiles, profile.id, &Wifi::MACFilterProfile::id) = profile;
  return change;
}

Result<Change<void>> DeleteMACFilterProfiles(const State& state, const std::set<int>& profileIds) {
  for (const int id : profileIds) {
    if (auto known = FindProfile(state, id); !known.Succeeded()) {
      return known.Why();
    }
  }
  Change<void> change{state};
  std::erase_if(change.state.macFilterProfiles,
                [&](const Wifi::MACFilterProfile& profile) { return profileIds.contains(profile.id); });
  for (NetworkState& network : change.state.networks) {
    if (profileIds.contains(network.macFilterProfileId)) {
      network.macFilterProfileId = kNoMACFilterProfile;
    }
  }
  return change;
}

Result<Change<void>> AssignMACFilterProfile(const State& state, int networkId, int profileId) {
  if (auto network = FindNetwork(state, networkId); !network.Succeeded()) {
    return network.Why();
  }
  if (profileId != kNoMACFilterProfile) {
    if (auto known = FindProfile(state, profileId); !known.Succeeded()) {
      return known.Why();
    }
  }
  Change<void> change{state};
  std::ranges::find(change.state.networks, networkId, &NetworkState::id)->macFilterProfileId = profileId;
  return change;
}

Result<void> CheckRadiosLimitBroadcasts(const Capabilities& capabilities,
                                        const Wifi::MACFilterGlobal& global) {
  std::string unable;
  for (const RadioCapability& radio : capabilities.radios) {
    if (!radio.limitsBroadcasts) {
      unable += (unable.empty() ? "" : ", ") + NameOrNumber(radio.radio);
    }
  }
  if (!global.enablePreventBroadcast || unable.empty()) {
    return {};
  }
  return Refusal{ErrorCode::NotSupported, "radios of this router cannot limit broadcasts: " + unable};
}

Result<Change<void>> SetMACFilterGlobal(const State& state, const Capabilities& capabilities,
                                        const Wifi::MACFilterGlobal& global) {
  if (auto check = CheckMACFilterGlobal(global); !check.Succeeded()) {
    return check.Why();
  }
  if (auto check = CheckRadiosLimitBroadcasts(capabilities, global); !check.Succeeded()) {
    return check.Why();
  }
  Change<void> change{state};
  change.state.macFilterGlobal = global;
  if (!global.enablePreventBroadcast && global.devices.empty()) {
    change.state.macFilterGlobal.devices = state.macFilterGlobal.devices;
  }
  return change;
}

AccessPlan AccessOf(const State& state, const NetworkState& network) {
  const auto profile = FindProfile(state, network.macFilterProfileId);
  if (!profile.Succeeded()) {
    return {};
  }
  AccessPlan access;
  access.rule = profile.Value()->action == Wifi::MACFilterAction::Allow ? AccessPlan::Rule::OnlyListed
                                                                        : AccessPlan::Rule::AllButListed;
  for (const Wifi::MACFilterDevice& device : profile.Value()->devices) {
    access.devices.insert(device.address);
  }
  return access;
}

}  // namespace TALO::Wifid
