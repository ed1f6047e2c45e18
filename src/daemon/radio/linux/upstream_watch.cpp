#include "daemon/radio/linux/upstream_watch.h"

#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/control/words.h"
#include "daemon/radio/linux/questions.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

bool IsToldOfTry(const ControlMessage& message) {
  return (message.name == "SME:" || message.name == "Trying") && message.Address().has_value();
}

}  // namespace

void UpstreamWatch::Begin(const std::string& interface, const std::string& ssid, bool looks) {
  interface_ = interface;
  ssid_ = ssid;
  phase_ = looks ? Phase::Scanning : Phase::Disabled;
  reason_.clear();
  bssid_ = {};
  tried_ = 0;
  isKnown_ = true;
}

void UpstreamWatch::End() { Begin("", "", false); }

void UpstreamWatch::Fail(const std::string& reason) {
  phase_ = Phase::Failed;
  reason_ = reason;
  bssid_ = {};
}

void UpstreamWatch::TakeDisabled(const ControlMessage& message) {
  const auto reason = message.fields.find("reason");
  if (reason != message.fields.end() && reason->second == "WRONG_KEY") {
    Fail("wrong password");
    isKnown_ = false;
  } else if (reason != message.fields.end() && reason->second == "AUTH_FAILED") {
    Fail("wrong user or password");
    isKnown_ = false;
  } else {
    Fail("the access point refuses it");
  }
}

// While it tries again it stays failed, until it finds an access point to join.
void UpstreamWatch::Take(const ControlMessage& message) {
  const std::string& name = message.name;
  if (IsToldOfTry(message)) {
    const auto frequency = message.fields.find("freq");
    tried_ = frequency != message.fields.end() ? ChannelAt(ReadNumber(frequency->second).value_or(0)) : 0;
  }
  if (name == "CTRL-EVENT-CONNECTED") {
    phase_ = Phase::Connected;
    reason_.clear();
    isKnown_ = true;
    bssid_ = message.Address().value_or(Wifi::Util::MACAddress());
    since_ = timers_.Now();
  } else if (name == "CTRL-EVENT-DISCONNECTED" && phase_ != Phase::Failed) {
    Begin(interface_, ssid_, true);
  } else if (name == "CTRL-EVENT-NETWORK-NOT-FOUND" && phase_ != Phase::Connected) {
    Fail("no such access point");
  } else if (name == "CTRL-EVENT-SSID-TEMP-DISABLED") {
    TakeDisabled(message);
  } else if (IsToldOfTry(message) && phase_ == Phase::Scanning) {
    phase_ = Phase::Connecting;
    bssid_ = *message.Address();
  }
}

LiveUpstream UpstreamWatch::GetLive() const {
  LiveUpstream live;
  live.phase = phase_;
  live.reason = reason_;
  live.ssid = ssid_;
  live.bssid = bssid_;
  if (phase_ != Phase::Connected) {
    return live;
  }
  live.connectedTime =
      static_cast<int>(std::chrono::duration_cast<std::chrono::seconds>(timers_.Now() - since_).count());
  for (const LinkedStation& station : HearFromKernel(kernel_, &Kernel::GetStations, interface_)) {
    if (station.address == bssid_) {
      live.signal = station.signal;
      live.transmitRate = station.transmitRate;
    }
  }
  live.channel = ChannelInUse();
  return live;
}

int UpstreamWatch::GetChannel() const { return IsConnected() ? ChannelInUse() : isKnown_ ? tried_ : 0; }

int UpstreamWatch::ChannelInUse() const {
  const auto interfaces = HearFromKernel(kernel_, &Kernel::GetInterfaces);
  const auto own = std::ranges::find(interfaces, interface_, &WirelessInterface::name);
  return own != interfaces.end() ? ChannelAt(own->frequency) : 0;
}

}  // namespace TALO::Wifid
