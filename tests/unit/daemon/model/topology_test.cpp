#include "daemon/model/topology.h"

#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using Ids = std::set<int>;

/// Network 1 of "router", 2 of "office" and 3 of "router"; 2 is not activated.
State ThreeNetworks() {
  State state = StateWithNetworks(DualBandRouter(), 3);
  state.networks[1].context = "office";
  state.networks[1].activated = false;
  return state;
}

TEST(SetContext, TakesOneTo64Bytes) {
  const std::vector<std::string> contexts = {"x", "repeater", "an office", std::string(64, 'c')};
  for (const std::string& context : contexts) {
    State expected = ThreeNetworks();
    expected.context = context;
    EXPECT_EQ(StateAfter(SetContext(ThreeNetworks(), context)), expected);
  }
}

TEST(SetContext, RefusesNoneAndMore) {
  EXPECT_EQ(WhyNot(SetContext(ThreeNetworks(), "")),
            (Refusal{ErrorCode::InvalidArgument, "the context \"\" has 0 bytes, it must have 1 to 64"}));
  const std::string tooLong(65, 'c');
  EXPECT_EQ(WhyNot(SetContext(ThreeNetworks(), tooLong)),
            (Refusal{ErrorCode::InvalidArgument,
                     "the context \"" + tooLong + "\" has 65 bytes, it must have 1 to 64"}));
}

TEST(IdsForTopo, AreTheNetworksOfTheContext) {
  EXPECT_EQ(ValueOf(IdsForTopo(ThreeNetworks(), "router")), (Ids{1, 3}));
  EXPECT_EQ(ValueOf(IdsForTopo(ThreeNetworks(), "office")), Ids{2});
}

TEST(IdsForTopo, AreNoneForAContextThatIsKnownButEmpty) {
  State state = ThreeNetworks();
  state.context = "cellar";
  for (const char* context : {"bridge", "repeater", "cellar"}) {
    EXPECT_EQ(ValueOf(IdsForTopo(state, context)), Ids{}) << context;
  }
  EXPECT_EQ(ValueOf(IdsForTopo(StateWithNetworks(DualBandRouter(), 0), "router")), Ids{});
}

TEST(IdsForTopo, AreNotFoundForAnUnknownContext) {
  for (const std::string context : {"cellar", "Router", "offic", ""}) {
    EXPECT_EQ(WhyNot(IdsForTopo(ThreeNetworks(), context)),
              (Refusal{ErrorCode::NotFound, "there is no context \"" + context + "\""}));
  }
}

TEST(ActivatedIds, AreThoseOfEveryContext) {
  EXPECT_EQ(ActivatedIds(ThreeNetworks()), (Ids{1, 3}));
  EXPECT_EQ(ActivatedIds(StateWithNetworks(DualBandRouter(), 0)), Ids{});
}

TEST(Activate, PutsANetworkOnABridge) {
  State expected = ThreeNetworks();
  expected.networks[1].activated = true;
  expected.networks[1].bridge = "br1";
  EXPECT_EQ(StateAfter(Activate(ThreeNetworks(), {2, "br1"}, {"br0", "br1"})), expected);
}

TEST(Activate, MovesAnActivatedNetworkToAnotherBridge) {
  State expected = ThreeNetworks();
  expected.networks[0].bridge = "br1";
  EXPECT_EQ(StateAfter(Activate(ThreeNetworks(), {1, "br1"}, {"br0", "br1"})), expected);
}

TEST(Activate, RefusesUnknownNetworksAndBridges) {
  EXPECT_EQ(WhyNot(Activate(ThreeNetworks(), {4, "br0"}, {"br0"})),
            (Refusal{ErrorCode::NotFound, "there is no network 4"}));
  EXPECT_EQ(WhyNot(Activate(ThreeNetworks(), {2, "br1"}, {"br0"})),
            (Refusal{ErrorCode::NotFound, "there is no bridge \"br1\""}));
  EXPECT_EQ(WhyNot(Activate(ThreeNetworks(), {2, ""}, {"br0"})),
            (Refusal{ErrorCode::NotFound, "there is no bridge \"\""}));
  EXPECT_EQ(WhyNot(Activate(ThreeNetworks(), {2, "br0"}, {})),
            (Refusal{ErrorCode::NotFound, "there is no bridge \"br0\""}));
}

TEST(Deactivate, TakesANetworkOffTheAirAndLeavesItsBridge) {
  State expected = ThreeNetworks();
  expected.networks[2].activated = false;
  EXPECT_EQ(StateAfter(Deactivate(ThreeNetworks(), 3)), expected);
}

TEST(Deactivate, ChangesNothingOnANetworkThatIsNotActivated) {
  EXPECT_EQ(StateAfter(Deactivate(ThreeNetworks(), 2)), ThreeNetworks());
}

TEST(Deactivate, RefusesAnUnknownNetwork) {
  for (const int id : {-1, 0, 4}) {
    EXPECT_EQ(WhyNot(Deactivate(ThreeNetworks(), id)),
              (Refusal{ErrorCode::NotFound, "there is no network " + std::to_string(id)}));
  }
}

}  // namespace

}  // namespace TALO::Wifid
