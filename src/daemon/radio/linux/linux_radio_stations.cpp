// A radio's own stations.

#include "daemon/radio/linux/control/supplicant_files.h"
#include "daemon/radio/linux/linux_radio.h"
#include "daemon/radio/linux/station_tasks.h"

#include <utility>

namespace TALO::Wifid {

void LinuxRadio::Follow(const StationIs& outcome) {
  if (outcome.station) {
    station_.Begin(outcome.station->interface, outcome.station->ssid, true);
  } else {
    station_.End();
  }
}

void LinuxRadio::Follow(const BackhaulStationIs& outcome) {
  rejoins_ = false;
  const auto& before = present_.backhaulStation.plan;
  if (!outcome.station) {
    backhaulStation_.End();
    return;
  }
  const BackhaulStationPlan& plan = *outcome.station;
  if (backhaulStation_.IsConnected() && before && IsSameButForScanType(*before, plan)) {
    return;
  }
  const bool looks = plan.scanType != ScanType::Disable;
  backhaulStation_.Begin(plan.interface, plan.ssid, looks);
  if (!looks) {
    StopLooking(plan);
  }
}

void LinuxRadio::StopLooking(const BackhaulStationPlan& plan) {
  shared_.supplicant.Ask(ToInterface(plan.interface, "DISCONNECT"), [](const Result<std::string>&) {});
}

void LinuxRadio::TakeFromSupplicant(const ControlMessage& message) {
  if (message.interface == station_.GetInterface()) {
    station_.Take(message);
  }
  if (message.interface == backhaulStation_.GetInterface()) {
    backhaulStation_.Take(message);
    rejoins_ = rejoins_ && !backhaulStation_.IsConnected();
    const auto& plan = present_.backhaulStation.plan;
    // What Reconnect() itself dropped is not lost; that it is dropped may be told before or after it looks.
    if (message.name == "CTRL-EVENT-DISCONNECTED" && plan && plan->scanType == ScanType::Disable &&
        !rejoins_) {
      StopLooking(*plan);
      backhaulStation_.Begin(plan->interface, plan->ssid, false);
    }
  }
  if (message.interface == station_.GetInterface() || message.interface == backhaulStation_.GetInterface()) {
    FollowUpstream();
  }
  listener_.Take(message);
}

int LinuxRadio::ChannelOfUpstream() const {
  if (setting_.hardware.maximumChannels > 1) {
    return 0;
  }
  // What is joined is not given up for what is not.
  for (const bool isConnected : {true, false}) {
    for (const UpstreamWatch* watch : {&station_, &backhaulStation_}) {
      if (const int channel = watch->GetChannel(); watch->IsConnected() == isConnected && channel != 0) {
        return channel;
      }
    }
  }
  return 0;
}

// On another channel the access points are in its way, so they come to it.
void LinuxRadio::FollowUpstream() {
  const int channel = ChannelOfUpstream();
  const bool isBound = wanted_ && wanted_->enable && wanted_->channel == kAutomaticChannel;
  if (isBound && channel != 0 && channel != followed_ && present_.channel &&
      present_.channel->channel != channel) {
    Restore();
  }
  followed_ = channel;
}

void LinuxRadio::Reconnect(RadioDriver::Done done) {
  Enter([this, done = std::move(done)](const Leave& leave) {
    Task task{{}, StationsRejoin{}};
    const auto rejoin = [&task](UpstreamWatch& watch, const auto& plan) {
      // Choosing its network also ends the wait after a failure.
      for (const char* command : {"DISCONNECT", "SELECT_NETWORK 0"}) {
        task.actions.emplace_back(AskSupplicant{ToInterface(plan.interface, command)});
      }
      watch.Begin(plan.interface, plan.ssid, true);
    };
    if (const auto& plan = present_.station.plan; plan && present_.station.sound) {
      rejoin(station_, *plan);
    }
    if (const auto& plan = present_.backhaulStation.plan;
        plan && present_.backhaulStation.sound &&
        (plan->scanType != ScanType::Disable || backhaulStation_.IsConnected())) {
      rejoin(backhaulStation_, *plan);
      rejoins_ = true;
    }
    runner_.Run({std::move(task)}, [leave, done](const Result<void>& result) {
      leave();
      done(result);
    });
  });
}

}  // namespace TALO::Wifid
