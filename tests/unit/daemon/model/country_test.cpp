#include "daemon/model/country.h"

#include "support/routers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace TALO::Wifid {

namespace {

using enum CountryCode;
using enum RadioFrequency;
using SupportedModel::Alder100;
using SupportedModel::Birch200;
using SupportedModel::Cedar300;
using SupportedModel::Dune40;
using Channels = std::vector<int>;

const Channels k1To11 = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
const Channels k1To13 = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
const Channels k36To64 = {36, 40, 44, 48, 52, 56, 60, 64};
const Channels k149To165 = {149, 153, 157, 161, 165};

Channels operator+(Channels first, const Channels& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}

TEST(AllowedChannels, AreThoseOfTheCountry) {
  const Channels upper100To140 = {100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
  const Channels withoutRadars = {100, 104, 108, 112, 116, 132, 136, 140};
  struct Case {
    CountryCode country;
    Channels low;
    Channels upper;
  };
  const std::vector<Case> cases = {
      {DE, k1To13, upper100To140},
      {GB, k1To13, upper100To140},
      {FR, k1To13, upper100To140},
      {US, k1To11, upper100To140 + Channels{144} + k149To165},
      {CA, k1To11, withoutRadars + Channels{144} + k149To165},
      {AU, k1To13, withoutRadars + k149To165},
      {KR, k1To13, upper100To140 + k149To165},
      {JP, k1To13, upper100To140 + Channels{144}},
      {CN, k1To13, k149To165},
  };
  for (const auto& [country, low, upper] : cases) {
    SCOPED_TRACE(Wifi::Util::EnumNameOf(country));
    EXPECT_EQ(AllowedChannels(country, Band2_4GHz), low);
    EXPECT_EQ(AllowedChannels(country, Band5GHz), k36To64 + upper);
    EXPECT_EQ(AllowedChannels(country, Band5GHz_1), k36To64);
    EXPECT_EQ(AllowedChannels(country, Band5GHz_2), upper);
  }
}

TEST(AllowedChannels, AreNoneForWhatIsNotOneRadio) {
  EXPECT_EQ(AllowedChannels(DE, SmartConnect), Channels{});
  EXPECT_EQ(AllowedChannels(DE, RadioFrequency::Error), Channels{});
  EXPECT_EQ(AllowedChannels(DE, RadioFrequency{5}), Channels{});
}

TEST(AllowedChannels, AreNoneInACountryWhoseRulesAreNotKnown) {
  for (const CountryCode country : {AD, ZW, MaxCountryCode, CountryCode{198}}) {
    EXPECT_EQ(AllowedChannels(country, Band2_4GHz), Channels{});
    EXPECT_EQ(AllowedChannels(country, Band5GHz), Channels{});
  }
}

TEST(UsableChannels, AreTheAllowedOnesThatTheRadioHas) {
  RadioCapability radio = TriBandRouter().radios[2];
  radio.channels = {36, 96, 100, 136, 140, 144, 149};
  EXPECT_EQ(UsableChannels(DE, radio), (Channels{100, 136, 140}));
  EXPECT_EQ(UsableChannels(US, radio), (Channels{100, 136, 140, 144, 149}));
  EXPECT_EQ(UsableChannels(CN, radio), Channels{149});
  EXPECT_EQ(UsableChannels(ZW, radio), Channels{});
}

RadioCapability WithoutRadars(RadioCapability radio) {
  radio.findsRadars = false;
  return radio;
}

TEST(UsableChannels, TakeNoLookingOutForRadarsOnARadioThatDoesNot) {
  const RadioCapability all = WithoutRadars(DualBandRouter().radios[1]);
  EXPECT_EQ(UsableChannels(DE, all), (Channels{36, 40, 44, 48}));
  EXPECT_EQ(UsableChannels(US, all), (Channels{36, 40, 44, 48, 149, 153, 157, 161, 165}));
  EXPECT_EQ(UsableChannels(DE, WithoutRadars(TriBandRouter().radios[2])), Channels{});
  EXPECT_EQ(UsableChannels(DE, WithoutRadars(TriBandRouter().radios[0])), k1To13);
}

TEST(WhyOff, SaysWhyARadioHasNoChannel) {
  RadioCapability upper = TriBandRouter().radios[2];
  EXPECT_EQ(WhyOff(DE, upper), "");
  EXPECT_EQ(WhyOff(CN, upper), "the radio Band5GHz_2 has no channel that the country CN allows");
  EXPECT_EQ(WhyOff(DE, WithoutRadars(upper)),
            "the radio Band5GHz_2 cannot look out for radars (DFS), which all of its channels take in the "
            "country DE");
  upper.channels.push_back(149);
  EXPECT_EQ(WhyOff(US, WithoutRadars(upper)), "");
}

TEST(SetCountryCode, SetsARadioToAutomaticThatCannotFindTheRadarsThere) {
  Capabilities router = TriBandRouter();
  router.radios[2].channels = {100, 104, 149, 153};
  router.radios[2].findsRadars = false;
  State state = MakeFirstState(router, US);
  state.radios[2].channel = 149;
  const State inFrance = StateAfter(SetCountryCode(state, router, FR));
  ASSERT_EQ(inFrance.radios.size(), 3U);
  EXPECT_EQ(inFrance.radios[2].channel, kAutomaticChannel);
  EXPECT_TRUE(inFrance.radios[2].enable);
  EXPECT_EQ(StateAfter(SetCountryCode(inFrance, router, DE)).country, DE);
}

const std::string kEurope = "2.4 GHz: 1-13; 5 GHz: 36-64, 100-140";
const std::string kUnitedStates = "2.4 GHz: 1-11; 5 GHz: 36-64, 100-144, 149-165";

TEST(CountryCapability, IsSetForLifeOnTwoModels) {
  EXPECT_EQ(CountryCapability(Birch200), (Wifi::CountryCodeCapability{true, {{DE, kEurope}}}));
  EXPECT_EQ(CountryCapability(Dune40),
            (Wifi::CountryCodeCapability{true, {{DE, kEurope}, {US, kUnitedStates}}}));
}

TEST(CountryCapability, HoldsThePlanOfEveryCodeOnTheOthers) {
  const std::string kRadars = "5 GHz: 36-64, 100-116, 132-1";
  const std::string kWide = "2.4 GHz: 1-13; 5 GHz: 36-64, 100-140, 149-165";
  std::map<CountryCode, std::string> codes = {
      {AU, "2.4 GHz: 1-13; " + kRadars + "40, 149-165"},
      {CA, "2.4 GHz: 1-11; " + kRadars + "44, 149-165"},
      {JP, "2.4 GHz: 1-13; 5 GHz: 36-64, 100-144"},
      {KR, kWide},
      {NZ, kWide},
      {SG, kWide},
      {US, kUnitedStates},
  };
  for (const CountryCode code : {AT, BE, BG, CH, CY, CZ, DE, DK, EE, ES, FI, FR, GB, GR, HR, HU,
                                 IE, IS, IT, LI, LT, LU, LV, MT, NL, NO, PL, PT, RO, SE, SI, SK}) {
    codes[code] = kEurope;
  }
  EXPECT_EQ(CountryCapability(Alder100), (Wifi::CountryCodeCapability{false, codes}));
  codes[CN] = "2.4 GHz: 1-13; 5 GHz: 36-64, 149-165";
  EXPECT_EQ(CountryCapability(Cedar300), (Wifi::CountryCodeCapability{false, codes}));
}

TEST(CountryCapability, IsNothingForAModelThatDoesNotExist) {
  EXPECT_EQ(CountryCapability(SupportedModel::Error), Wifi::CountryCodeCapability{});
  EXPECT_EQ(CountryCapability(SupportedModel{4}), Wifi::CountryCodeCapability{});
}

TEST(CountryCapability, AllowsTheChannelsOfANewRouterUnderEveryCode) {
  for (const SupportedModel model : {Alder100, Birch200, Cedar300, Dune40}) {
    const Capabilities capabilities =
        RadiosOf(model).size() == 3 ? TriBandRouter(model) : DualBandRouter(model);
    for (const auto& [code, plan] : CountryCapability(model).codes) {
      for (const RadioState& radio : MakeFirstState(capabilities, code).radios) {
        EXPECT_TRUE(std::ranges::binary_search(AllowedChannels(code, radio.radio), radio.channel))
            << Wifi::Util::EnumNameOf(code) << " " << radio.channel;
      }
    }
  }
}

/// In the United States, with the radios on these channels.
State StateOnChannels(const Capabilities& capabilities, const Channels& channels) {
  State state = StateWithNetworks(capabilities, 1);
  state.country = US;
  for (std::size_t i = 0; i < channels.size(); ++i) {
    state.radios[i].channel = channels[i];
  }
  return state;
}

TEST(SetCountryCode, LeavesChannelsThatAreAllowed) {
  State expected = StateOnChannels(DualBandRouter(), {11, 140});
  expected.country = DE;
  EXPECT_EQ(StateAfter(SetCountryCode(StateOnChannels(DualBandRouter(), {11, 140}), DualBandRouter(), DE)),
            expected);
}

TEST(SetCountryCode, MovesTheOthersToTheLowestChannelThatIs) {
  State expected = StateOnChannels(DualBandRouter(), {1, 36});
  expected.country = DE;
  for (const int channel : {144, 149, 165}) {
    EXPECT_EQ(
        StateAfter(SetCountryCode(StateOnChannels(DualBandRouter(), {1, channel}), DualBandRouter(), DE)),
        expected);
  }
  State state = StateOnChannels(DualBandRouter(), {12, 36});
  state.country = DE;
  expected.country = US;
  EXPECT_EQ(StateAfter(SetCountryCode(state, DualBandRouter(), US)), expected);
}

TEST(SetCountryCode, MovesToChannelsThatTheRadioHas) {
  Capabilities capabilities = DualBandRouter();
  capabilities.radios[1].channels = {52, 56, 149};
  State expected = StateOnChannels(capabilities, {1, 52});
  expected.country = DE;
  EXPECT_EQ(StateAfter(SetCountryCode(StateOnChannels(capabilities, {1, 149}), capabilities, DE)), expected);
}

TEST(SetCountryCode, LeavesAutomaticChannels) {
  State expected = StateOnChannels(DualBandRouter(), {0, 0});
  expected.country = JP;
  EXPECT_EQ(StateAfter(SetCountryCode(StateOnChannels(DualBandRouter(), {0, 0}), DualBandRouter(), JP)),
            expected);
}

TEST(SetCountryCode, IsRefusedWhereAnEnabledRadioWouldHaveNoChannel) {
  Capabilities capabilities = DualBandRouter();
  capabilities.radios[1].channels = {149, 153};
  const Refusal refusal{ErrorCode::NotSupported,
                        "the radio Band5GHz has no channel that the country DE allows"};
  EXPECT_EQ(WhyNot(SetCountryCode(StateOnChannels(capabilities, {1, 149}), capabilities, DE)), refusal);
  EXPECT_EQ(WhyNot(SetCountryCode(StateOnChannels(capabilities, {1, 0}), capabilities, DE)), refusal);
}

TEST(SetCountryCode, SetsARadioWithoutAChannelToAutomaticWhileItIsNotEnabled) {
  Capabilities capabilities = DualBandRouter();
  capabilities.radios[1].channels = {149, 153};
  State state = StateOnChannels(capabilities, {1, 149});
  state.radios[1].enable = false;
  State expected = state;
  expected.country = DE;
  expected.radios[1].channel = 0;
  EXPECT_EQ(StateAfter(SetCountryCode(state, capabilities, DE)), expected);
}

TEST(SetCountryCode, TakesTheCodeInForceOnEveryModel) {
  for (const SupportedModel model : {Alder100, Birch200, Cedar300, Dune40}) {
    const Capabilities capabilities = DualBandRouter(model);
    const State state = MakeFirstState(capabilities, DE);
    EXPECT_EQ(StateAfter(SetCountryCode(state, capabilities, DE)), state);
  }
}

TEST(SetCountryCode, RefusesCodesThatCannotBe) {
  struct Case {
    SupportedModel model;
    CountryCode country;
    Refusal refusal;
  };
  const std::vector<Case> cases = {
      {Cedar300,
       MaxCountryCode,
       {ErrorCode::InvalidArgument, "the country code MaxCountryCode does not exist"}},
      {Birch200,
       MaxCountryCode,
       {ErrorCode::InvalidArgument, "the country code MaxCountryCode does not exist"}},
      {Cedar300, CountryCode{198}, {ErrorCode::InvalidArgument, "the country code 198 does not exist"}},
      {Cedar300, CountryCode{65535}, {ErrorCode::InvalidArgument, "the country code 65535 does not exist"}},
      {Cedar300,
       ZW,
       {ErrorCode::InvalidArgument, "the country code ZW is not among those of the model Cedar300"}},
      {Cedar300,
       AD,
       {ErrorCode::InvalidArgument, "the country code AD is not among those of the model Cedar300"}},
      {Alder100,
       CN,
       {ErrorCode::InvalidArgument, "the country code CN is not among those of the model Alder100"}},
      {Birch200,
       FR,
       {ErrorCode::NotAllowed,
        "the country code of the model Birch200 is set for life to DE, it cannot become FR"}},
      {Dune40,
       US,
       {ErrorCode::NotAllowed,
        "the country code of the model Dune40 is set for life to DE, it cannot become US"}},
  };
  for (const auto& [model, country, refusal] : cases) {
    const Capabilities capabilities = DualBandRouter(model);
    EXPECT_EQ(WhyNot(SetCountryCode(MakeFirstState(capabilities, DE), capabilities, country)), refusal);
  }
}

TEST(SetCountryCode, RefusesACodeInForceThatIsNotTheModels) {
  const Capabilities capabilities = DualBandRouter(Birch200);
  EXPECT_EQ(
      WhyNot(SetCountryCode(MakeFirstState(capabilities, FR), capabilities, FR)),
      (Refusal{ErrorCode::InvalidArgument, "the country code FR is not among those of the model Birch200"}));
}

TEST(RemoteCountryCapability, FollowsFromTheModelOfTheNode) {
  const std::vector<MeshNode> nodes = {{"S1", Dune40}, {"S2", Cedar300}};
  EXPECT_EQ(ValueOf(RemoteCountryCapability(nodes, "S1", Dune40)), CountryCapability(Dune40));
  EXPECT_EQ(ValueOf(RemoteCountryCapability(nodes, "S2", Cedar300)), CountryCapability(Cedar300));
}

TEST(RemoteCountryCapability, TakesTheCallersWordWhileNoMeshIsKnown) {
  EXPECT_EQ(ValueOf(RemoteCountryCapability({}, "S1", Birch200)), CountryCapability(Birch200));
  EXPECT_EQ(ValueOf(RemoteCountryCapability({}, "", Alder100)), CountryCapability(Alder100));
}

TEST(RemoteCountryCapability, RefusesUnknownNodesAndModels) {
  const std::vector<MeshNode> nodes = {{"S1", Dune40}, {"S2", Cedar300}};
  EXPECT_EQ(WhyNot(RemoteCountryCapability(nodes, "S3", Dune40)),
            (Refusal{ErrorCode::NotFound, "there is no node \"S3\" in the mesh"}));
  EXPECT_EQ(WhyNot(RemoteCountryCapability(nodes, "", Dune40)),
            (Refusal{ErrorCode::NotFound, "there is no node \"\" in the mesh"}));
  EXPECT_EQ(WhyNot(RemoteCountryCapability(nodes, "S1", Cedar300)),
            (Refusal{ErrorCode::InvalidArgument, "the node \"S1\" is of model Dune40, not Cedar300"}));
  for (const std::vector<MeshNode>& mesh : {nodes, std::vector<MeshNode>()}) {
    EXPECT_EQ(WhyNot(RemoteCountryCapability(mesh, "S1", SupportedModel::Error)),
              (Refusal{ErrorCode::InvalidArgument, "the model Error does not exist"}));
    EXPECT_EQ(WhyNot(RemoteCountryCapability(mesh, "S1", SupportedModel{4})),
              (Refusal{ErrorCode::InvalidArgument, "the model 4 does not exist"}));
  }
}

}  // namespace

}  // namespace TALO::Wifid
