#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/store/descriptor.h"

#include <sys/types.h>

#include <optional>

namespace TALO::Wifid {

/// A program that was started in a session of its own, and is killed with the thread that started it. It has
/// empty standard input, default signal handling, a path as its environment, and no descriptor of the daemon.
class RunningProgram {
 public:
  /// Throws std::system_error when it cannot be started.
  explicit RunningProgram(const Children::Program& program);
  RunningProgram(const RunningProgram&) = delete;
  RunningProgram& operator=(const RunningProgram&) = delete;
  ~RunningProgram() = default;

  /// Readable once it has ended.
  int End() const { return end_.Get(); }
  /// What it prints, on standard output and error alike. Never blocks a reader.
  int Output() const { return output_.Get(); }

  /// Kills it, where it has not ended, and what it started in its session. It may be a while until it is
  /// gone: what hangs in the kernel ends when that lets go of it.
  void Kill();

  /// How it ended, as waitpid() does, once that is known; nothing before. Never waits.
  std::optional<int> Reap();

 private:
  pid_t id_ = -1;
  std::optional<int> status_;  ///< once it is reaped; its number may be somebody else's then
  Descriptor end_;
  Descriptor output_;
};

}  // namespace TALO::Wifid
