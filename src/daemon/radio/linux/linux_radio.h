#pragma once

#include "daemon/radio/linux/air_listener.h"
#include "daemon/radio/linux/bss_stations.h"
#include "daemon/radio/linux/country_keeper.h"
#include "daemon/radio/linux/doors.h"
#include "daemon/radio/linux/program.h"
#include "daemon/radio/linux/reconcile.h"
#include "daemon/radio/linux/secrets.h"
#include "daemon/radio/linux/task_runner.h"
#include "daemon/radio/linux/upstream_watch.h"
#include "daemon/radio/radio_driver.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// One radio: what it is, what is wanted of it, and the way from there to here. What it is asked for comes
/// one after the other, also while it brings back what a program lost that has ended.
class LinuxRadio {
 public:
  /// What all radios have in common.
  struct Shared {
    const LinuxDoors& doors;
    Program& hostapd;
    Program& supplicant;
    CountryKeeper& country;
    Secrets& secrets;
    std::function<void(const RadioEvent&)> tell;
    std::function<void(const std::string& interface)> bssWentDown;
  };

  LinuxRadio(RadioSetting setting, const Shared& shared);
  LinuxRadio(const LinuxRadio&) = delete;
  LinuxRadio& operator=(const LinuxRadio&) = delete;

  const RadioCapability& GetCapability() const { return setting_.hardware.capability; }

  /// As RadioDriver has them, but the answer may come from inside the call.
  void Apply(const RadioPlan& plan, ApplyMode mode, RadioDriver::Done done);
  void Scan(RadioDriver::ScanDone done);
  void Reconnect(RadioDriver::Done done);
  LiveRadio GetLive() const;

  /// A BSS of this radio that is up.
  const BSSPlan* FindBSS(const std::string& interface) const;

  /// What is not about this radio is passed over.
  void TakeFromHostapd(const ControlMessage& message);
  void TakeFromSupplicant(const ControlMessage& message);
  /// Learns from the kernel what the program told and nobody heard.
  void LookForStations();
  void LookForUpstreams();
  /// All that the program had of this radio is lost.
  void LoseHostapd();
  void LoseSupplicant();
  /// Brings back what was lost, once hostapd runs.
  void Restore();

 private:
  using Leave = std::function<void()>;

  void Enter(std::function<void(const Leave&)> work);
  void Next();
  void Bring(const RadioPlan& plan, ApplyMode mode, const RadioDriver::Done& done);
  Result<void> Check(const RadioPlan& plan) const;
  Result<std::vector<Task>> FindWay(const RadioPlan& plan, ApplyMode mode) const;
  /// Where the radio can be on one channel alone, that of its own station; 0 where it is free.
  int ChannelOfUpstream() const;
  void FollowUpstream();
  /// The radio's, as the country in force has it.
  Result<WiphyBand> AskForBand() const;
  void RestoreLater();
  /// Not later any more: what begins now brings the radio where it belongs, or sees to it again.
  void DropRestore();
  void Reach(const Outcome& outcome);
  void Follow(const RadioIsDown& outcome);
  void Follow(const RadioIsUp& outcome);
  void Follow(const BSSIsDown& outcome);
  void Follow(const BSSHasChanged& outcome);
  void Follow(const StationIs& outcome);
  void Follow(const BackhaulStationIs& outcome);
  void TakeDown(const BSSPlan& bss, const std::string& reason);
  /// By the task under way.
  bool IsTakenDownOrUp(const std::string& interface) const;
  std::string ReasonToLeave(const BSSPlan& bss, const Wifi::Util::MACAddress& station) const;
  void StopLooking(const BackhaulStationPlan& plan);
  void LookForStationsOf(const BSSPlan& bss);
  void LookFor(const UpstreamWatch& upstream);
  void ScanNow(const RadioDriver::ScanDone& done);
  void Listen(const std::string& interface, const RadioDriver::ScanDone& done);
  std::vector<int> FrequenciesToListenTo(const WiphyBand& band) const;
  void ShowChannel(LiveRadio& live) const;
  int GetUtilisation() const;

  RadioSetting setting_;
  Shared shared_;
  Present present_;
  std::optional<RadioPlan> wanted_;  ///< the last plan that was reached, the first before any was
  BSSStations stations_;
  UpstreamWatch station_;
  UpstreamWatch backhaulStation_;
  int followed_ = 0;      ///< the channel of its own station, when it was looked at last
  bool rejoins_ = false;  ///< the backhaul station was told to, and looks whatever its scan type
  AirListener listener_;
  TaskRunner runner_;
  OwnTimers timers_;
  std::deque<std::function<void(const Leave&)>> queue_;
  bool busy_ = false;
  std::optional<Timers::Id> restore_;  ///< while it is to bring back what was lost
  int failures_ = 0;                   ///< to bring back what was lost, in a row
};

}  // namespace TALO::Wifid
