#include "daemon/model/mesh.h"

#include "daemon/model/networks.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::BackhaulConfig;
using Phase = LiveUpstream::Phase;

/// What both backhaul rules share.
class Backhaul : public testing::TestWithParam<bool> {
 protected:
  static Result<Change<void>> Modify(const State& state, const BackhaulConfig& config) {
    return GetParam() ? ModifyBackhaulSTA(state, config) : ModifyBackhaul(state, config);
  }

  static State With(State state, const BackhaulConfig& config) {
    (GetParam() ? state.backhaulSTA : state.backhaul) = config;
    return state;
  }
};

INSTANTIATE_TEST_SUITE_P(Mesh, Backhaul, testing::Bool(),
                         [](const auto& test) { return test.param ? "Station" : "AccessPoint"; });

TEST_P(Backhaul, TakesEveryConfigurationWithinTheLimits) {
  const State state = StateWithNetworks(TriBandRouter(), 2);
  const std::vector<BackhaulConfig> configs = {
      {true, "mesh", "mesh password"},
      {true, "m", "eight888"},
      {true, std::string(32, '\xFF'), std::string(63, 'p')},
      {true, "SSID1", std::string(64, 'f')},
      {false, "mesh", "mesh password"},
      {false, "", ""},
  };
  for (const BackhaulConfig& config : configs) {
    EXPECT_EQ(StateAfter(Modify(state, config)), With(state, config));
  }
}

TEST_P(Backhaul, RefusesWhatIsOutsideTheLimits) {
  const std::string noSSID = "the backhaul SSID \"\" has 0 bytes, it must have 1 to 32";
  const std::string noPassphrase =
      "the passphrase has 0 characters, it must have 8 to 63, or 64 hexadecimal digits";
  const std::vector<std::pair<BackhaulConfig, std::string>> cases = {
      {{true, "", "mesh password"}, noSSID},
      {{true, "", ""}, noSSID},
      {{false, "", "mesh password"}, noSSID},
      {{true, std::string(33, 'm'), "mesh password"},
       "the backhaul SSID \"" + std::string(33, 'm') + "\" has 33 bytes, it must have 1 to 32"},
      {{true, "mesh", ""}, noPassphrase},
      {{false, "mesh", ""}, noPassphrase},
      {{true, "mesh", "seven77"},
       "the passphrase has 7 characters, it must have 8 to 63, or 64 hexadecimal digits"},
      {{true, "mesh", std::string(64, 'p')},
       "a passphrase of 64 characters must be hexadecimal digits, this one is not"},
  };
  for (const auto& [config, sentence] : cases) {
    EXPECT_EQ(WhyNot(Modify(StateWithNetworks(TriBandRouter(), 2), config)),
              (Refusal{ErrorCode::InvalidArgument, sentence}));
  }
}

TEST_P(Backhaul, DoesNotShareItsSSIDWithANetwork) {
  const Refusal refusal{ErrorCode::AlreadyExists, "the SSID \"ssid2\" is in use by network 2"};
  for (const bool enable : {true, false}) {
    EXPECT_EQ(WhyNot(Modify(StateWithNetworks(TriBandRouter(), 2), {enable, "ssid2", "mesh password"})),
              refusal);
  }
}

TEST_P(Backhaul, KeepsItsSSIDFromNewNetworks) {
  const std::string owner = GetParam() ? "the backhaul station" : "the backhaul";
  for (const bool enable : {true, false}) {
    const State state = With(StateWithNetworks(TriBandRouter(), 1), {enable, "mesh", "mesh password"});
    EXPECT_EQ(WhyNot(CreateNetwork(state, TriBandRouter(), {"Name", "mesh", "passphrase"}, "br0", 1)),
              (Refusal{ErrorCode::AlreadyExists, "the SSID \"mesh\" is in use by " + owner}));
  }
}

TEST_P(Backhaul, SharesItsSSIDWithTheOtherEnd) {
  State state = StateWithNetworks(TriBandRouter(), 1);
  state.backhaul = {true, "mesh", "mesh password"};
  state.backhaulSTA = {true, "mesh", "mesh password"};
  EXPECT_EQ(StateAfter(Modify(state, {true, "mesh", "mesh password"})), state);
}

TEST(BackhaulRadio, IsTheUpperOneUnlessSwapped) {
  State state = StateWithNetworks(TriBandRouter(), 0);
  EXPECT_EQ(BackhaulRadio(state, TriBandRouter()), Band5GHz_2);
  state.backhaulSwapped = true;
  EXPECT_EQ(BackhaulRadio(state, TriBandRouter()), Band5GHz_1);
}

/// All channels of its upper radio take looking out for radars, which it does not.
Capabilities RouterWithoutRadars() {
  Capabilities router = TriBandRouter();
  router.radios[2].findsRadars = false;
  return router;
}

TEST(BackhaulRadio, IsTheLowerOneWhereTheUpperHasNoChannel) {
  const State state = MakeFirstState(RouterWithoutRadars(), CountryCode::DE);
  EXPECT_EQ(BackhaulRadio(state, RouterWithoutRadars()), Band5GHz_1);
}

TEST(BackhaulRadio, IsTheHighestOfARouterWithoutTwo) {
  EXPECT_EQ(BackhaulRadio(StateWithNetworks(DualBandRouter(), 0), DualBandRouter()), Band5GHz);
  EXPECT_EQ(BackhaulRadio(StateWithNetworks(LowBandRouter(), 0), LowBandRouter()), Band2_4GHz);
  EXPECT_EQ(BackhaulRadio(State(), Capabilities()), RadioFrequency::Error);
}

TEST(EnableScan, TakesEachTypeThatExists) {
  for (const ScanType type : {ScanType::Disable, ScanType::Default, ScanType::BestAP}) {
    State expected = StateWithNetworks(TriBandRouter(), 1);
    expected.scanType = type;
    EXPECT_EQ(StateAfter(EnableScan(StateWithNetworks(TriBandRouter(), 1), type)), expected);
  }
  EXPECT_EQ(WhyNot(EnableScan(State(), ScanType::Error)),
            (Refusal{ErrorCode::InvalidArgument, "the scan type Error does not exist"}));
  EXPECT_EQ(WhyNot(EnableScan(State(), ScanType{3})),
            (Refusal{ErrorCode::InvalidArgument, "the scan type 3 does not exist"}));
}

TEST(ModifyMeshInfo, ReplacesWhatWasKnownOfTheMesh) {
  State state = StateWithNetworks(TriBandRouter(), 1);
  state.mesh = {{SupportedModel::Alder100}, false};
  for (const Wifi::MeshInfo& info : {Wifi::MeshInfo{{SupportedModel::Alder100, SupportedModel::Dune40}, true},
                                     Wifi::MeshInfo{{}, false}}) {
    State expected = state;
    expected.mesh = info;
    EXPECT_EQ(StateAfter(ModifyMeshInfo(state, info)), expected);
  }
}

TEST(ModifyMeshInfo, RefusesModelsThatDoNotExist) {
  EXPECT_EQ(WhyNot(ModifyMeshInfo(State(), {{SupportedModel::Alder100, SupportedModel::Error}, true})),
            (Refusal{ErrorCode::InvalidArgument, "the model Error does not exist"}));
  EXPECT_EQ(WhyNot(ModifyMeshInfo(State(), {{SupportedModel{4}}, false})),
            (Refusal{ErrorCode::InvalidArgument, "the model 4 does not exist"}));
}

TEST(SwapBackhaulBand, ExchangesTheTwo5GHzRadios) {
  State swapped = StateWithNetworks(TriBandRouter(), 1);
  swapped.backhaulSwapped = true;
  const State straight = StateWithNetworks(TriBandRouter(), 1);
  EXPECT_EQ(StateAfter(SwapBackhaulBand(straight, TriBandRouter(), true)), swapped);
  EXPECT_EQ(StateAfter(SwapBackhaulBand(swapped, TriBandRouter(), true)), swapped);
  EXPECT_EQ(StateAfter(SwapBackhaulBand(swapped, TriBandRouter(), false)), straight);
}

TEST(SwapBackhaulBand, IsNotSupportedWithoutTwo) {
  for (const bool swap : {true, false}) {
    EXPECT_EQ(WhyNot(SwapBackhaulBand(StateWithNetworks(DualBandRouter(), 1), DualBandRouter(), swap)),
              (Refusal{ErrorCode::NotSupported,
                       "the router Cedar300 does not have two 5 GHz radios, there is nothing to swap"}));
  }
}

TEST(SwapBackhaulBand, IsNotSupportedWhereTheUpperRadioHasNoChannel) {
  const State state = MakeFirstState(RouterWithoutRadars(), CountryCode::DE);
  EXPECT_EQ(WhyNot(SwapBackhaulBand(state, RouterWithoutRadars(), true)),
            (Refusal{ErrorCode::NotSupported,
                     "the radio Band5GHz_2 cannot look out for radars (DFS), which all of its channels take "
                     "in the country DE"}));
  EXPECT_EQ(StateAfter(SwapBackhaulBand(state, RouterWithoutRadars(), false)), state);
}

/// All radios up, on the channels of a new router.
std::vector<LiveRadio> AsNew() {
  std::vector<LiveRadio> live(3);
  live[0].radio = Band2_4GHz;
  live[0].channel = 6;
  live[1].radio = Band5GHz_1;
  live[1].channel = 36;
  live[2].radio = Band5GHz_2;
  live[2].channel = 100;
  for (LiveRadio& radio : live) {
    radio.up = true;
  }
  return live;
}

bool NeedsAdjusting(const State& state, const std::vector<LiveRadio>& live) {
  return IsWifiAdjustNeeded(state, TriBandRouter(), live);
}

TEST(IsWifiAdjustNeeded, IsFalseWhileAllIsAsItWasSetUp) {
  EXPECT_FALSE(NeedsAdjusting(StateWithNetworks(TriBandRouter(), 1), AsNew()));
}

TEST(IsWifiAdjustNeeded, IsTrueForARadioThatIsDownOrGone) {
  const State state = StateWithNetworks(TriBandRouter(), 1);
  std::vector<LiveRadio> live = AsNew();
  live[1].up = false;
  EXPECT_TRUE(NeedsAdjusting(state, live));
  live.erase(live.begin() + 1);
  EXPECT_TRUE(NeedsAdjusting(state, live));
  EXPECT_TRUE(NeedsAdjusting(state, {}));
}

TEST(IsWifiAdjustNeeded, IsTrueForARadioOnAnotherChannel) {
  std::vector<LiveRadio> live = AsNew();
  live[0].channel = 7;
  EXPECT_TRUE(NeedsAdjusting(StateWithNetworks(TriBandRouter(), 1), live));
}

TEST(IsWifiAdjustNeeded, IsFalseForARadioThatIsNotEnabled) {
  State state = StateWithNetworks(TriBandRouter(), 1);
  state.radios[1].enable = false;
  std::vector<LiveRadio> live = AsNew();
  live[1].up = false;
  live[1].channel = 0;
  EXPECT_FALSE(NeedsAdjusting(state, live));
}

TEST(IsWifiAdjustNeeded, IsFalseForARadioThatHasNoChannel) {
  std::vector<LiveRadio> live = AsNew();
  live[2].up = false;
  EXPECT_FALSE(IsWifiAdjustNeeded(MakeFirstState(RouterWithoutRadars(), CountryCode::DE),
                                  RouterWithoutRadars(), live));
}

TEST(IsWifiAdjustNeeded, IsFalseOnAnyChannelOfAnAutomaticRadio) {
  State state = StateWithNetworks(TriBandRouter(), 1);
  state.radios[1].channel = 0;
  std::vector<LiveRadio> live = AsNew();
  EXPECT_FALSE(NeedsAdjusting(state, live));
  live[1].channel = 52;
  EXPECT_FALSE(NeedsAdjusting(state, live));
  live[1].up = false;
  EXPECT_TRUE(NeedsAdjusting(state, live));
}

/// A repeater that is connected to a parent on channel 116.
struct Repeater {
  State state = StateWithNetworks(TriBandRouter(), 1);
  std::vector<LiveRadio> live = AsNew();

  Repeater() {
    state.mesh.isRepeater = true;
    live[2].backhaulStation.phase = Phase::Connected;
    live[2].backhaulStation.channel = 116;
  }
};

TEST(IsWifiAdjustNeeded, MeasuresTheBackhaulRadioOfARepeaterByItsParent) {
  Repeater repeater;
  EXPECT_TRUE(NeedsAdjusting(repeater.state, repeater.live));
  repeater.live[2].channel = 116;
  EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
}

TEST(IsWifiAdjustNeeded, MeasuresAnAutomaticBackhaulRadioByTheParentToo) {
  Repeater repeater;
  repeater.state.radios[2].channel = 0;
  EXPECT_TRUE(NeedsAdjusting(repeater.state, repeater.live));
  repeater.live[2].channel = 116;
  EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
}

TEST(IsWifiAdjustNeeded, ForgetsTheParentWhileNotConnected) {
  for (const Phase phase : {Phase::Disabled, Phase::Scanning, Phase::Connecting, Phase::Failed}) {
    Repeater repeater;
    repeater.live[2].backhaulStation.phase = phase;
    EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
    repeater.live[2].channel = 116;
    EXPECT_TRUE(NeedsAdjusting(repeater.state, repeater.live));
  }
}

TEST(IsWifiAdjustNeeded, FollowsNoParentOnARouterThatIsNoRepeater) {
  Repeater repeater;
  repeater.state.mesh.isRepeater = false;
  EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
}

TEST(IsWifiAdjustNeeded, LooksForTheParentWhereTheSwapPutTheBackhaul) {
  Repeater repeater;
  repeater.state.backhaulSwapped = true;
  EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
  repeater.live[1].backhaulStation = repeater.live[2].backhaulStation;
  repeater.live[1].backhaulStation.channel = 40;
  EXPECT_TRUE(NeedsAdjusting(repeater.state, repeater.live));
  repeater.live[1].channel = 40;
  EXPECT_FALSE(NeedsAdjusting(repeater.state, repeater.live));
}

}  // namespace

}  // namespace TALO::Wifid
