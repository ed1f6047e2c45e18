#pragma once

#include "daemon/radio/linux/hardware.h"
#include "daemon/radio/linux/present.h"
#include "daemon/radio/radio_driver.h"

#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What stays the same while the daemon runs.
struct RadioSetting {
  RadioHardware hardware;
  std::string filesDirectory;    ///< where hostapd and wpa_supplicant find the private files
  std::string controlDirectory;  ///< where they make the control sockets of interfaces
  std::string backhaulBridge;    ///< where the traffic of other nodes goes
};

std::string PathOf(const RadioSetting& setting, const std::string& file);

/// How a radio that is on is to send.
struct Sending {
  ChannelSettings channel;
  std::optional<int> power;  ///< dBm at most; nothing for what the hardware does by itself
  bool powerIsAsked = true;  ///< now; else the rest does without where the hardware cannot set it
};

/// The smallest change from what a radio is to its plan, which can be carried out: first the radio, then the
/// BSSs that go, those that come or change, and the stations. The country is in force by then.
std::vector<Task> FindTasks(const RadioSetting& setting, const RadioPlan& plan, ApplyMode mode,
                            const Present& present, const Sending& sending);

}  // namespace TALO::Wifid
