#include "support/events.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

// Plans that fail: because the radio cannot carry them out, and because the scenario says so.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;

constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;

Scenario WorldWith(const ApplyFault& fault) {
  Scenario scenario;
  scenario.devices = {MakeDevice(1), MakeDevice(2)};
  scenario.devices[1].knows = {{"Guest", "welcome-guest"}};
  scenario.faults.apply = {fault};
  return scenario;
}

RadioPlan TwoNetworks() {
  BSSPlan guest = MakeBSS(2, 2);
  guest.ssid = "Guest";
  guest.passphrase = "welcome-guest";
  return MakeRadioPlan({MakeBSS(1), guest});
}

}  // namespace

TEST(SimulatedPlanCheckTest, WhatTheRadioCannotCarryOutFailsAndChangesNothing) {
  struct Case {
    std::string sentence;
    std::function<void(RadioPlan&)> change;
  };
  const std::vector<Case> cases = {
      {"the radio Band2_4GHz has no channel 36", [](RadioPlan& plan) { plan.channel = 36; }},
      {"the radio Band2_4GHz has no channel 14", [](RadioPlan& plan) { plan.channel = 14; }},
      {"the radio Band2_4GHz has no channels of 80 MHz", [](RadioPlan& plan) { plan.channelWidth = 80; }},
      {"the radio Band2_4GHz has no channels of 30 MHz", [](RadioPlan& plan) { plan.channelWidth = 30; }},
      {"the radio Band2_4GHz has no channels of -20 MHz", [](RadioPlan& plan) { plan.channelWidth = -20; }},
      {"the radio Band2_4GHz cannot carry two BSSs on wlan0_1 with the BSSID 02:00:00:00:00:01",
       [](RadioPlan& plan) { plan.bsss.push_back(plan.bsss[0]); }},
      {"the radio Band2_4GHz cannot bring up wlan0_1: the bridge \"br\\\"9\" does not exist",
       [](RadioPlan& plan) { plan.bsss[0].bridge = "br\"9"; }},
      {"the radio Band2_4GHz cannot bring up wlan0_1: the SSID \"\" has 0 bytes, it must have 1 to 32",
       [](RadioPlan& plan) { plan.bsss[0].ssid = ""; }},
      {"the radio Band2_4GHz carries 16 networks, not 17",
       [](RadioPlan& plan) {
         for (int slot = 2; slot <= 17; ++slot) {
           plan.bsss.push_back(MakeBSS(slot, slot));
         }
       }},
      {"this router has no radio Band5GHz_2",
       [](RadioPlan& plan) { plan.radio = RadioFrequency::Band5GHz_2; }},
      {"this router has no radio SmartConnect",
       [](RadioPlan& plan) { plan.radio = RadioFrequency::SmartConnect; }},
  };
  for (const Case& entry : cases) {
    Simulation simulation(WorldWith({RadioFrequency::Band5GHz, 0, 1, "unused", std::nullopt}));
    const RadioPlan plan = MakeRadioPlan({MakeBSS(1)});
    simulation.ApplyNow(plan);
    simulation.Advance(930);
    simulation.TakeNotes();
    const auto before = simulation.driver.GetLive();
    RadioPlan changed = plan;
    entry.change(changed);
    simulation.Apply(changed);
    EXPECT_EQ(Notes(), simulation.TakeNotes());
    simulation.Advance(0);
    EXPECT_EQ((Notes{"1000 applied: RadioFailed " + entry.sentence}), simulation.TakeNotes());
    EXPECT_TRUE(before == simulation.driver.GetLive()) << entry.sentence;
  }
}

TEST(SimulatedPlanCheckTest, SixteenNetworksAndTheBackhaulFit) {
  Simulation simulation;
  RadioPlan plan = MakeRadioPlan({MakeBSS(kBackhaulNetworkId, 0)});
  for (int slot = 1; slot <= 16; ++slot) {
    plan.bsss.push_back(MakeBSS(slot, slot));
  }
  plan.bsss[0].bridge = "";
  plan.channel = 13;
  plan.channelWidth = 40;
  simulation.ApplyNow(plan);
  EXPECT_EQ((Notes{"70 Band2_4GHz up"}), simulation.TakeNotes());
}

TEST(SimulatedFaultTest, ARadioThatFailsKeepsWhatThePlanDidNotChange) {
  Simulation simulation(WorldWith({kRadio, 1, 1, "the firmware does not answer", std::nullopt}));
  const RadioPlan plan = TwoNetworks();
  simulation.ApplyNow(plan);
  simulation.Advance(930);
  simulation.TakeNotes();
  const LiveRadio before = simulation.Live(kRadio);

  RadioPlan changed = plan;
  changed.bsss[0] = MakeBSS(3, 3);
  changed.bsss[1].passphrase = "battery-staple";
  simulation.Apply(changed);
  simulation.Advance(20);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down",
                   "1020 applied: RadioFailed the radio Band2_4GHz cannot be set up: the firmware does not "
                   "answer"}),
            simulation.TakeNotes());
  LiveRadio expected = before;
  expected.utilisation = 2;
  expected.bsss.erase(expected.bsss.begin());
  EXPECT_TRUE(expected == simulation.Live(kRadio));

  simulation.Apply(plan);
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"1090 applied", "1390 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
  EXPECT_EQ(1, simulation.Live(kRadio).bsss.at(1).stations.at(0).connectedTime);
}

TEST(SimulatedFaultTest, ARadioThatFailsWhileItRestartsIsDownUntilThePlanBefore) {
  Simulation simulation(WorldWith({kRadio, 1, 1, "no calibration", std::nullopt}));
  const RadioPlan plan = MakeRadioPlan({MakeBSS(1)});
  simulation.ApplyNow(plan);
  simulation.Advance(930);
  simulation.TakeNotes();

  RadioPlan changed = plan;
  changed.channel = 11;
  simulation.Apply(changed);
  simulation.Advance(980);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down", "1020 Band2_4GHz down",
                   "1020 applied: RadioFailed the radio Band2_4GHz cannot be set up: no calibration"}),
            simulation.TakeNotes());
  EXPECT_FALSE(simulation.Live(kRadio).up);

  simulation.Apply(plan);
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"2050 Band2_4GHz up", "2050 applied", "2350 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
  EXPECT_EQ(6, simulation.Live(kRadio).channel);
}

TEST(SimulatedFaultTest, FaultsCountTheirRadiosPlansOnly) {
  Simulation simulation(WorldWith({RadioFrequency::Band5GHz_2, 1, 2, "broken", std::nullopt}));
  RadioPlan other = MakeRadioPlan({});
  RadioPlan plan = MakeRadioPlanOf5GHz({});
  for (int i = 0; i < 4; ++i) {
    plan.transmitPower = i;
    simulation.ApplyNow(plan);
    other.transmitPower = i;
    simulation.ApplyNow(other);
  }
  EXPECT_EQ((Notes{"70 Band5GHz up", "140 Band2_4GHz up",
                   "160 applied: RadioFailed the radio Band5GHz cannot be set up: broken",
                   "200 applied: RadioFailed the radio Band5GHz cannot be set up: broken"}),
            simulation.TakeNotes());
}

TEST(SimulatedFaultTest, ASlowRadioAppliesWellButLate) {
  Simulation simulation(WorldWith({kRadio, 0, 1, "", 9000}));
  simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
  simulation.Advance(10000);
  EXPECT_EQ((Notes{"9050 Band2_4GHz up", "9050 applied", "9350 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
}

TEST(SimulatedDriverTest, NothingIsCalledAfterItsEnd) {
  ManualTimers timers;
  int calls = 0;
  {
    Scenario scenario;
    scenario.devices = {MakeDevice(1)};
    scenario.devices[0].leavesAt = 60;
    SimulatedDriver driver(SupportedModel::Cedar300, scenario, timers);
    driver.SetEventSink([&calls](const RadioEvent&) { ++calls; });
    driver.Apply(MakeRadioPlan({MakeBSS(1)}), ApplyMode::WhatDiffers, [&calls](const auto&) { ++calls; });
    driver.StartWPS("wlan0_1", [&calls](const auto&) { ++calls; });
  }
  timers.RunUntilIdle();
  EXPECT_EQ(0, calls);
  EXPECT_EQ(0U, timers.CountWaiting());
}

}  // namespace TALO::Wifid
