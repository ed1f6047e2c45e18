#pragma once

#include "daemon/model/live.h"
#include "daemon/radio/linux/control/messages.h"
#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/timers.h"

#include <string>

namespace TALO::Wifid {

/// How far a station has got that wpa_supplicant drives, from what that tells.
class UpstreamWatch {
 public:
  UpstreamWatch(const Kernel& kernel, const Timers& timers) : kernel_(kernel), timers_(timers) {}

  /// The station was set up anew, and looks for its access point where it may.
  void Begin(const std::string& interface, const std::string& ssid, bool looks);
  /// There is no station.
  void End();

  /// What wpa_supplicant tells of the interface.
  void Take(const ControlMessage& message);

  bool IsConnected() const { return phase_ == Phase::Connected; }
  bool IsConnectedTo(const Wifi::Util::MACAddress& bssid) const { return IsConnected() && bssid_ == bssid; }
  const std::string& GetInterface() const { return interface_; }
  /// Of the access point that it has joined or tries to; 0 while it does neither, or has the wrong password.
  int GetChannel() const;
  LiveUpstream GetLive() const;

 private:
  using Phase = LiveUpstream::Phase;

  void Fail(const std::string& reason);
  int ChannelInUse() const;
  void TakeDisabled(const ControlMessage& message);

  const Kernel& kernel_;
  const Timers& timers_;
  std::string interface_;
  std::string ssid_;
  Phase phase_ = Phase::Disabled;
  std::string reason_;
  Wifi::Util::MACAddress bssid_;  ///< while connecting or connected
  int tried_ = 0;                 ///< the channel of the access point that it last tried to join
  bool isKnown_ = true;           ///< its password, as far as it was heard
  Timers::Duration since_{};      ///< while connected
};

}  // namespace TALO::Wifid
