#pragma once

#include "support/deadline.h"
#include "support/descriptors.h"

#include <sys/types.h>

#include <map>
#include <string>
#include <thread>
#include <vector>

namespace TALO::EndToEnd {

using Environment = std::map<std::string, std::string>;

/// How a process is started.
struct ProcessSetup {
  enum class Output { Captured, Given, Closed };

  std::vector<std::string> words;  ///< the program, found on the path, and its arguments
  Environment environment = {};    ///< beside the path and what the loader and sanitizers read
  Output output = Output::Captured;
  int givenOutput = -1;            ///< the descriptor that becomes standard output where it is given
  bool closeOtherStreams = false;  ///< standard input and error closed too; nothing is captured of either
  bool asNobody = false;           ///< as the user who has no rights; only root may ask for that
};

/// A child process with its standard error captured, and its standard output as the setup says. It starts
/// with default signal handling and ends no later than this object and the thread that made it.
class Process {
 public:
  /// Throws std::system_error when no process can be made. A program that cannot be run ends with status 127.
  explicit Process(const ProcessSetup& setup);
  Process(Process&&) = delete;
  ~Process();

  /// Waits for the end and returns the exit status, or the negative number of the signal that ended it.
  /// Throws std::runtime_error when the process lives on past the deadline.
  int Wait();
  bool HasEnded() const;

  void SendSignal(int number) const;
  pid_t Id() const { return id_; }

  /// What was captured so far.
  std::string Output() const;
  std::string Errors() const;

  /// Readable once the process has ended.
  int EndDescriptor() const { return end_.Get(); }

 private:
  bool WaitForEnd(const Deadline* deadline) const;
  void Reap();
  void WatchEnd();

  std::string name_;
  Descriptor output_;
  Descriptor errors_;
  pid_t id_ = -1;
  Descriptor end_;
  std::jthread watcher_;  ///< only where processes have no descriptors
  bool reaped_ = false;
  int status_ = 0;
};

}  // namespace TALO::EndToEnd
