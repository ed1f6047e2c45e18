#include "daemon/radio/simulated/simulated_radio.h"

#include "daemon/model/country.h"
#include "daemon/model/text.h"
#include "daemon/radio/simulated/hardware.h"
#include "daemon/radio/simulated/security.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

/// What cannot be changed under the stations' feet.
bool NeedsRestart(const BSSPlan& from, const BSSPlan& to) {
  return from.networkId != to.networkId || from.bssid != to.bssid || from.ssid != to.ssid ||
         from.securityMode != to.securityMode;
}

const BSSPlan* FindPlan(const RadioPlan& plan, const std::string& interface) {
  const auto found = std::ranges::find(plan.bsss, interface, &BSSPlan::interface);
  return found != plan.bsss.end() ? &*found : nullptr;
}

}  // namespace

SimulatedRadio::SimulatedRadio(const RadioCapability& capability, const Surroundings& surroundings,
                               const Air& air, Devices& devices, BSSWentDown bssWentDown)
    : capability_(capability),
      surroundings_(surroundings),
      air_(air),
      devices_(devices),
      bssWentDown_(std::move(bssWentDown)),
      station_(surroundings, air, capability.channels),
      backhaulStation_(surroundings, air, capability.channels) {}

void SimulatedRadio::Apply(const RadioPlan& plan, ApplyMode mode, const std::optional<ApplyFault>& fault,
                           RadioDriver::Done done) {
  const Timings& timings = surroundings_.scenario.timings;
  const bool nothingToDo = mode == ApplyMode::WhatDiffers && IsAsPlanned(plan);
  const int milliseconds =
      fault && fault->milliseconds ? *fault->milliseconds : (nothingToDo ? 0 : timings.applyMilliseconds);
  const std::string reason = fault ? fault->reason : std::string();
  surroundings_.timers.After(Milliseconds(milliseconds), [this, plan, mode, reason, done = std::move(done)] {
    MakeWay(plan, mode);
    if (!reason.empty()) {
      done(Refusal{ErrorCode::RadioFailed,
                   "the radio " + NameOrNumber(capability_.radio) + " cannot be set up: " + reason});
      return;
    }
    ChangeLive(plan);
    const bool isUp = up_ && std::ranges::all_of(bsss_, &BSS::up);
    if (isUp || !plan.enable) {
      SettleUpstreams();
      devices_.Look();
      done({});
      return;
    }
    const int bssMilliseconds = surroundings_.scenario.timings.bssMilliseconds;
    surroundings_.timers.After(Milliseconds(bssMilliseconds), [this, done] {
      BringUp();
      done({});
    });
  });
}

bool SimulatedRadio::IsAsPlanned(const RadioPlan& plan) const {
  const auto isAsPlanned = [&plan](const BSS& bss) { return bss.up == plan.enable; };
  return plan_ && *plan_ == plan && up_ == plan.enable && bsss_.size() == plan.bsss.size() &&
         std::ranges::all_of(bsss_, isAsPlanned);
}

bool SimulatedRadio::NeedsRestart(const RadioPlan& plan) const {
  return !up_ || !plan.enable || !plan_ || plan_->channel != plan.channel ||
         plan_->channelWidth != plan.channelWidth ||
         !std::ranges::binary_search(UsableChannels(plan.country, capability_), channel_) ||
         WidthOn(channel_, plan.channelWidth, capability_, plan.country) != channelWidth_;
}

void SimulatedRadio::MakeWay(const RadioPlan& plan, ApplyMode mode) {
  if (NeedsRestart(plan)) {
    TakeDownRadio();
  } else {
    TakeDown([&plan, mode](const BSS& bss) {
      const BSSPlan* wanted = FindPlan(plan, bss.plan.interface);
      return mode == ApplyMode::Everything || wanted == nullptr || Wifid::NeedsRestart(bss.plan, *wanted);
    });
  }
  std::erase_if(bsss_, [&plan](const BSS& bss) { return FindPlan(plan, bss.plan.interface) == nullptr; });
}

void SimulatedRadio::TakeDownRadio() {
  station_.Pursue(std::nullopt);
  backhaulStation_.Pursue(std::nullopt);
  const bool wasUp = std::exchange(up_, false);
  TakeDown([](const BSS&) { return true; });
  if (wasUp) {
    surroundings_.emit(RadioStateChanged{capability_.radio, false});
  }
}

void SimulatedRadio::TakeDown(const std::function<bool(const BSS&)>& which) {
  std::vector<std::string> down;
  for (BSS& bss : bsss_) {
    if (bss.up && which(bss)) {
      bss.up = false;
      down.push_back(bss.plan.interface);
    }
  }
  // Only now: no station turns to a BSS that goes down, too.
  for (const std::string& interface : down) {
    bssWentDown_(interface);
    devices_.Drop(interface, "BSS down", [](const MACAddress&, const std::string&) { return true; });
  }
}

void SimulatedRadio::ChangeLive(const RadioPlan& plan) {
  std::vector<BSS> wanted;
  for (const BSSPlan& bss : plan.bsss) {
    const auto old = std::ranges::find(
        bsss_, bss.interface, [](const BSS& each) -> const auto& { return each.plan.interface; });
    wanted.push_back(old != bsss_.end() ? std::move(*old) : BSS{bss, false});
  }
  bsss_ = std::move(wanted);
  plan_ = plan;
  for (std::size_t i = 0; i < bsss_.size(); ++i) {
    ChangeLive(bsss_[i], plan.bsss[i]);
  }
}

void SimulatedRadio::ChangeLive(BSS& bss, const BSSPlan& plan) {
  bss.plan = plan;
  if (!bss.up) {
    return;
  }
  devices_.LimitBroadcasts(plan.interface, plan_->broadcastLimit);
  devices_.Drop(plan.interface, "refused", [&plan](const MACAddress& device, const std::string&) {
    return !Admits(plan.access, device);
  });
  if (IsPersonal(plan.securityMode)) {
    devices_.Drop(plan.interface, "passphrase changed",
                  [&plan](const MACAddress&, const std::string& used) { return used != plan.passphrase; });
  }
}

void SimulatedRadio::BringUp() {
  for (BSS& bss : bsss_) {
    bss.up = true;
  }
  if (!std::exchange(up_, true)) {
    channel_ = plan_->channel != kAutomaticChannel ? plan_->channel : ChooseChannel();
    channelWidth_ = WidthOn(channel_, plan_->channelWidth, capability_, plan_->country);
    surroundings_.emit(RadioStateChanged{capability_.radio, true});
  }
  SettleUpstreams();
  devices_.Look();
}

void SimulatedRadio::SettleUpstreams() {
  const bool station = up_ && plan_->station.has_value();
  const bool backhaul = up_ && plan_->backhaulStation.has_value();
  station_.Pursue(station ? std::optional(GoalOf(*plan_->station)) : std::nullopt);
  backhaulStation_.Pursue(backhaul ? std::optional(GoalOf(*plan_->backhaulStation)) : std::nullopt);
}

/// The least disturbed one that the country allows, the lowest of those. At 2.4 GHz only three do not disturb
/// each other.
int SimulatedRadio::ChooseChannel() const {
  std::vector<int> channels = UsableChannels(plan_->country, capability_);
  if (capability_.radio == RadioFrequency::Band2_4GHz) {
    std::erase_if(channels, [](int channel) { return channel != 1 && channel != 6 && channel != 11; });
  }
  return *std::ranges::min_element(channels, {}, [this](int channel) {
    return air_.CountOn(channel, WidthOn(channel, plan_->channelWidth, capability_, plan_->country));
  });
}

void SimulatedRadio::Reconnect() {
  station_.Reconnect();
  backhaulStation_.Reconnect();
}

void SimulatedRadio::NoticeAir() {
  station_.NoticeAir();
  backhaulStation_.NoticeAir();
}

/// A beacon takes one percent of the air, a neighbour three, a station one; ten frames for everybody, which
/// go out at the lowest rate, another.
int SimulatedRadio::GetUtilisation() const {
  constexpr int kPerNeighbour = 3;
  constexpr int kBroadcastsPerPercent = 10;
  constexpr int kWhole = 100;
  int percent = kPerNeighbour * air_.CountOn(channel_, channelWidth_);
  int broadcasts = 0;
  for (const BSS& bss : bsss_) {
    broadcasts += devices_.PassingBroadcasts(bss.plan.interface);
    percent += 1 + static_cast<int>(devices_.StationsOf(bss.plan.interface).size());
  }
  percent += broadcasts / kBroadcastsPerPercent;
  return std::min(percent, kWhole);
}

LiveRadio SimulatedRadio::GetLive() const {
  LiveRadio live;
  live.radio = capability_.radio;
  live.up = up_;
  if (up_) {
    live.channel = channel_;
    live.channelWidth = channelWidth_;
    live.utilisation = GetUtilisation();
  }
  for (const BSS& bss : bsss_) {
    live.bsss.push_back({bss.plan.networkId, bss.plan.interface, bss.plan.bssid, bss.up,
                         devices_.StationsOf(bss.plan.interface)});
  }
  live.station = station_.GetLive();
  live.backhaulStation = backhaulStation_.GetLive();
  return live;
}

void SimulatedRadio::AddOpenBSSs(std::vector<OpenBSS>& bsss) const {
  for (const BSS& bss : bsss_) {
    if (bss.up) {
      bsss.push_back({capability_.radio, &bss.plan, &plan_->broadcastLimit});
    }
  }
}

bool SimulatedRadio::HasInterface(const std::string& interface) const {
  return std::ranges::any_of(bsss_, [&interface](const BSS& bss) { return bss.plan.interface == interface; });
}

}  // namespace TALO::Wifid
