#include "support/simulation.h"

#include "client/bytes.h"
#include "daemon/model/capabilities.h"
#include "support/events.h"

#include <optional>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

std::string LastByte(int number) { return Wifi::ToHex(std::string(1, static_cast<char>(number))); }

BSSPlan MakeBSSOn(const RadioCapability& radio, int networkId, int slot) {
  BSSPlan bss;
  bss.networkId = networkId;
  bss.interface = BSSInterface(radio, slot);
  bss.bssid = BSSAddress(radio, slot);
  bss.ssid = "Home";
  bss.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  bss.passphrase = "correct-horse";
  bss.bridge = "br0";
  return bss;
}

const std::vector<RadioCapability>& DualBandRadios() {
  static const Capabilities kCapabilities = MakeSimulatedCapabilities(SupportedModel::Cedar300);
  return kCapabilities.radios;
}

}  // namespace

MACAddress DeviceAddress(int number) { return MACAddress("0a:00:00:00:00:" + LastByte(number)); }

Device MakeDevice(int number) {
  Device device;
  device.address = DeviceAddress(number);
  device.knows = {{"Home", "correct-horse"}};
  return device;
}

AccessPoint MakeAccessPoint(int number, const std::string& ssid, int channel, int signal) {
  AccessPoint accessPoint;
  accessPoint.ssid = ssid;
  accessPoint.bssid = MACAddress("06:00:00:00:00:" + LastByte(number));
  accessPoint.channel = channel;
  accessPoint.signal = signal;
  accessPoint.passphrase = "uplink-password";
  return accessPoint;
}

BSSPlan MakeBSS(int networkId, int slot) { return MakeBSSOn(DualBandRadios().at(0), networkId, slot); }

BSSPlan MakeBSSOf5GHz(int networkId, int slot) { return MakeBSSOn(DualBandRadios().at(1), networkId, slot); }

RadioPlan MakeRadioPlan(const std::vector<BSSPlan>& bsss) {
  return {
      RadioFrequency::Band2_4GHz, true, 6, 20, 100, CountryCode::DE, bsss, std::nullopt, std::nullopt, {}};
}

RadioPlan MakeRadioPlanOf5GHz(const std::vector<BSSPlan>& bsss) {
  return {RadioFrequency::Band5GHz, true, 36, 80, 100, CountryCode::DE, bsss, std::nullopt, std::nullopt, {}};
}

Simulation::Simulation(Scenario scenario, SupportedModel model) : driver(model, std::move(scenario), timers) {
  driver.SetEventSink([this](const RadioEvent& event) { Note(Describe(event)); });
}

void Simulation::Note(const std::string& line) {
  notes_.push_back(std::to_string(timers.Now().count()) + " " + line);
}

RadioDriver::Done Simulation::NoteAnswer(const std::string& word) {
  return [this, word](const Result<void>& result) {
    Note(word + (result.Succeeded() ? "" : ": " + Describe(result.Why())));
  };
}

void Simulation::Apply(const RadioPlan& plan, ApplyMode mode) {
  driver.Apply(plan, mode, NoteAnswer("applied"));
}

void Simulation::StartWPS(const std::string& interface) {
  driver.StartWPS(interface, NoteAnswer("WPS started"));
}

void Simulation::CancelWPS(const std::string& interface) {
  driver.CancelWPS(interface, NoteAnswer("WPS cancelled"));
}

void Simulation::Reconnect(RadioFrequency radio) { driver.Reconnect(radio, NoteAnswer("reconnected")); }

void Simulation::ApplyNow(const RadioPlan& plan, ApplyMode mode) {
  std::optional<Result<void>> answer;
  driver.Apply(plan, mode, [&answer](const Result<void>& result) { answer = result; });
  while (!answer && timers.RunNext()) {
  }
  if (!answer) {
    Note("never applied");
  } else if (!answer->Succeeded()) {
    Note("applied: " + Describe(answer->Why()));
  }
}

Result<std::vector<Wifi::ScanResult>> Simulation::ScanNow(RadioFrequency radio) {
  std::optional<Result<std::vector<Wifi::ScanResult>>> answer;
  driver.Scan(radio, [&answer](const auto& results) { answer = results; });
  while (!answer && timers.RunNext()) {
  }
  return answer ? *answer : Refusal{ErrorCode::NoAnswer, "never answered"};
}

std::vector<std::string> Simulation::TakeNotes() { return std::exchange(notes_, {}); }

LiveRadio Simulation::Live(RadioFrequency radio) const {
  for (const LiveRadio& live : driver.GetLive()) {
    if (live.radio == radio) {
      return live;
    }
  }
  return {};
}

std::vector<int> Simulation::StationsOn(const std::string& interface) const {
  std::vector<int> stations;
  for (const LiveRadio& radio : driver.GetLive()) {
    for (const LiveBSS& bss : radio.bsss) {
      for (const LiveStation& station : bss.stations) {
        if (bss.interface == interface) {
          stations.push_back(std::stoi(station.address.ToString().substr(15), nullptr, 16));
        }
      }
    }
  }
  return stations;
}

}  // namespace TALO::Wifid
