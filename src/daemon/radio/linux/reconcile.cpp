#include "daemon/radio/linux/reconcile.h"

#include "daemon/radio/linux/control/hostapd_commands.h"
#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/station_tasks.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <utility>

namespace TALO::Wifid {

namespace {

using Dropped = BSSHasChanged::Dropped;

/// Collects the tasks of the access points of one radio.
class AccessPointTasks {
 public:
  AccessPointTasks(const RadioSetting& setting, const ChannelSettings& channel)
      : setting_(setting), setup_{channel, setting.controlDirectory} {}

  void TakeDownRadio(const Present& present) {
    std::vector<Action> actions;
    if (setting_.hardware.HasHolder()) {
      actions = {AskHostapd{RemoveBSS(Interface()), !present.sound}, RemoveFile{FileOf(Interface())}};
    }
    for (const auto& [interface, each] : present.bsss) {
      if (!setting_.hardware.HasHolder()) {
        Remove(interface, !present.sound || !each.sound, actions);
      }
      RemoveFiles(interface, actions);
    }
    Add(std::move(actions), RadioIsDown{});
  }

  void BringUpRadio() {
    const RadioHardware& hardware = setting_.hardware;
    if (!hardware.HasHolder()) {
      Add({}, RadioIsUp{setup_.channel});
      return;
    }
    Add({KeepInterface{{hardware.wiphy, Interface(), InterfaceType::Station, hardware.ownAddress, false}},
         WriteFile{FileOf(Interface()), HolderFile(setup_, Interface())},
         AskHostapd{AddBSS(setting_.hardware.phy, PathOf(FileOf(Interface())))}, AwaitRadio{Interface()}},
        RadioIsUp{setup_.channel});
  }

  void TakeDown(const PresentBSS& present, const std::string& reason) {
    const std::string& interface = present.bss.interface;
    std::vector<Action> actions;
    Remove(interface, !present.sound, actions);
    RemoveFiles(interface, actions);
    Add(std::move(actions), BSSIsDown{interface, reason});
  }

  void BringUp(const BSSPlan& bss) {
    std::vector<Action> actions = WriteFiles(bss);
    // hostapd makes no interface for the first of a radio, and answers before it sends.
    if (!setting_.hardware.HasHolder()) {
      actions.emplace_back(MakeInterface{
          {setting_.hardware.wiphy, bss.interface, InterfaceType::AccessPoint, bss.bssid, false}});
    }
    actions.emplace_back(AskHostapd{AddBSS(setting_.hardware.phy, PathOf(FileOf(bss.interface)))});
    if (!setting_.hardware.HasHolder()) {
      actions.emplace_back(AwaitRadio{bss.interface});
    }
    Add(std::move(actions), BSSIsUp{bss});
  }

  /// One task for each member that differs, so that each has its reason.
  void Change(BSSPlan now, const BSSPlan& bss) {
    if (now.passphrase != bss.passphrase) {
      now.passphrase = bss.passphrase;
      ChangeBy(now, ChangePassphrase(bss.interface, bss.securityMode, bss.passphrase), Dropped::Everybody);
    }
    if (now.access != bss.access) {
      const AccessPlan before = std::exchange(now.access, bss.access);
      ChangeBy(now, ChangeAccess(bss.interface, before, bss.access), Dropped::WhoIsNotAdmitted);
    }
    if (now.hidden != bss.hidden) {
      now.hidden = bss.hidden;
      ChangeBy(now, ChangeHidden(bss.interface, bss.hidden), Dropped::Nobody);
    }
    if (now.bridge != bss.bridge) {
      now.bridge = bss.bridge;
      std::vector<Action> actions = WriteFiles(now);
      actions.emplace_back(PutOnBridge{bss.interface, BridgeOf(now)});
      Add(std::move(actions), BSSHasChanged{now, Dropped::Nobody});
    }
  }

  void Send(int power, bool isAsked) {
    Add({SendWithPower{setting_.hardware.wiphy, power}}, PowerIs{power});
    tasks_.back().isNeeded = isAsked;
  }

  std::vector<Task> Take() { return std::move(tasks_); }

 private:
  const std::string& Interface() const { return setting_.hardware.capability.interface; }
  static std::string FileOf(const std::string& interface) { return interface + ".conf"; }
  static std::string AcceptOf(const std::string& interface) { return interface + ".accept"; }
  static std::string DenyOf(const std::string& interface) { return interface + ".deny"; }
  std::string PathOf(const std::string& file) const { return Wifid::PathOf(setting_, file); }

  std::string BridgeOf(const BSSPlan& bss) const {
    return bss.networkId == kBackhaulNetworkId ? setting_.backhaulBridge : bss.bridge;
  }

  /// The files are as the BSS is at any time, so that a radio that is made anew is the same.
  std::vector<Action> WriteFiles(const BSSPlan& bss) const {
    const std::string& interface = bss.interface;
    return {WriteFile{AcceptOf(interface), AcceptFile(bss.access)},
            WriteFile{DenyOf(interface), DenyFile(bss.access)},
            WriteFile{FileOf(interface), BSSFile(setup_, bss, BridgeOf(bss),
                                                 {PathOf(AcceptOf(interface)), PathOf(DenyOf(interface))})}};
  }

  /// hostapd takes the interface away too, but that of the first of a radio.
  void Remove(const std::string& interface, bool mayFail, std::vector<Action>& actions) const {
    actions.emplace_back(AskHostapd{RemoveBSS(interface), mayFail});
    if (!setting_.hardware.HasHolder()) {
      actions.emplace_back(DropInterface{interface});
    }
  }

  static void RemoveFiles(const std::string& interface, std::vector<Action>& actions) {
    for (const std::string& file : {FileOf(interface), AcceptOf(interface), DenyOf(interface)}) {
      actions.emplace_back(RemoveFile{file});
    }
  }

  void ChangeBy(const BSSPlan& bss, const Commands& commands, Dropped dropped) {
    std::vector<Action> actions = WriteFiles(bss);
    for (const std::string& command : commands) {
      actions.emplace_back(AskHostapd{command});
    }
    Add(std::move(actions), BSSHasChanged{bss, dropped});
  }

  void Add(std::vector<Action> actions, Outcome outcome) {
    tasks_.push_back({std::move(actions), std::move(outcome)});
  }

  const RadioSetting& setting_;
  HostapdSetup setup_;
  std::vector<Task> tasks_;
};

/// Whether a BSS can come to its plan while it stays up. One with WPS would go on handing out the passphrase
/// that it came up with.
bool CanStay(const BSSPlan& now, const BSSPlan& bss) {
  return now.networkId == bss.networkId && now.bssid == bss.bssid && now.ssid == bss.ssid &&
         now.securityMode == bss.securityMode && (now.hidden == bss.hidden || CanChangeHidden(bss)) &&
         (now.passphrase == bss.passphrase ||
          (CanChangePassphrase(bss.securityMode, now.passphrase, bss.passphrase) && !HasWPS(bss)));
}

std::string ReasonToLeave(const BSSPlan& now, const BSSPlan* wanted) {
  return wanted != nullptr && now.passphrase != wanted->passphrase ? "passphrase changed" : "BSS down";
}

const BSSPlan* FindBSS(const RadioPlan& plan, const std::string& interface) {
  const auto bss = std::ranges::find(plan.bsss, interface, &BSSPlan::interface);
  return bss != plan.bsss.end() ? &*bss : nullptr;
}

}  // namespace

std::string PathOf(const RadioSetting& setting, const std::string& file) {
  return std::filesystem::path(setting.filesDirectory) / file;
}

std::vector<Task> FindTasks(const RadioSetting& setting, const RadioPlan& plan, ApplyMode mode,
                            const Present& present, const Sending& sending) {
  AccessPointTasks tasks(setting, sending.channel);
  const bool staysUp = plan.enable && present.sound && present.channel == sending.channel;
  if (!staysUp && (present.channel || !present.sound)) {
    tasks.TakeDownRadio(present);
  }
  if (plan.enable) {
    if (!staysUp) {
      tasks.BringUpRadio();
    }
    std::map<std::string, BSSPlan> stay;
    for (const auto& [interface, each] : present.bsss) {
      const BSSPlan* wanted = FindBSS(plan, interface);
      if (!staysUp) {
        continue;
      }
      if (wanted != nullptr && each.sound && mode == ApplyMode::WhatDiffers && CanStay(each.bss, *wanted)) {
        stay[interface] = each.bss;
      } else {
        tasks.TakeDown(each, ReasonToLeave(each.bss, wanted));
      }
    }
    if (sending.power && (!staysUp || present.power != sending.power)) {
      tasks.Send(*sending.power, sending.powerIsAsked);
    }
    for (const BSSPlan& bss : plan.bsss) {
      const auto now = stay.find(bss.interface);
      if (now != stay.end()) {
        tasks.Change(now->second, bss);
      } else {
        tasks.BringUp(bss);
      }
    }
  }
  std::vector<Task> all = tasks.Take();
  std::ranges::move(FindStationTasks(setting, plan, present), std::back_inserter(all));
  return all;
}

}  // namespace TALO::Wifid
