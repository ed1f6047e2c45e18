#include "daemon/model/plan.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::Util::MACAddress;

const MACAddress kPhone("aa:bb:cc:dd:ee:01");

/// The BSS of network 1 of StateWithNetworks() on a radio.
BSSPlan NetworkOne(const std::string& interface, const std::string& bssid,
                   const std::string& passphrase = "passphrase1") {
  return {1,     interface, MACAddress(bssid), "ssid1", false, SecurityMode::PersonalWPA2_3Mixed, passphrase,
          "br0", {}};
}

RadioPlan Radio(RadioFrequency radio, int channel, int width, std::vector<BSSPlan> bsss) {
  RadioPlan plan;
  plan.radio = radio;
  plan.enable = true;
  plan.channel = channel;
  plan.channelWidth = width;
  plan.transmitPower = 100;
  plan.country = CountryCode::DE;
  plan.bsss = std::move(bsss);
  return plan;
}

/// Network 1 on the radios of a new router.
std::vector<RadioPlan> PlanOfOneNetwork() {
  return {Radio(Band2_4GHz, 6, 20, {NetworkOne("wlan0_1", "02:00:00:00:00:01")}),
          Radio(Band5GHz_1, 36, 80, {NetworkOne("wlan1_1", "02:00:00:00:01:01")}),
          Radio(Band5GHz_2, 100, 80, {NetworkOne("wlan2_1", "02:00:00:00:02:01")})};
}

State OneNetwork() { return StateWithNetworks(TriBandRouter(), 1); }

TEST(PlanOfOneNetwork, HasNothingUpstream) {
  EXPECT_EQ(MakePlan(OneNetwork(), TriBandRouter(), {}), PlanOfOneNetwork());
}

TEST(PlanOfAStation, IsOnItsRadioWhileItIsEnabled) {
  State state = OneNetwork();
  state.stations[1] = {true,      "Upstream", "user", "password", kPhone, SecurityMode::EnterpriseWPA2,
                       Band5GHz_1};
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  expected[1].station =
      StationPlan{"wlan1sta", "Upstream", "user", "password", kPhone, SecurityMode::EnterpriseWPA2};
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
  state.stations[1].enable = false;
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), PlanOfOneNetwork());
}

BSSPlan MeshBSS(const std::string& interface, const std::string& bssid) {
  return {0, interface, MACAddress(bssid), "mesh", true, SecurityMode::PersonalWPA2, "mesh password", "", {}};
}

TEST(PlanOfTheBackhaul, ComesFirstOnTheRadioThatCarriesIt) {
  State state = OneNetwork();
  state.backhaul = {true, "mesh", "mesh password"};
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  expected[2].bsss.insert(expected[2].bsss.begin(), MeshBSS("wlan2_0", "02:00:00:00:02:00"));
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

TEST(PlanOfTheBackhaul, FollowsTheSwap) {
  State state = OneNetwork();
  state.backhaul = {true, "mesh", "mesh password"};
  state.backhaulSTA = {true, "parents", "parents password"};
  state.scanType = ScanType::BestAP;
  state.backhaulSwapped = true;
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  expected[1].bsss.insert(expected[1].bsss.begin(), MeshBSS("wlan1_0", "02:00:00:00:01:00"));
  expected[1].backhaulStation =
      BackhaulStationPlan{"wlan1bhs", "parents", "parents password", ScanType::BestAP};
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

TEST(PlanOfTheBackhaul, HasAStationWithoutAnAccessPoint) {
  State state = OneNetwork();
  state.backhaulSTA = {true, "parents", "parents password"};
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  expected[2].backhaulStation =
      BackhaulStationPlan{"wlan2bhs", "parents", "parents password", ScanType::Default};
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

TEST(PlanOfTheBackhaul, IsOnTheOneRadioOfASimplerRouter) {
  State state = StateWithNetworks(LowBandRouter(), 1);
  state.backhaul = {true, "mesh", "mesh password"};
  state.backhaulSTA = {true, "parents", "parents password"};
  RadioPlan expected =
      Radio(Band2_4GHz, 6, 20,
            {MeshBSS("wlan0_0", "02:00:00:00:00:00"), NetworkOne("wlan0_1", "02:00:00:00:00:01")});
  expected.backhaulStation =
      BackhaulStationPlan{"wlan0bhs", "parents", "parents password", ScanType::Default};
  EXPECT_EQ(MakePlan(state, LowBandRouter(), {}), std::vector<RadioPlan>{expected});
}

TEST(PlanOfTheBackhaul, IsNoneWhileItIsNotEnabled) {
  State state = OneNetwork();
  state.backhaul = {false, "mesh", "mesh password"};
  state.backhaulSTA = {false, "parents", "parents password"};
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), PlanOfOneNetwork());
}

TEST(PlanOfAccess, FollowsTheProfileOfTheNetwork) {
  State state = OneNetwork();
  state.macFilterProfiles = {{1, "Family", Wifi::MACFilterAction::Allow, {{"Phone", kPhone}}}};
  state.networks[0].macFilterProfileId = 1;
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  for (RadioPlan& radio : expected) {
    radio.bsss[0].access = {AccessPlan::Rule::OnlyListed, {kPhone}};
  }
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

TEST(PlanOfAccess, LeavesTheBackhaulToEverybody) {
  State state = OneNetwork();
  state.networks.clear();
  state.backhaul = {true, "mesh", "mesh password"};
  state.macFilterProfiles = {{1, "Nobody", Wifi::MACFilterAction::Allow, {}}};
  const std::vector<RadioPlan> plan = MakePlan(state, TriBandRouter(), {});
  EXPECT_EQ(plan[2].bsss, std::vector<BSSPlan>{MeshBSS("wlan2_0", "02:00:00:00:02:00")});
}

TEST(PlanOfAccess, LimitsBroadcastsOnEveryRadio) {
  State state = OneNetwork();
  state.macFilterGlobal = {{{"Phone", kPhone}}, true, 50};
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  for (RadioPlan& radio : expected) {
    radio.broadcastLimit = {{{"Phone", kPhone}}, true, 50};
  }
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

TEST(PlanOfPassphrases, HasTheRadiosOwnWhereThereIsOne) {
  State state = OneNetwork();
  state.networks[0].radioPassphrases = {{Band5GHz_1, "lower passphrase", 5},
                                        {Band5GHz_2, "upper passphrase", 6}};
  std::vector<RadioPlan> expected = PlanOfOneNetwork();
  expected[1].bsss[0].passphrase = "lower passphrase";
  expected[2].bsss[0].passphrase = "upper passphrase";
  EXPECT_EQ(MakePlan(state, TriBandRouter(), {}), expected);
}

}  // namespace

}  // namespace TALO::Wifid
