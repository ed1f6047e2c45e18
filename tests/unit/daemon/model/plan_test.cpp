#include "daemon/model/plan.h"

#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

BSSPlan HomeOn(const std::string& interface, const std::string& address) {
  return {1,
          interface,
          MACAddress(address),
          "Home",
          false,
          SecurityMode::PersonalWPA2_3Mixed,
          "battery-staple",
          "br0",
          {}};
}

/// A radio of MakeState, with what it is to carry.
RadioPlan Radio(RadioFrequency radio, int channel, int channelWidth, std::vector<BSSPlan> bsss) {
  return {radio, true, channel, channelWidth, 100, CountryCode::DE, std::move(bsss), {}, {}, {}};
}

TEST(MakePlan, WantsEveryNetworkOnEveryRadio) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  const std::vector<RadioPlan> expected = {
      Radio(RadioFrequency::Band2_4GHz, 6, 20, {HomeOn("wlan0_1", "02:00:00:00:00:01")}),
      Radio(RadioFrequency::Band5GHz_1, 36, 80, {HomeOn("wlan1_1", "02:00:00:00:01:01")}),
      Radio(RadioFrequency::Band5GHz_2, 100, 80, {HomeOn("wlan2_1", "02:00:00:00:02:01")}),
  };
  EXPECT_EQ(MakePlan(state, TriBandRadios(), {}), expected);
}

TEST(MakePlan, CarriesEverySettingOfRadioAndNetwork) {
  State state = MakeState(6, {MakeNetwork(5, 16, "Guests")});
  state.country = CountryCode::US;
  state.radios = {{RadioFrequency::Band2_4GHz, false, 11, 40, 25, 4},
                  {RadioFrequency::Band5GHz, true, 149, 160, 75, 5}};
  NetworkState& network = state.networks[0];
  network.ssid = std::string("\x00\xff", 2);
  network.hidden = true;
  network.securityMode = SecurityMode::PersonalWPA3;
  network.passphrase = "other-passphrase";
  network.bridge = "br-guests";

  const auto bss = [](const std::string& interface, const std::string& address) {
    return BSSPlan{5,
                   interface,
                   MACAddress(address),
                   std::string("\x00\xff", 2),
                   true,
                   SecurityMode::PersonalWPA3,
                   "other-passphrase",
                   "br-guests",
                   {}};
  };
  const std::vector<RadioPlan> expected = {
      {RadioFrequency::Band2_4GHz,
       false,
       11,
       40,
       25,
       CountryCode::US,
       {bss("wlan0_16", "02:00:00:00:00:10")},
       {},
       {},
       {}},
      {RadioFrequency::Band5GHz,
       true,
       149,
       160,
       75,
       CountryCode::US,
       {bss("wlan1_16", "02:00:00:00:01:10")},
       {},
       {},
       {}},
  };
  EXPECT_EQ(MakePlan(state, DualBandRadios(), {}), expected);
}

TEST(MakePlan, LeavesOutWhatIsNotActivated) {
  State state =
      MakeState(4, {MakeNetwork(1, 3, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 1, "Three")});
  state.networks[1].activated = false;
  for (const RadioPlan& radio : MakePlan(state, TriBandRadios(), {})) {
    ASSERT_EQ(radio.bsss.size(), 2U);
    EXPECT_EQ(radio.bsss[0].networkId, 1);
    EXPECT_EQ(radio.bsss[1].networkId, 3);
  }
}

TEST(MakePlan, LeavesOutWhatItsScheduleKeepsOff) {
  const State state = MakeState(3, {MakeNetwork(1, 1, "Home"), MakeNetwork(2, 2, "Guests")});
  const auto plan = MakePlan(
      state, TriBandRadios(),
      {{2, RadioFrequency::Band2_4GHz}, {2, RadioFrequency::Band5GHz_2}, {7, RadioFrequency::Band5GHz_1}});
  std::vector<RadioPlan> expected = MakePlan(state, TriBandRadios(), {});
  expected[0].bsss.pop_back();
  expected[2].bsss.pop_back();
  EXPECT_EQ(plan, expected);
  ASSERT_EQ(plan[0].bsss.size(), 1U);
  EXPECT_EQ(plan[0].bsss[0].networkId, 1);
}

TEST(MakePlan, HoldsEveryRadioWhenThereIsNoNetwork) {
  const std::vector<RadioPlan> expected = {
      Radio(RadioFrequency::Band2_4GHz, 6, 20, {}),
      Radio(RadioFrequency::Band5GHz_1, 36, 80, {}),
      Radio(RadioFrequency::Band5GHz_2, 100, 80, {}),
  };
  EXPECT_EQ(MakePlan(MakeState(1, {}), TriBandRadios(), {}), expected);
}

TEST(MakePlan, LeavesARadioOffThatHasNoChannelInTheCountry) {
  Capabilities router = TriBandRadios();
  router.radios[2].findsRadars = false;
  State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  state.radios[2].channel = kAutomaticChannel;
  const auto isOn = [&] {
    std::vector<bool> on;
    for (const RadioPlan& plan : MakePlan(state, router, {})) {
      on.push_back(plan.enable);
    }
    return on;
  };
  EXPECT_EQ(isOn(), (std::vector<bool>{true, true, false}));
  router.radios[2].channels.push_back(149);
  EXPECT_EQ(isOn(), (std::vector<bool>{true, true, false}));
  state.country = CountryCode::US;
  EXPECT_EQ(isOn(), (std::vector<bool>{true, true, true}));
}

TEST(MakePlan, FollowsTheOrderOfTheCapabilities) {
  State state = MakeState(1, {});
  std::swap(state.radios[0], state.radios[2]);
  const auto plan = MakePlan(state, TriBandRadios(), {});
  ASSERT_EQ(plan.size(), 3U);
  EXPECT_EQ(plan[0].radio, RadioFrequency::Band2_4GHz);
  EXPECT_EQ(plan[1].radio, RadioFrequency::Band5GHz_1);
  EXPECT_EQ(plan[2].radio, RadioFrequency::Band5GHz_2);
}

}  // namespace

}  // namespace TALO::Wifid
