#include "daemon/radio/linux/task_runner.h"

#include "daemon/radio/linux/control/hostapd_commands.h"
#include "daemon/radio/linux/control/replies.h"
#include "daemon/radio/linux/questions.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

namespace {

/// What a program prints comes another way than its answer, and may come after it.
constexpr auto kTimeToPrint = std::chrono::milliseconds(100);

/// For neighbours, on each channel that a wide one is made of.
constexpr auto kTimeToListen = std::chrono::seconds(10);
constexpr auto kBetweenLooks = std::chrono::milliseconds(50);

struct Subject {
  std::string operator()(const RadioIsDown&) const { return "the radio cannot be taken down"; }
  std::string operator()(const RadioIsUp& outcome) const {
    return "the radio cannot be brought up on channel " + std::to_string(outcome.channel.channel);
  }
  std::string operator()(const BSSIsDown& outcome) const {
    return outcome.interface + " cannot be taken down";
  }
  std::string operator()(const BSSIsUp& outcome) const {
    return outcome.bss.interface + " cannot be brought up";
  }
  std::string operator()(const BSSHasChanged& outcome) const {
    return outcome.bss.interface + " cannot be changed";
  }
  std::string operator()(const PowerIs& outcome) const {
    return "the radio cannot send with " + std::to_string(outcome.power) + " dBm";
  }
  std::string operator()(const StationIs&) const { return "the station cannot be set up"; }
  std::string operator()(const BackhaulStationIs&) const { return "the backhaul station cannot be set up"; }
  std::string operator()(const ListenerIs&) const { return "the radio cannot listen"; }
  std::string operator()(const StationsRejoin&) const { return "the stations cannot rejoin"; }
};

}  // namespace

TaskRunner::TaskRunner(const LinuxDoors& doors, Program& hostapd, Program& supplicant, Sinks sinks)
    : doors_(doors),
      hostapd_(hostapd),
      supplicant_(supplicant),
      sinks_(std::move(sinks)),
      timers_(doors.timers) {}

void TaskRunner::Run(std::vector<Task> tasks, Done done) {
  tasks_.assign(std::make_move_iterator(tasks.begin()), std::make_move_iterator(tasks.end()));
  next_ = 0;
  done_ = std::move(done);
  Go();
}

void TaskRunner::Go() {
  while (!tasks_.empty()) {
    if (next_ < tasks_.front().actions.size()) {
      if (!Start(tasks_.front().actions[next_])) {
        return;
      }
      ++next_;
    } else {
      next_ = 0;
      const Outcome outcome = std::move(tasks_.front().outcome);
      tasks_.pop_front();
      sinks_.reached(outcome);
    }
  }
  End({});
}

bool TaskRunner::Start(const Action& action) {
  if (const auto* ask = std::get_if<AskHostapd>(&action)) {
    Ask(hostapd_, ask->command, ask->mayFail);
    return false;
  }
  if (const auto* await = std::get_if<AwaitRadio>(&action)) {
    Await(await->interface, hostapd_.Mark(), timers_.Now() + kTimeToListen);
    return false;
  }
  if (const auto* ask = std::get_if<AskSupplicant>(&action)) {
    Ask(supplicant_, ask->command, ask->mayFail);
    return false;
  }
  const Result<void> result = std::visit(
      [this](const auto& each) -> Result<void> {
        if constexpr (requires { Do(each); }) {
          return Do(each);
        } else {
          return {};
        }
      },
      action);
  if (!result.Succeeded()) {
    End(result);
  }
  return result.Succeeded();
}

Result<void> TaskRunner::Do(const WriteFile& action) { return doors_.files.Write(action.name, action.text); }

Result<void> TaskRunner::Do(const RemoveFile& action) { return doors_.files.Remove(action.name); }

// hostapd breaks what runs when it is told a wrong phy.
Result<void> TaskRunner::Do(const KeepInterface& action) {
  const auto there = Find(action.interface.name);
  if (!there.Succeeded()) {
    return there.Why();
  }
  if (!there.Value()) {
    return doors_.kernel.AddInterface(action.interface);
  }
  return there.Value()->wiphy == action.interface.wiphy
             ? Result<void>()
             : Refusal{ErrorCode::RadioFailed,
                       "the interface " + action.interface.name + " belongs to another radio now"};
}

Result<void> TaskRunner::Do(const MakeInterface& action) {
  if (auto dropped = Do(DropInterface{action.interface.name}); !dropped.Succeeded()) {
    return dropped;
  }
  return doors_.kernel.AddInterface(action.interface);
}

Result<void> TaskRunner::Do(const DropInterface& action) {
  const auto there = Find(action.name);
  if (!there.Succeeded()) {
    return there.Why();
  }
  return there.Value() ? doors_.kernel.DeleteInterface(action.name) : Result<void>();
}

Result<std::optional<WirelessInterface>> TaskRunner::Find(const std::string& name) const {
  const auto interfaces = AskKernel(doors_.kernel, &Kernel::GetInterfaces);
  if (!interfaces.Succeeded()) {
    return interfaces.Why();
  }
  const auto found = std::ranges::find(interfaces.Value(), name, &WirelessInterface::name);
  return found != interfaces.Value().end() ? std::optional(*found) : std::nullopt;
}

Result<void> TaskRunner::Do(const PutOnBridge& action) {
  return doors_.kernel.SetBridge(action.interface, action.bridge);
}

Result<void> TaskRunner::Do(const SendWithPower& action) {
  return doors_.kernel.SetTransmitPower(action.wiphy, action.power);
}

void TaskRunner::Ask(Program& program, const std::string& command, bool mayFail) {
  const std::uint64_t mark = program.Mark();
  program.Ask(command, [this, &program, mark, mayFail](const Result<std::string>& answer) {
    if (mayFail || (answer.Succeeded() && answer.Value().starts_with("OK"))) {
      ++next_;
      Go();
    } else if (!answer.Succeeded()) {
      End(answer.Why());
    } else {
      timers_.After(kTimeToPrint, [this, &program, mark] { Explain(program, mark); });
    }
  });
}

void TaskRunner::Await(const std::string& interface, std::uint64_t mark, Timers::Duration giveUpAt) {
  hostapd_.Ask(AskForStatus(interface), [this, interface, mark, giveUpAt](const Result<std::string>& answer) {
    if (!answer.Succeeded()) {
      End(answer.Why());
      return;
    }
    const std::string state = ReadFields(answer.Value())["state"];
    if (state == "ENABLED") {
      ++next_;
      Go();
    } else if (state == "DISABLED" || timers_.Now() >= giveUpAt) {
      timers_.After(kTimeToPrint, [this, mark] { Explain(hostapd_, mark); });
    } else {
      timers_.After(kBetweenLooks, [this, interface, mark, giveUpAt] { Await(interface, mark, giveUpAt); });
    }
  });
}

void TaskRunner::Explain(Program& program, std::uint64_t mark) {
  const std::string printed = program.PrintedSince(mark);
  End(Refusal{ErrorCode::RadioFailed,
              program.GetName() + (printed.empty() ? " refuses it" : " says: " + printed)});
}

void TaskRunner::End(const Result<void>& result) {
  Result<void> told = result;
  if (!result.Succeeded()) {
    const Outcome& outcome = tasks_.front().outcome;
    told = Refusal{result.Why().code, std::visit(Subject(), outcome) + ": " + result.Why().sentence};
    sinks_.doubted(outcome);
    if (!tasks_.front().isNeeded) {
      doors_.note({DriverNote::Weight::Warning, told.Why().sentence});
      tasks_.pop_front();
      next_ = 0;
      Go();
      return;
    }
    tasks_.clear();
  }
  std::exchange(done_, nullptr)(told);
}

}  // namespace TALO::Wifid
