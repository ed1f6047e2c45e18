#include "daemon/radio/plan_check.h"

#include "daemon/model/country.h"
#include "daemon/model/text.h"
#include "daemon/model/validation.h"

#include <algorithm>
#include <array>

namespace TALO::Wifid {

namespace {

Result<void> CheckBSS(const BSSPlan& bss, const std::set<std::string>& bridges, const std::string& radio) {
  const auto failed = [&](const std::string& why) {
    return Refusal{ErrorCode::RadioFailed, radio + " cannot bring up " + bss.interface + ": " + why};
  };
  if (auto check = CheckSSID(bss.ssid); !check.Succeeded()) {
    return failed(check.Why().sentence);
  }
  if (!bss.bridge.empty() && !bridges.contains(bss.bridge)) {
    return failed("the bridge " + Quoted(bss.bridge) + " does not exist");
  }
  return {};
}

}  // namespace

Result<void> CheckPlan(const RadioPlan& plan, const RadioCapability& radio,
                       const std::set<std::string>& bridges) {
  const std::string name = "the radio " + NameOrNumber(radio.radio);
  const auto failed = [](const std::string& sentence) { return Refusal{ErrorCode::RadioFailed, sentence}; };
  if (plan.channel != kAutomaticChannel &&
      std::ranges::find(radio.channels, plan.channel) == radio.channels.end()) {
    return failed(name + " has no channel " + std::to_string(plan.channel));
  }
  if (plan.enable) {
    const std::vector<int> usable = ChannelsIn(plan.country, radio);
    if (usable.empty() ||
        (plan.channel != kAutomaticChannel && !std::ranges::binary_search(usable, plan.channel))) {
      return failed(name + " may not use " +
                    (usable.empty() ? "any channel" : "channel " + std::to_string(plan.channel)) +
                    " in the country " + NameOrNumber(plan.country));
    }
  }
  constexpr std::array<int, 5> kWidths = {0, 20, 40, 80, 160};
  if (std::ranges::find(kWidths, plan.channelWidth) == kWidths.end() ||
      plan.channelWidth > radio.maximumChannelWidth) {
    return failed(name + " has no channels of " + std::to_string(plan.channelWidth) + " MHz");
  }
  const auto networks = std::ranges::count_if(
      plan.bsss, [](const BSSPlan& bss) { return bss.networkId != kBackhaulNetworkId; });
  if (networks > radio.maximumBSSs) {
    return failed(name + " carries " + std::to_string(radio.maximumBSSs) + " networks, not " +
                  std::to_string(networks));
  }
  std::set<std::string> interfaces;
  std::set<Wifi::Util::MACAddress> addresses;
  for (const BSSPlan& bss : plan.bsss) {
    if (!interfaces.insert(bss.interface).second || !addresses.insert(bss.bssid).second) {
      return failed(name + " cannot carry two BSSs on " + bss.interface + " with the BSSID " +
                    bss.bssid.ToString());
    }
    if (auto check = CheckBSS(bss, bridges, name); !check.Succeeded()) {
      return check;
    }
  }
  return {};
}

}  // namespace TALO::Wifid
