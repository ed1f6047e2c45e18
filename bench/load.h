#pragma once

#include "bus/message.h"

#include <systemd/sd-event.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace TALO::Bench {

/// A call that can be made again and again. `fill` appends the arguments of the nth.
struct Target {
  std::string destination = "com.talo.Wifi1";
  std::string path = "/com/talo/Wifi1";
  std::string interface = "com.talo.Wifi1.General";
  std::string member = {};
  std::function<void(sd_bus_message* call, std::size_t nth)> fill = {};
};

/// How calls were answered.
struct Load {
  double callsPerSecond = 0;
  double median = 0;       ///< microseconds from a call to its answer
  double ninetyNinth = 0;  ///< microseconds within which 99 of 100 were answered
  double slowest = 0;      ///< microseconds of the one that took longest
  std::size_t calls = 0;   ///< answered
};

/// Something that keeps the daemon at work: a call that is made so often, each when the one before is
/// answered.
struct Work {
  Target call;
  std::size_t times = 1;
  /// What each takes where it really is worked on, and not answered from memory.
  std::chrono::microseconds shortest{0};
};

struct EndLoop {
  void operator()(sd_event* loop) const noexcept { sd_event_unref(loop); }
};

/// A connection that calls, and calls again when the answer is there.
class Caller {
 public:
  /// Asked before each call; nothing more is called once it says no.
  using Permission = std::function<bool()>;

  Caller(sd_event* loop, Target target, Permission permission);

  void Begin();
  /// Microseconds, one for each answer.
  const std::vector<double>& Latencies() const { return latencies_; }

 private:
  static int OnAnswer(sd_bus_message* answer, void* caller, sd_bus_error* error);
  void Call();

  Wifi::Bus::BusHandle bus_;
  Target target_;
  Permission permission_;
  std::size_t called_ = 0;
  std::chrono::steady_clock::time_point start_;
  std::vector<double> latencies_;
};

/// The question that the daemon is asked to see how fast it answers.
inline Target RadioQuestion() { return {.member = "GetRadioIfStatuses"}; }

/// So many callers at once, each with one call on its way, until `calls` are answered. Throws
/// std::runtime_error for an error in place of an answer.
Load MeasureLoad(const Target& target, std::size_t callers, std::size_t calls);

/// One caller, from the first to the last moment in which a call of `work` is on its way, and never after.
/// Throws as above, and where a call of `work` comes back too soon to be real.
Load MeasureBeside(const Target& target, const Work& work);

/// The medians of several loads' figures.
Load MedianOf(const std::vector<Load>& loads);

}  // namespace TALO::Bench
