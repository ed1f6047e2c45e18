#pragma once

#include "values/enums.h"
#include "values/mac_address.h"

#include <map>
#include <string>
#include <vector>

/// Records of schedules, WPS, devices, countries and topology.
namespace TALO::Wifi {

/// A network's schedule on one radio.
struct ScheduleStatusEntry {
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  Util::ScheduleMode mode = Util::ScheduleMode::Error;
  int secondsToSwitch = -1;  ///< until the next switch on or off, -1 for none

  bool operator==(const ScheduleStatusEntry&) const = default;
};

/// Network ID to its schedules, one entry a radio.
using ScheduleStatus = std::map<int, std::vector<ScheduleStatusEntry>>;

/// Minutes of the week in local time, Monday 00:00 being 0: on from `start`, off from `end`, which lies after
/// it.
struct ScheduleWindow {
  int start = 0;  ///< 0 to 10079
  int end = 0;    ///< 1 to 10080

  bool operator==(const ScheduleWindow&) const = default;
};

/// When a network is to be on the air.
struct NetworkSchedule {
  int networkId = 0;
  Util::RadioFrequency radio = Util::RadioFrequency::SmartConnect;  ///< `SmartConnect` for all its radios
  Util::ScheduleMode mode = Util::ScheduleMode::Error;
  int validFor = 0;                     ///< of `ValidFor`: seconds from now, 0 takes the schedule away
  std::vector<ScheduleWindow> windows;  ///< of `Customized`: on-times, none takes the schedule away

  bool operator==(const NetworkSchedule&) const = default;
};

/// What an external registrar is told. `mode` is one of the security modes' names.
struct WPS_ERConfigInput {
  std::string ifName;
  std::string ssid;  ///< raw bytes
  std::string key;   ///< passphrase
  std::string mode;

  bool operator==(const WPS_ERConfigInput&) const = default;
};

/// A station that is connected to one of this router's networks.
struct DeviceInfo {
  Util::MACAddress address;
  std::string name;       ///< as the device gave it, empty where unknown
  std::string ipAddress;  ///< empty where unknown
  int networkId = 0;
  std::string ssid;  ///< raw bytes
  Util::RadioFrequency radio = Util::RadioFrequency::Error;
  std::string interface;
  int signal = 0;         ///< dBm
  int transmitRate = 0;   ///< Mbit/s towards the device
  int receiveRate = 0;    ///< Mbit/s from the device
  int connectedTime = 0;  ///< seconds

  bool operator==(const DeviceInfo&) const = default;
};

/// Which country codes a router may use.
struct CountryCodeCapability {
  bool immutable = false;                    ///< the code cannot be changed
  std::map<CountryCode, std::string> codes;  ///< each allowed code with its channel plan

  bool operator==(const CountryCodeCapability&) const = default;
};

/// A network and the bridge that it is activated on.
struct ActivationInfo {
  int id = 0;
  std::string bridge;

  bool operator==(const ActivationInfo&) const = default;
};

}  // namespace TALO::Wifi
