#include "support/machine/linux_router.h"

#include "support/events.h"

#include <utility>

namespace TALO::Wifid {

LinuxRouter::LinuxRouter(const std::vector<Wiphy>& wiphys)
    : machine(wiphys),
      driver(std::make_unique<LinuxDriver>(LinuxSetup{.model = SupportedModel::Dune40}, machine.Doors())) {
  driver->SetEventSink([this](const RadioEvent& event) { events_.push_back(Describe(event)); });
}

RadioPlan LinuxRouter::Plan(std::size_t radio, const std::vector<int>& networks) const {
  const RadioCapability& capability = driver->GetCapabilities().radios.at(radio);
  RadioPlan plan;
  plan.radio = capability.radio;
  plan.enable = true;
  plan.channel = capability.channels.front();
  plan.channelWidth = 20;
  plan.transmitPower = 100;
  plan.country = CountryCode::DE;
  for (const int network : networks) {
    BSSPlan bss;
    bss.networkId = network;
    bss.interface = BSSInterface(capability, network);
    bss.bssid = BSSAddress(capability, network);
    bss.ssid = "Network " + std::to_string(network);
    bss.securityMode = SecurityMode::PersonalWPA2;
    bss.passphrase = "passphrase-" + std::to_string(network);
    bss.bridge = "br0";
    plan.bsss.push_back(bss);
  }
  return plan;
}

StationPlan LinuxRouter::Station(const std::string& ssid, const std::string& passphrase) {
  return {"wlan0sta", ssid, "", passphrase, {}, SecurityMode::PersonalWPA2};
}

Result<void> LinuxRouter::Apply(const RadioPlan& plan, ApplyMode mode) {
  std::optional<Result<void>> answer;
  driver->Apply(plan, mode, [&answer](const Result<void>& result) { answer = result; });
  return WaitFor([&answer] { return answer.has_value(); })
             ? *answer
             : Result<void>(Refusal{ErrorCode::NoAnswer, "never answered"});
}

Result<std::vector<Wifi::ScanResult>> LinuxRouter::Scan(std::size_t radio) {
  std::optional<Result<std::vector<Wifi::ScanResult>>> answer;
  driver->Scan(driver->GetCapabilities().radios.at(radio).radio,
               [&answer](const auto& results) { answer = results; });
  return WaitFor([&answer] { return answer.has_value(); })
             ? *answer
             : Result<std::vector<Wifi::ScanResult>>(Refusal{ErrorCode::NoAnswer, "never answered"});
}

FakeDevice& LinuxRouter::Join(int device, int network) {
  const std::string number = std::to_string(network);
  FakeDevice& joining =
      machine.hostapd.Bring({Wifi::Util::MACAddress("0a:00:00:00:00:0" + std::to_string(device)),
                             {{"Network " + number, "passphrase-" + number}}});
  WaitFor([&joining] { return !joining.on.empty(); });
  machine.Advance(10);
  return joining;
}

std::vector<std::string> LinuxRouter::TakeEvents() { return std::exchange(events_, {}); }

std::string Describe(const Result<void>& result) {
  return result.Succeeded() ? "done" : Describe(result.Why());
}

}  // namespace TALO::Wifid
