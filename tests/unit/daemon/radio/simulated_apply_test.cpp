#include "support/events.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

// What applying a plan does to BSSs and their stations.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;
using Wifi::Util::MACAddress;

constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;

/// Two networks with a station each: "Home" on wlan0_1 with 01 and "Guest" on wlan0_2 with 02.
class SimulatedApplyTest : public testing::Test {
 protected:
  static BSSPlan Guest() {
    BSSPlan bss = MakeBSS(2, 2);
    bss.ssid = "Guest";
    bss.passphrase = "welcome-guest";
    bss.bridge = "br-guest";
    return bss;
  }

  static Scenario World() {
    Scenario scenario;
    scenario.devices = {MakeDevice(1), MakeDevice(2)};
    scenario.devices[1].knows = {{"Guest", "welcome-guest"}};
    return scenario;
  }

  /// At 1000 everybody is connected, since 370.
  void SetUp() override {
    simulation_.ApplyNow(plan_);
    simulation_.Advance(930);
    simulation_.TakeNotes();
  }

  LiveBSS LiveOf(std::size_t index) { return simulation_.Live(kRadio).bsss.at(index); }

  RadioPlan plan_ = MakeRadioPlan({MakeBSS(1), Guest()});
  Simulation simulation_{World()};
};

}  // namespace

TEST(SimulatedFirstApplyTest, ARadioComesUpAndDevicesJoin) {
  Scenario scenario;
  scenario.devices = {MakeDevice(1)};
  scenario.devices[0].name = "phone";
  scenario.devices[0].ipAddress = "192.168.1.11";
  Simulation simulation(scenario);
  simulation.Apply(MakeRadioPlan({MakeBSS(1)}));
  simulation.Advance(20);
  LiveRadio expected;
  expected.radio = kRadio;
  expected.bsss = {{1, "wlan0_1", MACAddress("02:00:00:00:00:01"), false, {}}};
  EXPECT_TRUE(expected == simulation.Live(kRadio));

  simulation.Advance(10000);
  expected.up = true;
  expected.channel = 6;
  expected.channelWidth = 20;
  expected.utilisation = 2;
  expected.bsss[0].up = true;
  expected.bsss[0].stations = {{DeviceAddress(1), "phone", "192.168.1.11", -55, 300, 150, 9}};
  EXPECT_TRUE(expected == simulation.Live(kRadio));
  EXPECT_EQ((Notes{"70 Band2_4GHz up", "70 applied", "370 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
  EXPECT_EQ(0U, simulation.timers.CountWaiting());
}

TEST_F(SimulatedApplyTest, TheSamePlanAgainDoesNothing) {
  const auto before = simulation_.driver.GetLive();
  simulation_.Apply(plan_);
  simulation_.Advance(0);
  EXPECT_EQ((Notes{"1000 applied"}), simulation_.TakeNotes());
  EXPECT_TRUE(before == simulation_.driver.GetLive());
  EXPECT_EQ(0U, simulation_.timers.CountWaiting());
}

TEST_F(SimulatedApplyTest, ANewBSSComesUpBesideTheOthers) {
  plan_.bsss.push_back(MakeBSS(3, 3));
  plan_.bsss[2].ssid = "Third";
  simulation_.Apply(plan_);
  simulation_.Advance(69);
  EXPECT_FALSE(LiveOf(2).up);
  simulation_.Advance(1);
  EXPECT_TRUE(LiveOf(2).up);
  EXPECT_EQ((Notes{"1070 applied"}), simulation_.TakeNotes());
  simulation_.Advance(1000);
  // Connected since 370, now is 2070.
  EXPECT_EQ(1, LiveOf(0).stations.at(0).connectedTime);
}

TEST_F(SimulatedApplyTest, ABSSThatIsGoneDropsItsStationsAndNoOthers) {
  plan_.bsss.erase(plan_.bsss.begin());
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down", "1020 applied"}),
            simulation_.TakeNotes());
  EXPECT_EQ((std::vector<int>{2}), simulation_.StationsOn("wlan0_2"));
  EXPECT_EQ(1U, simulation_.Live(kRadio).bsss.size());
}

TEST_F(SimulatedApplyTest, ANewPassphraseDropsThoseThatUsedTheOldOneUntilTheyKnowIt) {
  plan_.bsss[0].passphrase = "battery-staple";
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): passphrase changed", "1020 applied"}),
            simulation_.TakeNotes());
  EXPECT_TRUE(LiveOf(0).up);
  plan_.bsss[0].passphrase = "correct-horse";
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"2020 applied", "2320 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation_.TakeNotes());
}

TEST_F(SimulatedApplyTest, ADeviceThatKnowsTheNewPassphraseRejoins) {
  Scenario scenario = World();
  scenario.devices[0].knows.push_back({"Home", "battery-staple"});
  Simulation simulation(scenario);
  simulation.ApplyNow(plan_);
  simulation.Advance(930);
  simulation.TakeNotes();
  plan_.bsss[0].passphrase = "battery-staple";
  simulation.Apply(plan_);
  simulation.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): passphrase changed", "1020 applied",
                   "1320 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation.TakeNotes());
}

TEST_F(SimulatedApplyTest, AnAccessRuleDropsOnlyThoseItConcerns) {
  plan_.bsss[0].access = {AccessPlan::Rule::AllButListed, {DeviceAddress(1)}};
  plan_.bsss[1].access = {AccessPlan::Rule::AllButListed, {DeviceAddress(1)}};
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): refused", "1020 applied"}),
            simulation_.TakeNotes());
  EXPECT_EQ((std::vector<int>{2}), simulation_.StationsOn("wlan0_2"));

  plan_.bsss[0].access = {AccessPlan::Rule::OnlyListed, {DeviceAddress(1)}};
  plan_.bsss[1].access = {AccessPlan::Rule::OnlyListed, {}};
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"2020 0a:00:00:00:00:02 left wlan0_2 (2): refused", "2020 applied",
                   "2320 0a:00:00:00:00:01 connected to wlan0_1 (1)"}),
            simulation_.TakeNotes());
}

TEST_F(SimulatedApplyTest, WhatConcernsNoStationKeepsThem) {
  plan_.bsss[0].bridge = "br-guest";
  plan_.bsss[0].hidden = true;
  plan_.transmitPower = 10;
  plan_.broadcastLimit = {{}, true, 5};
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 applied"}), simulation_.TakeNotes());
  EXPECT_EQ(1, LiveOf(0).stations.at(0).connectedTime);
}

TEST_F(SimulatedApplyTest, WhatStationsCannotFollowRestartsTheBSSAlone) {
  struct Case {
    const char* what;
    std::function<void(BSSPlan&)> change;
    std::string after;
  };
  const std::vector<Case> cases = {
      {"SSID", [](BSSPlan& bss) { bss.ssid = "Elsewhere"; }, ""},
      {"security mode", [](BSSPlan& bss) { bss.securityMode = SecurityMode::PersonalWPA2; },
       "1370 0a:00:00:00:00:01 connected to wlan0_1 (1)"},
      {"BSSID", [](BSSPlan& bss) { bss.bssid = MACAddress("02:00:00:00:00:09"); },
       "1370 0a:00:00:00:00:01 connected to wlan0_1 (1)"},
      {"network", [](BSSPlan& bss) { bss.networkId = 7; }, "1370 0a:00:00:00:00:01 connected to wlan0_1 (7)"},
  };
  for (const Case& entry : cases) {
    Simulation simulation(World());
    simulation.ApplyNow(plan_);
    simulation.Advance(930);
    simulation.TakeNotes();
    RadioPlan changed = plan_;
    entry.change(changed.bsss[0]);
    simulation.Apply(changed);
    simulation.Advance(20);
    EXPECT_FALSE(simulation.Live(kRadio).bsss.at(0).up) << entry.what;
    simulation.Advance(980);
    Notes expected{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down", "1070 applied"};
    if (!entry.after.empty()) {
      expected.push_back(entry.after);
    }
    EXPECT_EQ(expected, simulation.TakeNotes()) << entry.what;
    EXPECT_EQ((std::vector<int>{2}), simulation.StationsOn("wlan0_2")) << entry.what;
  }
}

TEST_F(SimulatedApplyTest, EverythingTakesEveryBSSDownAndUp) {
  simulation_.Apply(plan_, ApplyMode::Everything);
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down",
                   "1020 0a:00:00:00:00:02 left wlan0_2 (2): BSS down", "1070 applied",
                   "1370 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "1370 0a:00:00:00:00:02 connected to wlan0_2 (2)"}),
            simulation_.TakeNotes());
}

TEST_F(SimulatedApplyTest, SettingsOfTheRadioRestartAllOfIt) {
  const std::vector<std::function<void(RadioPlan&)>> changes = {
      [](RadioPlan& plan) { plan.channel = 11; },
      [](RadioPlan& plan) { plan.channelWidth = 40; },
  };
  for (const auto& change : changes) {
    Simulation simulation(World());
    simulation.ApplyNow(plan_);
    simulation.Advance(930);
    simulation.TakeNotes();
    RadioPlan changed = plan_;
    change(changed);
    simulation.Apply(changed);
    simulation.Advance(1000);
    EXPECT_EQ((Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down",
                     "1020 0a:00:00:00:00:02 left wlan0_2 (2): BSS down", "1020 Band2_4GHz down",
                     "1070 Band2_4GHz up", "1070 applied", "1370 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                     "1370 0a:00:00:00:00:02 connected to wlan0_2 (2)"}),
              simulation.TakeNotes());
    EXPECT_EQ(changed.channel, simulation.Live(kRadio).channel);
    EXPECT_EQ(changed.channelWidth, simulation.Live(kRadio).channelWidth);
  }
}

TEST_F(SimulatedApplyTest, ARadioThatIsSwitchedOffAndOnComesBack) {
  plan_.enable = false;
  simulation_.ApplyNow(plan_);
  LiveRadio expected;
  expected.radio = kRadio;
  expected.bsss = {{1, "wlan0_1", MACAddress("02:00:00:00:00:01"), false, {}},
                   {2, "wlan0_2", MACAddress("02:00:00:00:00:02"), false, {}}};
  EXPECT_TRUE(expected == simulation_.Live(kRadio));
  simulation_.Apply(plan_);
  simulation_.Advance(0);
  plan_.enable = true;
  simulation_.Apply(plan_);
  simulation_.Advance(1000);
  EXPECT_EQ(
      (Notes{"1020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down",
             "1020 0a:00:00:00:00:02 left wlan0_2 (2): BSS down", "1020 Band2_4GHz down", "1020 applied",
             "1090 Band2_4GHz up", "1090 applied", "1390 0a:00:00:00:00:01 connected to wlan0_1 (1)",
             "1390 0a:00:00:00:00:02 connected to wlan0_2 (2)"}),
      simulation_.TakeNotes());
}

TEST_F(SimulatedApplyTest, RadiosAreAppliedSideBySide) {
  plan_.bsss.pop_back();
  simulation_.Apply(plan_);
  BSSPlan bss = MakeBSSOf5GHz(2, 2);
  bss.ssid = "Guest";
  bss.passphrase = "welcome-guest";
  simulation_.Apply(MakeRadioPlanOf5GHz({bss}));
  simulation_.Advance(1000);
  EXPECT_EQ((Notes{"1020 0a:00:00:00:00:02 left wlan0_2 (2): BSS down", "1020 applied", "1070 Band5GHz up",
                   "1070 applied", "1370 0a:00:00:00:00:02 connected to wlan1_2 (2)"}),
            simulation_.TakeNotes());
}

TEST_F(SimulatedApplyTest, ARadioTakesOneOperationAtATime) {
  plan_.channel = 1;
  simulation_.Apply(plan_);
  simulation_.Apply(plan_);
  simulation_.Reconnect(kRadio);
  simulation_.driver.Scan(kRadio, [this](const auto& results) {
    EXPECT_EQ("Busy the radio Band2_4GHz is busy with another operation", Describe(results.Why()));
    simulation_.Reconnect(kRadio);
  });
  simulation_.Advance(0);
  EXPECT_EQ((Notes{"1000 applied: Busy the radio Band2_4GHz is busy with another operation",
                   "1000 reconnected: Busy the radio Band2_4GHz is busy with another operation",
                   "1000 reconnected: Busy the radio Band2_4GHz is busy with another operation"}),
            simulation_.TakeNotes());
  simulation_.Advance(70);
  EXPECT_EQ("1070 applied", simulation_.TakeNotes().back());
}

}  // namespace TALO::Wifid
