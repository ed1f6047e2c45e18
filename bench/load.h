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

/// So many callers at once, each with one call on its way, until `calls` are answered. Where a `disturbance`
/// is given, one more caller repeats that as long, and is not counted. Throws std::runtime_error for an
/// error in place of an answer.
Load MeasureLoad(const Target& target, std::size_t callers, std::size_t calls,
                 const Target* disturbance = nullptr);

}  // namespace TALO::Bench
