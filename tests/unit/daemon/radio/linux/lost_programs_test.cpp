#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

#include <algorithm>

// What becomes of the radios when hostapd or wpa_supplicant ends, and how they come back.

namespace TALO::Wifid {

namespace {

using Events = std::vector<std::string>;
using Interfaces = std::vector<std::string>;
using Phase = LiveUpstream::Phase;
using Wifi::Util::MACAddress;

class LostProgramsTest : public testing::Test, protected LinuxRouter {
 protected:
  bool IsBack(const std::string& interface) {
    return WaitFor([&] { return machine.hostapd.HasBSS(interface); });
  }
};

TEST_F(LostProgramsTest, HostapdThatIsKilledComesBackWithAllItHad) {
  ASSERT_TRUE(Apply(Plan(0, {1, 2})).Succeeded());
  ASSERT_TRUE(Apply(Plan(1, {1})).Succeeded());
  Join(1, 2);
  TakeEvents();
  machine.hostapd.Die("killed by signal 9");
  machine.Advance(10);
  EXPECT_EQ((Events{"0a:00:00:00:00:01 left wlan0_2 (2): BSS down", "Band2_4GHz down", "Band5GHz down"}),
            TakeEvents());
  EXPECT_FALSE(Live(0).up);
  EXPECT_TRUE(Live(0).bsss.empty());
  ASSERT_TRUE(IsBack("wlan0_2"));
  Settle();
  EXPECT_EQ((Interfaces{"wlan0", "wlan0_1", "wlan0_2"}), machine.hostapd.GetBSSs("phy0"));
  EXPECT_EQ((Interfaces{"wlan1", "wlan1_1"}), machine.hostapd.GetBSSs("phy1"));
  EXPECT_EQ("br0", machine.kernel.GetBridgeOf("wlan0_2"));
  Events events = TakeEvents();
  std::ranges::sort(events);
  EXPECT_EQ((Events{"0a:00:00:00:00:01 connected to wlan0_2 (2)", "Band2_4GHz up", "Band5GHz up"}), events);
  EXPECT_TRUE(
      machine.HasNote(DriverNote::Weight::Failure, "hostapd is started again: it ended: killed by signal 9"));
}

TEST_F(LostProgramsTest, AnApplyUnderWayFailsWithHostapdAndTheLastPlanComesBack) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  machine.hostapd.diesOf = "ADD bss_config=phy0:/run/radios/wlan0_2.conf";
  EXPECT_EQ("RadioFailed wlan0_2 cannot be brought up: hostapd does not run: it ended: killed by signal 11",
            Describe(Apply(Plan(0, {1, 2}))));
  ASSERT_TRUE(IsBack("wlan0_1"));
  Settle();
  EXPECT_EQ((Interfaces{"wlan0", "wlan0_1"}), machine.hostapd.GetBSSs("phy0"));
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  EXPECT_EQ((Interfaces{"wlan0", "wlan0_1"}), machine.hostapd.GetBSSs("phy0"));
}

TEST_F(LostProgramsTest, AnApplyWaitsForHostapdThatIsBeingStarted) {
  machine.hostapd.startsAfter = std::chrono::seconds(3);
  machine.hostapd.Die("killed by signal 9");
  EXPECT_EQ("done", Describe(Apply(Plan(0, {1}))));
  EXPECT_EQ((Interfaces{"wlan0", "wlan0_1"}), machine.hostapd.GetBSSs("phy0"));
}

TEST_F(LostProgramsTest, HostapdThatCannotBeStartedIsTheReasonWhyNothingWorks) {
  machine.hostapd.startFailure = "Permission denied";
  machine.hostapd.Die("exit status 1");
  EXPECT_EQ("RadioFailed hostapd does not run: cannot start /usr/sbin/hostapd: Permission denied",
            Describe(Apply(Plan(0, {1}))));
  machine.hostapd.startFailure.clear();
  EXPECT_TRUE(WaitFor([this] { return machine.hostapd.IsRunning(); }));
  EXPECT_EQ("done", Describe(Apply(Plan(0, {1}))));
}

// The kernel takes five seconds to refuse a country, and a caller waits half a minute at most.
TEST_F(LostProgramsTest, AChangeNeverWaitsForWhatWasToBeBroughtBackAfterTheOneBefore) {
  machine.kernel.takesCountries = false;
  EXPECT_FALSE(Apply(Plan(0, {1})).Succeeded());
  EXPECT_FALSE(Apply(Plan(0, {1, 2})).Succeeded());
  for (const int network : {1, 2}) {
    const Timers::Duration began = machine.timers.Now();
    EXPECT_FALSE(Apply(Plan(0, {network})).Succeeded());
    EXPECT_LT(machine.timers.Now() - began, std::chrono::milliseconds(5100)) << network;
  }
  machine.kernel.takesCountries = true;
  EXPECT_TRUE(IsBack("wlan0_1"));
}

TEST_F(LostProgramsTest, HostapdThatHangsIsStartedAgain) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  TakeEvents();
  machine.hostapd.hangs = true;
  ASSERT_TRUE(WaitFor([this] { return !Live(0).up; }));
  machine.hostapd.hangs = false;
  ASSERT_TRUE(WaitFor([this] { return Live(0).up && !Live(0).bsss.empty(); }));
  EXPECT_EQ((Events{"Band2_4GHz down", "Band2_4GHz up"}), TakeEvents());
  EXPECT_EQ(2, machine.hostapd.CountStarts());
}

TEST_F(LostProgramsTest, WhatHostapdIsAskedWhileItHangsFailsAfterTenSecondsAndAllComesBack) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  ASSERT_TRUE(Apply(Plan(1, {1})).Succeeded());
  machine.hostapd.hangs = true;
  const Timers::Duration before = machine.timers.Now();
  std::vector<std::string> answers;
  const auto note = [&answers](const Result<void>& result) { answers.push_back(Describe(result)); };
  driver->Apply(Plan(0, {1, 2}), ApplyMode::WhatDiffers, note);
  driver->Apply(Plan(1, {1, 2}), ApplyMode::WhatDiffers, note);
  ASSERT_TRUE(WaitFor([&answers] { return answers.size() == 2; }));
  EXPECT_EQ(10, std::chrono::duration_cast<std::chrono::seconds>(machine.timers.Now() - before).count());
  EXPECT_EQ(
      (std::vector<std::string>{
          "RadioFailed wlan0_2 cannot be brought up: no answer within ten seconds",
          "RadioFailed wlan1_2 cannot be brought up: hostapd does not run: no answer within ten seconds"}),
      answers);
  EXPECT_FALSE(Live(0).up || Live(1).up);
  machine.hostapd.hangs = false;
  ASSERT_TRUE(IsBack("wlan0_1"));
  ASSERT_TRUE(IsBack("wlan1_1"));
  EXPECT_EQ(2, machine.hostapd.CountStarts());
}

TEST_F(LostProgramsTest, AccessPointsDoNotNoticeThatWpaSupplicantIsKilled) {
  machine.supplicant.air.push_back({"Uplink", MACAddress("06:00:00:00:00:01"), 2412, -60, "uplink-password"});
  RadioPlan plan = Plan(0, {1});
  plan.station = Station("Uplink", "uplink-password");
  ASSERT_TRUE(Apply(plan).Succeeded());
  const auto isConnected = [this] { return Live(0).station.phase == Phase::Connected; };
  ASSERT_TRUE(WaitFor(isConnected));
  Join(1, 1);
  TakeEvents();
  machine.supplicant.Die("killed by signal 9");
  machine.Advance(10);
  EXPECT_EQ(Phase::Disabled, Live(0).station.phase);
  EXPECT_TRUE(WaitFor(isConnected));
  EXPECT_EQ(Events(), TakeEvents());
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
}

TEST_F(LostProgramsTest, AStationThatIsNotWantedAnyMoreIsGoneAlsoWhenWpaSupplicantWasKilled) {
  RadioPlan plan = Plan(0, {1});
  plan.station = Station("Uplink", "uplink-password");
  ASSERT_TRUE(Apply(plan).Succeeded());
  machine.supplicant.Die("killed by signal 9");
  machine.Advance(10);
  plan.station.reset();
  ASSERT_EQ("done", Describe(Apply(plan)));
  Settle();
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0sta"));
  EXPECT_FALSE(machine.supplicant.HasInterface("wlan0sta"));
}

TEST_F(LostProgramsTest, ABSSThatGoesDownByItselfComesBackBesideTheOthers) {
  ASSERT_TRUE(Apply(Plan(0, {1, 2})).Succeeded());
  Join(1, 2);
  TakeEvents();
  machine.hostapd.LoseInterface("wlan0_1");
  machine.Advance(10);
  EXPECT_FALSE(Live(0).bsss.at(0).up);
  EXPECT_TRUE(machine.HasNote(DriverNote::Weight::Warning, "wlan0_1 went down by itself"));
  ASSERT_TRUE(WaitFor([this] { return Live(0).bsss.size() == 2 && Live(0).bsss.at(0).up; }));
  EXPECT_EQ(Events(), TakeEvents());
  EXPECT_EQ(1U, Live(0).bsss.at(1).stations.size());
}

TEST_F(LostProgramsTest, ARadioThatGoesDownByItselfComesBackWithItsBSSs) {
  ASSERT_TRUE(Apply(Plan(0, {1, 2})).Succeeded());
  TakeEvents();
  machine.hostapd.LoseInterface("wlan0");
  machine.Advance(10);
  EXPECT_FALSE(Live(0).up);
  ASSERT_TRUE(WaitFor([this] { return Live(0).up && Live(0).bsss.size() == 2; }));
  EXPECT_EQ((Events{"Band2_4GHz down", "Band2_4GHz up"}), TakeEvents());
}

TEST_F(LostProgramsTest, ABSSThatGoesDownWhileItsRadioListensComesBackAfterwards) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  bool isHeard = false;
  driver->Scan(RadioFrequency::Band2_4GHz, [&isHeard](const auto& heard) { isHeard = heard.Succeeded(); });
  machine.Advance(500);
  machine.hostapd.LoseInterface("wlan0_1");
  machine.Advance(10);
  EXPECT_FALSE(isHeard);
  EXPECT_FALSE(Live(0).bsss.at(0).up);
  ASSERT_TRUE(WaitFor([this] { return !Live(0).bsss.empty() && Live(0).bsss.at(0).up; }));
  EXPECT_TRUE(isHeard);
}

TEST_F(LostProgramsTest, WhatCannotBeBroughtBackIsTriedAgainAndSaid) {
  ASSERT_TRUE(Apply(Plan(1, {1})).Succeeded());
  machine.kernel.takesCountries = false;
  machine.kernel.EnforceCountry("00");
  machine.hostapd.Die("killed by signal 9");
  const std::string sentence =
      "the radio Band5GHz cannot be brought back: the kernel does not take the country DE: it has the rules "
      "of "
      "the world";
  ASSERT_TRUE(WaitFor([&] { return machine.HasNote(DriverNote::Weight::Failure, sentence); }));
  machine.kernel.takesCountries = true;
  EXPECT_TRUE(IsBack("wlan1_1"));
}

TEST_F(LostProgramsTest, TheFirstPlanIsTriedUntilItIsReached) {
  machine.kernel.takesCountries = false;
  EXPECT_FALSE(Apply(Plan(0, {1})).Succeeded());
  machine.kernel.takesCountries = true;
  EXPECT_TRUE(IsBack("wlan0_1"));
}

TEST_F(LostProgramsTest, AccessPointsNeedNoWpaSupplicant) {
  machine.supplicant.startFailure = "Permission denied";
  machine.supplicant.Die("exit status 1");
  EXPECT_EQ("done", Describe(Apply(Plan(0, {1}))));
  machine.hostapd.Die("killed by signal 9");
  EXPECT_TRUE(IsBack("wlan0_1"));
}

}  // namespace

}  // namespace TALO::Wifid
