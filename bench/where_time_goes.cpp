#include "bench/where_time_goes.h"

#include "bench/profile.h"
#include "bench/table.h"

#include <utility>

namespace TALO::Bench {

namespace {

std::string NameOf(const std::string& path) { return path.substr(path.rfind('/') + 1); }

/// What runs in objects whose names begin so.
double In(const Profile& profile, const std::string& name) {
  double sum = 0;
  for (const auto& [object, cost] : profile.objects) {
    sum += NameOf(object).starts_with(name) ? cost : 0;
  }
  return sum;
}

}  // namespace

void CompareTimes(const std::string& what, const std::string& against, const RunCost& ours,
                  const RunCost& theirs) {
  const auto user = [](const RunCost& cost) { return cost.processorMilliseconds - cost.kernelMilliseconds; };
  const auto waiting = [](const RunCost& cost) { return cost.milliseconds - cost.processorMilliseconds; };
  PrintComparison({what, against, user(ours), user(theirs), "ms not in kernel"});
  PrintComparison({what, against, ours.kernelMilliseconds, theirs.kernelMilliseconds, "ms in kernel"});
  PrintComparison({what, against, waiting(ours), waiting(theirs), "ms waiting"});
}

void CompareProfiles(const std::string& what, const std::string& against, const Command& ours,
                     const Command& theirs) {
  const Profile own = ProfileRun(ours);
  const Profile other = ProfileRun(theirs);
  const std::string unit = "1000 instr.";
  const auto print = [&](const std::string& where, double part, double otherPart) {
    PrintComparison({what + ", " + where, against, part / 1e3, otherPart / 1e3, unit});
    return std::pair(part, otherPart);
  };
  double rest = own.total;
  double otherRest = other.total;
  const auto printObject = [&](const std::string& where, const std::string& ourObject,
                               const std::string& theirObject) {
    const auto parts = print(where, In(own, ourObject), In(other, theirObject));
    rest -= parts.first;
    otherRest -= parts.second;
  };
  printObject("dynamic loader", "ld-linux", "ld-linux");
  printObject("libsystemd", "libsystemd", "libsystemd");
  printObject("C library", "libc.so", "libc.so");
  printObject("the program itself", NameOf(ours.front()), NameOf(theirs.front()));
  print("others", rest, otherRest);

  const auto printPart = [&](const std::string& where, const std::string& function) {
    PrintFigure(what + ", " + where, Inclusive(own, function) / 1e3, unit);
  };
  printPart("start of standard streams", "std::ios_base::Init::Init");
  printPart("taking the arguments away", "TALO::Tool::TakenArguments::TakenArguments");
  printPart("parsing them", "TALO::Tool::(anonymous namespace)::parseInvocation");
  printPart("table of commands", "TALO::Tool::fillCommandTable");
  printPart("connecting", "TALO::Wifi::WifiClientFactory::GetInstance");
  printPart("call and answer", "TALO::Wifi::(anonymous namespace)::WifiClientProxy::GetRadioIfStatuses");
}

}  // namespace TALO::Bench
