#pragma once

#include <algorithm>
#include <chrono>

namespace TALO::EndToEnd {

/// When to give up waiting. Nothing that a test waits for takes this long unless it is broken; the tool's own
/// patience with a silent daemon, twice 30 seconds, is well below.
class Deadline {
 public:
  explicit Deadline(std::chrono::seconds patience = std::chrono::seconds(150))
      : end_(Clock::now() + patience) {}

  bool HasPassed() const { return Left().count() <= 0; }

  /// For poll(): the milliseconds left.
  int ForPoll() const {
    return static_cast<int>(std::max<std::chrono::milliseconds::rep>(Left().count(), 0));
  }

 private:
  using Clock = std::chrono::steady_clock;

  std::chrono::milliseconds Left() const {
    return std::chrono::ceil<std::chrono::milliseconds>(end_ - Clock::now());
  }

  Clock::time_point end_;
};

}  // namespace TALO::EndToEnd
