#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/radio/linux/control_sockets.h"
#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/linux/private_files.h"
#include "daemon/radio/timers.h"

#include <functional>
#include <string>

namespace TALO::Wifid {

/// What the driver has to tell those who look after the router; one line, without secrets.
struct DriverNote {
  enum class Weight { Detail, Information, Warning, Failure };
  Weight weight = Weight::Information;
  std::string sentence;

  bool operator==(const DriverNote&) const = default;
};

/// All that the driver for real radios needs of the machine. They live longer than the driver.
struct LinuxDoors {
  Kernel& kernel;
  Children& children;
  ControlSockets& sockets;
  PrivateFiles& files;
  Timers& timers;
  std::function<void(const DriverNote&)> note;
};

}  // namespace TALO::Wifid
