#include "bench/bench.h"
#include "bench/profile.h"
#include "bench/run_cost.h"
#include "bench/table.h"

#include <cmath>
#include <map>

namespace TALO::Bench {

namespace {

/// A listing of the tool, and the method behind it.
struct Listing {
  std::string command;
  std::string kind;
  std::string method;
};

constexpr int kRecordsOfGoal = 10000;
constexpr double kGoal = 1.5;
constexpr int kRecordsOfProfile = 1000;

std::string Thousands(int number) {
  std::string text = std::to_string(number);
  for (std::size_t at = text.size(); at > 3; at -= 3) {
    text.insert(at - 3, ",");
  }
  return text;
}

RunCost MeasureListing(const Listing& listing, int records, const Effort& effort) {
  const std::size_t rounds = effort.Or(1, records > 1000 ? 7 : 100);
  const auto costs = MeasureInTurn({{BuiltPrograms().tool, listing.command},
                                    {"busctl", "--json=short", "call", "com.talo.Wifi1", "/com/talo/Wifi1",
                                     "com.talo.Wifi1.General", listing.method}},
                                   rounds);
  const std::string what = Thousands(records) + " records, " + listing.kind;
  const Goal goal = records == kRecordsOfGoal ? AtMost(kGoal) : Goal{};
  PrintComparison({what, "busctl --json=short", costs[0].milliseconds, costs[1].milliseconds, "ms", goal});
  PrintComparison(
      {what, "busctl --json=short", costs[0].residentKiB, costs[1].residentKiB, "KiB resident", goal});
  return costs[0];
}

/// What a listing as JSON is spent on, each with all that is called for it.
void PrintProfile(const Listing& listing, int records) {
  const Profile profile = ProfileRun({BuiltPrograms().tool, listing.command});
  const auto print = [&](const std::string& part, const std::string& function) {
    PrintFigure(Thousands(records) + " records, " + listing.kind + ", " + part,
                Inclusive(profile, function) / profile.total * 100, "% of instr.");
  };
  print("reading", "TALO::Wifi::(anonymous namespace)::WifiClientProxy::" + listing.method);
  print("the library's maps", "Json::Value::resolveReference");
  print("the library's writing", "Json::BuiltStyledStreamWriter::write");
}

/// How a cost grows with the number of records: 1 is in step with it.
double Exponent(double less, double more, double times) { return std::log(more / less) / std::log(times); }

}  // namespace

void MeasureListings(const Effort& effort) {
  PrintHeading("Listings");
  const std::vector<int> sizes =
      effort.quick ? std::vector<int>{10, 1000} : std::vector<int>{10, 1000, 10000, 100000};
  const std::vector<Listing> listings = {{"getDevices", "JSON", "GetDevices"},
                                         {"getInterfaceRadioMap", "text", "GetNetworkInterfaceRadioMap"}};
  std::map<std::string, std::vector<RunCost>> costs;
  for (const int records : sizes) {
    const Bus bus;
    const auto service =
        StartService({.words = {BuiltPrograms().listingService, std::to_string(records)}}, "com.talo.Wifi1");
    for (const Listing& listing : listings) {
      costs[listing.kind].push_back(MeasureListing(listing, records, effort));
      // Some of it is the library's own business, and may be called otherwise in another version.
      if (!effort.quick && listing.kind == "JSON" && records == kRecordsOfProfile) {
        PrintProfile(listing, records);
      }
    }
  }
  for (const auto& [kind, of] : costs) {
    const RunCost& less = of[of.size() - 2];
    const RunCost& more = of.back();
    const double times = static_cast<double>(sizes.back()) / sizes[sizes.size() - 2];
    const std::string range =
        " from " + Thousands(sizes[sizes.size() - 2]) + " to " + Thousands(sizes.back()) + ", ";
    PrintFigure("time" + range + kind, Exponent(less.milliseconds, more.milliseconds, times), "exponent");
    PrintFigure("memory" + range + kind, Exponent(less.residentKiB, more.residentKiB, times), "exponent");
  }
}

}  // namespace TALO::Bench
