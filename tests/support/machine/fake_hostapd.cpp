#include "support/machine/fake_hostapd.h"

#include <algorithm>
#include <sstream>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

constexpr const char* kOk = "OK\n";
constexpr const char* kFail = "FAIL\n";

int FrequencyOf(const FakeBSSFile& file) {
  const std::string text = file.Get("channel");
  const int channel = text.empty() ? 0 : std::stoi(text);
  return file.Get("hw_mode") == "a" ? 5000 + 5 * channel : 2407 + 5 * channel;
}

int WidthOf(const FakeBSSFile& file) {
  for (const char* key : {"vht_oper_chwidth", "he_oper_chwidth"}) {
    if (const std::string width = file.Get(key); width == "1" || width == "2") {
      return width == "1" ? 80 : 160;
    }
  }
  return file.Get("ht_capab").starts_with("[HT40") ? 40 : 20;
}

}  // namespace

std::vector<std::string> FakeHostapd::GetBSSs(const std::string& phy) const {
  std::vector<std::string> interfaces;
  const auto radio = radios_.find(phy);
  if (radio != radios_.end()) {
    for (const Entry& entry : radio->second) {
      interfaces.push_back(entry.interface);
    }
  }
  return interfaces;
}

FakeBSS* FakeHostapd::FindBSS(const std::string& interface) const {
  for (const auto& [phy, radio] : radios_) {
    const auto entry = std::ranges::find(radio, interface, &Entry::interface);
    if (entry != radio.end()) {
      return entry->bss.get();
    }
  }
  return nullptr;
}

void FakeHostapd::TellOf(const std::string& interface, const std::string& message) {
  Tell("IFNAME=" + interface + " <3>" + message);
}

std::string FakeHostapd::Refuse(const std::string& why) {
  Print(why);
  return kFail;
}

std::string FakeHostapd::Obey(const std::string& request) {
  constexpr std::string_view kAdd = "ADD bss_config=";
  constexpr std::string_view kRemove = "REMOVE ";
  constexpr std::string_view kInterface = "IFNAME=";
  if (request.starts_with(kAdd)) {
    const std::string rest = request.substr(kAdd.size());
    const std::size_t colon = rest.find(':');
    return Add(rest.substr(0, colon), rest.substr(colon + 1));
  }
  if (request.starts_with(kRemove)) {
    return Remove(request.substr(kRemove.size()));
  }
  if (request.starts_with(kInterface)) {
    const std::size_t space = request.find(' ');
    FakeBSS* bss = FindBSS(request.substr(kInterface.size(), space - kInterface.size()));
    if (bss == nullptr) {
      return "FAIL-NO-IFNAME-MATCH\n";
    }
    const std::string command = request.substr(space + 1);
    if (command == "STATUS") {
      return "state=ENABLED\n";
    }
    const std::string answer = bss->Obey(command);
    if (command == "WPS_PBC" && answer == kOk) {
      EndPushButtonLater(request.substr(kInterface.size(), space - kInterface.size()));
    }
    LetDevicesJoin();
    return answer;
  }
  return kFail;
}

std::string FakeHostapd::Add(const std::string& phy, const std::string& path) {
  const auto text = files_.Read(path);
  if (!text) {
    return Refuse("Could not open configuration file '" + path + "' for reading.");
  }
  const FakeBSSFile file = ReadBSSFile(*text);
  if (!file.complaint.empty()) {
    return Refuse(file.complaint);
  }
  const std::string interface = file.Get("interface");
  if (HasBSS(interface)) {
    const std::vector<std::string> here = GetBSSs(phy);
    if (std::ranges::find(here, interface) == here.end()) {
      // Under the wrong phy it breaks what runs.
      LoseInterface(interface);
    }
    return kFail;
  }
  for (const char* list : {"accept_mac_file", "deny_mac_file"}) {
    if (!file.Get(list).empty() && !files_.Read(file.Get(list))) {
      return Refuse("MAC list file '" + file.Get(list) + "' not found.");
    }
  }
  const std::vector<Wiphy> wiphys = kernel_.GetWiphys();
  const auto wiphy = std::ranges::find(wiphys, phy, &Wiphy::name);
  if (wiphy == wiphys.end()) {
    return Refuse("Could not find phy " + phy);
  }
  const auto radio = radios_.find(phy);
  return radio == radios_.end() ? AddRadio(*wiphy, file) : AddTo(*wiphy, radio->second, file);
}

std::string FakeHostapd::AddRadio(const Wiphy& wiphy, const FakeBSSFile& file) {
  const std::string interface = file.Get("interface");
  if (!kernel_.HasInterface(interface)) {
    return Refuse("Could not read interface " + interface + " flags: No such device");
  }
  if (kernel_.InterfaceOf(interface).wiphy != wiphy.index) {
    return Refuse(interface + " is not on " + wiphy.name);
  }
  const auto channel = kernel_.FindChannel(wiphy.index, FrequencyOf(file));
  if (!channel || channel->disabled || channel->listenOnly || channel->radar) {
    return Refuse("Frequency " + std::to_string(FrequencyOf(file)) +
                  " (primary) not allowed for AP mode, flags: 0x853" +
                  (channel && channel->listenOnly ? " NO-IR" : ""));
  }
  kernel_.SetType(interface, InterfaceType::AccessPoint);
  if (const auto joined = kernel_.SetBridge(interface, file.Get("bridge")); !joined.Succeeded()) {
    return Refuse(joined.Why().sentence);
  }
  Take(radios_[wiphy.name], file);
  LetDevicesJoin();
  return kOk;
}

std::string FakeHostapd::AddTo(const Wiphy& wiphy, Radio& radio, const FakeBSSFile& file) {
  const std::string interface = file.Get("interface");
  if (static_cast<int>(radio.size()) == wiphy.maximumAccessPoints) {
    return Refuse("Failed to add BSS " + interface + " (too many)");
  }
  const MACAddress address = file.Get("bssid").empty() ? kernel_.InterfaceOf(radio[0].interface).address
                                                       : MACAddress(file.Get("bssid"));
  const std::string bridge = file.Get("bridge");
  const Result<void> made =
      kernel_.AddInterface({wiphy.index, interface, InterfaceType::AccessPoint, address, false});
  if (!made.Succeeded()) {
    return Refuse("Could not set interface " + interface + " flags (UP): " + made.Why().sentence);
  }
  if (!bridge.empty() && !kernel_.bridges.contains(bridge)) {
    kernel_.bridges.insert(bridge);
  }
  if (const auto joined = kernel_.SetBridge(interface, bridge); !joined.Succeeded()) {
    static_cast<void>(kernel_.DeleteInterface(interface));
    return Refuse(joined.Why().sentence);
  }
  Take(radio, file);
  LetDevicesJoin();
  return kOk;
}

void FakeHostapd::Take(Radio& radio, const FakeBSSFile& file) {
  const std::string interface = file.Get("interface");
  kernel_.SetChannel(interface, FrequencyOf(file), WidthOf(file));
  ++addedBSSs;
  radio.push_back(
      {interface,
       std::make_unique<FakeBSS>(
           file, ReadList(file.Get("accept_mac_file")), ReadList(file.Get("deny_mac_file")),
           FakeBSS::Sinks{[this, interface](const std::string& message) { TellOf(interface, message); },
                          [this, interface](const MACAddress& station) { Drop(interface, station); }})});
}

std::set<MACAddress> FakeHostapd::ReadList(const std::string& path) const {
  std::set<MACAddress> addresses;
  std::istringstream lines(files_.Read(path).value_or(std::string()));
  for (std::string line; std::getline(lines, line);) {
    addresses.insert(MACAddress(line));
  }
  return addresses;
}

// Whoever was connected is gone without a word about each.
void FakeHostapd::Clear(const std::string& interface) {
  for (const auto& device : devices) {
    if (device->on == interface) {
      kernel_.Unlink(interface, device->address);
      device->on.clear();
    }
  }
}

std::string FakeHostapd::Remove(const std::string& interface) {
  for (auto radio = radios_.begin(); radio != radios_.end(); ++radio) {
    Radio& entries = radio->second;
    const auto entry = std::ranges::find(entries, interface, &Entry::interface);
    if (entry == entries.end()) {
      continue;
    }
    const bool isRadio = entry == entries.begin();
    while (!entries.empty() && (isRadio || HasBSS(interface))) {
      const auto last = isRadio ? std::prev(entries.end()) : entry;
      const std::string name = last->interface;
      Clear(name);
      TellOf(name, "AP-DISABLED ");
      TellOf(name, "CTRL-EVENT-TERMINATING ");
      if (last == entries.begin() && kernel_.HasInterface(name)) {
        kernel_.SetType(name, InterfaceType::Station);
        kernel_.SetChannel(name, 0, 0);
      } else {
        static_cast<void>(kernel_.DeleteInterface(name));
      }
      entries.erase(last);
    }
    if (isRadio) {
      radios_.erase(radio);
    }
    LetDevicesJoin();
    return kOk;
  }
  return kFail;
}

void FakeHostapd::Forget() {
  for (const auto& [phy, radio] : radios_) {
    for (const Entry& entry : radio) {
      Clear(entry.interface);
      if (entry.interface != radio.front().interface) {
        static_cast<void>(kernel_.DeleteInterface(entry.interface));
      }
    }
  }
  radios_.clear();
}

void FakeHostapd::Drop(const std::string& interface, const MACAddress& station) {
  BSSOf(interface).stations.erase(station);
  for (const auto& device : devices) {
    if (device->address == station) {
      device->on.clear();
    }
  }
  kernel_.Unlink(interface, station);
  TellOf(interface, "AP-STA-DISCONNECTED " + station.ToString());
}

FakeDevice& FakeHostapd::Bring(FakeDevice device) {
  devices.push_back(std::make_unique<FakeDevice>(std::move(device)));
  LetDevicesJoin();
  return *devices.back();
}

void FakeHostapd::Leave(FakeDevice& device) {
  device.knows.clear();
  if (const std::string on = device.on; !on.empty()) {
    Drop(on, device.address);
  }
}

void FakeHostapd::LetDevicesJoin() {
  if (!IsRunning()) {
    return;
  }
  After(kTimeToJoin, [this] {
    for (const auto& device : devices) {
      for (const auto& [phy, radio] : radios_) {
        for (const Entry& entry : radio) {
          if (device->on.empty() && entry.bss->Sends() && entry.bss->LetsIn(*device)) {
            device->on = entry.interface;
            kernel_.Link(entry.interface, device->address);
            TellOf(entry.interface, "AP-STA-CONNECTED " + device->address.ToString());
          }
        }
      }
    }
  });
}

void FakeHostapd::EndPushButtonLater(const std::string& interface) {
  After(std::chrono::seconds(120), [this, interface] {
    FakeBSS* bss = FindBSS(interface);
    if (bss != nullptr && bss->IsOpenForPushButton()) {
      bss->ClosePushButton();
      TellOf(interface, "WPS-TIMEOUT ");
    }
  });
}

void FakeHostapd::PressButton(const std::string& interface) {
  FakeBSS& bss = BSSOf(interface);
  if (bss.IsOpenForPushButton()) {
    bss.ClosePushButton();
    TellOf(interface, "WPS-REG-SUCCESS 0a:00:00:00:00:77 00000000-0000-0000-0000-000000000077");
    TellOf(interface, "WPS-PBC-DISABLE ");
    TellOf(interface, "WPS-SUCCESS ");
  }
}

void FakeHostapd::PressTwoButtons(const std::string& interface) {
  if (BSSOf(interface).IsOpenForPushButton()) {
    TellOf(interface, "WPS-OVERLAP-DETECTED ");
  }
}

void FakeHostapd::LoseInterface(const std::string& interface) {
  Clear(interface);
  BSSOf(interface).stations.clear();
  TellOf(interface, "INTERFACE-DISABLED ");
}

}  // namespace TALO::Wifid
