#include "daemon/model/radios.h"

#include "support/routers.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using SupportedModel::Alder100;
using SupportedModel::Birch200;
using SupportedModel::Cedar300;
using SupportedModel::Dune40;
using Map = std::map<RadioFrequency, RadioFrequency>;
using Radios = std::vector<RadioFrequency>;

State StateOf(const Capabilities& capabilities, bool swapped, std::set<SupportedModel> models) {
  State state = StateWithNetworks(capabilities, 0);
  state.backhaulSwapped = swapped;
  state.mesh.models = std::move(models);
  return state;
}

TEST(ConversionMap, HoldsEveryBandWhileTheMeshIsNotKnown) {
  const Capabilities dual = DualBandRouter();
  EXPECT_EQ(
      ConversionMap(StateOf(dual, false, {}), dual),
      (Map{{Band2_4GHz, Band2_4GHz}, {Band5GHz, Band5GHz}, {Band5GHz_1, Band5GHz}, {Band5GHz_2, Band5GHz}}));
  const Capabilities tri = TriBandRouter();
  EXPECT_EQ(ConversionMap(StateOf(tri, false, {}), tri), (Map{{Band2_4GHz, Band2_4GHz},
                                                              {Band5GHz, Band5GHz_1},
                                                              {Band5GHz_1, Band5GHz_1},
                                                              {Band5GHz_2, Band5GHz_2}}));
}

TEST(ConversionMap, FollowsTheSwap) {
  const Capabilities tri = TriBandRouter();
  EXPECT_EQ(ConversionMap(StateOf(tri, true, {}), tri), (Map{{Band2_4GHz, Band2_4GHz},
                                                             {Band5GHz, Band5GHz_2},
                                                             {Band5GHz_1, Band5GHz_2},
                                                             {Band5GHz_2, Band5GHz_1}}));
}

TEST(ConversionMap, HoldsTheBandsOfTheModelsInTheMeshAndOfThisRouter) {
  const Capabilities dual = DualBandRouter();
  const Map dualAlone = {{Band2_4GHz, Band2_4GHz}, {Band5GHz, Band5GHz}};
  const Map dualWithTri = {
      {Band2_4GHz, Band2_4GHz}, {Band5GHz, Band5GHz}, {Band5GHz_1, Band5GHz}, {Band5GHz_2, Band5GHz}};
  EXPECT_EQ(ConversionMap(StateOf(dual, false, {Cedar300}), dual), dualAlone);
  EXPECT_EQ(ConversionMap(StateOf(dual, false, {Dune40}), dual), dualAlone);
  EXPECT_EQ(ConversionMap(StateOf(dual, false, {Alder100}), dual), dualWithTri);
  EXPECT_EQ(ConversionMap(StateOf(dual, false, {Birch200, Cedar300}), dual), dualWithTri);

  const Capabilities tri = TriBandRouter();
  const Map triAlone = {{Band2_4GHz, Band2_4GHz}, {Band5GHz_1, Band5GHz_1}, {Band5GHz_2, Band5GHz_2}};
  const Map triWithDual = {
      {Band2_4GHz, Band2_4GHz}, {Band5GHz, Band5GHz_1}, {Band5GHz_1, Band5GHz_1}, {Band5GHz_2, Band5GHz_2}};
  EXPECT_EQ(ConversionMap(StateOf(tri, false, {Birch200}), tri), triAlone);
  EXPECT_EQ(ConversionMap(StateOf(tri, false, {Alder100, Dune40}), tri), triWithDual);
}

TEST(ConversionMap, LeavesOutABandThatNoRadioServes) {
  const Capabilities low = LowBandRouter();
  EXPECT_EQ(ConversionMap(StateOf(low, false, {}), low), (Map{{Band2_4GHz, Band2_4GHz}}));
  EXPECT_EQ(ConversionMap(StateOf(low, false, {Alder100, Cedar300}), low), (Map{{Band2_4GHz, Band2_4GHz}}));
}

TEST(ResolveRadios, TakesAllForSmartConnect) {
  const Capabilities tri = TriBandRouter();
  EXPECT_EQ(ValueOf(ResolveRadios(StateOf(tri, false, {}), tri, SmartConnect)),
            (Radios{Band2_4GHz, Band5GHz_1, Band5GHz_2}));
  EXPECT_EQ(ValueOf(ResolveRadios(StateOf(tri, true, {}), tri, SmartConnect)),
            (Radios{Band2_4GHz, Band5GHz_1, Band5GHz_2}));
  const Capabilities dual = DualBandRouter();
  EXPECT_EQ(ValueOf(ResolveRadios(StateOf(dual, false, {}), dual, SmartConnect)),
            (Radios{Band2_4GHz, Band5GHz}));
}

TEST(ResolveRadios, AgreesWithTheConversionMapWhateverTheMesh) {
  for (const Capabilities& capabilities : {TriBandRouter(), DualBandRouter()}) {
    for (const bool swapped : {false, true}) {
      const Map map = ConversionMap(StateOf(capabilities, swapped, {}), capabilities);
      ASSERT_EQ(map.size(), 4u);
      for (const auto& [asked, serving] : map) {
        EXPECT_EQ(
            ValueOf(ResolveRadios(StateOf(capabilities, swapped, {capabilities.model}), capabilities, asked)),
            Radios{serving});
      }
    }
  }
}

TEST(ResolveRadios, RefusesWhatIsNoRadio) {
  const Capabilities tri = TriBandRouter();
  for (const auto& [radio, name] :
       {std::pair{Error, "Error"}, std::pair{RadioFrequency{5}, "5"}, std::pair{RadioFrequency{-2}, "-2"}}) {
    EXPECT_EQ(WhyNot(ResolveRadios(StateOf(tri, false, {}), tri, radio)),
              (Refusal{ErrorCode::InvalidArgument, std::string("the radio ") + name + " does not exist"}));
  }
}

TEST(ResolveRadios, RefusesABandThatNoRadioServes) {
  const Capabilities low = LowBandRouter();
  const State state = StateOf(low, false, {});
  EXPECT_EQ(ValueOf(ResolveRadios(state, low, Band2_4GHz)), Radios{Band2_4GHz});
  EXPECT_EQ(ValueOf(ResolveRadios(state, low, SmartConnect)), Radios{Band2_4GHz});
  EXPECT_EQ(WhyNot(ResolveRadios(state, low, Band5GHz_2)),
            (Refusal{ErrorCode::NotSupported, "no radio of this router serves the band Band5GHz_2"}));
  const Capabilities none{Cedar300, {}};
  EXPECT_EQ(WhyNot(ResolveRadios(StateOf(none, false, {}), none, Band2_4GHz)),
            (Refusal{ErrorCode::NotSupported, "no radio of this router serves the band Band2_4GHz"}));
}

TEST(IsTriBand, IsTrueWithTwoRadiosOf5GHz) {
  EXPECT_TRUE(IsTriBand(TriBandRouter()));
  EXPECT_FALSE(IsTriBand(DualBandRouter()));
  EXPECT_FALSE(IsTriBand(LowBandRouter()));
}

}  // namespace

}  // namespace TALO::Wifid
