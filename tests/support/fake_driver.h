#pragma once

#include "daemon/radio/radio_driver.h"
#include "support/fake_doors.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// Radios on which an operation is done when the test says so, never from inside the call. It notes
/// "apply Band2_4GHz: 1 4" for a plan of that radio with the networks 1 and 4, "apply everything ..." in that
/// mode, "scan Band2_4GHz", "reconnect Band2_4GHz", "start WPS wlan0_1", "cancel WPS wlan0_1" and
/// "registrar wlan0_1". A test fails when a radio is asked for more before it is done.
class FakeDriver final : public RadioDriver {
 public:
  FakeDriver(Journal& journal, Capabilities capabilities);

  /// The next operation of that radio which nothing was said of fails; a plan takes the radio down then.
  void FailNext(RadioFrequency radio, const std::string& sentence) { failures_[radio].Fail(sentence); }
  /// The next works and those told of behind it fail.
  void PassNext(RadioFrequency radio) { failures_[radio].Pass(); }
  void FailNoMore() { failures_.clear(); }

  bool IsBusy() const { return !underWay_.empty(); }
  std::set<RadioFrequency> BusyRadios() const;
  /// The operation of that radio is done.
  void Finish(RadioFrequency radio);
  /// All are done, in the order of their radios, and what follows from that too.
  void FinishAll();

  /// Tells whoever listens.
  void Tell(const RadioEvent& event) const { sink_(event); }

  /// Of every radio the plan that it was given last, in the order of the radios.
  std::vector<RadioPlan> LastPlans() const;

  std::map<RadioFrequency, std::vector<Wifi::ScanResult>> inTheAir;
  std::vector<MeshNode> nodes;
  std::vector<Wifi::WPS_ERConfigInput> registrarInputs;

  void SetEventSink(EventSink sink) override { sink_ = std::move(sink); }
  const Capabilities& GetCapabilities() const override { return capabilities_; }
  std::set<std::string> GetBridges() const override { return {"br0", "br-lan"}; }
  std::vector<MeshNode> GetMeshNodes() const override { return nodes; }
  void Apply(const RadioPlan& plan, ApplyMode mode, Done done) override;
  std::vector<LiveRadio> GetLive() const override;
  void Scan(RadioFrequency radio, ScanDone done) override;
  void Reconnect(RadioFrequency radio, Done done) override;
  void StartWPS(const std::string& interface, Done done) override;
  void CancelWPS(const std::string& interface, Done done) override;
  void ConfigureRegistrar(const Wifi::WPS_ERConfigInput& input, Done done) override;

 private:
  /// Called with why it failed, nothing where it worked.
  using Finishing = std::function<void(const std::string& failure)>;

  void Begin(RadioFrequency radio, const std::string& note, Finishing finish);
  RadioFrequency RadioOf(const std::string& interface) const;

  Journal& journal_;
  Capabilities capabilities_;
  EventSink sink_;
  std::map<RadioFrequency, FailureList> failures_;
  std::map<RadioFrequency, Finishing> underWay_;
  std::map<RadioFrequency, RadioPlan> plans_;
  std::map<RadioFrequency, LiveRadio> live_;
};

}  // namespace TALO::Wifid
