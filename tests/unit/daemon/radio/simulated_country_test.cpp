#include "support/simulation.h"

#include <gtest/gtest.h>

// What the country means for a radio's channel and width, and for the stations.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;

/// "Home" on the 5 GHz radio with a station, which has been connected since 370. Now is 1000.
class SimulatedCountryTest : public testing::Test {
 protected:
  static Scenario World() {
    Scenario scenario;
    scenario.devices = {MakeDevice(1)};
    AccessPoint neighbour = MakeAccessPoint(1, "Miller", 36, -60);
    neighbour.channelWidth = 160;
    scenario.neighbours = {neighbour};
    return scenario;
  }

  void StartOn(int channel, int width, CountryCode country = CountryCode::DE) {
    plan_.channel = channel;
    plan_.channelWidth = width;
    plan_.country = country;
    simulation_.ApplyNow(plan_);
    simulation_.Advance(930);
    simulation_.TakeNotes();
  }

  /// What happens when the plan is for another country.
  Notes MoveTo(CountryCode country) {
    plan_.country = country;
    simulation_.Apply(plan_);
    simulation_.Advance(1000);
    return simulation_.TakeNotes();
  }

  /// As in "36 at 80".
  std::string InUse() {
    const LiveRadio live = simulation_.Live(RadioFrequency::Band5GHz);
    return std::to_string(live.channel) + " at " + std::to_string(live.channelWidth);
  }

  const Notes kept_ = {"1020 applied"};
  const Notes restarted_ = {"1020 0a:00:00:00:00:01 left wlan1_1 (1): BSS down", "1020 Band5GHz down",
                            "1070 Band5GHz up", "1070 applied",
                            "1370 0a:00:00:00:00:01 connected to wlan1_1 (1)"};
  RadioPlan plan_ = MakeRadioPlanOf5GHz({MakeBSSOf5GHz(1)});
  Simulation simulation_{World()};
};

}  // namespace

TEST_F(SimulatedCountryTest, ACountryThatAllowsWhatIsInUseKeepsTheStations) {
  StartOn(36, 80);
  EXPECT_EQ(kept_, MoveTo(CountryCode::CN));
  EXPECT_EQ("36 at 80", InUse());
}

TEST_F(SimulatedCountryTest, ACountryWithoutTheChannelIsRefusedAndChangesNothing) {
  StartOn(120, 20);
  EXPECT_EQ((Notes{"1000 applied: RadioFailed the radio Band5GHz may not use channel 120 in the country CN"}),
            MoveTo(CountryCode::CN));
  EXPECT_EQ("120 at 20", InUse());
  EXPECT_EQ((std::vector<int>{1}), simulation_.StationsOn("wlan1_1"));
}

TEST_F(SimulatedCountryTest, ACountryWithoutRulesIsRefusedUnlessTheRadioIsOff) {
  StartOn(0, 80);
  EXPECT_EQ((Notes{"1000 applied: RadioFailed the radio Band5GHz may not use any channel in the country AD"}),
            MoveTo(CountryCode::AD));
  plan_.enable = false;
  EXPECT_EQ("2020 applied", MoveTo(CountryCode::AD).back());
}

TEST_F(SimulatedCountryTest, AnAutomaticChannelIsOneThatTheCountryAllows) {
  StartOn(0, 80);
  // The neighbour takes everything below.
  EXPECT_EQ("100 at 80", InUse());
  EXPECT_EQ(restarted_, MoveTo(CountryCode::CN));
  EXPECT_EQ("36 at 80", InUse());
}

TEST_F(SimulatedCountryTest, AnAutomaticChannelStaysWhereItIsAllowed) {
  StartOn(0, 80);
  EXPECT_EQ(kept_, MoveTo(CountryCode::US));
  EXPECT_EQ("100 at 80", InUse());
}

// Canada has none of the channels 120 to 128.
TEST_F(SimulatedCountryTest, AChannelIsAsWideAsTheCountryAllows) {
  StartOn(116, 80);
  EXPECT_EQ("116 at 80", InUse());
  EXPECT_EQ(restarted_, MoveTo(CountryCode::CA));
  EXPECT_EQ("116 at 20", InUse());
}

TEST_F(SimulatedCountryTest, AChannelIsAsWideAsTheRadioHasRoom) {
  struct Case {
    int channel;
    int width;
    std::string inUse;
  };
  // The radio ends with channel 140, in the middle of the block of 132 to 144.
  for (const Case& entry : {Case{132, 80, "132 at 40"}, Case{140, 80, "140 at 20"},
                            Case{132, 20, "132 at 20"}, Case{64, 0, "64 at 80"}, Case{140, 0, "140 at 20"}}) {
    StartOn(entry.channel, entry.width);
    EXPECT_EQ(entry.inUse, InUse());
  }
}

TEST(SimulatedLowBandTest, TheSecondHalfOfAWideChannelMustBeAllowed) {
  Simulation simulation;
  RadioPlan plan = MakeRadioPlan({});
  plan.channel = 9;
  plan.channelWidth = 40;
  simulation.ApplyNow(plan);
  EXPECT_EQ(40, simulation.Live(RadioFrequency::Band2_4GHz).channelWidth);
  plan.country = CountryCode::US;
  simulation.ApplyNow(plan);
  EXPECT_EQ(20, simulation.Live(RadioFrequency::Band2_4GHz).channelWidth);
  EXPECT_EQ(9, simulation.Live(RadioFrequency::Band2_4GHz).channel);
}

}  // namespace TALO::Wifid
