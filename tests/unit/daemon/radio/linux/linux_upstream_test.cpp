#include "support/events.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

#include <algorithm>

// What a radio hears, and its own stations.

namespace TALO::Wifid {

namespace {

using Phase = LiveUpstream::Phase;
using Wifi::Util::MACAddress;

const MACAddress kUplink("06:00:00:00:00:01");

class LinuxUpstreamTest : public testing::Test, protected LinuxRouter {
 protected:
  LinuxUpstreamTest() { machine.supplicant.air = {{"Uplink", kUplink, 2412, -60, "uplink-password"}}; }

  bool Reaches(Phase phase) {
    return WaitFor([&] { return Live(0).station.phase == phase; });
  }
  bool BackhaulReaches(Phase phase) {
    return WaitFor([&] { return Live(0).backhaulStation.phase == phase; });
  }
  RadioPlan PlanWithStation(const std::string& passphrase) {
    RadioPlan plan = Plan(0, {1});
    plan.station = Station("Uplink", passphrase);
    return plan;
  }
  RadioPlan PlanWithBackhaul(ScanType scanType) {
    RadioPlan plan = Plan(0, {1});
    plan.backhaulStation = BackhaulStationPlan{"wlan0bhs", "Uplink", "uplink-password", scanType};
    return plan;
  }
  bool WasAsked(const std::string& request) const {
    return std::ranges::find(machine.supplicant.requests, request) != machine.supplicant.requests.end();
  }
  std::string Reconnect() {
    std::optional<Result<void>> answer;
    driver->Reconnect(RadioFrequency::Band2_4GHz, [&](const Result<void>& result) { answer = result; });
    return WaitFor([&] { return answer.has_value(); }) ? Describe(*answer) : "never answered";
  }
};

TEST_F(LinuxUpstreamTest, AStationJoinsItsAccessPoint) {
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  EXPECT_EQ("scanning for Uplink", Describe(Live(0).station));
  ASSERT_TRUE(Reaches(Phase::Connected));
  machine.Advance(5000);
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -50 dBm, 300 Mbit/s for 5 s",
            Describe(Live(0).station));
}

TEST_F(LinuxUpstreamTest, AWrongPasswordIsSaidAndARightOneJoins) {
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("wrong-password"))));
  ASSERT_TRUE(Reaches(Phase::Failed));
  EXPECT_EQ("failed to join Uplink: wrong password", Describe(Live(0).station));
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  EXPECT_TRUE(Reaches(Phase::Connected));
}

TEST_F(LinuxUpstreamTest, AnAccessPointThatGoesIsLookedFor) {
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  ASSERT_TRUE(Reaches(Phase::Connected));
  machine.supplicant.TakeOffTheAir(kUplink);
  machine.Advance(5);
  EXPECT_EQ("scanning for Uplink", Describe(Live(0).station));
  ASSERT_TRUE(Reaches(Phase::Failed));
  EXPECT_EQ("failed to join Uplink: no such access point", Describe(Live(0).station));
  machine.supplicant.air = {{"Uplink", kUplink, 2412, -60, "uplink-password"}};
  EXPECT_TRUE(Reaches(Phase::Connected));
}

TEST_F(LinuxUpstreamTest, WhatWpaSupplicantCouldNotTellIsFoundWithinHalfAMinute) {
  machine.supplicant.air.clear();
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  machine.supplicant.DetachAll();
  machine.supplicant.air = {{"Uplink", kUplink, 2412, -60, "uplink-password"}};
  machine.Advance(20'000);
  EXPECT_EQ("scanning for Uplink", Describe(Live(0).station));
  machine.Advance(11'000);
  EXPECT_EQ(Phase::Connected, Live(0).station.phase);
  EXPECT_EQ(kUplink, Live(0).station.bssid);
  machine.supplicant.DetachAll();
  machine.supplicant.TakeOffTheAir(kUplink);
  machine.Advance(31'000);
  EXPECT_NE(Phase::Connected, Live(0).station.phase);
}

TEST_F(LinuxUpstreamTest, AParentThatWasLostUnheardIsNotLookedForWhereItIsNotToBe) {
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
  ASSERT_TRUE(BackhaulReaches(Phase::Connected));
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Disable))));
  machine.supplicant.DetachAll();
  machine.supplicant.TakeOffTheAir(kUplink);
  machine.supplicant.requests.clear();
  machine.Advance(31'000);
  EXPECT_EQ(Phase::Disabled, Live(0).backhaulStation.phase);
  EXPECT_TRUE(WasAsked("IFNAME=wlan0bhs DISCONNECT"));
}

TEST_F(LinuxUpstreamTest, ReconnectDropsAndRejoins) {
  ASSERT_EQ("done", Reconnect());
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  ASSERT_TRUE(Reaches(Phase::Connected));
  ASSERT_EQ("done", Reconnect());
  EXPECT_EQ("scanning for Uplink", Describe(Live(0).station));
  EXPECT_TRUE(Reaches(Phase::Connected));
}

TEST_F(LinuxUpstreamTest, TheBackhaulStationIsInFourAddressModeOnTheBridge) {
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
  ASSERT_TRUE(BackhaulReaches(Phase::Connected));
  EXPECT_EQ("br0", machine.kernel.GetBridgeOf("wlan0bhs"));
}

TEST_F(LinuxUpstreamTest, AnotherScanTypeKeepsTheParent) {
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
  ASSERT_TRUE(BackhaulReaches(Phase::Connected));
  machine.supplicant.requests.clear();
  for (const ScanType scanType : {ScanType::BestAP, ScanType::Disable}) {
    ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(scanType))));
    EXPECT_EQ(Phase::Connected, Live(0).backhaulStation.phase);
  }
  EXPECT_EQ((std::vector<std::string>{"IFNAME=wlan0bhs SET_NETWORK 0 bgscan \"simple:30:-65:300\"",
                                      "IFNAME=wlan0bhs SET_NETWORK 0 bgscan \"\""}),
            machine.supplicant.requests);
}

TEST_F(LinuxUpstreamTest, AStationThatMayNotLookDoesNotLookForALostParent) {
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Disable))));
  machine.Advance(60'000);
  EXPECT_EQ("disabled Uplink", Describe(Live(0).backhaulStation));
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
  ASSERT_TRUE(BackhaulReaches(Phase::Connected));
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Disable))));
  machine.supplicant.TakeOffTheAir(kUplink);
  machine.supplicant.air = {{"Uplink", kUplink, 2412, -60, "uplink-password"}};
  machine.Advance(60'000);
  EXPECT_EQ("disabled Uplink", Describe(Live(0).backhaulStation));
  EXPECT_TRUE(WasAsked("IFNAME=wlan0bhs DISCONNECT"));
}

TEST_F(LinuxUpstreamTest, AStationThatMayNotLookRejoinsItsParentWhenItIsTold) {
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
  ASSERT_TRUE(BackhaulReaches(Phase::Connected));
  ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Disable))));
  machine.Advance(5000);
  ASSERT_EQ("done", Reconnect());
  EXPECT_NE(Phase::Connected, Live(0).backhaulStation.phase);
  EXPECT_TRUE(BackhaulReaches(Phase::Connected));
}

// Messages and answers come on sockets of their own, so either may be the first.
TEST_F(LinuxUpstreamTest, AStationThatRejoinsBecauseItIsToldHasNotLostItsParent) {
  for (const int latency : {1, 50}) {
    machine.sockets.messageLatency = Timers::Duration(latency);
    ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Default))));
    ASSERT_TRUE(BackhaulReaches(Phase::Connected));
    ASSERT_EQ("done", Describe(Apply(PlanWithBackhaul(ScanType::Disable))));
    ASSERT_EQ("done", Reconnect());
    machine.Advance(100);
    EXPECT_EQ("scanning for Uplink", Describe(Live(0).backhaulStation));
    ASSERT_TRUE(BackhaulReaches(Phase::Connected));
    // What it loses now is lost.
    machine.supplicant.TakeOffTheAir(kUplink);
    machine.supplicant.air = {{"Uplink", kUplink, 2412, -60, "uplink-password"}};
    machine.Advance(60'000);
    EXPECT_EQ("disabled Uplink", Describe(Live(0).backhaulStation));
  }
}

TEST_F(LinuxUpstreamTest, ListensByAnInterfaceOfItsOwnThatIsGoneAfterwards) {
  for (int i = 2; i < 6; ++i) {
    machine.supplicant.air.push_back(
        {"Miller", MACAddress("06:00:00:00:00:0" + std::to_string(i)), 2437, -40 - i, ""});
  }
  // Not on a channel of this radio, and one of its own.
  machine.supplicant.air.push_back({"Far", MACAddress("06:00:00:00:00:09"), 5180, -30, ""});
  machine.supplicant.air.push_back({"Network 1", Plan(0, {1}).bsss[0].bssid, 2412, -20, ""});
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  const auto heard = Scan(0);
  ASSERT_TRUE(heard.Succeeded()) << heard.Why().sentence;
  std::vector<std::string> bssids;
  for (const Wifi::ScanResult& each : heard.Value()) {
    bssids.push_back(each.bssid.ToString());
  }
  // The strongest first, of an answer that took four questions.
  EXPECT_EQ((std::vector<std::string>{"06:00:00:00:00:02", "06:00:00:00:00:03", "06:00:00:00:00:04",
                                      "06:00:00:00:00:05", "06:00:00:00:00:01"}),
            bssids);
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0lsn"));
  EXPECT_FALSE(machine.files.files.contains("wlan0lsn.conf"));
  const std::size_t asked = machine.supplicant.requests.size();
  machine.Advance(9000);
  const auto again = Scan(0);
  ASSERT_TRUE(again.Succeeded());
  EXPECT_EQ(9, again.Value().at(0).age);
  EXPECT_EQ(asked, machine.supplicant.requests.size());
  machine.Advance(2000);
  ASSERT_TRUE(Scan(0).Succeeded());
  EXPECT_LT(asked, machine.supplicant.requests.size());
}

TEST_F(LinuxUpstreamTest, TheEndOfListeningMayBeToldBeforeItsBeginning) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  machine.supplicant.scansAtOnce = true;
  const Timers::Duration before = machine.timers.Now();
  const auto heard = Scan(0);
  ASSERT_TRUE(heard.Succeeded()) << heard.Why().sentence;
  EXPECT_EQ(1U, heard.Value().size());
  machine.Advance(11'000);
  machine.supplicant.cannotScan = true;
  const auto failed = Scan(0);
  ASSERT_FALSE(failed.Succeeded());
  EXPECT_EQ("the radio Band2_4GHz cannot listen (-95)", failed.Why().sentence);
  EXPECT_LT((machine.timers.Now() - before).count(), 11'100);
}

TEST_F(LinuxUpstreamTest, TheEndOfSomebodyElsesListeningIsPassedOver) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  for (const char* end : {"CTRL-EVENT-SCAN-RESULTS ", "CTRL-EVENT-SCAN-RESULTS id=77"}) {
    bool isHeard = false;
    driver->Scan(RadioFrequency::Band2_4GHz, [&isHeard](const auto& heard) { isHeard = heard.Succeeded(); });
    ASSERT_TRUE(WaitFor([this] { return machine.supplicant.HasInterface("wlan0lsn"); }));
    // It is asked to listen a millisecond later, and answers after two more.
    machine.Advance(1);
    machine.supplicant.TellOf("wlan0lsn", end);
    machine.Advance(1000);
    machine.supplicant.TellOf("wlan0lsn", "CTRL-EVENT-SCAN-RESULTS id=77");
    machine.Advance(900);
    EXPECT_FALSE(isHeard) << end;
    machine.Advance(200);
    EXPECT_TRUE(isHeard) << end;
    machine.Advance(11'000);
  }
}

TEST_F(LinuxUpstreamTest, HearsAlsoWhatStandsBehindAnEntryThatNoAnswerHolds) {
  machine.supplicant.air = {{"First", MACAddress("06:00:00:00:00:01"), 2412, -40, ""},
                            {"Long", MACAddress("06:00:00:00:00:02"), 2412, -50, "secret-of-long", true},
                            {"Longer", MACAddress("06:00:00:00:00:03"), 2412, -60, "", true},
                            {"Last", MACAddress("06:00:00:00:00:04"), 2412, -70, ""},
                            {"Longest", MACAddress("06:00:00:00:00:05"), 2412, -80, "", true}};
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  const auto heard = Scan(0);
  ASSERT_TRUE(heard.Succeeded()) << heard.Why().sentence;
  std::vector<std::string> names;
  for (const Wifi::ScanResult& each : heard.Value()) {
    names.push_back(each.ssid);
  }
  EXPECT_EQ((std::vector<std::string>{"First", "Long", "Longer", "Last", "Longest"}), names);
  EXPECT_EQ(SecurityMode::PersonalWPA2, heard.Value().at(1).securityMode);
}

TEST_F(LinuxUpstreamTest, ListensByTheStationAndWaitsWhileThatListensItself) {
  ASSERT_EQ("done", Describe(Apply(PlanWithStation("uplink-password"))));
  const auto heard = Scan(0);
  ASSERT_TRUE(heard.Succeeded()) << heard.Why().sentence;
  EXPECT_EQ(1U, heard.Value().size());
  const std::string scan =
      "IFNAME=wlan0sta SCAN freq=2412,2417,2422,2427,2432,2437,2442,2447,2452,2457,2462,2467,2472 use_id=1";
  EXPECT_LT(1, std::ranges::count(machine.supplicant.requests, scan));
}

TEST_F(LinuxUpstreamTest, ARadioThatCannotListenSaysWhy) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  machine.supplicant.cannotScan = true;
  EXPECT_EQ("RadioFailed the radio Band2_4GHz cannot listen (-95)", Describe(Scan(0).Why()));
  machine.supplicant.cannotScan = false;
  machine.supplicant.scansForEver = true;
  EXPECT_EQ("RadioFailed the radio Band2_4GHz did not come to the end of listening", Describe(Scan(0).Why()));
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0lsn"));
  machine.supplicant.scansForEver = false;
  machine.kernel.refusals["AddInterface"] = "Device or resource busy";
  EXPECT_EQ("RadioFailed the radio cannot listen: wlan0lsn: Device or resource busy",
            Describe(Scan(0).Why()));
}

TEST_F(LinuxUpstreamTest, ListeningEndsWhenWpaSupplicantIsKilled) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  std::optional<Result<std::vector<Wifi::ScanResult>>> answer;
  driver->Scan(RadioFrequency::Band2_4GHz, [&](const auto& results) { answer = results; });
  machine.Advance(500);
  machine.supplicant.Die("killed by signal 9");
  ASSERT_TRUE(WaitFor([&] { return answer.has_value(); }));
  EXPECT_EQ("RadioFailed the radio Band2_4GHz cannot listen: wpa_supplicant ended", Describe(answer->Why()));
}

}  // namespace

}  // namespace TALO::Wifid
