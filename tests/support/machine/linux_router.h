#pragma once

#include "daemon/radio/linux/linux_driver.h"
#include "support/machine/fake_machine.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A router of two radios with the driver for real radios, and what that told.
class LinuxRouter {
 public:
  explicit LinuxRouter(const std::vector<Wiphy>& wiphys = {MakeWiphy(0), MakeWiphy(1)});

  /// The radio on the lowest channel with 20 MHz, with the networks of these IDs on br0, each in the slot of
  /// its ID: "Network 1" with "passphrase-1" and so on, WPA2.
  RadioPlan Plan(std::size_t radio, const std::vector<int>& networks) const;
  static StationPlan Station(const std::string& ssid, const std::string& passphrase);

  Result<void> Apply(const RadioPlan& plan, ApplyMode mode = ApplyMode::WhatDiffers);
  Result<std::vector<Wifi::ScanResult>> Scan(std::size_t radio);
  LiveRadio Live(std::size_t radio) const { return driver->GetLive().at(radio); }

  /// A device that knows the network, when it has joined.
  FakeDevice& Join(int device, int network);
  bool WaitFor(const std::function<bool()>& condition) { return machine.WaitUntil(condition); }
  /// Lets pass what was to happen within some seconds.
  void Settle() { machine.Advance(5000); }

  /// What the driver told since the last call.
  std::vector<std::string> TakeEvents();

  FakeMachine machine;
  std::unique_ptr<LinuxDriver> driver;

 private:
  std::vector<std::string> events_;
};

/// As in "RadioFailed the radio is broken", or "done".
std::string Describe(const Result<void>& result);

}  // namespace TALO::Wifid
