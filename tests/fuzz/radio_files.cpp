// The files and commands that hostapd and wpa_supplicant get, for any plan: whatever SSIDs, passphrases and
// names hold, a value stays in its line, and each line is one of those that a harmless plan has.

#include "client/bytes.h"
#include "daemon/model/validation.h"
#include "daemon/radio/linux/control/hostapd_commands.h"
#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/control/supplicant_files.h"
#include "daemon/radio/linux/secrets.h"
#include "daemon/radio/security_modes.h"
#include "fuzz/support/fuzzed_values.h"
#include "fuzz/support/require.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

using Wifid::BackhaulStationPlan;
using Wifid::BSSPlan;
using Wifid::SecurityMode;
using Wifid::StationPlan;

/// Ends a line for one of the programs that read the files, or the file.
bool EndsLine(char c) { return c == '\n' || c == '\r' || c == '\0'; }
bool IsLine(const std::string& text) { return std::ranges::none_of(text, EndsLine); }

/// What stands before "=" in each line, in their order, however a line ends.
std::vector<std::string> Keys(std::string text) {
  std::ranges::replace_if(text, EndsLine, '\n');
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

/// As long as identities and their passwords may be.
constexpr std::size_t kLongestIdentity = 253;

/// Adds any bytes, also those that a file cannot hold.
void Lengthen(FuzzedDataProvider& data, std::string& text) {
  static const std::array<std::string, 5> kEnds = {"", "\n", "\r", std::string(1, '\0'), "\rssid=Home"};
  if (text == kKey || text.size() >= kLongestIdentity || !data.ConsumeBool()) {
    return;
  }
  text += data.ConsumeRandomLengthString(kLongestIdentity);
  text += kEnds.at(data.ConsumeIntegralInRange<std::size_t>(0, kEnds.size() - 1));
  if (data.ConsumeBool()) {
    text.resize(kLongestIdentity, 'x');
  }
  text.resize(std::min(text.size(), kLongestIdentity));
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

StationPlan MakeStation(FuzzedDataProvider& data) {
  FuzzedValues values(data);
  StationPlan station;
  station.interface = "wlan0sta";
  values.Fill(station.ssid);
  values.Fill(station.user);
  station.passphrase = AnyPassphrase(data);
  values.Fill(station.bssid);
  values.Fill(station.securityMode);
  return station;
}

BackhaulStationPlan MakeBackhaulStation(FuzzedDataProvider& data) {
  FuzzedValues values(data);
  BackhaulStationPlan station;
  station.interface = "wlan0bsta";
  values.Fill(station.ssid);
  station.passphrase = AnyPassphrase(data);
  values.Fill(station.scanType);
  return station;
}

/// A file with the lines of a harmless one, or nothing where it may be refused.
void CheckFile(const std::optional<std::string>& text, const std::string& harmless, bool mayBeRefused) {
  if (!text) {
    Require(mayBeRefused, "what the rules allow can be written");
    return;
  }
  Require(Keys(*text) == Keys(harmless), "a file's lines do not depend on its texts");
  Require(
      text->ends_with('\n') && text->find('\0') == std::string::npos && text->find('\r') == std::string::npos,
      "a file is whole lines");
}

void CheckBSS(const BSSPlan& bss, const std::string& bridge) {
  if (!Wifid::CanCarry(bss.securityMode)) {
    return;
  }
  const Wifid::AccessPaths paths{"/run/radios/accept", "/run/radios/deny"};
  BSSPlan harmless = bss;
  harmless.ssid = "Home";
  harmless.passphrase = Harmless(bss.passphrase);
  CheckFile(Written([&] { return Wifid::BSSFile(Setup(), bss, bridge, paths); }),
            Wifid::BSSFile(Setup(), harmless, bridge.empty() ? "" : "br0", paths),
            !IsLine(bridge) ||
                (Wifid::IsPersonal(bss.securityMode) && !Wifid::CheckPassphrase(bss.passphrase).Succeeded()));
}

/// The devices that a list names, one in each line.
std::set<std::string> Listed(const std::string& text) {
  Require(text.empty() || text.ends_with('\n'), "a list is whole lines");
  std::set<std::string> devices;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    Require(devices.insert(line).second, "a device is listed once");
  }
  return devices;
}

void CheckLists(const Wifid::AccessPlan& access) {
  std::set<std::string> devices;
  for (const Wifi::Util::MACAddress& device : access.devices) {
    devices.insert(device.ToString());
  }
  const bool accepts = access.rule == Wifid::AccessPlan::Rule::OnlyListed;
  const bool denies = access.rule == Wifid::AccessPlan::Rule::AllButListed;
  Require(Listed(Wifid::AcceptFile(access)) == (accepts ? devices : std::set<std::string>()) &&
              Listed(Wifid::DenyFile(access)) == (denies ? devices : std::set<std::string>()),
          "the lists are those of the rule");
}

bool MayBeRefused(const StationPlan& station) {
  if (Wifid::IsEnterprise(station.securityMode)) {
    return std::max(station.user.size(), station.passphrase.size()) > kLongestIdentity;
  }
  return Wifid::IsPersonal(station.securityMode) && !Wifid::CheckPassphrase(station.passphrase).Succeeded();
}

void CheckStation(const StationPlan& station) {
  if (!Wifid::CanJoin(station.securityMode)) {
    return;
  }
  StationPlan harmless = station;
  harmless.ssid = "Home";
  harmless.user = "anna";
  harmless.passphrase = Harmless(station.passphrase);
  CheckFile(Written([&] { return Wifid::StationFile(station); }), Wifid::StationFile(harmless),
            MayBeRefused(station));
}

void CheckBackhaulStation(const BackhaulStationPlan& station) {
  BackhaulStationPlan harmless = station;
  harmless.ssid = "Mesh";
  harmless.passphrase = Harmless(station.passphrase);
  CheckFile(Written([&] { return Wifid::BackhaulStationFile(station); }),
            Wifid::BackhaulStationFile(harmless), !Wifid::CheckPassphrase(station.passphrase).Succeeded());
}

void CheckCommands(const BSSPlan& bss, const BSSPlan& after, bool hidden) {
  Wifid::Commands commands = Wifid::ChangeAccess(bss.interface, bss.access, after.access);
  const auto more = Wifid::ChangeHidden(bss.interface, hidden);
  commands.insert(commands.end(), more.begin(), more.end());
  if (Wifid::CheckPassphrase(after.passphrase).Succeeded() &&
      Wifid::CanChangePassphrase(bss.securityMode, bss.passphrase, after.passphrase)) {
    const auto change = Wifid::ChangePassphrase(bss.interface, bss.securityMode, after.passphrase);
    commands.insert(commands.end(), change.begin(), change.end());
  }
  for (const std::string& command : commands) {
    Require(command.starts_with("IFNAME=wlan0_1 "), "a command is for its interface");
    Require(IsLine(command), "a command is a line");
  }
}

/// Of whatever name the kernel may have for something.
void CheckNames(std::string name) {
  constexpr std::size_t kLongestName = 15;
  std::erase_if(name, [](char c) { return c == '/' || c == ':' || c == ' ' || (c >= '\t' && c <= '\r'); });
  name = name.substr(0, std::min(name.find('\0'), kLongestName));
  Require(Wifid::AddBSS(name, "/run/radios/" + name) == "ADD bss_config=" + name + ":/run/radios/" + name,
          "a BSS is added by its phy and its file");
  const std::string command = Wifid::AddStation(name, "/run/radios/" + name, "/run/radios/control", name);
  Require(IsLine(command) && command.starts_with("INTERFACE_ADD " + name + "\t") &&
              command.ends_with("\t" + name) && std::ranges::count(command, '\t') == 5,
          "a station is added by a line of six fields");
}

/// What a program says, with a secret in it.
void CheckHidden(const Wifid::Secrets& secrets, std::string around, const std::string& secret) {
  if (around.find(kSecret) != std::string::npos) {
    around.clear();
  }
  Require(secret.empty() || secrets.Hide(around + secret).find(secret) == std::string::npos,
          "what a program says is told without passphrases");
}

void Check(FuzzedDataProvider& data) {
  // What is new comes last: so kept inputs stay what they are.
  BSSPlan bss = MakeBSS(data);
  BSSPlan after = MakeBSS(data);
  const auto name = FuzzedValues(data).Make<std::string>();
  StationPlan station = MakeStation(data);
  const bool hidden = data.ConsumeBool();
  const std::string around = data.ConsumeRandomLengthString(40);
  Lengthen(data, bss.passphrase);
  Lengthen(data, after.passphrase);
  Lengthen(data, station.passphrase);
  if (data.ConsumeBool()) {
    station.securityMode = data.PickValueInArray(
        {SecurityMode::EnterpriseWPA2, SecurityMode::EnterpriseWPA3, SecurityMode::EnterpriseWPAMixed});
    Lengthen(data, station.user);
  }
  BackhaulStationPlan backhaul = MakeBackhaulStation(data);
  Lengthen(data, backhaul.passphrase);

  CheckBSS(bss, name);
  CheckLists(bss.access);
  CheckStation(station);
  CheckBackhaulStation(backhaul);
  CheckCommands(bss, after, hidden);
  CheckNames(name);

  Wifid::RadioPlan plan;
  plan.bsss = {bss};
  plan.station = station;
  plan.backhaulStation = backhaul;
  Wifid::Secrets secrets;
  secrets.Learn(plan);
  for (const std::string& secret :
       {bss.passphrase, station.passphrase, Wifi::ToHex(station.passphrase), backhaul.passphrase}) {
    CheckHidden(secrets, around, secret);
  }
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size) {
  namespace Fuzz = TALO::Fuzz;
  FuzzedDataProvider data(bytes, size);
  Fuzz::Check(data);
  return 0;
}
