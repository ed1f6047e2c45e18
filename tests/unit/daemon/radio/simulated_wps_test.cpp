#include "support/events.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;

/// A device that knows no network and presses its button.
Device MakePresser(int number, int pressesAfter) {
  Device device = MakeDevice(number);
  device.knows.clear();
  device.pressesAfter = pressesAfter;
  return device;
}

class SimulatedWPSTest : public testing::Test {
 protected:
  /// At 1000 the network "Home" is up on both radios.
  Simulation& Start(const std::vector<Device>& devices) {
    Scenario scenario;
    scenario.devices = devices;
    simulation_.emplace(scenario);
    simulation_->ApplyNow(plan_);
    simulation_->ApplyNow(MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)}));
    simulation_->Advance(860);
    simulation_->TakeNotes();
    return *simulation_;
  }

  Notes RunAll() {
    simulation_->timers.RunUntilIdle();
    return simulation_->TakeNotes();
  }

  RadioPlan plan_ = MakeRadioPlan({MakeBSS(1)});
  std::optional<Simulation> simulation_;
};

}  // namespace

TEST_F(SimulatedWPSTest, ADeviceThatPressesIsEnrolledAndRejoinsLaterByItself) {
  Simulation& simulation = Start({MakePresser(1, 10)});
  simulation.StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "13000 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "13000 WPS on wlan0_1: enrolled"}),
            RunAll());
  simulation.Apply(plan_, ApplyMode::Everything);
  // The 5 GHz radio carries the network, too, and the device likes it better.
  EXPECT_EQ((Notes{"13020 0a:00:00:00:00:01 left wlan0_1 (1): BSS down", "13070 applied",
                   "13320 0a:00:00:00:00:01 connected to wlan1_1 (1)"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, ADeviceThatIsConnectedElsewhereMoves) {
  Device device = MakePresser(1, 10);
  device.knows = {{"Guest", "welcome-guest"}};
  plan_.bsss.push_back(MakeBSS(2, 2));
  plan_.bsss[1].ssid = "Guest";
  plan_.bsss[1].passphrase = "welcome-guest";
  Start({device}).StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "13000 0a:00:00:00:00:01 left wlan0_2 (2): left",
                   "13000 0a:00:00:00:00:01 connected to wlan0_1 (1)", "13000 WPS on wlan0_1: enrolled"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, TwoThatPressWithinTwoSecondsOverlapAndNobodyJoins) {
  for (const int second : {10, 11, 12}) {
    Start({MakePresser(1, 10), MakePresser(2, second)}).StartWPS("wlan0_1");
    EXPECT_EQ((Notes{"1000 WPS started", std::to_string(1000 * (second + 1)) + " WPS on wlan0_1: overlap"}),
              RunAll());
  }
}

TEST_F(SimulatedWPSTest, OneThatPressesLaterComesTooLate) {
  Start({MakePresser(1, 10), MakePresser(2, 13)}).StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "13000 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "13000 WPS on wlan0_1: enrolled"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, WithoutAnybodyItTimesOutAfterTwoMinutes) {
  // What is pressed two seconds before the end comes too late.
  for (const int moment : {118, 119, 120, 121}) {
    Start({MakePresser(1, moment)}).StartWPS("wlan0_1");
    EXPECT_EQ((Notes{"1000 WPS started", "121000 WPS on wlan0_1: timed out"}), RunAll());
  }
  Start({MakePresser(1, 117)}).StartWPS("wlan0_1");
  EXPECT_EQ("120000 WPS on wlan0_1: enrolled", RunAll().back());
}

TEST_F(SimulatedWPSTest, WhoCannotReachTheBSSDoesNotCount) {
  Device upper = MakePresser(1, 10);
  upper.bands = {RadioFrequency::Band5GHz};
  Device absent = MakePresser(2, 10);
  absent.arrivesAt = 60;
  Device refused = MakePresser(3, 10);
  plan_.bsss[0].access = {AccessPlan::Rule::AllButListed, {DeviceAddress(3)}};
  Start({upper, absent, refused, MakePresser(4, 11)}).StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "14000 0a:00:00:00:00:04 connected to wlan0_1 (1)",
                   "14000 WPS on wlan0_1: enrolled"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, OneThatLeavesWhileItWaitsIsNotEnrolled) {
  Device device = MakePresser(1, 10);
  device.leavesAt = 12;
  Start({device}).StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "121000 WPS on wlan0_1: timed out"}), RunAll());
}

TEST_F(SimulatedWPSTest, ASessionCanBeCancelled) {
  Simulation& simulation = Start({MakePresser(1, 10)});
  simulation.StartWPS("wlan0_1");
  simulation.Advance(11000);
  simulation.CancelWPS("wlan0_1");
  EXPECT_EQ((Notes{"1000 WPS started", "12000 WPS on wlan0_1: cancelled", "12000 WPS cancelled"}), RunAll());
  simulation.CancelWPS("wlan0_1");
  EXPECT_EQ((Notes{"12000 WPS cancelled: NotAllowed no WPS session runs on wlan0_1"}), RunAll());
}

TEST_F(SimulatedWPSTest, ASessionKnowsNothingOfTheOneBefore) {
  Simulation& simulation = Start({MakePresser(1, 10)});
  simulation.StartWPS("wlan0_1");
  simulation.Advance(11000);
  simulation.CancelWPS("wlan0_1");
  simulation.Advance(0);
  simulation.TakeNotes();
  simulation.StartWPS("wlan0_1");
  EXPECT_EQ((Notes{"12000 WPS started", "24000 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "24000 WPS on wlan0_1: enrolled"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, OnlyTheSessionsOwnInterfaceCancelsIt) {
  Simulation& simulation = Start({});
  simulation.StartWPS("wlan0_1");
  simulation.CancelWPS("wlan1_1");
  simulation.Advance(0);
  EXPECT_EQ((Notes{"1000 WPS started", "1000 WPS cancelled: NotAllowed no WPS session runs on wlan1_1"}),
            simulation.TakeNotes());
}

TEST_F(SimulatedWPSTest, ASessionEndsWithItsBSS) {
  Simulation& simulation = Start({});
  simulation.StartWPS("wlan0_1");
  simulation.Apply(MakeRadioPlan({}));
  EXPECT_EQ((Notes{"1000 WPS started", "1020 WPS on wlan0_1: cancelled", "1020 applied"}), RunAll());
}

TEST_F(SimulatedWPSTest, ASessionOutlivesWhatKeepsItsBSSUp) {
  Simulation& simulation = Start({MakePresser(1, 10)});
  simulation.StartWPS("wlan0_1");
  plan_.bsss[0].passphrase = "battery-staple";
  simulation.Apply(plan_);
  EXPECT_EQ((Notes{"1000 WPS started", "1020 applied", "13000 0a:00:00:00:00:01 connected to wlan0_1 (1)",
                   "13000 WPS on wlan0_1: enrolled"}),
            RunAll());
}

TEST_F(SimulatedWPSTest, OneSessionRunsAtATime) {
  Simulation& simulation = Start({});
  simulation.StartWPS("wlan0_1");
  simulation.StartWPS("wlan1_1");
  simulation.StartWPS("wlan0_1");
  simulation.Advance(0);
  EXPECT_EQ((Notes{"1000 WPS started", "1000 WPS started: Busy a WPS session runs on wlan0_1",
                   "1000 WPS started: Busy a WPS session runs on wlan0_1"}),
            simulation.TakeNotes());
  simulation.Advance(120000);
  simulation.StartWPS("wlan1_1");
  simulation.Advance(0);
  EXPECT_EQ((Notes{"121000 WPS on wlan0_1: timed out", "121000 WPS started"}), simulation.TakeNotes());
}

TEST_F(SimulatedWPSTest, OnlyABSSThatIsUpAndCapableOpensOne) {
  Simulation& simulation = Start({});
  simulation.StartWPS("wlan0_7");
  simulation.Advance(0);
  EXPECT_EQ((Notes{"1000 WPS started: RadioFailed the BSS wlan0_7 is not up"}), simulation.TakeNotes());
  const std::vector<std::pair<SecurityMode, std::string>> cases = {
      {SecurityMode::PersonalWPA2, ""},
      {SecurityMode::PersonalWPAMixed, ""},
      {SecurityMode::PersonalWPA2_3Mixed, ""},
      {SecurityMode::PersonalWPA, "PersonalWPA"},
      {SecurityMode::PersonalWPA3, "PersonalWPA3"},
      {SecurityMode::Disabled, "Disabled"},
      {SecurityMode::EnterpriseWPA2, "EnterpriseWPA2"},
  };
  for (const auto& [mode, refused] : cases) {
    plan_.bsss[0].securityMode = mode;
    Start({}).StartWPS("wlan0_1");
    simulation_->Advance(0);
    const std::string sentence =
        ": NotSupported the BSS wlan0_1 cannot use WPS with the security mode " + refused;
    EXPECT_EQ((Notes{"1000 WPS started" + (refused.empty() ? "" : sentence)}), simulation_->TakeNotes());
  }
}

TEST_F(SimulatedWPSTest, TheRegistrarOfAnInterfaceIsTold) {
  Simulation& simulation = Start({});
  std::vector<Result<void>> answers;
  const auto keep = [&answers](const Result<void>& result) { answers.push_back(result); };
  const Wifi::WPS_ERConfigInput input{"wlan0_1", "Home", "correct-horse", "PersonalWPA2"};
  simulation.driver.ConfigureRegistrar(input, keep);
  simulation.driver.ConfigureRegistrar({"eth0", "Home", "correct-horse", "PersonalWPA2"}, keep);
  EXPECT_TRUE(answers.empty());
  simulation.Advance(0);
  ASSERT_EQ(2U, answers.size());
  EXPECT_TRUE(answers[0].Succeeded());
  EXPECT_EQ("NotSupported there is no registrar on eth0", Describe(answers[1].Why()));
  EXPECT_EQ((std::map<std::string, Wifi::WPS_ERConfigInput>{{"wlan0_1", input}}),
            simulation.driver.GetRegistrars());
}

}  // namespace TALO::Wifid
