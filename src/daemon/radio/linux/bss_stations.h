#pragma once

#include "daemon/model/live.h"
#include "daemon/model/plan.h"
#include "daemon/radio/linux/kernel.h"
#include "daemon/radio/radio_events.h"
#include "daemon/radio/timers.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Who is connected to the BSSs of a radio. That somebody came or left is hostapd's word; how well they are
/// heard is the kernel's.
class BSSStations {
 public:
  using Tell = std::function<void(const RadioEvent&)>;

  BSSStations(const Kernel& kernel, const Timers& timers, Tell tell)
      : kernel_(kernel), timers_(timers), tell_(std::move(tell)) {}

  /// Telling so. Who is there already stays who he is, and who is not there does not leave. Nodes that join
  /// the backhaul come and go without a word.
  void Come(const BSSPlan& bss, const Wifi::Util::MACAddress& station);
  void Leave(const BSSPlan& bss, const Wifi::Util::MACAddress& station, const std::string& reason);

  /// Makes up for what hostapd told and nobody heard: who is there comes, who is not leaves, as the kernel
  /// has it. Nobody does where it cannot be asked.
  void Compare(const BSSPlan& bss,
               const std::function<std::string(const Wifi::Util::MACAddress&)>& reasonToLeave);

  /// All whom the access does not admit leave for this reason.
  void Drop(const BSSPlan& bss, const AccessPlan& admitted, const std::string& reason);
  void DropAll(const BSSPlan& bss, const std::string& reason);

  std::vector<LiveStation> GetLive(const std::string& interface) const;

 private:
  using Addresses = std::vector<Wifi::Util::MACAddress>;

  /// What the kernel said, for as long as that is good enough.
  struct Heard {
    Timers::Duration at{};
    std::vector<LinkedStation> stations;
  };
  Result<std::vector<LinkedStation>> Ask(const std::string& interface) const;
  const std::vector<LinkedStation>& Hear(const std::string& interface) const;

  const Kernel& kernel_;
  const Timers& timers_;
  Tell tell_;
  std::map<std::string, Addresses> stations_;  ///< by interface, in the order in which they came
  mutable std::map<std::string, Heard> heard_;
};

}  // namespace TALO::Wifid
