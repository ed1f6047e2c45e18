#pragma once

#include "daemon/radio/linux/actions.h"
#include "daemon/radio/linux/doors.h"
#include "daemon/radio/linux/program.h"
#include "daemon/radio/own_timers.h"

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// Carries out tasks, one action after the other, until one fails.
class TaskRunner {
 public:
  struct Sinks {
    std::function<void(const Outcome&)> reached;
    std::function<void(const Outcome&)> doubted;  ///< the task of it has failed
  };
  using Done = std::function<void(Result<void>)>;

  TaskRunner(const LinuxDoors& doors, Program& hostapd, Program& supplicant, Sinks sinks);
  TaskRunner(const TaskRunner&) = delete;
  TaskRunner& operator=(const TaskRunner&) = delete;

  /// One run at a time. Failures name what did not work and why, as the program says that was asked. `done`
  /// may come from inside the call.
  void Run(std::vector<Task> tasks, Done done);

  /// What the task that is being carried out is to come to; nothing where none is.
  const Outcome* UnderWay() const { return tasks_.empty() ? nullptr : &tasks_.front().outcome; }

 private:
  void Go();
  /// Whether the action is over; else it goes on by itself.
  bool Start(const Action& action);
  Result<void> Do(const WriteFile& action);
  Result<void> Do(const RemoveFile& action);
  Result<void> Do(const KeepInterface& action);
  Result<void> Do(const MakeInterface& action);
  Result<void> Do(const DropInterface& action);
  Result<void> Do(const PutOnBridge& action);
  Result<void> Do(const SendWithPower& action);
  /// The interface of this name, where it is there.
  Result<std::optional<WirelessInterface>> Find(const std::string& name) const;
  void Ask(Program& program, const std::string& command, bool mayFail);
  void Await(const std::string& interface, std::uint64_t mark, Timers::Duration giveUpAt);
  void Explain(Program& program, std::uint64_t mark);
  void End(const Result<void>& result);

  LinuxDoors doors_;
  Program& hostapd_;
  Program& supplicant_;
  Sinks sinks_;
  std::deque<Task> tasks_;
  std::size_t next_ = 0;  ///< action of the first task
  Done done_;
  OwnTimers timers_;
};

}  // namespace TALO::Wifid
