#include "bench/bench.h"
#include "bench/profile.h"
#include "bench/run_cost.h"
#include "bench/table.h"
#include "bench/where_time_goes.h"

namespace TALO::Bench {

namespace {

constexpr double kGoalAgainstC = 1.5;
constexpr double kGoalAgainstBusctl = 0.65;

void Compare(const std::string& what, const std::string& against, const RunCost& ours, const RunCost& theirs,
             const Goal& goal) {
  PrintComparison({what, against, ours.milliseconds, theirs.milliseconds, "ms", goal});
  PrintComparison(
      {what, against, ours.processorMilliseconds, theirs.processorMilliseconds, "ms of processor"});
  PrintComparison({what, against, ours.pageFaults, theirs.pageFaults, "page faults"});
  PrintComparison({what, against, ours.residentKiB, theirs.residentKiB, "KiB resident"});
}

void CompareWork(const std::string& what, const std::string& against, const Command& ours,
                 const Command& theirs) {
  PrintComparison(
      {what, against, ProfileRun(ours).total / 1e3, ProfileRun(theirs).total / 1e3, "1000 instr."});
  const LoaderWork own = MeasureLoader(ours);
  const LoaderWork other = MeasureLoader(theirs);
  PrintComparison({what, against, own.libraries, other.libraries, "libraries"});
  PrintComparison({what, against, own.symbolRelocations, other.symbolRelocations, "names bound"});
  PrintComparison({what, against, own.plainRelocations, other.plainRelocations, "places moved"});
}

/// One command of the tool against a C program that makes the same calls; where there is a goal, with
/// where the time goes.
void MeasureRun(const std::string& command, const std::string& kind, const Command& calls, const Goal& goal,
                const Effort& effort) {
  const std::string what = command + kind;
  const Command ours = {BuiltPrograms().tool, command};
  Command theirs = {BuiltPrograms().cClient};
  theirs.insert(theirs.end(), calls.begin(), calls.end());
  const auto costs = MeasureInTurn({ours, theirs}, effort.Or(3, 500));
  const std::string against = "C client on sd-bus";
  Compare(what, against, costs[0], costs[1], goal);
  CompareWork(what, against, ours, theirs);
  if (goal.kind != Goal::Kind::None) {
    CompareTimes(what, against, costs[0], costs[1]);
    CompareProfiles(what, against, ours, theirs);
  }
}

}  // namespace

void MeasureRuns(const Effort& effort) {
  const Router router;

  PrintHeading("Whole runs of the tool");
  MeasureRun("getRadioIfStatuses", "", {"GetRadioIfStatuses"}, AtMost(kGoalAgainstC), effort);
  const auto costs = MeasureInTurn({{BuiltPrograms().tool, "getRadioIfStatuses"},
                                    {"busctl", "call", "com.talo.Wifi1", "/com/talo/Wifi1",
                                     "com.talo.Wifi1.General", "GetRadioIfStatuses"}},
                                   effort.Or(3, 500));
  Compare("getRadioIfStatuses", "busctl call", costs[0], costs[1], AtMost(kGoalAgainstBusctl));
  MeasureRun("getInterfaceRadioMap", ", debug-only", {"LogLevel", "GetNetworkInterfaceRadioMap"}, {}, effort);
  MeasureRun("help", "", {"LogLevel"}, {}, effort);
  MeasureRun("getNetworks", ", JSON", {"GetNetworkSettings"}, {}, effort);
}

}  // namespace TALO::Bench
