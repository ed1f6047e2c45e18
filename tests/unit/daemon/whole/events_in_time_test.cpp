// What a running daemon does by itself when its time has come.

#include "support/daemon_run.h"
#include "support/simulation.h"

#include <chrono>

namespace TALO::Wifid {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Wifi::NetworkRadioPair;
using Wifi::WifiClient;
using Wifi::WifiClientForMesh;

const char* kSessionRuns = "com.talo.Wifi1.Error.Busy: a WPS session runs on the interface \"wlan0_1\"";

class WPSOverTime : public testing::Test {
 protected:
  /// Nobody who presses a button within the two minutes.
  static Scenario Latecomer() {
    Scenario scenario;
    scenario.devices = {MakeDevice(1)};
    scenario.devices[0].knows.clear();
    scenario.devices[0].pressesAfter = 121;
    return scenario;
  }

  World world_{0, Greenwich(), Latecomer()};
  DaemonRun daemon_{world_};
  const NetworkRadioPair target_{1, RadioFrequency::Band2_4GHz};
};

TEST_F(WPSOverTime, ASessionEndsAfter120Seconds) {
  daemon_.CreateHome();
  EXPECT_EQ(daemon_.Value<&WifiClient::IsWPS_PBCAvailable>(target_), true);
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerHWButton>(), "none");

  world_.timers.Advance(milliseconds(119'999));
  EXPECT_EQ(daemon_.Value<&WifiClient::IsWPS_PBCAvailable>(target_), false);
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerWPS_PBC>(target_), kSessionRuns);
  EXPECT_EQ(daemon_.FinishedWPS(), std::vector<std::string>{});

  world_.timers.Advance(milliseconds(1));
  EXPECT_EQ(daemon_.FinishedWPS(), std::vector<std::string>{"wlan0_1 timed out"});
  EXPECT_EQ(daemon_.Value<&WifiClient::IsWPS_PBCAvailable>(target_), true);
  world_.timers.Advance(seconds(2));
  EXPECT_EQ(daemon_.Value<&WifiClient::GetDevices>(), std::vector<Wifi::DeviceInfo>{});
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerWPS_PBC>(target_), "none");
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerHWButton>(), kSessionRuns);
}

TEST_F(WPSOverTime, ASessionThatWasEndedEarlyDoesNotEndTheNextOne) {
  daemon_.CreateHome();
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerHWButton>(), "none");
  world_.timers.Advance(seconds(60));
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerWPSConnected>("wlan0_1"), "none");
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClient::TriggerHWButton>(), "none");
  world_.timers.Advance(seconds(119));
  EXPECT_EQ(daemon_.FinishedWPS(), std::vector<std::string>{"wlan0_1 cancelled"});
  EXPECT_EQ(daemon_.Value<&WifiClient::IsWPS_PBCAvailable>(target_), false);
}

/// A node whose parent is at -72 dBm, with one at -60 dBm from the 60th second on.
class BackhaulOverTime : public testing::Test {
 protected:
  static Scenario TwoParents() {
    Scenario scenario;
    scenario.neighbours = {MakeAccessPoint(1, "Mesh", 44, -72), MakeAccessPoint(2, "Mesh", 48, -60)};
    scenario.neighbours[0].backhaul = true;
    scenario.neighbours[1].backhaul = true;
    scenario.neighbours[1].appearsAt = 60;
    return scenario;
  }

  void Join(ScanType type) {
    const Wifi::BackhaulConfig config{true, "Mesh", "uplink-password"};
    EXPECT_EQ(daemon_.ErrorOfCall<&WifiClientForMesh::EnableScan>(type), "none");
    EXPECT_EQ(daemon_.ErrorOfCall<&WifiClientForMesh::ModifyBackhaulSTA>(config), "none");
  }

  /// As in "06:00:00:00:00:01 on 44"; nothing while it is not connected.
  std::string Parent() {
    const auto statuses = daemon_.Value<&WifiClientForMesh::GetBackhaulSTAStatuses>();
    if (statuses.size() != 1 || !statuses[0].connected) {
      return "";
    }
    return statuses[0].parent.ToString() + " on " + std::to_string(statuses[0].channel);
  }

  World world_{0, Greenwich(), TwoParents()};
  DaemonRun daemon_{world_};
  const std::string kWeak = "06:00:00:00:00:01 on 44";
  const std::string kStrong = "06:00:00:00:00:02 on 48";
};

TEST_F(BackhaulOverTime, ANodeThatLooksForTheBestParentRoamsToIt) {
  Join(ScanType::BestAP);
  world_.timers.Advance(seconds(30));
  EXPECT_EQ(Parent(), kWeak);
  world_.PassUntil(63);
  EXPECT_EQ(Parent(), kStrong);
}

TEST_F(BackhaulOverTime, ANodeThatIsConnectedKeepsItsParentUntilItIsToldToLookForTheBest) {
  Join(ScanType::Default);
  world_.timers.Advance(seconds(30));
  EXPECT_EQ(Parent(), kWeak);
  world_.PassUntil(90);
  EXPECT_EQ(Parent(), kWeak);
  EXPECT_EQ(daemon_.ErrorOfCall<&WifiClientForMesh::EnableScan>(ScanType::BestAP), "none");
  world_.timers.Advance(seconds(3));
  EXPECT_EQ(Parent(), kStrong);
}

TEST_F(BackhaulOverTime, ANodeThatMayNotLookJoinsNobody) {
  Join(ScanType::Disable);
  world_.PassUntil(90);
  EXPECT_EQ(Parent(), "");
}

class RadiosOverTime : public testing::Test {
 protected:
  static Scenario ANewNeighbour() {
    Scenario scenario;
    scenario.neighbours = {MakeAccessPoint(1, "Miller", 1, -70), MakeAccessPoint(2, "Camper", 6, -60)};
    scenario.neighbours[1].appearsAt = 5;
    return scenario;
  }

  /// From now on the 5 GHz radio fails once, behind so many plans that it takes.
  void FailBehind(int plans) {
    world_.scenario.faults.apply = {
        {RadioFrequency::Band5GHz, plans, 1, "the firmware does not answer", std::nullopt}};
  }

  /// As in "Miller 0" for one that was heard just now.
  static std::vector<std::string> Heard(DaemonRun& daemon) {
    std::vector<std::string> heard;
    for (const auto& each : daemon.Value<&WifiClient::GetScanResults>(RadioFrequency::Band2_4GHz)) {
      heard.push_back(each.ssid + " " + std::to_string(each.age));
    }
    return heard;
  }

  World world_{0, Greenwich(), ANewNeighbour()};
};

TEST_F(RadiosOverTime, WhatWasHeardIsToldAgainFor10Seconds) {
  DaemonRun daemon(world_);
  EXPECT_EQ(Heard(daemon), std::vector<std::string>{"Miller 0"});
  world_.timers.Advance(seconds(10));
  EXPECT_EQ(Heard(daemon), std::vector<std::string>{"Miller 10"});
  world_.timers.Advance(milliseconds(1));
  EXPECT_EQ(Heard(daemon), (std::vector<std::string>{"Camper 0", "Miller 0"}));
}

// The first plan of the radio is that of the start.
TEST_F(RadiosOverTime, ANetworkThatARadioFailedToCarryIsNotThereAfterARestartEither) {
  const Wifi::NetworkCreateInfo home{"Home", "Home", "correct-horse"};
  FailBehind(1);
  {
    DaemonRun daemon(world_);
    EXPECT_EQ(daemon.ErrorOfCall<&WifiClient::CreateNetwork>(home),
              "com.talo.Wifi1.Error.RadioFailed: the radio Band5GHz cannot be set up: the firmware does not "
              "answer");
    EXPECT_EQ(daemon.InterfacesUp(), "");
  }
  DaemonRun daemon(world_);
  EXPECT_EQ(daemon.Value<&WifiClient::GetNetworkSettings>(), std::vector<Wifi::NetworkSetting>{});
  EXPECT_EQ(daemon.InterfacesUp(), "");
}

// The radio takes the plans of the start, of Home, and of Home off the air; not that of Home on again.
TEST_F(RadiosOverTime, ANetworkThatARadioFailedToSwitchOnIsOnOnceSchedulesAreUpdated) {
  FailBehind(3);
  DaemonRun daemon(world_);
  daemon.CreateHome();
  // On from 01:00 on; the world's time begins on a Thursday.
  const Wifi::NetworkSchedule schedule{
      1, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, {{3 * 1'440 + 60, 4 * 1'440}}};
  EXPECT_EQ(daemon.ErrorOfCall<&WifiClient::SetSchedule>(schedule), "none");
  EXPECT_EQ(daemon.InterfacesUp(), "");
  world_.PassUntil(3'601);
  EXPECT_EQ(daemon.InterfacesUp(), "wlan0_1 ");
  EXPECT_EQ(daemon.ErrorOfCall<&Wifi::WifiClientForTool::UpdateSchedule>(ScheduleMode::Customized), "none");
  EXPECT_EQ(daemon.InterfacesUp(), "wlan0_1 wlan1_1 ");
}

}  // namespace

}  // namespace TALO::Wifid
