#include "daemon/radio/linux/linux_radio.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/abilities.h"
#include "daemon/radio/linux/channel_choice.h"
#include "daemon/radio/linux/control/supplicant_files.h"
#include "daemon/radio/linux/questions.h"
#include "daemon/radio/linux/station_tasks.h"
#include "daemon/radio/plan_check.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace TALO::Wifid {

namespace {

using namespace std::chrono_literals;

constexpr auto kLongestPatience = 30s;

/// Stands in the place of a message's name when an interface of hostapd's went away by itself.
constexpr const char* kInterfaceDisabled = "INTERFACE-DISABLED";

}  // namespace

LinuxRadio::LinuxRadio(RadioSetting setting, const Shared& shared)
    : setting_(std::move(setting)),
      shared_(shared),
      stations_(shared_.doors.kernel, shared_.doors.timers, shared_.tell),
      station_(shared_.doors.kernel, shared_.doors.timers),
      backhaulStation_(shared_.doors.kernel, shared_.doors.timers),
      listener_(GetCapability().radio, shared_.supplicant, shared_.doors.timers),
      runner_(shared_.doors, shared_.hostapd, shared_.supplicant,
              {[this](const Outcome& outcome) { Reach(outcome); },
               [this](const Outcome& outcome) { present_.Doubt(outcome); }}),
      timers_(shared_.doors.timers) {}

void LinuxRadio::Enter(std::function<void(const Leave&)> work) {
  queue_.push_back(std::move(work));
  if (!busy_) {
    Next();
  }
}

void LinuxRadio::Next() {
  busy_ = !queue_.empty();
  if (busy_) {
    const auto work = std::move(queue_.front());
    queue_.pop_front();
    // Not from inside: a long queue would go deep.
    work([this] { timers_.After(0ms, [this] { Next(); }); });
  }
}

void LinuxRadio::Apply(const RadioPlan& plan, ApplyMode mode, RadioDriver::Done done) {
  Enter([this, plan, mode, done = std::move(done)](const Leave& leave) {
    DropRestore();
    // The first plan is what the router was left with. Nobody else tries it again.
    if (!wanted_) {
      wanted_ = plan;
    }
    Bring(plan, mode, [this, plan, leave, done](const Result<void>& result) {
      if (result.Succeeded()) {
        wanted_ = plan;
        failures_ = 0;
      } else {
        // Where the caller goes back to what is wanted, there will be nothing left to do.
        RestoreLater();
      }
      leave();
      done(result);
    });
  });
}

Result<void> LinuxRadio::Check(const RadioPlan& plan) const {
  const auto bridges = AskKernel(shared_.doors.kernel, &Kernel::GetBridges);
  if (!bridges.Succeeded()) {
    return bridges.Why();
  }
  if (auto check = CheckPlan(plan, GetCapability(), bridges.Value()); !check.Succeeded()) {
    return check;
  }
  // hostapd would make a bridge that is not there, and take it away again with all that joined it.
  const bool hasBackhaul = plan.backhaulStation || std::ranges::find(plan.bsss, kBackhaulNetworkId,
                                                                     &BSSPlan::networkId) != plan.bsss.end();
  if (plan.enable && hasBackhaul && !bridges.Value().contains(setting_.backhaulBridge)) {
    return Refusal{ErrorCode::RadioFailed, "the radio " + NameOrNumber(plan.radio) +
                                               " cannot carry the backhaul: the bridge " +
                                               Quoted(setting_.backhaulBridge) + " does not exist"};
  }
  return CheckAbilities(setting_.hardware, plan);
}

// The country before all else: it decides which channels there are.
void LinuxRadio::Bring(const RadioPlan& plan, ApplyMode mode, const RadioDriver::Done& done) {
  if (auto check = Check(plan); !check.Succeeded()) {
    done(check);
    return;
  }
  shared_.secrets.Learn(plan);
  const auto go = [this, plan, mode, done](const Result<void>& country) {
    if (!country.Succeeded()) {
      done(country);
      return;
    }
    auto tasks = FindWay(plan, mode);
    if (!tasks.Succeeded()) {
      done(tasks.Why());
      return;
    }
    runner_.Run(std::move(tasks.Value()), done);
  };
  const auto askForCountry = [this, plan, done, go](const Result<void>& ready) {
    if (ready.Succeeded()) {
      shared_.country.Require(plan.country, go);
    } else {
      done(ready);
    }
  };
  const bool hasStations =
      plan.station || plan.backhaulStation || present_.station.plan || present_.backhaulStation.plan;
  shared_.hostapd.WhenReady([this, hasStations, askForCountry](const Result<void>& ready) {
    if (ready.Succeeded() && hasStations) {
      shared_.supplicant.WhenReady(askForCountry);
    } else {
      askForCountry(ready);
    }
  });
}

Result<std::vector<Task>> LinuxRadio::FindWay(const RadioPlan& plan, ApplyMode mode) const {
  Sending sending;
  if (plan.enable) {
    const auto band = AskForBand();
    if (!band.Succeeded()) {
      return band.Why();
    }
    const auto channel = ChooseChannel(plan, GetCapability(), band.Value(), present_, ChannelOfUpstream());
    if (!channel.Succeeded()) {
      return channel.Why();
    }
    sending.channel = channel.Value();
    // Not all hardware can be told, and what it does by itself is all that the country allows.
    constexpr int kAll = 100;
    if (plan.transmitPower < kAll || present_.powerWasSet) {
      sending.power = PowerOf(plan.transmitPower, band.Value(), channel.Value().channel);
      sending.powerIsAsked = wanted_ && wanted_->transmitPower != plan.transmitPower;
    }
  }
  try {
    return FindTasks(setting_, plan, mode, present_, sending);
  } catch (const std::invalid_argument& error) {
    // A value that their configuration files cannot hold.
    return Refusal{ErrorCode::RadioFailed,
                   "the radio " + NameOrNumber(plan.radio) + " cannot be set up: " + error.what()};
  }
}

Result<WiphyBand> LinuxRadio::AskForBand() const {
  const auto wiphys = AskKernel(shared_.doors.kernel, &Kernel::GetWiphys);
  if (!wiphys.Succeeded()) {
    return wiphys.Why();
  }
  const auto wiphy = std::ranges::find(wiphys.Value(), setting_.hardware.wiphy, &Wiphy::index);
  const WiphyBand* band = wiphy != wiphys.Value().end() ? BandOf(*wiphy, GetCapability().radio) : nullptr;
  if (band == nullptr) {
    return Refusal{ErrorCode::RadioFailed,
                   "the radio " + NameOrNumber(GetCapability().radio) + " is not there any more"};
  }
  return *band;
}

void LinuxRadio::Reach(const Outcome& outcome) {
  std::visit(
      [this](const auto& each) {
        if constexpr (requires { Follow(each); }) {
          Follow(each);
        }
      },
      outcome);
  present_.Reach(outcome);
  // Who joined before hostapd's answer was read was told of before there was a BSS.
  if (const auto* up = std::get_if<BSSIsUp>(&outcome)) {
    LookForStationsOf(up->bss);
  }
}

void LinuxRadio::TakeDown(const BSSPlan& bss, const std::string& reason) {
  stations_.DropAll(bss, reason);
  shared_.bssWentDown(bss.interface);
}

void LinuxRadio::Follow(const RadioIsDown&) {
  for (const auto& [interface, bss] : present_.bsss) {
    TakeDown(bss.bss, "BSS down");
  }
  listener_.Forget();
  if (present_.channel) {
    shared_.tell(RadioStateChanged{GetCapability().radio, false});
  }
}

void LinuxRadio::Follow(const RadioIsUp&) { shared_.tell(RadioStateChanged{GetCapability().radio, true}); }

void LinuxRadio::Follow(const BSSIsDown& outcome) {
  const auto bss = present_.bsss.find(outcome.interface);
  if (bss != present_.bsss.end()) {
    TakeDown(bss->second.bss, outcome.reason);
  }
}

void LinuxRadio::Follow(const BSSHasChanged& outcome) {
  using Dropped = BSSHasChanged::Dropped;
  if (outcome.dropped == Dropped::Everybody) {
    stations_.DropAll(outcome.bss, "passphrase changed");
  } else if (outcome.dropped == Dropped::WhoIsNotAdmitted) {
    stations_.Drop(outcome.bss, outcome.bss.access, "refused");
  }
}

const BSSPlan* LinuxRadio::FindBSS(const std::string& interface) const {
  const auto bss = present_.bsss.find(interface);
  return bss != present_.bsss.end() && bss->second.sound ? &bss->second.bss : nullptr;
}

void LinuxRadio::TakeFromHostapd(const ControlMessage& message) {
  const auto bss = present_.bsss.find(message.interface);
  if (message.name == kInterfaceDisabled && !IsTakenDownOrUp(message.interface) &&
      (bss != present_.bsss.end() || (message.interface == GetCapability().interface && present_.channel))) {
    // Somebody else took it away, or the hardware went.
    shared_.doors.note({DriverNote::Weight::Warning, message.interface + " went down by itself"});
    (bss != present_.bsss.end() ? bss->second.sound : present_.sound) = false;
    RestoreLater();
    return;
  }
  const auto station = message.Address();
  if (bss == present_.bsss.end() || !station) {
    return;
  }
  if (message.name == "AP-STA-CONNECTED") {
    stations_.Come(bss->second.bss, *station);
  } else if (message.name == "AP-STA-DISCONNECTED") {
    stations_.Leave(bss->second.bss, *station, ReasonToLeave(bss->second.bss, *station));
  }
}

bool LinuxRadio::IsTakenDownOrUp(const std::string& interface) const {
  const Outcome* outcome = runner_.UnderWay();
  const auto* down = std::get_if<BSSIsDown>(outcome);
  const auto* up = std::get_if<BSSIsUp>(outcome);
  return std::get_if<RadioIsDown>(outcome) != nullptr || std::get_if<RadioIsUp>(outcome) != nullptr ||
         (down != nullptr && down->interface == interface) ||
         (up != nullptr && up->bss.interface == interface);
}

// What the task under way does to the BSS is why.
std::string LinuxRadio::ReasonToLeave(const BSSPlan& bss, const Wifi::Util::MACAddress& station) const {
  using Dropped = BSSHasChanged::Dropped;
  const auto* change = std::get_if<BSSHasChanged>(runner_.UnderWay());
  if (change != nullptr && change->bss.interface == bss.interface) {
    if (change->dropped == Dropped::Everybody) {
      return "passphrase changed";
    }
    if (change->dropped == Dropped::WhoIsNotAdmitted && !Admits(change->bss.access, station)) {
      return "refused";
    }
  }
  if (const auto* down = std::get_if<BSSIsDown>(runner_.UnderWay());
      down != nullptr && down->interface == bss.interface) {
    return down->reason;
  }
  return IsTakenDownOrUp(bss.interface) ? "BSS down" : "left";
}

void LinuxRadio::LoseHostapd() { Reach(RadioIsDown{}); }

// Their interfaces are still there.
void LinuxRadio::LoseSupplicant() {
  station_.End();
  backhaulStation_.End();
  present_.Doubt(StationIs{});
  present_.Doubt(BackhaulStationIs{});
  listener_.LoseSupplicant();
}

void LinuxRadio::Restore() {
  if (!wanted_ || !shared_.hostapd.IsReady()) {
    return;
  }
  Enter([this](const Leave& leave) {
    DropRestore();
    Bring(*wanted_, ApplyMode::WhatDiffers, [this, leave](const Result<void>& result) {
      leave();
      if (result.Succeeded()) {
        failures_ = 0;
        return;
      }
      shared_.doors.note(
          {DriverNote::Weight::Failure, "the radio " + NameOrNumber(GetCapability().radio) +
                                            " cannot be brought back: " + result.Why().sentence});
      RestoreLater();
    });
  });
}

void LinuxRadio::RestoreLater() {
  if (restore_) {
    return;
  }
  const auto patience = std::min<Timers::Duration>(500ms * (1U << std::min(failures_, 6)), kLongestPatience);
  ++failures_;
  restore_ = timers_.After(patience, [this] {
    restore_.reset();
    Restore();
  });
}

void LinuxRadio::DropRestore() {
  if (restore_) {
    timers_.Cancel(*restore_);
    restore_.reset();
  }
}

}  // namespace TALO::Wifid
