#include "support/events.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

// A radio's own stations: towards an upstream access point and towards a mesh parent.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;
using Wifi::Util::MACAddress;

constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;

RadioPlan PlanFor(const std::string& ssid) {
  RadioPlan plan = MakeRadioPlan({});
  plan.station =
      StationPlan{"wlan0sta", ssid, "", "uplink-password", MACAddress(), SecurityMode::PersonalWPA2};
  return plan;
}

RadioPlan BackhaulPlan(ScanType scanType) {
  RadioPlan plan = MakeRadioPlan({});
  plan.backhaulStation = BackhaulStationPlan{"wlan0bhs", "Mesh", "mesh-backhaul", scanType};
  return plan;
}

AccessPoint MakeParent(int number, int signal) {
  AccessPoint parent = MakeAccessPoint(number, "Mesh", 1 + number, signal);
  parent.passphrase = "mesh-backhaul";
  parent.backhaul = true;
  return parent;
}

class SimulatedUpstreamTest : public testing::Test {
 protected:
  /// The plan is applied at 70; listening takes 800, joining 300.
  void Start(const RadioPlan& plan) {
    simulation_.emplace(scenario_);
    simulation_->ApplyNow(plan);
  }

  void GoTo(int moment) { simulation_->timers.Advance(Timers::Duration(moment) - simulation_->timers.Now()); }

  std::string Station() { return Describe(simulation_->Live(kRadio).station); }
  std::string StationAt(int moment) {
    GoTo(moment);
    return Station();
  }
  std::string ParentAt(int moment) {
    GoTo(moment);
    return Describe(simulation_->Live(kRadio).backhaulStation);
  }

  Scenario scenario_;
  std::optional<Simulation> simulation_;
};

}  // namespace

TEST_F(SimulatedUpstreamTest, ListensThenJoinsTheStrongest) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -70), MakeAccessPoint(2, "Uplink", 11, -60),
                          MakeAccessPoint(3, "Uplink", 36, -30), MakeAccessPoint(4, "Miller", 6, -30)};
  Start(PlanFor("Uplink"));
  EXPECT_EQ("scanning for Uplink", StationAt(869));
  EXPECT_EQ("connecting to Uplink 06:00:00:00:00:02 on channel 11", StationAt(870));
  EXPECT_EQ("connecting to Uplink 06:00:00:00:00:02 on channel 11", StationAt(1169));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:02 on channel 11, -60 dBm, 300 Mbit/s for 0 s",
            StationAt(1170));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:02 on channel 11, -60 dBm, 300 Mbit/s for 1 s",
            StationAt(3169));
  EXPECT_EQ(LiveUpstream(), simulation_->Live(kRadio).backhaulStation);
  EXPECT_EQ(6, simulation_->Live(kRadio).channel);
}

TEST_F(SimulatedUpstreamTest, SaysWhyItCannotJoin) {
  struct Case {
    std::string reason;
    std::function<void(AccessPoint&, StationPlan&)> change;
  };
  const std::vector<Case> cases = {
      {"", [](AccessPoint&, StationPlan&) {}},
      {"", [](AccessPoint& accessPoint, StationPlan&) { accessPoint.hidden = true; }},
      {"", [](AccessPoint&, StationPlan& plan) { plan.bssid = MACAddress("06:00:00:00:00:01"); }},
      {"", [](AccessPoint& accessPoint,
              StationPlan&) { accessPoint.securityMode = SecurityMode::PersonalWPA2_3Mixed; }},
      {"", [](AccessPoint&, StationPlan& plan) { plan.securityMode = SecurityMode::PersonalWPAMixed; }},
      {"",
       [](AccessPoint& accessPoint, StationPlan& plan) {
         accessPoint.securityMode = plan.securityMode = SecurityMode::Disabled;
         accessPoint.passphrase = plan.passphrase = "";
       }},
      {"",
       [](AccessPoint& accessPoint, StationPlan& plan) {
         accessPoint.securityMode = SecurityMode::EnterpriseWPAMixed;
         plan.securityMode = SecurityMode::EnterpriseWPA2;
         accessPoint.user = plan.user = "student";
       }},
      {"no such access point", [](AccessPoint&, StationPlan& plan) { plan.ssid = "uplink"; }},
      {"no such access point",
       [](AccessPoint&, StationPlan& plan) { plan.bssid = MACAddress("06:00:00:00:00:09"); }},
      {"wrong password", [](AccessPoint&, StationPlan& plan) { plan.passphrase = "another-password"; }},
      {"security mode differs",
       [](AccessPoint&, StationPlan& plan) { plan.securityMode = SecurityMode::PersonalWPA3; }},
      {"security mode differs",
       [](AccessPoint&, StationPlan& plan) { plan.securityMode = SecurityMode::Disabled; }},
      {"wrong user or password",
       [](AccessPoint& accessPoint, StationPlan& plan) {
         accessPoint.securityMode = plan.securityMode = SecurityMode::EnterpriseWPA2;
         accessPoint.user = "student";
         plan.user = "teacher";
       }},
  };
  for (const Case& entry : cases) {
    scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60)};
    RadioPlan plan = PlanFor("Uplink");
    entry.change(scenario_.neighbours[0], *plan.station);
    Start(plan);
    simulation_->timers.RunUntilIdle();
    EXPECT_EQ(entry.reason.empty()
                  ? "connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 0 s"
                  : "failed to join " + plan.station->ssid + ": " + entry.reason,
              Station());
  }
}

TEST_F(SimulatedUpstreamTest, AWrongPasswordShowsOnlyWhenJoining) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60)};
  RadioPlan plan = PlanFor("Uplink");
  plan.station->passphrase = "another-password";
  Start(plan);
  EXPECT_EQ("connecting to Uplink 06:00:00:00:00:01 on channel 1", StationAt(870));
  EXPECT_EQ("failed to join Uplink: wrong password", StationAt(1170));
}

TEST_F(SimulatedUpstreamTest, PrefersAWeakerOneThatTakesItsPassword) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -40), MakeAccessPoint(2, "Uplink", 1, -80)};
  scenario_.neighbours[0].passphrase = "another-password";
  Start(PlanFor("Uplink"));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:02 on channel 1, -80 dBm, 300 Mbit/s for 0 s",
            StationAt(1170));
}

TEST_F(SimulatedUpstreamTest, TriesAgainWhenItsAccessPointAppears) {
  scenario_.neighbours = {MakeAccessPoint(1, "Miller", 1, -60), MakeAccessPoint(2, "Uplink", 1, -60)};
  scenario_.neighbours[0].appearsAt = 5;
  scenario_.neighbours[1].appearsAt = 10;
  Start(PlanFor("Uplink"));
  EXPECT_EQ("failed to join Uplink: no such access point", StationAt(870));
  EXPECT_EQ("failed to join Uplink: no such access point", StationAt(5000));
  EXPECT_EQ("scanning for Uplink", StationAt(10000));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:02 on channel 1, -60 dBm, 300 Mbit/s for 0 s",
            StationAt(11100));
}

TEST_F(SimulatedUpstreamTest, AfterARefusalOnlyAnotherAccessPointMakesItTryAgain) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60), MakeAccessPoint(2, "Miller", 1, -60),
                          MakeAccessPoint(3, "Uplink", 6, -70)};
  scenario_.neighbours[0].passphrase = "another-password";
  scenario_.neighbours[1].appearsAt = 5;
  scenario_.neighbours[2].appearsAt = 10;
  Start(PlanFor("Uplink"));
  EXPECT_EQ("failed to join Uplink: wrong password", StationAt(9999));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:03 on channel 6, -70 dBm, 300 Mbit/s for 0 s",
            StationAt(11100));
}

TEST_F(SimulatedUpstreamTest, LooksAgainWhenItsAccessPointVanishes) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60), MakeAccessPoint(2, "Uplink", 6, -70)};
  scenario_.neighbours[0].vanishesAt = 5;
  scenario_.neighbours[1].vanishesAt = 20;
  Start(PlanFor("Uplink"));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 3 s",
            StationAt(4999));
  EXPECT_EQ("scanning for Uplink", StationAt(5000));
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:02 on channel 6, -70 dBm, 300 Mbit/s for 0 s",
            StationAt(6100));
  EXPECT_EQ("scanning for Uplink", StationAt(20000));
  EXPECT_EQ("failed to join Uplink: no such access point", StationAt(20800));
}

TEST_F(SimulatedUpstreamTest, AnAccessPointThatVanishesWhileItJoinsIsLost) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60)};
  scenario_.neighbours[0].vanishesAt = 1;
  Start(PlanFor("Uplink"));
  EXPECT_EQ("connecting to Uplink 06:00:00:00:00:01 on channel 1", StationAt(999));
  EXPECT_EQ("scanning for Uplink", StationAt(1000));
}

TEST_F(SimulatedUpstreamTest, ReconnectDropsAndRejoins) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60)};
  Start(PlanFor("Uplink"));
  GoTo(5000);
  simulation_->TakeNotes();
  simulation_->Reconnect(kRadio);
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 3 s", Station());
  EXPECT_EQ("scanning for Uplink", StationAt(5000));
  EXPECT_EQ((Notes{"5000 reconnected"}), simulation_->TakeNotes());
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 0 s",
            StationAt(6100));
}

TEST_F(SimulatedUpstreamTest, ReconnectTriesAgainAfterAFailureAndDoesNothingWithoutAStation) {
  Start(PlanFor("Uplink"));
  EXPECT_EQ("failed to join Uplink: no such access point", StationAt(870));
  simulation_->Reconnect(kRadio);
  EXPECT_EQ("scanning for Uplink", StationAt(870));
  Start(MakeRadioPlan({}));
  simulation_->Reconnect(kRadio);
  EXPECT_EQ("disabled ", StationAt(870));
  EXPECT_EQ((Notes{"70 Band2_4GHz up", "70 reconnected"}), simulation_->TakeNotes());
}

TEST_F(SimulatedUpstreamTest, ThePlanChangesItOnlyWhereItDiffers) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60), MakeAccessPoint(2, "Miller", 1, -60)};
  Start(PlanFor("Uplink"));
  GoTo(5000);
  RadioPlan plan = PlanFor("Uplink");
  plan.bsss = {MakeBSS(1)};
  simulation_->Apply(plan);
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 4 s",
            StationAt(6000));
  simulation_->Apply(plan, ApplyMode::Everything);
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 1, -60 dBm, 300 Mbit/s for 5 s",
            StationAt(7000));
  plan.station->ssid = "Miller";
  simulation_->Apply(plan);
  EXPECT_EQ("scanning for Miller", StationAt(7020));
  EXPECT_EQ("connected to Miller 06:00:00:00:00:02 on channel 1, -60 dBm, 300 Mbit/s for 0 s",
            StationAt(8120));
  plan.station.reset();
  simulation_->Apply(plan);
  EXPECT_EQ("disabled ", StationAt(9000));
}

TEST_F(SimulatedUpstreamTest, ARadioThatRestartsDropsIt) {
  scenario_.neighbours = {MakeAccessPoint(1, "Uplink", 1, -60)};
  Start(PlanFor("Uplink"));
  GoTo(5000);
  RadioPlan plan = PlanFor("Uplink");
  plan.channel = 11;
  simulation_->Apply(plan);
  EXPECT_EQ("disabled ", StationAt(5020));
  EXPECT_EQ("scanning for Uplink", StationAt(5070));
  plan.enable = false;
  simulation_->Apply(plan);
  EXPECT_EQ("disabled ", StationAt(9000));
}

TEST_F(SimulatedUpstreamTest, ABackhaulStationJoinsParentsOnly) {
  AccessPoint stranger = MakeParent(1, -30);
  stranger.backhaul = false;
  scenario_.neighbours = {stranger, MakeParent(2, -60)};
  Start(BackhaulPlan(ScanType::Default));
  EXPECT_EQ("scanning for Mesh", ParentAt(869));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:02 on channel 3, -60 dBm, 300 Mbit/s for 0 s", ParentAt(1170));
  EXPECT_EQ("disabled ", Station());
}

TEST_F(SimulatedUpstreamTest, ByDefaultABackhaulStationStaysWithItsParent) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
  scenario_.neighbours[1].appearsAt = 10;
  scenario_.neighbours[0].vanishesAt = 20;
  Start(BackhaulPlan(ScanType::Default));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 18 s",
            ParentAt(19999));
  EXPECT_EQ("scanning for Mesh", ParentAt(20000));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:02 on channel 3, -40 dBm, 300 Mbit/s for 0 s", ParentAt(21100));
}

TEST_F(SimulatedUpstreamTest, WithBestAPItRoamsToAParentThatIsEightDecibelsBetter) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -63), MakeParent(3, -62)};
  scenario_.neighbours[1].appearsAt = 10;
  scenario_.neighbours[2].appearsAt = 20;
  Start(BackhaulPlan(ScanType::BestAP));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 19 s",
            ParentAt(20799));
  EXPECT_EQ("connecting to Mesh 06:00:00:00:00:03 on channel 4", ParentAt(20800));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:03 on channel 4, -62 dBm, 300 Mbit/s for 0 s", ParentAt(21100));
  simulation_->timers.RunUntilIdle();
}

TEST_F(SimulatedUpstreamTest, WithBestAPABetterParentThatRefusesItIsNoGoal) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
  scenario_.neighbours[1].appearsAt = 10;
  scenario_.neighbours[1].passphrase = "another-password";
  Start(BackhaulPlan(ScanType::BestAP));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 28 s",
            ParentAt(29999));
}

TEST_F(SimulatedUpstreamTest, WithBestAPItLooksOnceMoreForWhatAppearedWhileItJoined) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
  scenario_.neighbours[1].appearsAt = 1;
  Start(BackhaulPlan(ScanType::BestAP));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 0 s", ParentAt(1969));
  EXPECT_EQ("connecting to Mesh 06:00:00:00:00:02 on channel 3", ParentAt(1970));
}

TEST_F(SimulatedUpstreamTest, ItRoamsNoMoreOnceItMayNot) {
  for (const ScanType scanType : {ScanType::Default, ScanType::Disable}) {
    scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
    scenario_.neighbours[1].appearsAt = 10;
    Start(BackhaulPlan(ScanType::BestAP));
    GoTo(10100);
    simulation_->Apply(BackhaulPlan(scanType));
    EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 18 s",
              ParentAt(20000));
  }
}

TEST_F(SimulatedUpstreamTest, AnotherScanTypeKeepsTheConnection) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
  scenario_.neighbours[1].appearsAt = 2;
  Start(BackhaulPlan(ScanType::Default));
  GoTo(5000);
  simulation_->Apply(BackhaulPlan(ScanType::Disable));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 8 s", ParentAt(9999));
  GoTo(10000);
  simulation_->Apply(BackhaulPlan(ScanType::BestAP));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 9 s", ParentAt(10819));
  EXPECT_EQ("connecting to Mesh 06:00:00:00:00:02 on channel 3", ParentAt(10820));
}

TEST_F(SimulatedUpstreamTest, WithoutScansItNeverLooks) {
  scenario_.neighbours = {MakeParent(1, -70)};
  Start(BackhaulPlan(ScanType::Disable));
  EXPECT_EQ("disabled Mesh", ParentAt(5000));
  simulation_->Reconnect(kRadio);
  EXPECT_EQ("disabled Mesh", ParentAt(6000));
  simulation_->Apply(BackhaulPlan(ScanType::Default));
  EXPECT_EQ("scanning for Mesh", ParentAt(6020));
  simulation_->Apply(BackhaulPlan(ScanType::Disable));
  EXPECT_EQ("disabled Mesh", ParentAt(6040));
  EXPECT_EQ("disabled Mesh", ParentAt(9000));
}

TEST_F(SimulatedUpstreamTest, WithoutScansItRejoinsItsParentWhenToldAndDoesNotReplaceIt) {
  scenario_.neighbours = {MakeParent(1, -70), MakeParent(2, -40)};
  scenario_.neighbours[0].vanishesAt = 20;
  scenario_.neighbours[1].appearsAt = 2;
  Start(BackhaulPlan(ScanType::Default));
  GoTo(5000);
  simulation_->ApplyNow(BackhaulPlan(ScanType::Disable));
  GoTo(6000);
  simulation_->Reconnect(kRadio);
  EXPECT_EQ("connecting to Mesh 06:00:00:00:00:01 on channel 2", ParentAt(6000));
  EXPECT_EQ("connected to Mesh 06:00:00:00:00:01 on channel 2, -70 dBm, 300 Mbit/s for 0 s", ParentAt(6300));
  EXPECT_EQ("disabled Mesh", ParentAt(20000));
}

}  // namespace TALO::Wifid
