#pragma once

#include "daemon/radio/simulated/simulated_driver.h"
#include "support/manual_timers.h"

#include <functional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// 0a:00:00:00:00:<number>, as the tests' devices have it.
Wifi::Util::MACAddress DeviceAddress(int number);

/// A device with that address that knows "Home" with "correct-horse".
Device MakeDevice(int number);

/// An access point 06:00:00:00:00:<number> with the passphrase "uplink-password".
AccessPoint MakeAccessPoint(int number, const std::string& ssid, int channel, int signal);

/// A network on the tests' 2.4 GHz radio: "Home" with "correct-horse" on br0, WPA2/WPA3 mixed, with the
/// interface and the BSSID of its slot.
BSSPlan MakeBSS(int networkId, int slot = 1);

/// The same on the 5 GHz radio.
BSSPlan MakeBSSOf5GHz(int networkId, int slot = 1);

/// An enabled radio: 2.4 GHz on channel 6 with 20 MHz, 5 GHz on channel 36 with 80 MHz.
RadioPlan MakeRadioPlan(const std::vector<BSSPlan>& bsss);
RadioPlan MakeRadioPlanOf5GHz(const std::vector<BSSPlan>& bsss);

/// A simulated router in a scenario, with its time. What happens is noted as lines, each with the
/// milliseconds since the start in front.
class Simulation {
 public:
  explicit Simulation(Scenario scenario = {}, SupportedModel model = SupportedModel::Cedar300);

  ManualTimers timers;
  SimulatedDriver driver;

  /// Starts the operation and notes the answer as in "70 applied" or "70 applied: <code> <sentence>".
  void Apply(const RadioPlan& plan, ApplyMode mode = ApplyMode::WhatDiffers);
  void StartWPS(const std::string& interface);
  void CancelWPS(const std::string& interface);
  void Reconnect(RadioFrequency radio);

  /// Starts the operation and goes on until it is answered. The answer is noted only when it is a failure.
  void ApplyNow(const RadioPlan& plan, ApplyMode mode = ApplyMode::WhatDiffers);
  Result<std::vector<Wifi::ScanResult>> ScanNow(RadioFrequency radio);

  void Advance(int milliseconds) { timers.Advance(Timers::Duration(milliseconds)); }

  /// What was noted since the last call.
  std::vector<std::string> TakeNotes();

  LiveRadio Live(RadioFrequency radio) const;
  /// The addresses' last bytes of an interface's stations, in their order.
  std::vector<int> StationsOn(const std::string& interface) const;

 private:
  void Note(const std::string& line);
  RadioDriver::Done NoteAnswer(const std::string& word);

  std::vector<std::string> notes_;
};

}  // namespace TALO::Wifid
