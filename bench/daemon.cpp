#include "bench/full_router.h"
#include "bench/growth.h"
#include "bench/process_status.h"
#include "bench/table.h"

#include <chrono>
#include <thread>

namespace TALO::Bench {

namespace {

constexpr double kGoalOfMemory = 8192;
constexpr double kGoalOfWakeUps = 0;

/// Those of a daemon that has done what it was still doing, for which it has ten seconds.
double WakeUpsAMinute(const EndToEnd::Process& process, std::chrono::seconds watched) {
  double before = -1;
  for (int second = 0; second < 10 && Waits(process) != before; ++second) {
    before = Waits(process);
    std::this_thread::sleep_for(std::chrono::seconds(1));
  }
  before = Waits(process);
  std::this_thread::sleep_for(watched);
  return (Waits(process) - before) * 60 / static_cast<double>(watched.count());
}

void Measure(const std::string& what, const EndToEnd::Process& daemon, const Goal& goalOfMemory,
             const Effort& effort) {
  const Memory memory = ReadMemory(daemon);
  PrintFigure("resident memory " + what, memory.resident, "KiB", goalOfMemory);
  PrintFigure("of it its own " + what, memory.own, "KiB");
  PrintFigure("wake-ups " + what, WakeUpsAMinute(daemon, std::chrono::seconds(effort.Or(1, 60))), "a minute",
              AtMost(kGoalOfWakeUps));
}

void MeasureAtRest(const Effort& effort) {
  Bus bus;
  const EndToEnd::DaemonOnBus daemon(bus.Private(), {.options = {}});
  Measure("at rest", daemon.GetProcess(), {}, effort);
}

void MeasureFull(const Effort& effort) {
  FullRouter router;
  Measure("with 16 networks, 128 stations", router.Daemon(), AtMost(kGoalOfMemory), effort);
}

}  // namespace

void MeasureDaemon(const Effort& effort) {
  PrintHeading("The daemon");
  MeasureAtRest(effort);
  MeasureFull(effort);
  MeasureGrowth(effort);
}

}  // namespace TALO::Bench
