#include "support/events.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

#include <optional>

// Who is connected to the BSSs, who is not any more, and why.

namespace TALO::Wifid {

namespace {

using Events = std::vector<std::string>;
using Rule = AccessPlan::Rule;
using Wifi::Util::MACAddress;

const MACAddress kFirst("0a:00:00:00:00:01");
const MACAddress kSecond("0a:00:00:00:00:02");

class LinuxStationsTest : public testing::Test, protected LinuxRouter {
 protected:
  Events EventsOf(const RadioPlan& plan) {
    TakeEvents();
    EXPECT_EQ("done", Describe(Apply(plan)));
    Settle();
    return TakeEvents();
  }
};

TEST_F(LinuxStationsTest, AStationIsShownWithWhatTheKernelKnowsOfIt) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  machine.kernel.neighbours[kFirst] = "192.168.1.20";
  machine.Advance(3000);
  LiveStation expected;
  expected.address = kFirst;
  expected.ipAddress = "192.168.1.20";
  expected.signal = -50;
  expected.transmitRate = 300;
  expected.receiveRate = 240;
  expected.connectedTime = 3;
  ASSERT_EQ(1U, Live(0).bsss.at(0).stations.size());
  EXPECT_TRUE(expected == Live(0).bsss.at(0).stations.at(0));
}

TEST_F(LinuxStationsTest, AStationThatLeavesIsSaidToHaveLeft) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  FakeDevice& device = Join(1, 1);
  machine.hostapd.Leave(device);
  Settle();
  EXPECT_EQ((Events{"Band2_4GHz up", "0a:00:00:00:00:01 connected to wlan0_1 (1)",
                    "0a:00:00:00:00:01 left wlan0_1 (1): left"}),
            TakeEvents());
  EXPECT_TRUE(Live(0).bsss.at(0).stations.empty());
}

TEST_F(LinuxStationsTest, WhoCameOrLeftUnheardIsFoundWithinHalfAMinute) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  FakeDevice& first = Join(1, 1);
  TakeEvents();
  machine.hostapd.DetachAll();
  machine.hostapd.Leave(first);
  FakeDevice& second = Join(2, 1);
  EXPECT_EQ(Events(), TakeEvents());
  machine.Advance(31'000);
  EXPECT_EQ(
      (Events{"0a:00:00:00:00:01 left wlan0_1 (1): left", "0a:00:00:00:00:02 connected to wlan0_1 (1)"}),
      TakeEvents());
  ASSERT_EQ(1U, Live(0).bsss.at(0).stations.size());
  EXPECT_EQ(kSecond, Live(0).bsss.at(0).stations.at(0).address);
  machine.hostapd.Leave(second);
  machine.Advance(10);
  EXPECT_EQ((Events{"0a:00:00:00:00:02 left wlan0_1 (1): left"}), TakeEvents());
}

TEST_F(LinuxStationsTest, NobodyLeavesSinceTheKernelCannotBeAsked) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  TakeEvents();
  for (const char* question : {"GetStations", "GetInterfaces"}) {
    machine.kernel.broken = {question};
    machine.Advance(31'000);
    EXPECT_EQ(Events(), TakeEvents()) << question;
  }
  machine.kernel.broken.clear();
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
}

TEST_F(LinuxStationsTest, WhoIsNotLetInYetNeitherComesNorLeaves) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  TakeEvents();
  machine.kernel.Link("wlan0_1", kFirst, false);
  machine.kernel.Link("wlan0_1", kSecond, false);
  machine.Advance(31'000);
  EXPECT_EQ(Events(), TakeEvents());
}

TEST_F(LinuxStationsTest, WhoJoinsBeforeHostapdHasSaidThatTheBSSIsUpIsThere) {
  std::optional<Result<void>> answer;
  driver->Apply(Plan(0, {1}), ApplyMode::WhatDiffers, [&](const Result<void>& result) { answer = result; });
  ASSERT_TRUE(WaitFor([this] { return machine.hostapd.HasBSS("wlan0_1"); }));
  machine.kernel.Link("wlan0_1", kFirst, true);
  machine.hostapd.TellOf("wlan0_1", "AP-STA-CONNECTED 0a:00:00:00:00:01");
  ASSERT_TRUE(WaitFor([&] { return answer.has_value(); }));
  EXPECT_EQ((Events{"Band2_4GHz up", "0a:00:00:00:00:01 connected to wlan0_1 (1)"}), TakeEvents());
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
}

TEST_F(LinuxStationsTest, AnotherPassphraseDropsThoseWithTheOldOne) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  FakeDevice& device = Join(1, 1);
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].passphrase = "battery-staple";
  EXPECT_EQ((Events{"0a:00:00:00:00:01 left wlan0_1 (1): passphrase changed"}), EventsOf(plan));
  device.knows["Network 1"] = "battery-staple";
  machine.hostapd.Bring({kSecond, {{"Network 1", "passphrase-1"}}});
  Settle();
  EXPECT_EQ((Events{"0a:00:00:00:00:01 connected to wlan0_1 (1)"}), TakeEvents());
  // A radio that is made anew is the same.
  const std::string& file = machine.files.files.at("wlan0_1.conf");
  EXPECT_NE(std::string::npos, file.find("wpa_passphrase=battery-staple\n"));
}

TEST_F(LinuxStationsTest, AKeyThatIsStillCachedLetsNobodyBackIn) {
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].securityMode = SecurityMode::PersonalWPA2_3Mixed;
  ASSERT_TRUE(Apply(plan).Succeeded());
  FakeDevice& device = Join(1, 1);
  device.speaksWPA3 = true;
  machine.hostapd.BSSOf("wlan0_1").Obey("DEAUTHENTICATE ff:ff:ff:ff:ff:ff");
  machine.hostapd.Bring({kSecond, {}});
  Settle();
  ASSERT_EQ("wlan0_1", device.on);
  plan.bsss[0].passphrase = "battery-staple";
  EXPECT_EQ((Events{"0a:00:00:00:00:01 left wlan0_1 (1): passphrase changed"}), EventsOf(plan));
  EXPECT_EQ("", device.on);
}

TEST_F(LinuxStationsTest, AccessDropsThoseWhomItDoesNotAdmitAndNobodyElse) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  Join(2, 1);
  const std::string firstLeft = "0a:00:00:00:00:01 left wlan0_1 (1): refused";
  const std::string secondLeft = "0a:00:00:00:00:02 left wlan0_1 (1): refused";
  const std::string firstCame = "0a:00:00:00:00:01 connected to wlan0_1 (1)";
  const std::string secondCame = "0a:00:00:00:00:02 connected to wlan0_1 (1)";
  const std::vector<std::pair<AccessPlan, Events>> steps = {
      {{Rule::AllButListed, {kFirst}}, {firstLeft}},
      {{Rule::OnlyListed, {kFirst}}, {secondLeft, firstCame}},
      {{Rule::OnlyListed, {kFirst, kSecond}}, {secondCame}},
      {{Rule::OnlyListed, {kSecond}}, {firstLeft}},
      {{Rule::AllButListed, {kSecond}}, {secondLeft, firstCame}},
      {{Rule::OnlyListed, {}}, {firstLeft}},
      {{Rule::Everybody, {}}, {firstCame, secondCame}},
  };
  for (const auto& [access, events] : steps) {
    RadioPlan plan = Plan(0, {1});
    plan.bsss[0].access = access;
    EXPECT_EQ(events, EventsOf(plan));
  }
}

TEST_F(LinuxStationsTest, ABSSThatGoesDownDropsItsStationsForThatReason) {
  ASSERT_TRUE(Apply(Plan(0, {1, 2})).Succeeded());
  Join(1, 2);
  EXPECT_EQ((Events{"0a:00:00:00:00:01 left wlan0_2 (2): BSS down"}), EventsOf(Plan(0, {1})));
  EXPECT_EQ((Events{"0a:00:00:00:00:01 connected to wlan0_2 (2)"}), EventsOf(Plan(0, {1, 2})));
  RadioPlan off = Plan(0, {1, 2});
  off.enable = false;
  EXPECT_EQ((Events{"0a:00:00:00:00:01 left wlan0_2 (2): BSS down", "Band2_4GHz down"}), EventsOf(off));
}

TEST_F(LinuxStationsTest, HiddenAndBridgeChangeWithoutAWord) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].hidden = true;
  plan.bsss[0].bridge = "br1";
  EXPECT_EQ(Events(), EventsOf(plan));
  EXPECT_TRUE(machine.hostapd.BSSOf("wlan0_1").IsHidden());
  EXPECT_EQ("br1", machine.kernel.GetBridgeOf("wlan0_1"));
}

TEST_F(LinuxStationsTest, NodesOfTheMeshComeAndGoWithoutAWord) {
  RadioPlan plan = Plan(0, {0});
  plan.bsss[0].bridge.clear();
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ("br0", machine.kernel.GetBridgeOf("wlan0_0"));
  TakeEvents();
  FakeDevice& node = Join(1, 0);
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
  machine.hostapd.Leave(node);
  Settle();
  EXPECT_EQ(Events(), TakeEvents());
  EXPECT_TRUE(Live(0).bsss.at(0).stations.empty());
}

TEST_F(LinuxStationsTest, NodesInFourAddressModeAreAtInterfacesOfTheirOwn) {
  ASSERT_TRUE(Apply(Plan(0, {0})).Succeeded());
  for (const char* name : {"wlan0_0.sta1", "wlan0_0x"}) {
    const MACAddress address(name == std::string("wlan0_0.sta1") ? "0e:00:00:00:00:01" : "0e:00:00:00:00:02");
    ASSERT_TRUE(
        machine.kernel.AddInterface({0, name, InterfaceType::AccessPointVLAN, address, false}).Succeeded());
  }
  machine.kernel.Link("wlan0_0.sta1", kFirst, true);
  machine.kernel.Link("wlan0_0x", kSecond, true);
  machine.Advance(31'000);
  ASSERT_EQ(1U, Live(0).bsss.at(0).stations.size());
  EXPECT_EQ(kFirst, Live(0).bsss.at(0).stations.at(0).address);
  EXPECT_EQ(-50, Live(0).bsss.at(0).stations.at(0).signal);
}

TEST_F(LinuxStationsTest, TheRadiosPowerFollowsThePlan) {
  RadioPlan plan = Plan(0, {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  // All that the country allows is what it sends with by itself.
  EXPECT_TRUE(machine.kernel.powers.empty());
  plan.transmitPower = 50;
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ(17, machine.kernel.powers.at(0));
  plan.transmitPower = 100;
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ(20, machine.kernel.powers.at(0));
}

TEST_F(LinuxStationsTest, APowerThatCannotBeSetFailsWhoAsksForItAndNobodyElse) {
  machine.kernel.refusals["SetTransmitPower"] = "Operation not supported";
  const RadioPlan plan = Plan(0, {1});
  ASSERT_EQ("done", Describe(Apply(plan)));
  RadioPlan weaker = plan;
  weaker.transmitPower = 25;
  const std::string why = "the radio cannot send with 14 dBm: phy0: Operation not supported";
  EXPECT_EQ("RadioFailed " + why, Describe(Apply(weaker)));
  EXPECT_EQ("done", Describe(Apply(plan)));
  EXPECT_FALSE(machine.HasNote(DriverNote::Weight::Warning, why));
  // As a router is left that once had other hardware.
  driver.reset();
  driver = std::make_unique<LinuxDriver>(LinuxSetup{.model = SupportedModel::Dune40}, machine.Doors());
  EXPECT_EQ("done", Describe(Apply(weaker)));
  EXPECT_TRUE(machine.HasNote(DriverNote::Weight::Warning, why));
  EXPECT_EQ(1U, Live(0).bsss.size());
}

}  // namespace

}  // namespace TALO::Wifid
