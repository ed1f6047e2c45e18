#include "support/simulation.h"

#include <gtest/gtest.h>

// Which BSS a device joins, and when it leaves.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;

constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;

Scenario WorldOf(const std::vector<Device>& devices) {
  Scenario scenario;
  scenario.devices = devices;
  return scenario;
}

/// What one device does when one BSS comes up.
Notes RunWith(const Device& device, const BSSPlan& bss) {
  Simulation simulation(WorldOf({device}));
  simulation.ApplyNow(MakeRadioPlan({bss}));
  simulation.TakeNotes();
  simulation.Advance(1000);
  return simulation.TakeNotes();
}

const Notes kJoined = {"370 0a:00:00:00:00:01 connected to wlan0_1 (1)"};

}  // namespace

TEST(SimulatedDeviceTest, JoinsOnlyWhatItKnowsAndIsAdmittedTo) {
  struct Case {
    const char* what;
    std::function<void(Device&, BSSPlan&)> change;
    bool joins;
  };
  const std::vector<Case> cases = {
      {"as it is", [](Device&, BSSPlan&) {}, true},
      {"hidden", [](Device&, BSSPlan& bss) { bss.hidden = true; }, true},
      {"wrong password", [](Device& device, BSSPlan&) { device.knows[0].passphrase = "wrong-horse"; }, false},
      {"another SSID", [](Device&, BSSPlan& bss) { bss.ssid = "home"; }, false},
      {"a network that is not UTF-8",
       [](Device& device, BSSPlan& bss) { device.knows[0].ssid = bss.ssid = std::string("\xff\x00", 2); },
       true},
      {"knows nothing", [](Device& device, BSSPlan&) { device.knows.clear(); }, false},
      {"not on the list",
       [](Device&, BSSPlan& bss) {
         bss.access = {AccessPlan::Rule::OnlyListed, {DeviceAddress(2)}};
       },
       false},
      {"on the list of those admitted",
       [](Device&, BSSPlan& bss) {
         bss.access = {AccessPlan::Rule::OnlyListed, {DeviceAddress(1)}};
       },
       true},
      {"on the list of those refused",
       [](Device&, BSSPlan& bss) {
         bss.access = {AccessPlan::Rule::AllButListed, {DeviceAddress(1)}};
       },
       false},
      {"another one is refused",
       [](Device&, BSSPlan& bss) {
         bss.access = {AccessPlan::Rule::AllButListed, {DeviceAddress(2)}};
       },
       true},
      {"a band that it cannot use",
       [](Device& device, BSSPlan&) { device.bands = {RadioFrequency::Band5GHz}; }, false},
      {"WPA", [](Device&, BSSPlan& bss) { bss.securityMode = SecurityMode::PersonalWPA; }, true},
      {"an open network by a passphrase",
       [](Device&, BSSPlan& bss) { bss.securityMode = SecurityMode::Disabled; }, false},
      {"an open network that it knows as such",
       [](Device& device, BSSPlan& bss) {
         bss.securityMode = SecurityMode::Disabled;
         device.knows[0].passphrase = "";
       },
       true},
      {"OWE",
       [](Device& device, BSSPlan& bss) {
         bss.securityMode = SecurityMode::OWE;
         device.knows[0].passphrase = "";
       },
       true},
      {"enterprise", [](Device&, BSSPlan& bss) { bss.securityMode = SecurityMode::EnterpriseWPA2; }, false},
      {"WEP", [](Device&, BSSPlan& bss) { bss.securityMode = SecurityMode::WEP; }, false},
  };
  for (const Case& entry : cases) {
    Device device = MakeDevice(1);
    BSSPlan bss = MakeBSS(1);
    entry.change(device, bss);
    EXPECT_EQ(entry.joins ? kJoined : Notes(), RunWith(device, bss)) << entry.what;
  }
}

TEST(SimulatedDeviceTest, PrefersTheNetworkItListsFirstAndThenTheBand) {
  Device first = MakeDevice(1);
  first.knows = {{"Guest", "welcome-guest"}, {"Home", "correct-horse"}};
  Device second = MakeDevice(2);
  Device third = MakeDevice(3);
  third.bands = {RadioFrequency::Band2_4GHz, RadioFrequency::Band5GHz};
  Simulation simulation(WorldOf({first, second, third}));
  BSSPlan guest = MakeBSS(2, 2);
  guest.ssid = "Guest";
  guest.passphrase = "welcome-guest";
  simulation.Apply(MakeRadioPlan({MakeBSS(1), guest}));
  simulation.Advance(30);
  // It comes up while they join already.
  simulation.Apply(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
  simulation.Advance(970);
  EXPECT_EQ((std::vector<int>{1}), simulation.StationsOn("wlan0_2"));
  EXPECT_EQ((std::vector<int>{2}), simulation.StationsOn("wlan1_1"));
  EXPECT_EQ((std::vector<int>{3}), simulation.StationsOn("wlan0_1"));
}

TEST(SimulatedDeviceTest, StaysWhereItIsWhenABetterBSSComesLater) {
  Simulation simulation(WorldOf({MakeDevice(1)}));
  simulation.ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  simulation.Advance(1000);
  simulation.ApplyNow(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
  simulation.Advance(1000);
  EXPECT_EQ((std::vector<int>{1}), simulation.StationsOn("wlan0_1"));
}

TEST(SimulatedDeviceTest, TurnsToAnotherRadioWhenItsOwnGoesDown) {
  Simulation simulation(WorldOf({MakeDevice(1)}));
  RadioPlan plan = MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)});
  simulation.Apply(plan);
  simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
  simulation.Advance(1000);
  simulation.TakeNotes();
  plan.enable = false;
  simulation.Apply(plan);
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan1_1 (1): BSS down", "1020 Band5GHz down", "1020 applied",
                   "1320 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
}

TEST(SimulatedDeviceTest, DoesNotJoinABSSThatWentDownMeanwhile) {
  Simulation simulation(WorldOf({MakeDevice(1)}));
  simulation.ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  simulation.Apply(MakeRadioPlan({}));
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"70 Band2_4GHz up", "90 applied"}), simulation.TakeNotes());
  simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"1140 applied", "1440 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
}

TEST(SimulatedDeviceTest, ComesAndGoesWhenTheScenarioSays) {
  Device device = MakeDevice(1);
  device.arrivesAt = 5;
  device.leavesAt = 8;
  Device hasty = MakeDevice(2);
  hasty.joinMilliseconds = 1500;
  hasty.leavesAt = 1;
  Simulation simulation(WorldOf({device, hasty}));
  simulation.ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  simulation.TakeNotes();
  simulation.timers.RunUntilIdle();
  EXPECT_EQ((Notes{"5300 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "8000 0a:00:00:00:00:01 left wlan0_1 (1): left"}),
            simulation.TakeNotes());
}

TEST(SimulatedDeviceTest, RoamsToTheSameNetworkOnAnotherRadio) {
  Device device = MakeDevice(1);
  // Band5GHz_1 is this router's only 5 GHz radio.
  device.roams = {
      {2, RadioFrequency::Band2_4GHz}, {4, RadioFrequency::Band2_4GHz}, {6, RadioFrequency::Band5GHz_1}};
  Simulation simulation(WorldOf({device}));
  simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
  simulation.Apply(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
  simulation.Advance(1000);
  simulation.TakeNotes();
  simulation.timers.RunUntilIdle();
  EXPECT_EQ((Notes{"2000 0a:00:00:00:00:01 left wlan1_1 (1): roamed",
                   "2000 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "6000 0a:00:00:00:00:01 left wlan0_1 (1): roamed",
                   "6000 0a:00:00:00:00:01 connected to wlan1_1 (1)"}),
            simulation.TakeNotes());
}

TEST(SimulatedDeviceTest, DoesNotRoamWhereItDoesNotGetIn) {
  Device device = MakeDevice(1);
  device.roams = {{2, RadioFrequency::Band2_4GHz}};
  device.knows.push_back({"Guest", "welcome-guest"});
  BSSPlan other = MakeBSS(1);
  other.passphrase = "battery-staple";
  BSSPlan guest = MakeBSS(2, 2);
  guest.ssid = "Guest";
  guest.passphrase = "welcome-guest";
  Simulation simulation(WorldOf({device}));
  simulation.Apply(MakeRadioPlan({other, guest}));
  simulation.Apply(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
  simulation.timers.RunUntilIdle();
  EXPECT_EQ((std::vector<int>{1}), simulation.StationsOn("wlan1_1"));
  EXPECT_EQ("370 0a:00:00:00:00:01 connected to wlan1_1 (1)", simulation.TakeNotes().back());
}

TEST(SimulatedDeviceTest, JoinTimesSpreadByTheSeedAlone) {
  const auto run = [](std::int64_t seed) {
    Scenario scenario = WorldOf({MakeDevice(1), MakeDevice(2), MakeDevice(3)});
    scenario.seed = seed;
    scenario.timings.joinSpreadMilliseconds = 10000;
    Simulation simulation(scenario);
    simulation.ApplyNow(MakeRadioPlan({MakeBSS(1)}));
    simulation.timers.RunUntilIdle();
    EXPECT_EQ(3U, simulation.StationsOn("wlan0_1").size());
    EXPECT_GE(simulation.timers.Now(), Timers::Duration(370));
    EXPECT_LE(simulation.timers.Now(), Timers::Duration(10370));
    return simulation.TakeNotes();
  };
  EXPECT_EQ(run(1), run(1));
  EXPECT_NE(run(1), run(2));
}

TEST(SimulatedDeviceTest, TheBusyAirCountsNeighboursBeaconsAndStations) {
  Scenario scenario = WorldOf({MakeDevice(1), MakeDevice(2)});
  // 6 disturbs 3 and 9, not 1 nor 11; 36 disturbs a block of 80 MHz, not the next.
  for (const int channel : {1, 3, 9, 11, 36, 48, 52}) {
    const int number = static_cast<int>(scenario.neighbours.size());
    scenario.neighbours.push_back(MakeAccessPoint(number, "Miller", channel, -70));
  }
  scenario.neighbours[1].vanishesAt = 60;
  Simulation simulation(scenario);
  simulation.ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  simulation.ApplyNow(MakeRadioPlanOf5GHz({}));
  EXPECT_EQ(7, simulation.Live(kRadio).utilisation);
  EXPECT_EQ(6, simulation.Live(RadioFrequency::Band5GHz).utilisation);
  simulation.Advance(1000);
  EXPECT_EQ(9, simulation.Live(kRadio).utilisation);
  simulation.Advance(60000);
  EXPECT_EQ(6, simulation.Live(kRadio).utilisation);
}

TEST(SimulatedDeviceTest, ACrowdIsServedTheSameWayEachTime) {
  const auto run = [] {
    Scenario scenario;
    for (int number = 0; number < 128; ++number) {
      scenario.devices.push_back(MakeDevice(number));
      scenario.devices.back().bands = {number % 2 == 0 ? RadioFrequency::Band2_4GHz
                                                       : RadioFrequency::Band5GHz};
    }
    for (int number = 0; number < 200; ++number) {
      scenario.neighbours.push_back(MakeAccessPoint(number, "Flat", 1 + number % 13, -50 - number % 40));
    }
    scenario.timings.joinSpreadMilliseconds = 3000;
    Simulation simulation(scenario);
    simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
    simulation.Apply(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
    simulation.timers.RunUntilIdle();
    EXPECT_EQ(64U, simulation.StationsOn("wlan0_1").size());
    EXPECT_EQ(64U, simulation.StationsOn("wlan1_1").size());
    EXPECT_EQ(100, simulation.Live(kRadio).utilisation);
    EXPECT_EQ(65, simulation.Live(RadioFrequency::Band5GHz).utilisation);
    return simulation.TakeNotes();
  };
  const Notes notes = run();
  EXPECT_EQ(132U, notes.size());
  EXPECT_EQ(notes, run());
}

}  // namespace TALO::Wifid
