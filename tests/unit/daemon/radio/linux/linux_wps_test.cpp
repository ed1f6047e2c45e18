#include "support/events.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

// How push button sessions end.

namespace TALO::Wifid {

namespace {

using Events = std::vector<std::string>;

class LinuxWPSTest : public testing::Test, protected LinuxRouter {
 protected:
  LinuxWPSTest() {
    EXPECT_EQ("done", Describe(Apply(Plan(0, {1, 2}))));
    TakeEvents();
  }

  std::string Start(const std::string& interface) {
    std::optional<Result<void>> answer;
    driver->StartWPS(interface, [&](const Result<void>& result) { answer = result; });
    return WaitFor([&] { return answer.has_value(); }) ? Describe(*answer) : "never answered";
  }
};

TEST_F(LinuxWPSTest, AnEnrolleeEndsIt) {
  ASSERT_EQ("done", Start("wlan0_1"));
  EXPECT_EQ("Busy a WPS session runs on wlan0_1", Start("wlan0_2"));
  machine.hostapd.PressButton("wlan0_1");
  Settle();
  EXPECT_EQ((Events{"WPS on wlan0_1: enrolled"}), TakeEvents());
  EXPECT_EQ("done", Start("wlan0_2"));
}

TEST_F(LinuxWPSTest, TwoEnrolleesEndIt) {
  ASSERT_EQ("done", Start("wlan0_1"));
  machine.hostapd.PressTwoButtons("wlan0_1");
  Settle();
  EXPECT_EQ((Events{"WPS on wlan0_1: overlap"}), TakeEvents());
  EXPECT_FALSE(machine.hostapd.BSSOf("wlan0_1").IsOpenForPushButton());
}

TEST_F(LinuxWPSTest, ItEndsAfterTwoMinutes) {
  ASSERT_EQ("done", Start("wlan0_1"));
  machine.Advance(119'000);
  EXPECT_EQ(Events(), TakeEvents());
  machine.Advance(1'500);
  EXPECT_EQ((Events{"WPS on wlan0_1: timed out"}), TakeEvents());
}

TEST_F(LinuxWPSTest, ItEndsAlsoWhereHostapdDoesNotSaySo) {
  ASSERT_EQ("done", Start("wlan0_1"));
  machine.hostapd.BSSOf("wlan0_1").ClosePushButton();
  machine.Advance(126'000);
  EXPECT_EQ((Events{"WPS on wlan0_1: timed out"}), TakeEvents());
}

TEST_F(LinuxWPSTest, ABSSThatGoesDownEndsIt) {
  ASSERT_EQ("done", Start("wlan0_1"));
  ASSERT_EQ("done", Describe(Apply(Plan(0, {2}))));
  EXPECT_EQ((Events{"WPS on wlan0_1: cancelled"}), TakeEvents());
}

TEST_F(LinuxWPSTest, HostapdThatIsKilledEndsIt) {
  ASSERT_EQ("done", Start("wlan0_1"));
  machine.hostapd.Die("killed by signal 9");
  machine.Advance(10);
  EXPECT_EQ((Events{"WPS on wlan0_1: cancelled", "Band2_4GHz down"}), TakeEvents());
  ASSERT_TRUE(WaitFor([this] { return machine.hostapd.HasBSS("wlan0_1"); }));
  Settle();
  EXPECT_EQ("done", Start("wlan0_1"));
}

TEST_F(LinuxWPSTest, ABSSThatGoesDownMeanwhileIsNotOpened) {
  std::optional<Result<void>> answer;
  driver->StartWPS("wlan0_1", [&](const Result<void>& result) { answer = result; });
  machine.hostapd.diesOf = "IFNAME=wlan0_1 WPS_PBC";
  ASSERT_TRUE(WaitFor([&] { return answer.has_value(); }));
  EXPECT_EQ(ErrorCode::RadioFailed, answer->Why().code);
  Settle();
  EXPECT_EQ((Events{"Band2_4GHz down", "Band2_4GHz up"}), TakeEvents());
  EXPECT_EQ("done", Start("wlan0_1"));
}

TEST_F(LinuxWPSTest, ABSSWithoutItRefuses) {
  EXPECT_EQ("RadioFailed the BSS wlan0_7 is not up", Start("wlan0_7"));
  RadioPlan plan = Plan(0, {1, 2});
  plan.bsss[0].securityMode = SecurityMode::PersonalWPA3;
  ASSERT_EQ("done", Describe(Apply(plan)));
  EXPECT_EQ("NotSupported the BSS wlan0_1 cannot use WPS with the security mode PersonalWPA3",
            Start("wlan0_1"));
  plan.bsss[0] = Plan(0, {0}).bsss[0];
  plan.bsss[1].hidden = true;
  ASSERT_EQ("done", Describe(Apply(plan)));
  EXPECT_EQ("NotSupported the BSS wlan0_0 cannot use WPS for the backhaul", Start("wlan0_0"));
  EXPECT_EQ("NotSupported the BSS wlan0_2 cannot use WPS while its SSID is hidden", Start("wlan0_2"));
  ASSERT_EQ("done", Describe(Apply(Plan(0, {1, 2}))));
  machine.hostapd.oddAnswers["IFNAME=wlan0_2 WPS_PBC"] = "FAIL\n";
  EXPECT_EQ("RadioFailed the BSS wlan0_2 does not take a WPS session", Start("wlan0_2"));
  EXPECT_EQ("done", Start("wlan0_2"));
}

}  // namespace

}  // namespace TALO::Wifid
