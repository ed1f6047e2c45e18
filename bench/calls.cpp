#include "bench/bench.h"
#include "bench/beside_work.h"
#include "bench/load.h"
#include "bench/table.h"

namespace TALO::Bench {

namespace {

constexpr double kGoalOfRate = 0.8;

Target NullQuestion() {
  return {"com.talo.Null1", "/com/talo/Null1", "com.talo.Null1", "GetRadioIfStatuses", {}};
}

void MeasureCallers(std::size_t callers, const Effort& effort) {
  std::vector<Load> ours;
  std::vector<Load> theirs;
  for (std::size_t round = 0; round < effort.Or(1, 9); ++round) {
    ours.push_back(MeasureLoad(RadioQuestion(), callers, effort.Or(100, 5000)));
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

void MeasureAgainstNullService(const Effort& effort) {
  const Router router;
  const auto nullService = StartService({.words = {BuiltPrograms().nullService}}, "com.talo.Null1");
  PrintHeading("Calls of GetRadioIfStatuses");
  for (const std::size_t callers : {1, 8, 32}) {
    MeasureCallers(callers, effort);
  }
}

}  // namespace

void MeasureCalls(const Effort& effort) {
  MeasureAgainstNullService(effort);
  MeasureAnswersBesideWork(effort);
}

}  // namespace TALO::Bench
