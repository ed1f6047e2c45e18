#include "daemon/radio/linux/station_tasks.h"

#include "support/machine/tasks.h"

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;
using Wifi::Util::MACAddress;

RadioSetting Setting() {
  RadioSetting setting;
  setting.hardware.wiphy = 3;
  setting.hardware.stationAddress = MACAddress("0a:00:00:00:00:02");
  setting.hardware.backhaulStationAddress = MACAddress("0e:00:00:00:00:03");
  setting.hardware.listenerAddress = MACAddress("12:00:00:00:00:04");
  setting.filesDirectory = "/run/radios";
  setting.controlDirectory = "/run/radios/interfaces";
  setting.backhaulBridge = "br-lan";
  return setting;
}

RadioPlan WithNone() {
  RadioPlan plan;
  plan.enable = true;
  return plan;
}

RadioPlan WithStation(const std::string& ssid) {
  RadioPlan plan = WithNone();
  plan.station = StationPlan{"wlan0sta", ssid, "", "uplink-password", {}, SecurityMode::PersonalWPA2};
  return plan;
}

RadioPlan WithBackhaul(const std::string& ssid, ScanType scanType) {
  RadioPlan plan = WithNone();
  plan.backhaulStation = BackhaulStationPlan{"wlan0bhs", ssid, "backhaul-password", scanType};
  return plan;
}

Lines TasksFrom(const RadioPlan& before, const RadioPlan& plan) {
  Present present;
  for (const Task& task : FindStationTasks(Setting(), before, {})) {
    present.Reach(task.outcome);
  }
  return Describe(FindStationTasks(Setting(), plan, present));
}

Lines operator+(Lines a, const Lines& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Lines StationUp(const std::string& ssid) {
  return {"make wlan0sta 0a:00:00:00:00:02", "write wlan0sta.conf",
          "wpa_supplicant: INTERFACE_ADD "
          "wlan0sta\t/run/radios/wlan0sta.conf\tnl80211\t/run/radios/interfaces\t\t",
          "= station is " + ssid};
}
const Lines kStationDown = {"wpa_supplicant: INTERFACE_REMOVE wlan0sta", "drop wlan0sta",
                            "remove wlan0sta.conf", "= station is gone"};
Lines BackhaulUp(const std::string& ssid) {
  return {"make wlan0bhs 0e:00:00:00:00:03 in 4-address mode", "write wlan0bhs.conf",
          "put wlan0bhs on br-lan",
          "wpa_supplicant: INTERFACE_ADD "
          "wlan0bhs\t/run/radios/wlan0bhs.conf\tnl80211\t/run/radios/interfaces\t\tbr-lan",
          "= backhaul station is " + ssid};
}
const Lines kBackhaulDown = {"wpa_supplicant: INTERFACE_REMOVE wlan0bhs", "drop wlan0bhs",
                             "remove wlan0bhs.conf", "= backhaul station is gone"};

TEST(StationTasks, AStationComesChangesAndGoes) {
  const RadioPlan none = WithNone();
  RadioPlan off = WithStation("Uplink");
  off.enable = false;
  EXPECT_EQ(Lines(), TasksFrom(none, none));
  EXPECT_EQ(StationUp("Uplink"), TasksFrom(none, WithStation("Uplink")));
  EXPECT_EQ(Lines(), TasksFrom(WithStation("Uplink"), WithStation("Uplink")));
  EXPECT_EQ(kStationDown + StationUp("Other"), TasksFrom(WithStation("Uplink"), WithStation("Other")));
  EXPECT_EQ(kStationDown, TasksFrom(WithStation("Uplink"), none));
  EXPECT_EQ(kStationDown, TasksFrom(WithStation("Uplink"), off));
}

TEST(StationTasks, ABackhaulStationComesChangesAndGoes) {
  const RadioPlan none = WithNone();
  EXPECT_EQ(BackhaulUp("Mesh"), TasksFrom(none, WithBackhaul("Mesh", ScanType::Default)));
  EXPECT_EQ(kBackhaulDown + BackhaulUp("Other"),
            TasksFrom(WithBackhaul("Mesh", ScanType::Default), WithBackhaul("Other", ScanType::Default)));
  EXPECT_EQ(kBackhaulDown, TasksFrom(WithBackhaul("Mesh", ScanType::Default), none));
}

TEST(StationTasks, AnotherScanTypeKeepsTheInterface) {
  const std::string look = R"(wpa_supplicant: IFNAME=wlan0bhs SET_NETWORK 0 bgscan "simple:30:-65:300")";
  const std::string lookNoMore = R"(wpa_supplicant: IFNAME=wlan0bhs SET_NETWORK 0 bgscan "")";
  const std::string select = "wpa_supplicant: IFNAME=wlan0bhs SELECT_NETWORK 0";
  const std::vector<std::tuple<ScanType, ScanType, Lines>> cases = {
      {ScanType::Default, ScanType::BestAP, {look}},
      {ScanType::Default, ScanType::Disable, {}},
      {ScanType::BestAP, ScanType::Default, {lookNoMore}},
      {ScanType::BestAP, ScanType::Disable, {lookNoMore}},
      {ScanType::Disable, ScanType::Default, {select}},
      {ScanType::Disable, ScanType::BestAP, {look, select}},
  };
  for (const auto& [before, after, lines] : cases) {
    EXPECT_EQ(lines + Lines{"= backhaul station is Mesh"},
              TasksFrom(WithBackhaul("Mesh", before), WithBackhaul("Mesh", after)));
  }
}

TEST(StationTasks, AStationThatIsInBetweenIsMadeAnew) {
  Present present;
  present.Doubt(StationIs{WithStation("Uplink").station});
  present.Doubt(BackhaulStationIs{WithBackhaul("Mesh", ScanType::Default).backhaulStation});
  RadioPlan plan = WithStation("Uplink");
  plan.backhaulStation = WithBackhaul("Mesh", ScanType::BestAP).backhaulStation;
  Lines down = kStationDown;
  down[0] = "wpa_supplicant may fail: INTERFACE_REMOVE wlan0sta";
  Lines backhaulDown = kBackhaulDown;
  backhaulDown[0] = "wpa_supplicant may fail: INTERFACE_REMOVE wlan0bhs";
  EXPECT_EQ(down + StationUp("Uplink") + backhaulDown + BackhaulUp("Mesh"),
            Describe(FindStationTasks(Setting(), plan, present)));
}

TEST(StationTasks, AListenerComesAndGoes) {
  EXPECT_EQ((Lines{"make wlan0lsn 12:00:00:00:00:04", "write wlan0lsn.conf",
                   "wpa_supplicant: INTERFACE_ADD "
                   "wlan0lsn\t/run/radios/wlan0lsn.conf\tnl80211\t/run/radios/interfaces\t\t",
                   "= listener is there", "wpa_supplicant may fail: INTERFACE_REMOVE wlan0lsn",
                   "drop wlan0lsn", "remove wlan0lsn.conf", "= listener is gone"}),
            Describe({MakeListener(Setting(), "wlan0lsn"), DropListener("wlan0lsn")}));
}

TEST(Present, TakesOverWhatTasksComeTo) {
  BSSPlan bss;
  bss.interface = "wlan0_1";
  ChannelSettings channel;
  channel.channel = 6;
  Present present;
  present.Reach(RadioIsUp{channel});
  present.Reach(BSSIsUp{bss});
  present.Reach(PowerIs{20});
  Present expected;
  expected.channel = channel;
  expected.lastChannel = 6;
  expected.bsss["wlan0_1"] = {bss, true};
  expected.power = 20;
  expected.powerWasSet = true;
  EXPECT_TRUE(expected == present);
  bss.hidden = true;
  present.Reach(BSSHasChanged{bss, BSSHasChanged::Dropped::Nobody});
  EXPECT_TRUE(present.bsss.at("wlan0_1").bss.hidden);
  present.Reach(BSSIsDown{"wlan0_1"});
  EXPECT_TRUE(present.bsss.empty());
  present.Reach(BSSIsUp{bss});
  present.Reach(RadioIsDown{});
  Present down;
  down.lastChannel = 6;
  down.powerWasSet = true;
  EXPECT_TRUE(down == present);
}

TEST(Present, KeepsItsDoubtOfABSSThatChangedMeanwhile) {
  BSSPlan bss;
  bss.interface = "wlan0_1";
  Present present;
  present.Reach(BSSIsUp{bss});
  present.bsss.at("wlan0_1").sound = false;
  present.Reach(BSSHasChanged{bss, BSSHasChanged::Dropped::Nobody});
  EXPECT_FALSE(present.bsss.at("wlan0_1").sound);
}

TEST(Present, DoubtsWhatFailed) {
  BSSPlan bss;
  bss.interface = "wlan0_1";
  Present present;
  // It may have come up all the same.
  present.Doubt(BSSIsUp{bss});
  EXPECT_FALSE(present.bsss.at("wlan0_1").sound);
  for (const Outcome& outcome :
       std::vector<Outcome>{BSSHasChanged{bss, BSSHasChanged::Dropped::Nobody}, BSSIsDown{"wlan0_1"}}) {
    present.Reach(BSSIsUp{bss});
    present.Doubt(outcome);
    EXPECT_FALSE(present.bsss.at("wlan0_1").sound);
  }
  present.Doubt(BSSIsDown{"wlan0_2"});
  EXPECT_FALSE(present.bsss.contains("wlan0_2"));
  for (const Outcome& outcome : std::vector<Outcome>{RadioIsUp{}, RadioIsDown{}}) {
    present.Reach(RadioIsUp{});
    present.Doubt(outcome);
    EXPECT_FALSE(present.sound);
  }
  present.Reach(PowerIs{20});
  present.Doubt(PowerIs{17});
  EXPECT_FALSE(present.power.has_value());
  EXPECT_TRUE(present.powerWasSet);
}

}  // namespace

}  // namespace TALO::Wifid
