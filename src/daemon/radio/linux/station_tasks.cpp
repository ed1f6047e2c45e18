#include "daemon/radio/linux/station_tasks.h"

#include "daemon/radio/linux/control/supplicant_files.h"

#include <utility>

namespace TALO::Wifid {

namespace {

/// An interface of wpa_supplicant that is wanted, beside what it is to be.
struct Wanted {
  Kernel::NewInterface interface;
  std::string file;
  std::string bridge;
};

std::string FileOf(const std::string& interface) { return interface + ".conf"; }

template <typename Is, typename Plan>
Task TakeDown(const PresentStation<Plan>& present) {
  const std::string& interface = present.plan->interface;
  return {{AskSupplicant{RemoveStation(interface), !present.sound}, DropInterface{interface},
           RemoveFile{FileOf(interface)}},
          Is{std::nullopt}};
}

template <typename Is, typename Plan>
Task BringUp(const RadioSetting& setting, const Plan& plan, const Wanted& wanted) {
  const std::string file = FileOf(plan.interface);
  Task task{{MakeInterface{wanted.interface}, WriteFile{file, wanted.file}}, Is{plan}};
  // wpa_supplicant is only told of the bridge, and does not put the interface there.
  if (!wanted.bridge.empty()) {
    task.actions.emplace_back(PutOnBridge{plan.interface, wanted.bridge});
  }
  task.actions.emplace_back(AskSupplicant{
      AddStation(plan.interface, PathOf(setting, file), setting.controlDirectory, wanted.bridge)});
  return task;
}

Wanted WantedOf(const RadioSetting& setting, const StationPlan& plan) {
  const RadioHardware& hardware = setting.hardware;
  return {{hardware.wiphy, plan.interface, InterfaceType::Station, hardware.stationAddress, false},
          StationFile(plan),
          ""};
}

Wanted WantedOf(const RadioSetting& setting, const BackhaulStationPlan& plan) {
  const RadioHardware& hardware = setting.hardware;
  return {{hardware.wiphy, plan.interface, InterfaceType::Station, hardware.backhaulStationAddress, true},
          BackhaulStationFile(plan),
          setting.backhaulBridge};
}

/// How a backhaul station that wpa_supplicant has goes on looking for parents. One that is to look no more
/// keeps the parent that it has.
std::vector<Action> Look(const std::string& interface, ScanType before, ScanType after) {
  std::vector<Action> actions;
  const auto ask = [&](const std::string& command) {
    actions.emplace_back(AskSupplicant{ToInterface(interface, command)});
  };
  if (after == ScanType::BestAP) {
    // Every 30 seconds while its parent is weak, else every 5 minutes.
    ask(R"(SET_NETWORK 0 bgscan "simple:30:-65:300")");
  } else if (before == ScanType::BestAP) {
    ask(R"(SET_NETWORK 0 bgscan "")");
  }
  if (before == ScanType::Disable && after != ScanType::Disable) {
    ask("SELECT_NETWORK 0");
  }
  return actions;
}

void AddStationTasks(const RadioSetting& setting, const std::optional<StationPlan>& wanted,
                     const PresentStation<StationPlan>& present, std::vector<Task>& tasks) {
  if (present.sound && present.plan == wanted) {
    return;
  }
  if (present.plan) {
    tasks.push_back(TakeDown<StationIs>(present));
  }
  if (wanted) {
    tasks.push_back(BringUp<StationIs>(setting, *wanted, WantedOf(setting, *wanted)));
  }
}

void AddBackhaulStationTasks(const RadioSetting& setting, const std::optional<BackhaulStationPlan>& wanted,
                             const PresentStation<BackhaulStationPlan>& present, std::vector<Task>& tasks) {
  if (present.sound && present.plan == wanted) {
    return;
  }
  if (present.sound && present.plan && wanted && IsSameButForScanType(*present.plan, *wanted)) {
    tasks.push_back(
        {Look(wanted->interface, present.plan->scanType, wanted->scanType), BackhaulStationIs{wanted}});
    return;
  }
  if (present.plan) {
    tasks.push_back(TakeDown<BackhaulStationIs>(present));
  }
  if (wanted) {
    tasks.push_back(BringUp<BackhaulStationIs>(setting, *wanted, WantedOf(setting, *wanted)));
  }
}

}  // namespace

bool IsSameButForScanType(BackhaulStationPlan a, const BackhaulStationPlan& b) {
  a.scanType = b.scanType;
  return a == b;
}

Task MakeListener(const RadioSetting& setting, const std::string& interface) {
  const RadioHardware& hardware = setting.hardware;
  const std::string file = FileOf(interface);
  return {
      {MakeInterface{{hardware.wiphy, interface, InterfaceType::Station, hardware.listenerAddress, false}},
       WriteFile{file, ListenerFile()},
       AskSupplicant{AddStation(interface, PathOf(setting, file), setting.controlDirectory, "")}},
      ListenerIs{true}};
}

Task DropListener(const std::string& interface) {
  return {{AskSupplicant{RemoveStation(interface), true}, DropInterface{interface},
           RemoveFile{FileOf(interface)}},
          ListenerIs{false}};
}

std::vector<Task> FindStationTasks(const RadioSetting& setting, const RadioPlan& plan,
                                   const Present& present) {
  std::vector<Task> tasks;
  AddStationTasks(setting, plan.enable ? plan.station : std::nullopt, present.station, tasks);
  AddBackhaulStationTasks(setting, plan.enable ? plan.backhaulStation : std::nullopt, present.backhaulStation,
                          tasks);
  return tasks;
}

}  // namespace TALO::Wifid
