#pragma once

#include "daemon/model/capabilities.h"
#include "unit/daemon/radio/driver_under_test.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What every driver owes its callers. A suite that has a driver instantiates it.
class DriverConformanceTest : public testing::TestWithParam<DriverFactory> {
 protected:
  using ScanAnswer = Result<std::vector<Wifi::ScanResult>>;

  void SetUp() override;

  const std::vector<RadioCapability>& Radios() { return driver_->GetCapabilities().radios; }
  const RadioCapability& FirstRadio() { return Radios().front(); }

  /// The radio on its lowest channel with 20 MHz, with a network in each of the slots.
  static RadioPlan PlanOf(const RadioCapability& radio, const std::vector<int>& slots);

  /// Calls the operation and waits for its answer, which must come once and not from inside the call.
  Result<void> Await(const std::function<void(RadioDriver::Done)>& operation);
  Result<void> Apply(const RadioPlan& plan, ApplyMode mode = ApplyMode::WhatDiffers);
  ScanAnswer Scan(RadioFrequency radio);

  LiveRadio LiveOf(const RadioCapability& radio);
  /// The BSSs as live.h has them, all up and without stations.
  static std::vector<LiveBSS> BSSsOf(const RadioPlan& plan);

  /// The radio at a plan with the networks 1 and 4, when the device has joined the latter.
  RadioPlan Populate(const RadioCapability& radio);
  /// Those of network 4.
  std::vector<LiveStation> StationsOf(const RadioCapability& radio);
  /// The device stays where it is while the radio comes to the plan.
  void ExpectUndisturbed(const RadioCapability& radio, const RadioPlan& plan);

  std::unique_ptr<DriverUnderTest> world_;
  RadioDriver* driver_ = nullptr;
  std::vector<std::string> events_;
};

}  // namespace TALO::Wifid
