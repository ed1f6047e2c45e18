#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/store/descriptor.h"

#include <sys/types.h>

namespace TALO::Wifid {

/// A program that was started in a session of its own, and dies with this object and with the thread that
/// started it. It has empty standard input, default signal handling, a path as its environment, and no
/// descriptor of the daemon.
class RunningProgram {
 public:
  /// Throws std::system_error when it cannot be started.
  explicit RunningProgram(const Children::Program& program);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  ~RunningProgram();

  /// Readable once it has ended.
  int End() const { return end_.Get(); }
  /// What it prints, on standard output and error alike. Never blocks a reader.
  int Output() const { return output_.Get(); }

  /// Ends it, where it has not ended, and what it started in its session. Returns how it ended, as waitpid()
  /// does. Once only.
  int Reap();

 private:
  pid_t id_ = -1;
  Descriptor end_;
  Descriptor output_;
};

}  // namespace TALO::Wifid
