// Any scenario file. One that is taken is written and read again, and runs for some minutes.

#include "daemon/json/record_json.h"
#include "daemon/radio/simulated/scenario_description.h"
#include "fuzz/support/require.h"
#include "support/simulation.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

void CheckLive(const Wifid::Simulation& simulation, const Wifid::Scenario& scenario) {
  std::set<Wifi::Util::MACAddress> stations;
  for (const Wifid::LiveRadio& radio : simulation.driver.GetLive()) {
    Require(radio.utilisation >= 0 && radio.utilisation <= 100, "a channel is busy at most all the time");
    for (const Wifid::LiveBSS& bss : radio.bsss) {
      for (const Wifid::LiveStation& station : bss.stations) {
        Require(stations.insert(station.address).second, "a device is in one place");
        Require(std::ranges::find(scenario.devices, station.address, &Wifid::Device::address) !=
                    scenario.devices.end(),
                "who is connected is one of the devices");
      }
    }
  }
}

void CheckHeard(const std::vector<Wifi::ScanResult>& heard, const Wifid::Scenario& scenario) {
  std::set<Wifi::Util::MACAddress> seen;
  for (const Wifi::ScanResult& each : heard) {
    Require(seen.insert(each.bssid).second, "an access point is heard once");
    const auto source = std::ranges::find(scenario.neighbours, each.bssid, &Wifid::AccessPoint::bssid);
    Require(source != scenario.neighbours.end() && source->channel == each.channel,
            "what is heard is in the air");
  }
}

void Listen(Wifid::Simulation& simulation, const Wifid::Scenario& scenario) {
  constexpr int kPatience = 120'000;
  constexpr int kOnItsWay = 1'000;
  int answers = 0;
  simulation.driver.Scan(Wifid::RadioFrequency::Band5GHz, [&](const auto& results) {
    ++answers;
    if (results.Succeeded()) {
      CheckHeard(results.Value(), scenario);
    }
  });
  simulation.Advance(kPatience);
  const bool isOver = scenario.timings.scanMilliseconds < kPatience - kOnItsWay;
  Require(answers == 1 || (answers == 0 && !isOver), "a question has one answer");
}

void Run(const Wifid::Scenario& scenario) {
  Wifid::Simulation simulation(scenario);
  Wifid::RadioPlan plan = Wifid::MakeRadioPlan({Wifid::MakeBSS(1)});
  plan.backhaulStation = Wifid::BackhaulStationPlan{"wlan0bsta", "Mesh", "correct-horse"};
  Wifid::RadioPlan faster = Wifid::MakeRadioPlanOf5GHz({Wifid::MakeBSSOf5GHz(1)});
  faster.station =
      Wifid::StationPlan{"wlan1sta", "Uplink", "", "uplink-password", {}, Wifid::SecurityMode::PersonalWPA2};
  constexpr int kMinute = 60'000;
  simulation.Apply(plan);
  simulation.Apply(faster);
  simulation.Advance(kMinute);
  CheckLive(simulation, scenario);
  simulation.StartWPS("wlan0_1");
  plan.bsss.front().passphrase = "battery-staple";
  simulation.Apply(plan);
  simulation.Reconnect(Wifid::RadioFrequency::Band5GHz);
  // It is busy until then.
  simulation.Advance(kMinute);
  Listen(simulation, scenario);
  CheckLive(simulation, scenario);
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  namespace Wifid = TALO::Wifid;
  const std::string text(reinterpret_cast<const char*>(data), size);
  const auto scenario = Wifid::ParseScenario(text);
  if (!scenario.Succeeded()) {
    Fuzz::Require(!scenario.Why().sentence.empty() && scenario.Why().sentence.find('\n') == std::string::npos,
                  "a refusal is a line");
    return 0;
  }
  const auto again = Wifid::ParseScenario(Wifid::EncodeRecord(scenario.Value()).toStyledString());
  Fuzz::Require(again.Succeeded() && again.Value() == scenario.Value(),
                "a scenario that was read is read again");
  Fuzz::Run(scenario.Value());
  return 0;
}
