#include "support/machine/tasks.h"

namespace TALO::Wifid {

namespace {

struct ActionDescriber {
  std::string operator()(const WriteFile& action) const { return "write " + action.name; }
  std::string operator()(const RemoveFile& action) const { return "remove " + action.name; }
  std::string operator()(const AskHostapd& action) const {
    return Ask("hostapd", action.command, action.mayFail);
  }
  std::string operator()(const AwaitRadio& action) const { return "await " + action.interface; }
  std::string operator()(const AskSupplicant& action) const {
    return Ask("wpa_supplicant", action.command, action.mayFail);
  }
  std::string operator()(const KeepInterface& action) const {
    return "keep " + action.interface.name + " " + action.interface.address.ToString();
  }
  std::string operator()(const MakeInterface& action) const {
    return "make " + action.interface.name + " " + action.interface.address.ToString() +
           (action.interface.fourAddress ? " in 4-address mode" : "");
  }
  std::string operator()(const DropInterface& action) const { return "drop " + action.name; }
  std::string operator()(const PutOnBridge& action) const {
    return "put " + action.interface + " on " + (action.bridge.empty() ? "no bridge" : action.bridge);
  }
  std::string operator()(const SendWithPower& action) const {
    return "send on phy " + std::to_string(action.wiphy) + " with " + std::to_string(action.power);
  }

 private:
  static std::string Ask(const std::string& program, const std::string& command, bool mayFail) {
    return program + (mayFail ? " may fail: " : ": ") + command;
  }
};

struct OutcomeDescriber {
  std::string operator()(const RadioIsDown&) const { return "radio is down"; }
  std::string operator()(const RadioIsUp& outcome) const {
    return "radio is up on " + std::to_string(outcome.channel.channel);
  }
  std::string operator()(const BSSIsDown& outcome) const { return outcome.interface + " is down"; }
  std::string operator()(const BSSIsUp& outcome) const { return outcome.bss.interface + " is up"; }
  std::string operator()(const BSSHasChanged& outcome) const {
    using Dropped = BSSHasChanged::Dropped;
    return outcome.bss.interface + " has changed and dropped " +
           (outcome.dropped == Dropped::Nobody      ? "nobody"
            : outcome.dropped == Dropped::Everybody ? "everybody"
                                                    : "who is not admitted");
  }
  std::string operator()(const PowerIs& outcome) const { return "power is " + std::to_string(outcome.power); }
  std::string operator()(const StationIs& outcome) const {
    return outcome.station ? "station is " + outcome.station->ssid : "station is gone";
  }
  std::string operator()(const BackhaulStationIs& outcome) const {
    return outcome.station ? "backhaul station is " + outcome.station->ssid : "backhaul station is gone";
  }
  std::string operator()(const ListenerIs& outcome) const {
    return outcome.there ? "listener is there" : "listener is gone";
  }
  std::string operator()(const StationsRejoin&) const { return "stations rejoin"; }
};

}  // namespace

std::vector<std::string> Describe(const std::vector<Task>& tasks) {
  std::vector<std::string> lines;
  for (const Task& task : tasks) {
    for (const Action& action : task.actions) {
      lines.push_back(std::visit(ActionDescriber(), action));
    }
    lines.push_back("= " + std::visit(OutcomeDescriber(), task.outcome));
  }
  return lines;
}

}  // namespace TALO::Wifid
