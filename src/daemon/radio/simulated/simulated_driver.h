#pragma once

#include "daemon/radio/own_timers.h"
#include "daemon/radio/radio_driver.h"
#include "daemon/radio/simulated/air.h"
#include "daemon/radio/simulated/devices.h"
#include "daemon/radio/simulated/fault_list.h"
#include "daemon/radio/simulated/scanner.h"
#include "daemon/radio/simulated/scenario.h"
#include "daemon/radio/simulated/simulated_radio.h"
#include "daemon/radio/simulated/wps_session.h"
#include "daemon/radio/timers.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// The radios of a model in the world of a scenario. It knows no time but the timers', and the same calls at
/// the same times have the same effects each time. A simulated radio can be on two channels at once: its own,
/// and that of the access point its station has joined. Of the frames only those for everybody are counted.
/// The transmit power is kept and has no further effect: it is for those who hear the router, and the records
/// hold what the router hears.
class SimulatedDriver final : public RadioDriver {
 public:
  /// `timers` must live longer.
  SimulatedDriver(SupportedModel model, Scenario scenario, Timers& timers);

  void SetEventSink(EventSink sink) override { sink_ = std::move(sink); }
  const Capabilities& GetCapabilities() const override { return capabilities_; }
  std::set<std::string> GetBridges() const override { return scenario_.bridges; }
  std::vector<MeshNode> GetMeshNodes() const override { return scenario_.meshNodes; }
  void Apply(const RadioPlan& plan, ApplyMode mode, Done done) override;
  std::vector<LiveRadio> GetLive() const override;
  void Scan(RadioFrequency radio, ScanDone done) override;
  void Reconnect(RadioFrequency radio, Done done) override;
  void StartWPS(const std::string& interface, Done done) override;
  void CancelWPS(const std::string& interface, Done done) override;
  void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) override;

  /// What each device that sends frames for everybody has sent, and what became of it.
  std::map<Wifi::Util::MACAddress, BroadcastCount> GetBroadcasts() const {
    return devices_.CountBroadcasts();
  }

  /// What each interface's external registrar was told last.
  const std::map<std::string, Wifi::WPS_ERConfigInput>& GetRegistrars() const { return registrars_; }

 private:
  struct Radio {
    SimulatedRadio simulated;
    Scanner scanner;
    bool busy = false;
  };

  Radio* FindRadio(RadioFrequency radio);
  /// The radio, for an operation that nothing else may interrupt; it is busy from now on. Nothing where it is
  /// not there or is busy already, which `refuse` is told then.
  Radio* Occupy(RadioFrequency radio, const std::function<void(Refusal)>& refuse);
  Done Releasing(Radio& radio, Done done);
  void Later(std::function<void()> action) { timers_.After(Timers::Duration(0), std::move(action)); }
  std::vector<OpenBSS> FindOpenBSSs() const;
  std::optional<OpenBSS> FindOpenBSS(const std::string& interface) const;
  bool HasInterface(const std::string& interface) const;
  Result<void> OpenWPS(const std::string& interface);
  Result<void> CloseWPS(const std::string& interface);

  // In the order of their making: each uses those before it.
  Scenario scenario_;
  Capabilities capabilities_;
  EventSink sink_;
  OwnTimers timers_;
  Surroundings surroundings_;
  FaultList<ApplyFault> applyFaults_;
  FaultList<ScanFault> scanFaults_;
  Air air_;
  Devices devices_;
  WPSSession wps_;
  std::vector<std::unique_ptr<Radio>> radios_;
  std::map<std::string, Wifi::WPS_ERConfigInput> registrars_;
};

}  // namespace TALO::Wifid
