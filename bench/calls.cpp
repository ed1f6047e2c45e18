#include "bench/bench.h"
#include "bench/figures.h"
#include "bench/load.h"
#include "bench/table.h"

namespace TALO::Bench {

namespace {

constexpr double kGoalOfRate = 0.8;
constexpr double kGoalOfDelay = 2;

Target Question() { return {.member = "GetRadioIfStatuses"}; }

Target NullQuestion() {
  return {"com.talo.Null1", "/com/talo/Null1", "com.talo.Null1", "GetRadioIfStatuses", {}};
}

/// The medians of several loads' figures.
Load MedianOf(const std::vector<Load>& loads) {
  const auto median = [&loads](double Load::*figure) {
    std::vector<double> figures;
    for (const Load& load : loads) {
      figures.push_back(load.*figure);
    }
    return Median(figures);
  };
  return {median(&Load::callsPerSecond), median(&Load::median), median(&Load::ninetyNinth)};
}

void MeasureAgainstNullService(std::size_t callers, const Effort& effort) {
  std::vector<Load> ours;
  std::vector<Load> theirs;
  for (std::size_t round = 0; round < effort.Or(1, 9); ++round) {
    ours.push_back(MeasureLoad(Question(), callers, effort.Or(100, 5000)));
    theirs.push_back(MeasureLoad(NullQuestion(), callers, effort.Or(100, 5000)));
  }
  const Load own = MedianOf(ours);
  const Load other = MedianOf(theirs);
  const std::string what = std::to_string(callers) + (callers == 1 ? " caller" : " callers");
  PrintComparison({what, "null sd-bus service", own.callsPerSecond, other.callsPerSecond, "calls/s",
                   callers == 32 ? AtLeast(kGoalOfRate) : Goal{}});
  PrintComparison({what + ", median", "null sd-bus service", own.median, other.median, "us"});
  PrintComparison({what + ", 99 of 100", "null sd-bus service", own.ninetyNinth, other.ninetyNinth, "us"});
}

/// The answers to one caller while another keeps the daemon at something slow.
void MeasureBeside(const std::string& work, const Target& disturbance, const Effort& effort) {
  std::vector<Load> busy;
  std::vector<Load> idle;
  for (std::size_t round = 0; round < effort.Or(1, 9); ++round) {
    busy.push_back(MeasureLoad(Question(), 1, effort.Or(50, 5000), &disturbance));
    idle.push_back(MeasureLoad(Question(), 1, effort.Or(50, 5000)));
  }
  const Load during = MedianOf(busy);
  const Load before = MedianOf(idle);
  PrintComparison({"answers during " + work + ", median", "the same when idle", during.median, before.median,
                   "us", AtMost(kGoalOfDelay)});
  PrintComparison({"answers during " + work + ", 99 of 100", "the same when idle", during.ninetyNinth,
                   before.ninetyNinth, "us"});
}

}  // namespace

void MeasureCalls(const Effort& effort) {
  const Router router;
  const auto nullService = StartService({.words = {BuiltPrograms().nullService}}, "com.talo.Null1");

  PrintHeading("Calls of GetRadioIfStatuses");
  for (const std::size_t callers : {1, 8, 32}) {
    MeasureAgainstNullService(callers, effort);
  }
  MeasureBeside("a scan",
                {.member = "GetScanResults",
                 .fill = [](sd_bus_message* call, std::size_t) { sd_bus_message_append(call, "i", 0); }},
                effort);
  MeasureBeside("a restart",
                {.interface = "com.talo.Wifi1.Tool",
                 .member = "RestartNetworks",
                 .fill = [](sd_bus_message* call, std::size_t) { sd_bus_message_append(call, "b", 1); }},
                effort);
  MeasureBeside(
      "state writes",
      {.interface = "com.talo.Wifi1.Topology",
       .member = "SetContext",
       .fill = [](sd_bus_message* call,
                  std::size_t nth) { sd_bus_message_append(call, "s", nth % 2 == 0 ? "even" : "odd"); }},
      effort);
}

}  // namespace TALO::Bench
