#include "daemon/model/first_state.h"

#include "support/daemon_samples.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;

const RadioState k2_4GHz{Band2_4GHz, true, 6, 20, 100, 6};
const RadioState k5GHz{Band5GHz, true, 36, 80, 100, 6};
const RadioState k5GHz_1{Band5GHz_1, true, 36, 80, 100, 6};
const RadioState k5GHz_2{Band5GHz_2, true, 100, 80, 100, 6};

TEST(MakeFirstState, HasNoNetworkAndEveryRadioOn) {
  State expected;
  expected.nextNetworkId = 1;
  expected.context = "router";
  expected.country = CountryCode::US;
  expected.radios = {k2_4GHz, k5GHz_1, k5GHz_2};
  expected.stations = StationsOff({Band2_4GHz, Band5GHz_1, Band5GHz_2});
  expected.networks = {};
  EXPECT_EQ(MakeFirstState(TriBandRadios(), CountryCode::US), expected);

  expected.country = CountryCode::DE;
  expected.radios = {k2_4GHz, k5GHz};
  expected.stations = StationsOff({Band2_4GHz, Band5GHz});
  EXPECT_EQ(MakeFirstState(DualBandRadios(), CountryCode::DE), expected);
}

TEST(MakeFirstState, LeavesTheChannelToARadioThatCannotUseThatOfItsBand) {
  Capabilities router = TriBandRadios();
  router.radios[2].findsRadars = false;
  router.radios[2].channels = {100, 104, 149};
  router.radios[0].channels = {1, 11};
  router.radios[1].maximumChannelWidth = 40;
  const std::vector<RadioState> expected = {{Band2_4GHz, true, kAutomaticChannel, 20, 100, 6},
                                            {Band5GHz_1, true, 36, 40, 100, 6},
                                            {Band5GHz_2, true, kAutomaticChannel, 80, 100, 6}};
  EXPECT_EQ(MakeFirstState(router, CountryCode::US).radios, expected);
}

TEST(AdaptToRadios, FitsWhatOtherHardwareWasSetTo) {
  State state = MakeState(1, {});
  state.radios[0] = {Band2_4GHz, false, 13, 40, 50, 4};
  Capabilities router = TriBandRadios();
  router.radios[0].maximumChannelWidth = 20;
  State expected = state;
  expected.radios[0] = {Band2_4GHz, false, kAutomaticChannel, 20, 50, 4};
  EXPECT_EQ(AdaptToRadios(state, router), expected);
}

TEST(AdaptToRadios, LeavesAStateAsItIsThatFits) {
  State state = MakeState(4, {MakeNetwork(3, 2, "Home")});
  state.radios[0] = {Band2_4GHz, false, 11, 40, 50, 4};
  EXPECT_EQ(AdaptToRadios(state, TriBandRadios()), state);
}

TEST(AdaptToRadios, SetsUpARadioThatIsNewAndForgetsOneThatIsGone) {
  State state = MakeState(4, {MakeNetwork(3, 2, "Home")});
  const RadioState changed{Band2_4GHz, false, 11, 40, 50, 4};
  state.radios = {changed, k5GHz_1, k5GHz_2};
  state.stations[0].essid = "Upstream";
  const Wifi::StationSetting joined = state.stations[0];
  const auto stationsOn = [&joined](const std::vector<RadioFrequency>& others) {
    auto stations = StationsOff(others);
    stations.insert(stations.begin(), joined);
    return stations;
  };
  State expected = state;
  expected.radios = {changed, k5GHz};
  expected.stations = stationsOn({Band5GHz});
  EXPECT_EQ(AdaptToRadios(state, DualBandRadios()), expected);

  expected.radios = {changed, k5GHz_1, k5GHz_2};
  expected.stations = stationsOn({Band5GHz_1, Band5GHz_2});
  State dualBand = state;
  dualBand.radios = {changed, k5GHz};
  dualBand.stations = stationsOn({Band5GHz});
  EXPECT_EQ(AdaptToRadios(dualBand, TriBandRadios()), expected);
}

TEST(AdaptToRadios, PutsTheRadiosIntoTheOrderOfTheCapabilities) {
  State state = MakeState(1, {});
  state.radios = {k5GHz_2, k2_4GHz, k5GHz_1};
  state.stations = StationsOff({Band5GHz_2, Band2_4GHz, Band5GHz_1});
  EXPECT_EQ(AdaptToRadios(state, TriBandRadios()), MakeState(1, {}));
}

TEST(AdaptToRadios, SetsUpEveryRadioOfAStateWithNone) {
  State state = MakeState(1, {});
  state.radios = {};
  state.stations = {};
  EXPECT_EQ(AdaptToRadios(state, TriBandRadios()), MakeState(1, {}));
}

TEST(AdaptToRadios, SwitchesABroadcastLimitOffThatARadioCannotKeepTo) {
  State state = MakeState(1, {});
  state.macFilterGlobal = {{{"Phone", Wifi::Util::MACAddress("aa:bb:cc:dd:ee:01")}}, true, 100};
  EXPECT_EQ(AdaptToRadios(state, TriBandRadios()), state);
  Capabilities unable = TriBandRadios();
  unable.radios[2].limitsBroadcasts = false;
  State expected = state;
  expected.macFilterGlobal.enablePreventBroadcast = false;
  EXPECT_EQ(AdaptToRadios(state, unable), expected);
}

}  // namespace

}  // namespace TALO::Wifid
