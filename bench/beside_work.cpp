#include "bench/beside_work.h"

#include "bench/full_router.h"
#include "bench/load.h"
#include "bench/table.h"
#include "client/wifi_client.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <thread>

namespace TALO::Bench {

namespace {

using Clock = std::chrono::steady_clock;

constexpr double kGoalOfDelay = 2;

/// A radio answers for so long from what it heard last.
constexpr std::chrono::seconds kScanMemory(10);

/// Stations that a restart drops join again before the next one drops them: it begins by telling the radios,
/// which takes longer. So each restart is one of a router in use.
constexpr Environs kEnvirons = {.neighbours = 300, .join = std::chrono::milliseconds(10)};
static_assert(kEnvirons.join < kEnvirons.apply);

/// One kind of work, and what is to be done around each of its rounds.
struct Disturbance {
  std::string name;
  Work work;
  Goal ninetyNinth = AtMost(kGoalOfDelay);
  std::function<void()> prepare = [] {};
  /// Throws where the round was not what it is to be; the router is at rest once it returns.
  std::function<void()> check = [] {};
};

void Measure(const Disturbance& disturbance, const Effort& effort) {
  std::vector<Load> busy;
  std::vector<Load> idle;
  for (std::size_t round = 0; round < effort.Or(1, 9); ++round) {
    disturbance.prepare();
    busy.push_back(MeasureBeside(RadioQuestion(), disturbance.work));
    disturbance.check();
    idle.push_back(MeasureLoad(RadioQuestion(), 1, busy.back().calls));
  }
  const Load during = MedianOf(busy);
  const Load before = MedianOf(idle);
  const std::string what = "answers during " + disturbance.name;
  const std::string against = "as many at rest";
  PrintComparison({what + ", median", against, during.median, before.median, "us", AtMost(kGoalOfDelay)});
  PrintComparison(
      {what + ", 99 of 100", against, during.ninetyNinth, before.ninetyNinth, "us", disturbance.ninetyNinth});
  PrintComparison({what + ", slowest", against, during.slowest, before.slowest, "us"});
  PrintFigure("questions a round of " + disturbance.name, static_cast<double>(during.calls), "questions");
}

/// One scan of every radio a round, each a real one: of nothing that they remember.
Disturbance Scans() {
  const auto remembered = std::make_shared<Clock::time_point>();
  return {.name = "a scan",
          .work = {.call = {.member = "GetScanResults",
                            .fill =
                                [](sd_bus_message* call, std::size_t) {
                                  Wifi::Bus::CheckMessage(sd_bus_message_append(call, "i", 0));
                                }},
                   .shortest = kEnvirons.scan},
          .prepare = [remembered] { std::this_thread::sleep_until(*remembered); },
          .check = [remembered] { *remembered = Clock::now() + kScanMemory; }};
}

/// No station may have stayed connected since the round began.
void CheckStationsWereDropped(Clock::time_point began) {
  FullRouter::AwaitStations();
  const auto devices = Wifi::WifiClientFactory::GetInstance()->GetDevices();
  const auto longest = std::ranges::max(devices, {}, &Wifi::DeviceInfo::connectedTime).connectedTime;
  if (std::chrono::seconds(longest) > Clock::now() - began) {
    throw std::runtime_error("a restart leaves stations connected");
  }
}

Disturbance Restarts(const Effort& effort) {
  const auto began = std::make_shared<Clock::time_point>();
  return {.name = "restarts",
          .work = {.call = {.interface = "com.talo.Wifi1.Tool",
                            .member = "RestartNetworks",
                            .fill =
                                [](sd_bus_message* call, std::size_t) {
                                  Wifi::Bus::CheckMessage(sd_bus_message_append(call, "b", 1));
                                }},
                   .times = effort.Or(2, 40),
                   .shortest = kEnvirons.apply + kEnvirons.bss},
          .prepare = [began] { *began = Clock::now(); },
          .check = [began] { CheckStationsWereDropped(*began); }};
}

/// One change upon the other, more than anybody makes: they take the processors that the bus and the callers
/// need as well, so there is no goal for the slower answers.
Disturbance StateWrites(const Effort& effort) {
  return {.name = "state writes",
          .work = {.call = {.interface = "com.talo.Wifi1.Topology",
                            .member = "SetContext",
                            .fill =
                                [](sd_bus_message* call, std::size_t nth) {
                                  Wifi::Bus::CheckMessage(
                                      sd_bus_message_append(call, "s", nth % 2 == 0 ? "even" : "odd"));
                                }},
                   .times = effort.Or(4, 400)},
          .ninetyNinth = {}};
}

}  // namespace

void MeasureAnswersBesideWork(const Effort& effort) {
  PrintHeading("Calls of GetRadioIfStatuses beside work, 16 networks, 128 stations, 300 neighbours");
  const FullRouter router(kEnvirons);
  for (const Disturbance& disturbance : {Scans(), Restarts(effort), StateWrites(effort)}) {
    Measure(disturbance, effort);
  }
}

}  // namespace TALO::Bench
