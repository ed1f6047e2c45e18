#pragma once

#include "daemon/system/event_watch.h"
#include "support/deadline.h"

#include <systemd/sd-event.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

namespace TALO::Wifid {

/// An event loop that turns when the test says so.
class LoopRun {
 public:
  LoopRun() {
    if (sd_event_new(&loop_.event) < 0) {
      throw std::runtime_error("no event loop can be made");
    }
    loop_.failed = [this](std::exception_ptr failure) { failure_ = std::move(failure); };
  }
  LoopRun(const LoopRun&) = delete;
  LoopRun& operator=(const LoopRun&) = delete;
  ~LoopRun() { sd_event_unref(loop_.event); }

  const Loop& Get() const { return loop_; }

  /// Turns until it is so, which may also come from elsewhere than the loop. Throws what an action threw, and
  /// std::runtime_error when the deadline passes.
  void Until(const std::string& awaited, const std::function<bool()>& isSo) {
    const EndToEnd::Deadline deadline;
    while (!isSo()) {
      if (deadline.HasPassed()) {
        throw std::runtime_error(awaited + " does not come");
      }
      Turn(kLookAgain);
    }
  }

  /// Does what is ready now.
  void TurnWhileReady() {
    while (Turn(0)) {
    }
  }

 private:
  static constexpr std::uint64_t kLookAgain = 50000;

  bool Turn(std::uint64_t microseconds) {
    const int turned = sd_event_run(loop_.event, microseconds);
    if (turned < 0) {
      throw std::runtime_error("the event loop does not turn");
    }
    if (failure_) {
      std::rethrow_exception(std::exchange(failure_, nullptr));
    }
    return turned > 0;
  }

  Loop loop_;
  std::exception_ptr failure_;
};

}  // namespace TALO::Wifid
