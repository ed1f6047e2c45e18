#include "support/events.h"
#include "support/print_model.h"
#include "unit/daemon/radio/driver_conformance_test.h"

#include <algorithm>
#include <functional>
#include <map>
#include <string>

// What every driver owes the stations of a BSS that a change does not concern.

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

/// A change of each member of a plan, by its name.
template <typename Plan>
using Changes = std::map<std::string, std::function<void(Plan&)>>;

const Changes<BSSPlan>& ChangesOfABSS() {
  static const Changes<BSSPlan> kChanges = {
      {"networkId", [](BSSPlan& bss) { bss.networkId = 7; }},
      // Its address with it: that of the slot.
      {"interface",
       [](BSSPlan& bss) {
         bss.interface.back() = '3';
         bss.bssid = MACAddress(bss.bssid.ToString().substr(0, 16) + "3");
       }},
      {"bssid", [](BSSPlan& bss) { bss.bssid = MACAddress(bss.bssid.ToString().substr(0, 16) + "9"); }},
      {"ssid", [](BSSPlan& bss) { bss.ssid = "Elsewhere"; }},
      {"hidden", [](BSSPlan& bss) { bss.hidden = true; }},
      {"securityMode", [](BSSPlan& bss) { bss.securityMode = SecurityMode::PersonalWPA2_3Mixed; }},
      {"passphrase", [](BSSPlan& bss) { bss.passphrase = "battery-staple"; }},
      {"bridge", [](BSSPlan& bss) { bss.bridge.clear(); }},
      {"access", [](BSSPlan& bss) { bss.access.rule = AccessPlan::Rule::OnlyListed; }},
  };
  return kChanges;
}

/// Those that are to disturb no station at all.
const Changes<RadioPlan>& QuietChangesOfARadio() {
  static const Changes<RadioPlan> kChanges = {
      {"transmitPower", [](RadioPlan& plan) { plan.transmitPower = 50; }},
      {"country", [](RadioPlan& plan) { plan.country = CountryCode::FR; }},
      {"station",
       [](RadioPlan& plan) {
         plan.station =
             StationPlan{"wlansta", "nobody has this", "", "correct-horse", {}, SecurityMode::PersonalWPA2};
       }},
      {"backhaulStation",
       [](RadioPlan& plan) {
         plan.backhaulStation =
             BackhaulStationPlan{"wlanbhs", "nobody has this", "correct-horse", ScanType::Default};
       }},
      {"broadcastLimit",
       [](RadioPlan& plan) {
         plan.broadcastLimit = {{}, true, 10};
       }},
  };
  return kChanges;
}

}  // namespace

RadioPlan DriverConformanceTest::Populate(const RadioCapability& radio) {
  RadioPlan plan = PlanOf(radio, {1, 4});
  EXPECT_TRUE(Apply(plan).Succeeded());
  EXPECT_TRUE(world_->WaitUntil([&] { return StationsOf(radio).size() == 1; }));
  // The event that it came may follow.
  world_->Settle();
  return plan;
}

std::vector<LiveStation> DriverConformanceTest::StationsOf(const RadioCapability& radio) {
  const LiveRadio live = LiveOf(radio);
  const auto found = std::ranges::find(live.bsss, 4, &LiveBSS::networkId);
  return found != live.bsss.end() ? found->stations : std::vector<LiveStation>();
}

void DriverConformanceTest::ExpectUndisturbed(const RadioCapability& radio, const RadioPlan& plan) {
  const std::vector<LiveStation> before = StationsOf(radio);
  ASSERT_EQ(1U, before.size());
  events_.clear();
  ASSERT_TRUE(Apply(plan).Succeeded());
  const std::vector<LiveStation> after = StationsOf(radio);
  ASSERT_EQ(1U, after.size());
  for (const std::string& event : events_) {
    EXPECT_FALSE(event.starts_with(before[0].address.ToString())) << event;
  }
  EXPECT_EQ(before[0].address, after[0].address);
  EXPECT_LE(before[0].connectedTime, after[0].connectedTime);
}

TEST_P(DriverConformanceTest, AnyChangeOfAnotherBSSKeepsItsStations) {
  RadioPlan plan = Populate(FirstRadio());
  const BSSPlan first = plan.bsss[0];
  for (const auto& [member, change] : ChangesOfABSS()) {
    SCOPED_TRACE(member);
    change(plan.bsss[0]);
    ExpectUndisturbed(FirstRadio(), plan);
    plan.bsss[0] = first;
    ExpectUndisturbed(FirstRadio(), plan);
  }
  Wifi::ForEachMember(first, [](auto member, const auto&) {
    EXPECT_TRUE(ChangesOfABSS().contains(member.name)) << member.name;
  });
}

TEST_P(DriverConformanceTest, BSSsThatComeAndGoKeepItsStations) {
  Populate(FirstRadio());
  for (const std::vector<int>& slots : std::vector<std::vector<int>>{{4}, {1, 2, 4}, {4, 2}, {1, 4}}) {
    ExpectUndisturbed(FirstRadio(), PlanOf(FirstRadio(), slots));
  }
}

TEST_P(DriverConformanceTest, WhatConcernsNoBSSKeepsEveryStation) {
  RadioPlan plan = Populate(FirstRadio());
  for (const auto& [member, change] : QuietChangesOfARadio()) {
    SCOPED_TRACE(member);
    if (member == "broadcastLimit" && !FirstRadio().limitsBroadcasts) {
      continue;
    }
    change(plan);
    ExpectUndisturbed(FirstRadio(), plan);
  }
}

TEST_P(DriverConformanceTest, ABroadcastLimitIsRefusedWhereTheRadioCannotLimit) {
  RadioPlan plan = Populate(FirstRadio());
  const LiveStation before = StationsOf(FirstRadio()).at(0);
  plan.broadcastLimit = {{}, true, 10};
  const Result<void> result = Apply(plan);
  ASSERT_EQ(FirstRadio().limitsBroadcasts, result.Succeeded());
  if (!result.Succeeded()) {
    EXPECT_EQ(ErrorCode::NotSupported, result.Why().code);
  }
  EXPECT_EQ(before.address, StationsOf(FirstRadio()).at(0).address);
}

TEST_P(DriverConformanceTest, AnotherRadioKeepsItsStations) {
  Populate(FirstRadio());
  const LiveStation before = StationsOf(FirstRadio()).at(0);
  events_.clear();
  RadioPlan other = PlanOf(Radios()[1], {1});
  ASSERT_TRUE(Apply(other).Succeeded());
  other.channel = Radios()[1].channels.at(1);
  ASSERT_TRUE(Apply(other).Succeeded());
  ASSERT_TRUE(Apply(other, ApplyMode::Everything).Succeeded());
  const std::string up = Describe(RadioStateChanged{other.radio, true});
  EXPECT_EQ((std::vector<std::string>{up, Describe(RadioStateChanged{other.radio, false}), up}), events_);
  EXPECT_LE(before.connectedTime, StationsOf(FirstRadio()).at(0).connectedTime);
}

}  // namespace TALO::Wifid
