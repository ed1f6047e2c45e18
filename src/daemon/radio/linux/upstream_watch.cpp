#include "daemon/radio/linux/upstream_watch.h"

#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/questions.h"

#include <algorithm>

namespace TALO::Wifid {

void UpstreamWatch::Begin(const std::string& interface, const std::string& ssid, bool looks) {
  interface_ = interface;
  ssid_ = ssid;
  phase_ = looks ? Phase::Scanning : Phase::Disabled;
  reason_.clear();
  bssid_ = {};
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
  } else if (reason != message.fields.end() && reason->second == "AUTH_FAILED") {
    Fail("wrong user or password");
  } else {
    Fail("the access point refuses it");
  }
}

// While it tries again it stays failed, until it finds an access point to join.
void UpstreamWatch::Take(const ControlMessage& message) {
  const std::string& name = message.name;
  if (name == "CTRL-EVENT-CONNECTED") {
    phase_ = Phase::Connected;
    reason_.clear();
    bssid_ = message.Address().value_or(Wifi::Util::MACAddress());
    since_ = timers_.Now();
  } else if (name == "CTRL-EVENT-DISCONNECTED" && phase_ != Phase::Failed) {
    Begin(interface_, ssid_, true);
  } else if (name == "CTRL-EVENT-NETWORK-NOT-FOUND" && phase_ != Phase::Connected) {
    Fail("no such access point");
  } else if (name == "CTRL-EVENT-SSID-TEMP-DISABLED") {
    TakeDisabled(message);
  } else if ((name == "SME:" || name == "Trying") && message.Address() && phase_ == Phase::Scanning) {
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
  const auto interfaces = HearFromKernel(kernel_, &Kernel::GetInterfaces);
  const auto own = std::ranges::find(interfaces, interface_, &WirelessInterface::name);
  if (own != interfaces.end()) {
    live.channel = ChannelAt(own->frequency);
  }
  return live;
}

}  // namespace TALO::Wifid
