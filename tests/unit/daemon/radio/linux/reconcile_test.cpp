#include "daemon/radio/linux/reconcile.h"

#include "support/machine/tasks.h"
#include "support/print_model.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;
using Rule = AccessPlan::Rule;
using Wifi::Util::MACAddress;

RadioSetting Setting() {
  RadioSetting setting;
  setting.hardware.capability.radio = RadioFrequency::Band2_4GHz;
  setting.hardware.capability.interface = "wlan0";
  setting.hardware.wiphy = 3;
  setting.hardware.phy = "phy3";
  setting.hardware.ownAddress = MACAddress("02:00:00:00:00:77");
  setting.hardware.maximumAccessPoints = 8;
  setting.hardware.stationAddress = MACAddress("0a:00:00:00:00:02");
  setting.hardware.backhaulStationAddress = MACAddress("0e:00:00:00:00:03");
  setting.filesDirectory = "/run/radios";
  setting.controlDirectory = "/run/radios/interfaces";
  setting.backhaulBridge = "br-lan";
  return setting;
}

BSSPlan MakeBSS(int number) {
  BSSPlan bss;
  bss.networkId = number;
  bss.interface = "wlan0_" + std::to_string(number);
  bss.bssid = MACAddress("02:00:00:00:00:0" + std::to_string(number));
  bss.ssid = "Home";
  bss.securityMode = SecurityMode::PersonalWPA2;
  bss.passphrase = "correct-horse";
  bss.bridge = "br0";
  return bss;
}

RadioPlan PlanOf(const std::vector<int>& numbers) {
  RadioPlan plan;
  plan.radio = RadioFrequency::Band2_4GHz;
  plan.enable = true;
  for (const int number : numbers) {
    plan.bsss.push_back(MakeBSS(number));
  }
  return plan;
}

Sending On(int channel, std::optional<int> power = std::nullopt) {
  Sending sending;
  sending.channel.channel = channel;
  sending.power = power;
  return sending;
}

/// As a plan leaves a radio on channel 6.
Present After(const RadioPlan& plan) {
  Present present;
  for (const Task& task : FindTasks(Setting(), plan, ApplyMode::WhatDiffers, {}, On(6))) {
    present.Reach(task.outcome);
  }
  return present;
}

Lines TasksFrom(const Present& present, const RadioPlan& plan, const Sending& sending = On(6),
                ApplyMode mode = ApplyMode::WhatDiffers) {
  return Describe(FindTasks(Setting(), plan, mode, present, sending));
}

Lines operator+(Lines a, const Lines& b) {
  a.insert(a.end(), b.begin(), b.end());
  return a;
}

Lines Write(const std::string& bss) {
  return {"write " + bss + ".accept", "write " + bss + ".deny", "write " + bss + ".conf"};
}
Lines Up(const std::string& bss) {
  return Write(bss) +
         Lines{"hostapd: ADD bss_config=phy3:/run/radios/" + bss + ".conf", "= " + bss + " is up"};
}
Lines Down(const std::string& bss, const std::string& mayFail = "") {
  return {"hostapd" + mayFail + ": REMOVE " + bss, "remove " + bss + ".conf", "remove " + bss + ".accept",
          "remove " + bss + ".deny", "= " + bss + " is down"};
}
Lines RadioUp(int channel) {
  return {"keep wlan0 02:00:00:00:00:77", "write wlan0.conf",
          "hostapd: ADD bss_config=phy3:/run/radios/wlan0.conf", "await wlan0",
          "= radio is up on " + std::to_string(channel)};
}
/// With the files of these BSSs.
Lines RadioDown(const std::string& mayFail = "", const Lines& bsss = {}) {
  Lines lines = {"hostapd" + mayFail + ": REMOVE wlan0", "remove wlan0.conf"};
  for (const std::string& bss : bsss) {
    lines = lines + Lines{"remove " + bss + ".conf", "remove " + bss + ".accept", "remove " + bss + ".deny"};
  }
  return lines + Lines{"= radio is down"};
}

TEST(Reconcile, FromNothingTheRadioComesFirst) {
  EXPECT_EQ(RadioUp(6) + Up("wlan0_1") + Up("wlan0_2"), TasksFrom({}, PlanOf({1, 2})));
}

TEST(Reconcile, WhatIsAsPlannedIsLeftAlone) {
  EXPECT_EQ(Lines(), TasksFrom(After(PlanOf({1, 2})), PlanOf({1, 2})));
}

TEST(Reconcile, WhatIsGoneGoesBeforeWhatChangesAndComes) {
  RadioPlan plan = PlanOf({2, 3});
  plan.bsss[0].hidden = true;
  const Lines hidden = {"hostapd: IFNAME=wlan0_2 SET ignore_broadcast_ssid 1",
                        "hostapd: IFNAME=wlan0_2 UPDATE_BEACON", "= wlan0_2 has changed and dropped nobody"};
  EXPECT_EQ(Down("wlan0_1") + Write("wlan0_2") + hidden + Up("wlan0_3"),
            TasksFrom(After(PlanOf({1, 2})), plan));
}

TEST(Reconcile, EveryMemberOfABSSHasItsWay) {
  const Lines again = Down("wlan0_1") + Up("wlan0_1");
  const std::string ask = "hostapd: IFNAME=wlan0_1 ";
  struct Change {
    std::function<void(BSSPlan&)> make;
    Lines tasks;
  };
  const std::map<std::string, Change> changes = {
      {"networkId", {[](BSSPlan& bss) { bss.networkId = 7; }, again}},
      {"interface", {[](BSSPlan& bss) { bss.interface = "wlan0_9"; }, Down("wlan0_1") + Up("wlan0_9")}},
      {"bssid", {[](BSSPlan& bss) { bss.bssid = MACAddress("02:00:00:00:00:09"); }, again}},
      {"ssid", {[](BSSPlan& bss) { bss.ssid = "Elsewhere"; }, again}},
      {"securityMode", {[](BSSPlan& bss) { bss.securityMode = SecurityMode::PersonalWPA2_3Mixed; }, again}},
      {"hidden",
       {[](BSSPlan& bss) { bss.hidden = true; },
        Write("wlan0_1") + Lines{ask + "SET ignore_broadcast_ssid 1", ask + "UPDATE_BEACON",
                                 "= wlan0_1 has changed and dropped nobody"}}},
      {"passphrase", {[](BSSPlan& bss) { bss.passphrase = "battery-staple"; }, again}},
      {"bridge",
       {[](BSSPlan& bss) { bss.bridge = "br1"; },
        Write("wlan0_1") + Lines{"put wlan0_1 on br1", "= wlan0_1 has changed and dropped nobody"}}},
      {"access",
       {[](BSSPlan& bss) {
          bss.access = {Rule::AllButListed, {MACAddress("0a:00:00:00:00:01")}};
        },
        Write("wlan0_1") + Lines{ask + "DENY_ACL ADD_MAC 0a:00:00:00:00:01",
                                 "= wlan0_1 has changed and dropped who is not admitted"}}},
  };
  for (const auto& [member, change] : changes) {
    RadioPlan plan = PlanOf({1});
    change.make(plan.bsss[0]);
    EXPECT_EQ(change.tasks, TasksFrom(After(PlanOf({1})), plan)) << member;
  }
  const BSSPlan bss;
  Wifi::ForEachMember(
      bss, [&](auto member, const auto&) { EXPECT_TRUE(changes.contains(member.name)) << member.name; });
}

// hostapd would go on handing out the old one by WPS, which a hidden BSS does not have.
TEST(Reconcile, APassphraseChangesInPlaceWhereThereIsNoWPS) {
  RadioPlan before = PlanOf({1});
  before.bsss[0].hidden = true;
  RadioPlan plan = before;
  plan.bsss[0].passphrase = "battery-staple";
  const std::string ask = "hostapd: IFNAME=wlan0_1 ";
  const std::string drop = ask + "DEAUTHENTICATE ff:ff:ff:ff:ff:ff";
  const Lines changed = {
      ask + "SET wpa_passphrase battery-staple",    ask + "RELOAD_WPA_PSK", drop, ask + "PMKSA_FLUSH", drop,
      "= wlan0_1 has changed and dropped everybody"};
  EXPECT_EQ(Write("wlan0_1") + changed, TasksFrom(After(before), plan));
}

TEST(Reconcile, AStationHearsOfAnotherPassphraseAsTheReason) {
  RadioPlan plan = PlanOf({1});
  plan.bsss[0].passphrase = "battery-staple";
  const auto tasks = FindTasks(Setting(), plan, ApplyMode::WhatDiffers, After(PlanOf({1})), On(6));
  ASSERT_EQ(2U, tasks.size());
  EXPECT_EQ(Outcome(BSSIsDown{"wlan0_1", "passphrase changed"}), tasks[0].outcome);
}

TEST(Reconcile, SeveralChangesOfABSSAreOneTaskEach) {
  RadioPlan plan = PlanOf({1});
  plan.bsss[0].hidden = true;
  plan.bsss[0].bridge.clear();
  const Lines hidden = {"hostapd: IFNAME=wlan0_1 SET ignore_broadcast_ssid 1",
                        "hostapd: IFNAME=wlan0_1 UPDATE_BEACON", "= wlan0_1 has changed and dropped nobody"};
  const Lines moved = {"put wlan0_1 on no bridge", "= wlan0_1 has changed and dropped nobody"};
  EXPECT_EQ(Write("wlan0_1") + hidden + Write("wlan0_1") + moved, TasksFrom(After(PlanOf({1})), plan));
}

TEST(Reconcile, TheFilesFollowAChange) {
  RadioPlan plan = PlanOf({1});
  plan.bsss[0].passphrase = "battery-staple";
  const auto tasks = FindTasks(Setting(), plan, ApplyMode::WhatDiffers, After(PlanOf({1})), On(6));
  ASSERT_EQ(2U, tasks.size());
  EXPECT_EQ(Action(WriteFile{
                "wlan0_1.conf",
                "interface=wlan0_1\ndriver=nl80211\nctrl_interface=/run/radios/interfaces\nhw_mode=g\n"
                "channel=6\nwmm_enabled=1\nbssid=02:00:00:00:00:01\nssid2=486f6d65\nbridge=br0\nwpa=2\n"
                "wpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\nwpa_passphrase=battery-staple\neap_server=1\n"
                "wps_state=2\nwps_independent=1\nconfig_methods=push_button virtual_push_button\n"
                "device_name=Router\nmanufacturer=Router\nmodel_name=Router\n"
                "device_type=6-0050F204-1\n"}),
            tasks[1].actions.at(2));
}

TEST(Reconcile, APassphraseThatHostapdWouldNotForgetTakesTheBSSDown) {
  RadioPlan before = PlanOf({1});
  before.bsss[0].securityMode = SecurityMode::PersonalWPA3;
  RadioPlan plan = before;
  plan.bsss[0].passphrase = std::string(64, 'a');
  EXPECT_EQ(Down("wlan0_1") + Up("wlan0_1"), TasksFrom(After(before), plan));
}

TEST(Reconcile, AnotherChannelTakesTheWholeRadioDown) {
  EXPECT_EQ(RadioDown("", {"wlan0_1"}) + RadioUp(11) + Up("wlan0_1"),
            TasksFrom(After(PlanOf({1})), PlanOf({1}), On(11)));
  Sending wider = On(6);
  wider.channel.width = 40;
  EXPECT_EQ(RadioDown("", {"wlan0_1"}) + RadioUp(6) + Up("wlan0_1"),
            TasksFrom(After(PlanOf({1})), PlanOf({1}), wider));
}

TEST(Reconcile, APowerThatIsSetIsSetAnewWithTheRadio) {
  const Lines power = {"send on phy 3 with 17", "= power is 17"};
  EXPECT_EQ(RadioUp(6) + power + Up("wlan0_1"), TasksFrom({}, PlanOf({1}), On(6, 17)));
  Present present = After(PlanOf({1}));
  present.Reach(PowerIs{17});
  EXPECT_EQ(Lines(), TasksFrom(present, PlanOf({1}), On(6, 17)));
  EXPECT_EQ(RadioDown("", {"wlan0_1"}) + RadioUp(11) + power + Up("wlan0_1"),
            TasksFrom(present, PlanOf({1}), On(11, 17)));
}

TEST(Reconcile, OnlyAPowerThatIsAskedForMustBe) {
  for (const bool isAsked : {true, false}) {
    Sending sending = On(6, 17);
    sending.powerIsAsked = isAsked;
    const auto tasks = FindTasks(Setting(), PlanOf({1}), ApplyMode::WhatDiffers, After(PlanOf({1})), sending);
    ASSERT_EQ(1U, tasks.size());
    EXPECT_EQ(isAsked, tasks[0].isNeeded);
  }
}

TEST(Reconcile, AnotherPowerTakesNothingDown) {
  EXPECT_EQ((Lines{"send on phy 3 with 17", "= power is 17"}),
            TasksFrom(After(PlanOf({1})), PlanOf({1}), On(6, 17)));
}

TEST(Reconcile, ARadioThatIsOffGoesDownAndStaysSo) {
  RadioPlan off = PlanOf({1});
  off.enable = false;
  EXPECT_EQ(RadioDown("", {"wlan0_1"}), TasksFrom(After(PlanOf({1})), off, {}));
  EXPECT_EQ(Lines(), TasksFrom({}, off, {}));
}

TEST(Reconcile, EverythingTakesEveryBSSDownAndUpButNotTheRadio) {
  EXPECT_EQ(Down("wlan0_1") + Down("wlan0_2") + Up("wlan0_1") + Up("wlan0_2"),
            TasksFrom(After(PlanOf({1, 2})), PlanOf({1, 2}), On(6), ApplyMode::Everything));
}

/// On hardware with one access point at once, which holds the radio itself.
Lines TasksAlone(const Present& present, const RadioPlan& plan, const Sending& sending = On(6)) {
  RadioSetting setting = Setting();
  setting.hardware.maximumAccessPoints = 1;
  return Describe(FindTasks(setting, plan, ApplyMode::WhatDiffers, present, sending));
}

TEST(Reconcile, ASingleAccessPointHoldsTheRadioItself) {
  const std::string add = "hostapd: ADD bss_config=phy3:/run/radios/wlan0_1.conf";
  const Lines radio = {"= radio is up on 6"};
  const Lines up =
      Write("wlan0_1") + Lines{"make wlan0_1 02:00:00:00:00:01", add, "await wlan0_1", "= wlan0_1 is up"};
  const Lines gone = {"drop wlan0_1", "remove wlan0_1.conf", "remove wlan0_1.accept", "remove wlan0_1.deny"};
  const Lines remove = {"hostapd: REMOVE wlan0_1"};
  EXPECT_EQ(radio + up, TasksAlone({}, PlanOf({1})));
  EXPECT_EQ(radio, TasksAlone({}, PlanOf({})));
  EXPECT_EQ(up, TasksAlone(After(PlanOf({})), PlanOf({1})));
  EXPECT_EQ(remove + gone + Lines{"= wlan0_1 is down"}, TasksAlone(After(PlanOf({1})), PlanOf({})));
  const Lines moved = {"= radio is down", "= radio is up on 11"};
  EXPECT_EQ(remove + gone + moved + up, TasksAlone(After(PlanOf({1})), PlanOf({1}), On(11)));
  Present doubted = After(PlanOf({1}));
  doubted.bsss.at("wlan0_1").sound = false;
  EXPECT_EQ(Lines{"hostapd may fail: REMOVE wlan0_1"} + gone + Lines{"= wlan0_1 is down"} + up,
            TasksAlone(doubted, PlanOf({1})));
}

TEST(Reconcile, ABSSThatIsInBetweenIsMadeAnew) {
  Present present = After(PlanOf({1, 2}));
  present.bsss.at("wlan0_1").sound = false;
  EXPECT_EQ(Down("wlan0_1", " may fail") + Up("wlan0_1"), TasksFrom(present, PlanOf({1, 2})));
  EXPECT_EQ(Down("wlan0_1", " may fail"), TasksFrom(present, PlanOf({2})));
}

TEST(Reconcile, ARadioThatIsInBetweenIsMadeAnew) {
  Present present;
  present.Doubt(RadioIsUp{});
  EXPECT_EQ(RadioDown(" may fail") + RadioUp(6) + Up("wlan0_1"), TasksFrom(present, PlanOf({1})));
  RadioPlan off = PlanOf({});
  off.enable = false;
  EXPECT_EQ(RadioDown(" may fail"), TasksFrom(present, off, {}));
}

TEST(Reconcile, TheBackhaulIsOnTheBridgeOfItsOwn) {
  RadioPlan plan = PlanOf({0});
  plan.bsss[0].bridge.clear();
  const auto tasks = FindTasks(Setting(), plan, ApplyMode::WhatDiffers, After(PlanOf({})), On(6));
  ASSERT_EQ(1U, tasks.size());
  const auto& file = std::get<WriteFile>(tasks[0].actions.at(2));
  EXPECT_NE(std::string::npos, file.text.find("\nbridge=br-lan\nwds_sta=1\nmax_num_sta=99\n")) << file.text;
}

}  // namespace

}  // namespace TALO::Wifid
