#include "daemon/radio/simulated/simulated_driver.h"

#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

const std::vector<int> k2_4GHz = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
const std::vector<int> kLow = {36, 40, 44, 48, 52, 56, 60, 64};
const std::vector<int> kHigh = {100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
const std::vector<int> k5GHz = {36,  40,  44,  48,  52,  56,  60,  64,  100, 104,
                                108, 112, 116, 120, 124, 128, 132, 136, 140};

const MACAddress kWlan0("02:00:00:00:00:00");
const MACAddress kWlan1("02:00:00:00:01:00");
const MACAddress kWlan2("02:00:00:00:02:00");

TEST(SimulatedDriver, HasTheThreeRadiosOfATriBandModel) {
  for (const SupportedModel model : {SupportedModel::Alder100, SupportedModel::Birch200}) {
    const Capabilities expected = {model,
                                   {{RadioFrequency::Band2_4GHz, "wlan0", kWlan0, 16, k2_4GHz, 40},
                                    {RadioFrequency::Band5GHz_1, "wlan1", kWlan1, 16, kLow, 80},
                                    {RadioFrequency::Band5GHz_2, "wlan2", kWlan2, 16, kHigh, 80}}};
    EXPECT_EQ(SimulatedDriver(model).GetCapabilities(), expected);
  }
}

TEST(SimulatedDriver, HasTheTwoRadiosOfADualBandModel) {
  for (const SupportedModel model : {SupportedModel::Cedar300, SupportedModel::Dune40}) {
    const Capabilities expected = {model,
                                   {{RadioFrequency::Band2_4GHz, "wlan0", kWlan0, 16, k2_4GHz, 40},
                                    {RadioFrequency::Band5GHz, "wlan1", kWlan1, 16, k5GHz, 80}}};
    EXPECT_EQ(SimulatedDriver(model).GetCapabilities(), expected);
  }
}

TEST(SimulatedDriver, IsOnePercentBusyForEveryBSS) {
  SimulatedDriver driver(SupportedModel::Alder100);
  State state = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  state.radios[1].enable = false;
  driver.Apply(MakePlan(state, driver.GetCapabilities()), ApplyMode::WhatDiffers,
               [](const Result<void>& result) { EXPECT_TRUE(result.Succeeded()); });
  const auto live = driver.GetLive();
  ASSERT_EQ(live.size(), 3U);
  EXPECT_EQ(live[0].utilisation, 2);
  EXPECT_EQ(live[1].utilisation, 0);
  EXPECT_EQ(live[2].utilisation, 2);
}

}  // namespace

}  // namespace TALO::Wifid
