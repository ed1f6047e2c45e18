#pragma once

#include "daemon/model/result.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A program that runs. Its end kills it, and does not wait until it is gone.
class Child {
 public:
  virtual ~Child() = default;
};

/// The door to other programs.
class Children {
 public:
  struct Program {
    std::string path;
    std::vector<std::string> arguments;  ///< without the program's name

    bool operator==(const Program&) const = default;
  };
  /// A line that it printed, standard output and error alike, without its end.
  using LineSink = std::function<void(const std::string&)>;
  /// How it ended by itself, as in "killed by signal 9" or "exit status 1". After its last line.
  using EndSink = std::function<void(const std::string&)>;

  virtual ~Children() = default;

  /// Starts a program that dies with the daemon. The sinks are called on the event loop, never from inside
  /// the call; not any more once the child is destroyed. Fails with RadioFailed and the reason, also while
  /// one that was started just so and killed is not gone yet.
  virtual Result<std::unique_ptr<Child>> Start(const Program& program, LineSink line, EndSink ended) = 0;
};

}  // namespace TALO::Wifid
