#include "bench/full_router.h"
#include "bench/load.h"
#include "bench/table.h"
#include "support/files.h"

#include <chrono>
#include <stdexcept>
#include <thread>

namespace TALO::Bench {

namespace {

/// A number out of /proc/PID/status.
double Status(const EndToEnd::Process& process, const std::string& name) {
  const std::string text = ReadFile("/proc/" + std::to_string(process.Id()) + "/status");
  const auto at = text.find("\n" + name + ":");
  if (at == std::string::npos) {
    throw std::runtime_error("the kernel does not tell " + name);
  }
  return std::stod(text.substr(at + name.size() + 2));
}

double WakeUpsAMinute(const EndToEnd::Process& process, std::chrono::seconds watched) {
  const double before = Status(process, "voluntary_ctxt_switches");
  std::this_thread::sleep_for(watched);
  return (Status(process, "voluntary_ctxt_switches") - before) * 60 / static_cast<double>(watched.count());
}

void PrintMemory(const std::string& what, const EndToEnd::Process& process, const std::string& goal = "") {
  PrintFigure("resident memory " + what, Status(process, "VmRSS"), "KiB", goal);
  PrintFigure("of it its own " + what, Status(process, "RssAnon"), "KiB");
}

void MeasureAtRest(const Effort& effort) {
  Bus bus;
  EndToEnd::DaemonOnBus daemon(bus.Private(), {.options = {}});
  PrintMemory("at rest", daemon.GetProcess());
  PrintFigure("wake-ups at rest", WakeUpsAMinute(daemon.GetProcess(), std::chrono::seconds(effort.Or(1, 60))),
              "a minute", "none");
}

}  // namespace

void MeasureDaemon(const Effort& effort) {
  PrintHeading("The daemon");
  MeasureAtRest(effort);
  FullRouter router;
  const EndToEnd::Process& daemon = router.Daemon();
  const std::string full = "with 16 networks, 128 stations";
  PrintMemory(full, daemon, "at most 8192");
  PrintFigure("wake-ups " + full, WakeUpsAMinute(daemon, std::chrono::seconds(effort.Or(1, 60))), "a minute",
              "none");

  const std::size_t requests = effort.Or(1000, 1000000);
  MeasureLoad({.member = "GetNetworkSettings"}, 8, requests / 100);
  const double before = Status(daemon, "VmRSS");
  MeasureLoad({.member = "GetRadioIfStatuses"}, 8, requests * 9 / 10);
  MeasureLoad({.member = "GetDevices"}, 8, requests / 10);
  PrintComparison({"resident after " + std::to_string(requests) + " requests", "before them",
                   Status(daemon, "VmRSS"), before, "KiB", AtMost(1)});
}

}  // namespace TALO::Bench
