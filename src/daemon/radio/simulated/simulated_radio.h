#pragma once

#include "daemon/radio/radio_driver.h"
#include "daemon/radio/simulated/air.h"
#include "daemon/radio/simulated/devices.h"
#include "daemon/radio/simulated/upstream.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// One radio: what it carries, and how it gets from there to a plan.
class SimulatedRadio {
 public:
  using BSSWentDown = std::function<void(const std::string& interface)>;

  SimulatedRadio(const RadioCapability& capability, const Surroundings& surroundings, const Air& air,
                 Devices& devices, BSSWentDown bssWentDown);
  SimulatedRadio(const SimulatedRadio&) = delete;
  SimulatedRadio& operator=(const SimulatedRadio&) = delete;

  const RadioCapability& GetCapability() const { return capability_; }
  bool IsUp() const { return up_; }

  /// What a driver's Apply does, for a plan that can be carried out. `fault` makes it slow, or has it fail
  /// when what the plan changes has been taken down.
  void Apply(const RadioPlan& plan, ApplyMode mode, const std::optional<ApplyFault>& fault,
             RadioDriver::Done done);

  void Reconnect();
  void NoticeAir();

  LiveRadio GetLive() const;
  void AddOpenBSSs(std::vector<OpenBSS>& bsss) const;
  bool HasInterface(const std::string& interface) const;

 private:
  struct BSS {
    BSSPlan plan;
    bool up = false;
  };

  bool IsAsPlanned(const RadioPlan& plan) const;
  bool NeedsRestart(const RadioPlan& plan) const;
  void MakeWay(const RadioPlan& plan, ApplyMode mode);
  void TakeDownRadio();
  void TakeDown(const std::function<bool(const BSS&)>& which);
  void ChangeLive(const RadioPlan& plan);
  void ChangeLive(BSS& bss, const BSSPlan& plan);
  void BringUp();
  void SettleUpstreams();
  int ChooseChannel() const;
  int GetUtilisation() const;

  const RadioCapability& capability_;
  const Surroundings& surroundings_;
  const Air& air_;
  Devices& devices_;
  BSSWentDown bssWentDown_;
  std::optional<RadioPlan> plan_;  ///< the last one that was reached; its BSSs stand in bsss_
  bool up_ = false;
  int channel_ = 0;       ///< the one in use while it is up
  int channelWidth_ = 0;  ///< likewise
  std::vector<BSS> bsss_;
  Upstream station_;
  Upstream backhaulStation_;
};

}  // namespace TALO::Wifid
