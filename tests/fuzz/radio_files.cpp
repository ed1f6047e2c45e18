// The files and commands that hostapd and wpa_supplicant get, for any plan: whatever SSIDs, passphrases and
// names hold, a value stays in its line, and each line is one of those that a harmless plan has.

#include "daemon/model/validation.h"
#include "daemon/radio/linux/control/hostapd_commands.h"
#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/control/supplicant_files.h"
#include "daemon/radio/linux/secrets.h"
#include "fuzz/support/fuzzed_values.h"
#include "fuzz/support/require.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

using Wifid::BSSPlan;
using Wifid::SecurityMode;
using Wifid::StationPlan;

/// What stands before "=" in each line, in their order.
std::vector<std::string> Keys(const std::string& text) {
  std::vector<std::string> keys;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    keys.push_back(line.substr(0, line.find('=')));
  }
  return keys;
}

/// Stands for the key itself, and in other lines.
const std::string kKey(64, 'c');

std::string AnyPassphrase(FuzzedDataProvider& data) {
  std::string passphrase = kKey;
  if (data.ConsumeBool()) {
    FuzzedValues(data).FillSecret(passphrase);
  }
  return passphrase;
}

std::string Harmless(const std::string& passphrase) {
  return passphrase.size() == kKey.size() ? kKey : "correct-horse";
}

/// Nothing where a value is refused.
template <typename Make>
std::optional<std::string> Written(Make make) {
  try {
    return make();
  } catch (const std::invalid_argument& refusal) {
    Require(std::string(refusal.what()).find(kSecret) == std::string::npos, "a refusal holds no secret");
    return std::nullopt;
  }
}

Wifid::HostapdSetup Setup() {
  Wifid::HostapdSetup setup;
  setup.channel.channel = 6;
  setup.controlDirectory = "/run/radios/hostapd";
  return setup;
}

BSSPlan MakeBSS(FuzzedDataProvider& data) {
  FuzzedValues values(data);
  BSSPlan bss;
  bss.networkId = data.ConsumeIntegralInRange(0, 2);
  bss.interface = "wlan0_1";
  values.Fill(bss.ssid);
  values.Fill(bss.hidden);
  values.Fill(bss.securityMode);
  bss.passphrase = AnyPassphrase(data);
  bss.access.rule =
      data.PickValueInArray({Wifid::AccessPlan::Rule::Everybody, Wifid::AccessPlan::Rule::OnlyListed,
                             Wifid::AccessPlan::Rule::AllButListed});
  values.Fill(bss.access.devices);
  return bss;
}

void CheckBSS(const BSSPlan& bss, const std::string& bridge) {
  if (!Wifid::CanCarry(bss.securityMode)) {
    return;
  }
  const Wifid::AccessPaths paths{"/run/radios/accept", "/run/radios/deny"};
  const auto text = Written([&] { return Wifid::BSSFile(Setup(), bss, bridge, paths); });
  BSSPlan harmless = bss;
  harmless.ssid = "Home";
  harmless.passphrase = Harmless(bss.passphrase);
  const std::string plainBridge = bridge.empty() ? "" : "br0";
  if (text) {
    Require(Keys(*text) == Keys(Wifid::BSSFile(Setup(), harmless, plainBridge, paths)),
            "a BSS's lines do not depend on its texts");
    Require(text->ends_with('\n') && text->find('\0') == std::string::npos, "a file is whole lines");
  } else {
    Require(!Wifid::CheckPassphrase(bss.passphrase).Succeeded() || bridge != plainBridge,
            "what the rules allow can be written");
  }
}

void CheckStation(FuzzedDataProvider& data) {
  FuzzedValues values(data);
  StationPlan station;
  station.interface = "wlan0sta";
  values.Fill(station.ssid);
  values.Fill(station.user);
  station.passphrase = AnyPassphrase(data);
  values.Fill(station.bssid);
  values.Fill(station.securityMode);
  if (!Wifid::CanJoin(station.securityMode)) {
    return;
  }
  const auto text = Written([&] { return Wifid::StationFile(station); });
  StationPlan harmless = station;
  harmless.ssid = "Home";
  harmless.user = "anna";
  harmless.passphrase = Harmless(station.passphrase);
  if (text) {
    Require(Keys(*text) == Keys(Wifid::StationFile(harmless)),
            "a station's lines do not depend on its texts");
  } else {
    Require(!Wifid::CheckPassphrase(station.passphrase).Succeeded(), "what the rules allow can be written");
  }
}

void CheckCommands(FuzzedDataProvider& data, const BSSPlan& bss, const BSSPlan& after) {
  Wifid::Commands commands = Wifid::ChangeAccess(bss.interface, bss.access, after.access);
  const auto more = Wifid::ChangeHidden(bss.interface, data.ConsumeBool());
  commands.insert(commands.end(), more.begin(), more.end());
  if (Wifid::CheckPassphrase(after.passphrase).Succeeded() &&
      Wifid::CanChangePassphrase(bss.securityMode, bss.passphrase, after.passphrase)) {
    const auto change = Wifid::ChangePassphrase(bss.interface, bss.securityMode, after.passphrase);
    commands.insert(commands.end(), change.begin(), change.end());
  }
  for (const std::string& command : commands) {
    Require(command.starts_with("IFNAME=wlan0_1 "), "a command is for its interface");
    Require(command.find('\n') == std::string::npos, "a command is a line");
  }
}

void CheckHidden(FuzzedDataProvider& data, const BSSPlan& bss) {
  Wifid::RadioPlan plan;
  plan.bsss = {bss};
  Wifid::Secrets secrets;
  secrets.Learn(plan);
  const std::string around = data.ConsumeRandomLengthString(40);
  if (!bss.passphrase.empty()) {
    Require(secrets.Hide(around + bss.passphrase).find(bss.passphrase) == std::string::npos,
            "what a program says is told without passphrases");
  }
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  FuzzedDataProvider data(bytes, size);
  const auto bss = Fuzz::MakeBSS(data);
  const auto after = Fuzz::MakeBSS(data);
  Fuzz::CheckBSS(bss, Fuzz::FuzzedValues(data).Make<std::string>());
  Fuzz::CheckStation(data);
  Fuzz::CheckCommands(data, bss, after);
  Fuzz::CheckHidden(data, bss);
  return 0;
}
