#include "support/machine/fake_supplicant.h"

#include "client/bytes.h"

#include <algorithm>
#include <optional>
#include <sstream>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;
using Fields = std::map<std::string, std::string>;

constexpr const char* kOk = "OK\n";
constexpr const char* kFail = "FAIL\n";

/// The network of a configuration file, empty for one without. Nothing for a file that it does not take.
std::optional<Fields> ReadNetwork(const std::string& text) {
  static const std::set<std::string> kKnown = {"p2p_disabled", "sae_pwe"};
  static const std::set<std::string> kKnownOfNetwork = {
      "ssid",         "scan_ssid", "bssid",    "key_mgmt", "proto",  "pairwise", "ieee80211w", "psk",
      "sae_password", "eap",       "identity", "password", "phase2", "bgscan",   "disabled"};
  Fields network;
  bool isInside = false;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    if (line == "network={" || line == "}") {
      isInside = line != "}";
      continue;
    }
    const std::size_t equals = line.find('=');
    const std::string key = line.substr(0, equals);
    if (equals == std::string::npos || !(isInside ? kKnownOfNetwork : kKnown).contains(key)) {
      return std::nullopt;
    }
    if (isInside) {
      network[key] = line.substr(equals + 1);
    }
  }
  return network;
}

std::string At(const Fields& fields, const std::string& key) {
  const auto field = fields.find(key);
  return field != fields.end() ? field->second : std::string();
}

}  // namespace

void FakeSupplicant::TellOf(const std::string& interface, const std::string& message) {
  Tell("IFNAME=" + interface + " <3>" + message);
}

std::string FakeSupplicant::Obey(const std::string& request) {
  constexpr std::string_view kAdd = "INTERFACE_ADD ";
  constexpr std::string_view kRemove = "INTERFACE_REMOVE ";
  constexpr std::string_view kInterface = "IFNAME=";
  if (request.starts_with(kAdd)) {
    return Add(request.substr(kAdd.size()));
  }
  if (request.starts_with(kRemove)) {
    const auto interface = interfaces_.find(request.substr(kRemove.size()));
    if (interface == interfaces_.end()) {
      return kFail;
    }
    Leave(interface->first, interface->second);
    interfaces_.erase(interface);
    return kOk;
  }
  if (request.starts_with(kInterface)) {
    const std::size_t space = request.find(' ');
    const auto interface = interfaces_.find(request.substr(kInterface.size(), space - kInterface.size()));
    return interface == interfaces_.end()
               ? "FAIL-NO-IFNAME-MATCH\n"
               : ObeyOn(interface->first, interface->second, request.substr(space + 1));
  }
  return "UNKNOWN COMMAND\n";
}

std::string FakeSupplicant::Add(const std::string& line) {
  std::vector<std::string> words;
  std::istringstream text(line);
  for (std::string word; std::getline(text, word, '\t');) {
    words.push_back(word);
  }
  words.resize(6);
  const std::string& name = words[0];
  const auto file = files_.Read(words[1]);
  if (!file) {
    Print("Failed to open config file '" + words[1] + "', error: No such file or directory");
    return kFail;
  }
  const auto network = ReadNetwork(*file);
  if (!network) {
    Print("Failed to read or parse configuration '" + words[1] + "'.");
    return kFail;
  }
  if (!kernel_.HasInterface(name) || HasInterface(name)) {
    Print("Could not read interface " + name + " flags: No such device");
    return kFail;
  }
  if (!words[5].empty() && !kernel_.SetBridge(name, words[5]).Succeeded()) {
    Print("Failed to add " + name + " into bridge " + words[5]);
    return kFail;
  }
  Interface& interface = interfaces_[name];
  interface.network = *network;
  interface.looks = !network->empty() && At(*network, "disabled") != "1";
  Look(name);
  return kOk;
}

std::string FakeSupplicant::ObeyOn(const std::string& name, Interface& interface,
                                   const std::string& command) {
  constexpr std::string_view kList = "BSS RANGE=";
  if (command.starts_with("SCAN freq=")) {
    if (interface.scanning) {
      return "FAIL-BUSY\n";
    }
    if (!command.ends_with(" use_id=1")) {
      Listen(name);
      return kOk;
    }
    const std::string id = std::to_string(++lastScan_);
    interface.scanId = "id=" + id;
    Listen(name);
    return id + "\n";
  }
  if (command.starts_with(kList)) {
    return List(command.substr(kList.size()));
  }
  if (command == "DISCONNECT") {
    interface.looks = false;
    Leave(name, interface);
    return kOk;
  }
  if (command == "SELECT_NETWORK 0" && !interface.network.empty()) {
    interface.looks = true;
    Leave(name, interface);
    Look(name);
    return kOk;
  }
  if (command.starts_with("SET_NETWORK 0 bgscan \"") && !interface.network.empty()) {
    interface.network["bgscan"] = command.substr(std::string_view("SET_NETWORK 0 bgscan ").size());
    return kOk;
  }
  return kFail;
}

// From an ID on, up to the longest list or what no answer holds; whoever wants more asks on.
std::string FakeSupplicant::List(const std::string& asked) const {
  constexpr std::string_view kMask = "MASK=";
  constexpr unsigned long kElements = 0x400;
  const std::size_t first = asked.starts_with("ALL") ? 0 : std::stoul(asked);
  const bool wantsElements =
      (std::stoul(asked.substr(asked.find(kMask) + kMask.size()), nullptr, 16) & kElements) != 0;
  std::string list;
  for (std::size_t id = first; id < std::min(air.size(), first + longestList); ++id) {
    const FakeAccessPoint& each = air[id];
    if (each.tellsTooMuch && wantsElements) {
      break;
    }
    list += "id=" + std::to_string(id) + "\nbssid=" + each.bssid.ToString() +
            "\nfreq=" + std::to_string(each.frequency) + "\nlevel=" + std::to_string(each.signal) +
            "\nage=0" + (wantsElements ? "\nie=" : "") +
            "\nflags=" + (each.passphrase.empty() ? "" : "[WPA2-PSK-CCMP]") + "[ESS]\nssid=" + each.ssid +
            "\n====\n";
  }
  return list.empty() ? list : list.substr(0, list.size() - 5) + "####\n";
}

void FakeSupplicant::Listen(const std::string& name) {
  interfaces_.at(name).scanning = true;
  TellOf(name, "CTRL-EVENT-SCAN-STARTED ");
  if (scansForEver) {
    return;
  }
  if (scansAtOnce) {
    EndListening(name);
  } else {
    After(kTimeToScan, [this, name] { EndListening(name); });
  }
}

void FakeSupplicant::EndListening(const std::string& name) {
  const auto interface = interfaces_.find(name);
  if (interface != interfaces_.end()) {
    interface->second.scanning = false;
    const std::string id = std::exchange(interface->second.scanId, {});
    TellOf(name, cannotScan ? "CTRL-EVENT-SCAN-FAILED ret=-95" : "CTRL-EVENT-SCAN-RESULTS " + id);
  }
}

void FakeSupplicant::Look(const std::string& name) {
  Interface& interface = interfaces_.at(name);
  if (!interface.looks) {
    return;
  }
  if (!interface.scanning) {
    Listen(name);
  }
  After(kTimeToScan, [this, name, attempt = ++interface.attempt] {
    const auto found = interfaces_.find(name);
    if (found != interfaces_.end() && found->second.attempt == attempt) {
      Join(name);
    }
  });
}

void FakeSupplicant::Join(const std::string& name) {
  Interface& interface = interfaces_.at(name);
  const std::string ssid = At(interface.network, "ssid");
  const auto upstream = std::ranges::find_if(air, [&](const FakeAccessPoint& each) {
    const std::string bssid = At(interface.network, "bssid");
    return Wifi::ToHex(each.ssid) == ssid && (bssid.empty() || each.bssid.ToString() == bssid);
  });
  if (upstream == air.end()) {
    TellOf(name, "CTRL-EVENT-NETWORK-NOT-FOUND ");
    LookLater(name);
    return;
  }
  TellOf(name, "SME: Trying to authenticate with " + upstream->bssid.ToString() + " (SSID='" +
                   upstream->ssid + "' freq=" + std::to_string(upstream->frequency) + " MHz)");
  if (IsInTheWay(name, upstream->frequency)) {
    LookLater(name);
    return;
  }
  if (!upstream->passphrase.empty() && At(interface.network, "psk") != "\"" + upstream->passphrase + "\"") {
    TellOf(name, "CTRL-EVENT-DISCONNECTED bssid=" + upstream->bssid.ToString() + " reason=15");
    TellOf(name, "CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"" + upstream->ssid + "\" auth_failures=" +
                     std::to_string(++interface.failures) + " duration=10 reason=WRONG_KEY");
    return;
  }
  interface.on = upstream->bssid;
  kernel_.Link(name, upstream->bssid);
  kernel_.SetChannel(name, upstream->frequency, 20);
  TellOf(name,
         "CTRL-EVENT-CONNECTED - Connection to " + upstream->bssid.ToString() + " completed [id=0 id_str=]");
}

void FakeSupplicant::LookLater(const std::string& name) {
  After(std::chrono::seconds(5), [this, name, attempt = interfaces_.at(name).attempt] {
    const auto found = interfaces_.find(name);
    if (found != interfaces_.end() && found->second.attempt == attempt) {
      Look(name);
    }
  });
}

bool FakeSupplicant::IsInTheWay(const std::string& name, int frequency) const {
  const int wiphy = kernel_.InterfaceOf(name).wiphy;
  const std::vector<Wiphy> wiphys = kernel_.GetWiphys();
  const std::vector<WirelessInterface> interfaces = kernel_.GetInterfaces();
  return std::ranges::find(wiphys, wiphy, &Wiphy::index)->maximumChannels <= 1 &&
         std::ranges::any_of(interfaces, [&](const WirelessInterface& each) {
           return each.wiphy == wiphy && each.type == InterfaceType::AccessPoint &&
                  each.name.find('_') != std::string::npos && each.frequency != frequency;
         });
}

void FakeSupplicant::Leave(const std::string& name, Interface& interface) {
  ++interface.attempt;
  if (interface.on == MACAddress()) {
    return;
  }
  TellOf(name, "CTRL-EVENT-DISCONNECTED bssid=" + interface.on.ToString() + " reason=3 locally_generated=1");
  kernel_.Unlink(name, interface.on);
  if (kernel_.HasInterface(name)) {
    kernel_.SetChannel(name, 0, 0);
  }
  interface.on = {};
}

void FakeSupplicant::TakeOffTheAir(const MACAddress& bssid) {
  std::erase_if(air, [&bssid](const FakeAccessPoint& each) { return each.bssid == bssid; });
  for (auto& [name, interface] : interfaces_) {
    if (interface.on == bssid) {
      Leave(name, interface);
      Look(name);
    }
  }
}

void FakeSupplicant::Forget() {
  for (auto& [name, interface] : interfaces_) {
    kernel_.Unlink(name, interface.on);
  }
  interfaces_.clear();
}

}  // namespace TALO::Wifid
