#pragma once

#include <chrono>
#include <string>

namespace TALO::Hwsim {

/// Tells how long it takes until something is so, by the machine's clock. Its lines are shown with the
/// verdict of the scenario; how fast the machine is decides what they mean.
class Stopwatch {
 public:
  /// `since` names the beginning, which is now.
  explicit Stopwatch(const std::string& since) : since_(since) {}

  void Tell(const std::string& what) const;

 private:
  std::string since_;
  std::chrono::steady_clock::time_point began_ = std::chrono::steady_clock::now();
};

}  // namespace TALO::Hwsim
