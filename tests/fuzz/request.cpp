// Any requests to a router with devices around it, one after the other or many at once, while time passes,
// clocks are set, and disks and radios fail or take their time: each is answered once, and what follows is a
// state that the rules allow, stored and in the air once disks and radios work again.

#include "daemon/model/first_state.h"
#include "daemon/model/state_check.h"
#include "daemon/store/state_codec.h"
#include "fuzz/support/fuzzed_values.h"
#include "fuzz/support/operation_visit.h"
#include "fuzz/support/require.h"
#include "support/simulated_service.h"
#include "support/simulation.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Fuzz {

namespace {

namespace Bus = Wifi::Bus;
using Wifid::State;

constexpr int kGoodApplies = 3;
constexpr int kBadApplies = 2;
constexpr std::int64_t kStart = 1'774'699'200;  // 2026-03-28T12:00:00Z

Wifid::Scenario Surroundings(bool radiosFail) {
  Wifid::Scenario scenario;
  Wifid::Device pressing = Wifid::MakeDevice(3);
  pressing.knows.clear();
  pressing.pressesAfter = 5;
  scenario.devices = {Wifid::MakeDevice(1), Wifid::MakeDevice(2), pressing};
  scenario.devices.front().knows.front().passphrase = kSecret;
  scenario.neighbours = {Wifid::MakeAccessPoint(1, "Uplink", 6, -50),
                         Wifid::MakeAccessPoint(2, "Home", 36, -60)};
  scenario.neighbours.front().passphrase = kSecret;
  scenario.meshNodes = {{"SN-0001", Wifid::SupportedModel::Birch200}};
  if (radiosFail) {
    scenario.faults.apply = {
        {Wifid::RadioFrequency::Band2_4GHz, kGoodApplies, kBadApplies, "the radio is broken", 100}};
    scenario.faults.scan = {{Wifid::RadioFrequency::Band2_4GHz, 1, 1, "no answer"}};
  }
  return scenario;
}

/// A router that has had its first networks, one of them with a schedule, and joined another.
State FirstState(Wifid::SupportedModel model, int networks) {
  State state = Wifid::MakeFirstState(Wifid::MakeSimulatedCapabilities(model), Wifi::CountryCode::DE);
  for (int id = 1; id <= networks; ++id) {
    state.networks.push_back(Wifid::MakeNetwork(id, id, id == 1 ? "Home" : "Guest"));
    state.networks.back().passphrase = kSecret;
    state.nextNetworkId = id + 1;
  }
  if (networks > 1) {
    const Wifid::RadioFrequency radio = state.radios.front().radio;
    state.networks.back().schedules = {
        {radio, Wifid::ScheduleMode::Customized, 0, {{60, 1'200}, {7'000, 9'000}}}};
    Wifi::StationSetting& station = state.stations.front();
    station.enable = true;
    station.essid = "Uplink";
    station.password = kSecret;
    station.securityMode = Wifid::SecurityMode::PersonalWPA2;
  }
  return state;
}

class Session {
 public:
  Session(FuzzedDataProvider& data, Wifid::SupportedModel model)
      : data_(data),
        radiosFail_(data.ConsumeIntegralInRange(0, 3) == 0),
        service_(model, Surroundings(radiosFail_), FirstState(model, data.ConsumeIntegralInRange(0, 2)),
                 kStart),
        first_(service_.GetState()) {
    Pass(5);
  }

  void Step() {
    switch (data_.ConsumeIntegralInRange(0, 15)) {
      case 0:
        Pass(data_.ConsumeIntegralInRange(0, 200));
        break;
      case 1:
        service_.SetClock(kStart + data_.ConsumeIntegralInRange(-1'000'000, 100'000'000));
        break;
      case 2:
        diskFails_ = true;
        service_.Store().FailNext("the disk is full");
        break;
      case 3:
        service_.Store().Hold();
        break;
      case 4:
        service_.Store().Release();
        break;
      default:
        VisitOperation(data_.ConsumeIntegralInRange<std::size_t>(0, kOperations - 1),
                       [this](auto interface, auto row) { Ask(interface, row); });
        break;
    }
  }

  void End() {
    service_.Store().Release();
    // Longer than anything takes.
    Pass(300);
    for (const std::uint64_t call : calls_) {
      Require(service_.Bus().CountAnswers(call) == 1, "a call is answered once");
      CheckAnswer(service_.Bus().WaitForAnswer(call));
    }
    CheckStanding();
  }

 private:
  template <typename Interface, typename Row>
  void Ask(Interface, Row) {
    typename Row::Arguments arguments{};
    FuzzedValues(data_).Fill(arguments);
    const Bus::Message call = service_.Bus().NewCall(Interface::name.text, Row::name.text);
    try {
      std::apply([&](const auto&... each) { Row::ArgumentsCodec::Append(call.get(), each...); }, arguments);
    } catch (const Bus::InvalidText&) {
      return;
    }
    calls_.push_back(service_.Bus().Send(call.get()));
  }

  void Pass(int seconds) {
    service_.Bus().RunUntilQuiet();
    service_.Pass(std::chrono::seconds(seconds));
    service_.Bus().RunUntilQuiet();
    CheckState();
  }

  void CheckState() {
    const State& state = service_.GetState();
    const auto check = Wifid::CheckState(state);
    Require(check.Succeeded(), check.Succeeded() ? "" : check.Why().sentence);
    const auto stored = Wifid::DecodeState(Wifid::EncodeState(state));
    Require(stored.Succeeded() && stored.Value() == state, "a state that was stored is read again");
  }

  static void CheckAnswer(sd_bus_message* answer) {
    const std::string error = Wifid::ErrorOf(answer);
    Require(error == "none" || error.starts_with(Bus::kErrorPrefix),
            "a refusal is one of the daemon's: " + error);
    Require(error == "none" || error.find(kSecret) == std::string::npos, "a refusal holds no secret");
    Require(error.find('\n') == std::string::npos, "a refusal is a line");
  }

  /// What is in force is there at once where nothing failed, and everywhere once radios and disk work again.
  void CheckStanding() {
    if (!diskFails_) {
      CheckStored();
    }
    if (!radiosFail_) {
      CheckAir();
    }
    service_.Store().FailNoMore();
    for (int apply = 0; radiosFail_ && apply < kGoodApplies + kBadApplies; ++apply) {
      static_cast<void>(service_.Restart());
    }
    Require(service_.Restart().Succeeded(), "radios that work are brought to their plans");
    service_.End();
    CheckStored();
    CheckAir();
  }

  void CheckStored() {
    const auto& saved = service_.Store().LastSaved();
    Require((saved ? *saved : first_) == service_.GetState(), "what is in force is stored");
  }

  void CheckAir() const {
    const State& state = service_.GetState();
    const std::vector<Wifid::LiveRadio> live = service_.Driver().GetLive();
    const std::vector<Wifid::RadioPlan> plans =
        Wifid::MakePlan(state, service_.Driver().GetCapabilities(),
                        Wifid::ScheduledOff(state, service_.WallNow(), Wifid::Greenwich()));
    Require(live.size() == plans.size(), "every radio is shown");
    for (std::size_t i = 0; i < plans.size(); ++i) {
      const auto reached = service_.ReachedPlans().find(plans[i].radio);
      Require(reached != service_.ReachedPlans().end() && reached->second == plans[i],
              "what is in force has reached the radio");
      CheckRadio(plans[i], live[i]);
    }
  }

  static void CheckRadio(const Wifid::RadioPlan& plan, const Wifid::LiveRadio& live) {
    Require(live.radio == plan.radio && live.up == plan.enable, "a radio is on where it is to be");
    Require(!live.up || plan.channel == Wifid::kAutomaticChannel || live.channel == plan.channel,
            "a radio is on its channel");
    Require(live.station.ssid == (plan.enable && plan.station ? plan.station->ssid : "") &&
                live.backhaulStation.ssid ==
                    (plan.enable && plan.backhaulStation ? plan.backhaulStation->ssid : ""),
            "a radio joins what it is to join");
    std::set<std::string> planned;
    for (const Wifid::BSSPlan& bss : plan.bsss) {
      planned.insert(Name(bss.networkId, bss.interface, bss.bssid, plan.enable));
    }
    std::set<std::string> there;
    for (const Wifid::LiveBSS& bss : live.bsss) {
      Require(there.insert(Name(bss.networkId, bss.interface, bss.bssid, bss.up)).second,
              "a network is once on a radio");
    }
    Require(there == planned, "what is in force is in the air");
  }

  static std::string Name(int network, const std::string& interface, const Wifi::Util::MACAddress& bssid,
                          bool up) {
    return std::to_string(network) + " " + interface + " " + bssid.ToString() + (up ? " up" : " down");
  }

  FuzzedDataProvider& data_;
  bool radiosFail_;
  bool diskFails_ = false;
  Wifid::SimulatedService service_;
  State first_;
  std::vector<std::uint64_t> calls_;
};

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  FuzzedDataProvider data(bytes, size);
  const auto model =
      data.ConsumeBool() ? TALO::Wifid::SupportedModel::Alder100 : TALO::Wifid::SupportedModel::Dune40;
  Fuzz::Session session(data, model);
  constexpr int kMostSteps = 40;
  for (int step = 0; step < kMostSteps && data.remaining_bytes() > 0; ++step) {
    session.Step();
  }
  session.End();
  return 0;
}
