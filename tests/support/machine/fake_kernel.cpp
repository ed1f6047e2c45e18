#include "support/machine/fake_kernel.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

constexpr int kFirstOf5GHz = 36;

int FrequencyOf(int channel) {
  return channel == 14 ? 2484 : channel < kFirstOf5GHz ? 2407 + 5 * channel : 5000 + 5 * channel;
}

WiphyBand MakeBand(const std::vector<int>& channels, int width) {
  WiphyBand band;
  for (const int channel : channels) {
    band.channels.push_back({channel, FrequencyOf(channel), false, false, false, 20, width});
  }
  band.maximumWidth = width;
  band.highThroughput = true;
  band.veryHighThroughput = width > 40;
  band.highEfficiency = true;
  return band;
}

Refusal Failure(const std::string& sentence) { return {ErrorCode::RadioFailed, sentence}; }

}  // namespace

Wiphy MakeWiphy(int index) {
  Wiphy wiphy;
  wiphy.index = index;
  wiphy.name = "phy" + std::to_string(index);
  wiphy.band2_4GHz = MakeBand({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, 40);
  wiphy.band5GHz = MakeBand({36,  40,  44,  48,  52,  56,  60,  64,  100, 104, 108, 112, 116,
                             120, 124, 128, 132, 136, 140, 144, 149, 153, 157, 161, 165},
                            80);
  wiphy.maximumAccessPoints = 8;
  wiphy.maximumStations = 2;
  wiphy.maximumChannels = 2;
  wiphy.fourAddress = true;
  return wiphy;
}

FakeKernel::FakeKernel(Timers& timers, const std::vector<Wiphy>& wiphys) : timers_(timers), wiphys_(wiphys) {
  for (const Wiphy& wiphy : wiphys_) {
    const std::string number = std::to_string(wiphy.index);
    interfaces_["wlan" + number].about = {"wlan" + number,
                                          ++lastIndex_,
                                          wiphy.index,
                                          InterfaceType::Station,
                                          MACAddress("00:11:22:33:44:0" + number),
                                          0,
                                          0};
  }
}

void FakeKernel::Question(const std::string& name) const {
  if (broken.contains(name)) {
    throw std::system_error(std::make_error_code(std::errc::no_buffer_space), name);
  }
}

Result<void> FakeKernel::CheckCall(const std::string& name, const std::string& object) const {
  const auto refusal = refusals.find(name);
  return refusal != refusals.end() ? Result<void>(Failure(object + ": " + refusal->second)) : Result<void>();
}

// Channels 12 and 13 and all of 5 GHz are for listening only in the rules of the world.
void FakeKernel::ApplyRules(WiphyBand& band) const {
  const bool isWorld = country_ == "00";
  const bool isUS = country_ == "US";
  for (WiphyChannel& channel : band.channels) {
    const int number = channel.number;
    if (number < kFirstOf5GHz) {
      channel.disabled = number == 14 || (isUS && number > 11);
      channel.listenOnly = isWorld && number > 11;
      channel.maximumPower = isUS ? 30 : 20;
    } else {
      channel.disabled = !isWorld && !isUS && number > 140;
      channel.listenOnly = isWorld;
      channel.radar = hasRadars && number >= 52 && number <= 144;
      channel.maximumPower = isUS ? 30 : 23;
    }
  }
}

std::vector<Wiphy> FakeKernel::GetWiphys() const {
  Question("GetWiphys");
  return Rule();
}

std::vector<Wiphy> FakeKernel::Rule() const {
  std::vector<Wiphy> wiphys = wiphys_;
  for (Wiphy& wiphy : wiphys) {
    for (std::optional<WiphyBand>* band : {&wiphy.band2_4GHz, &wiphy.band5GHz}) {
      if (*band) {
        ApplyRules(**band);
      }
    }
  }
  return wiphys;
}

std::optional<WiphyChannel> FakeKernel::FindChannel(int wiphy, int frequency) const {
  for (const Wiphy& each : Rule()) {
    for (const std::optional<WiphyBand>* band : {&each.band2_4GHz, &each.band5GHz}) {
      if (each.index != wiphy || !*band) {
        continue;
      }
      const auto channel = std::ranges::find((*band)->channels, frequency, &WiphyChannel::frequency);
      if (channel != (*band)->channels.end()) {
        return *channel;
      }
    }
  }
  return std::nullopt;
}

std::vector<WirelessInterface> FakeKernel::GetInterfaces() const {
  Question("GetInterfaces");
  std::vector<WirelessInterface> interfaces;
  for (const auto& [name, interface] : interfaces_) {
    interfaces.push_back(interface.about);
  }
  std::ranges::sort(interfaces, {}, &WirelessInterface::index);
  return interfaces;
}

Result<void> FakeKernel::AddInterface(const NewInterface& interface) {
  if (auto check = CheckCall("AddInterface", interface.name); !check.Succeeded()) {
    return check;
  }
  if (HasInterface(interface.name)) {
    return Failure(interface.name + ": File exists");
  }
  for (const auto& [name, other] : interfaces_) {
    if (other.about.address == interface.address) {
      return Failure(interface.name + ": Name not unique on network");
    }
  }
  if (std::ranges::find(wiphys_, interface.wiphy, &Wiphy::index) == wiphys_.end()) {
    return Failure(interface.name + ": No such device");
  }
  Interface made;
  made.about = {interface.name, ++lastIndex_, interface.wiphy, interface.type, interface.address, 0, 0};
  made.fourAddress = interface.fourAddress;
  interfaces_[interface.name] = made;
  return {};
}

Result<void> FakeKernel::DeleteInterface(const std::string& name) {
  if (auto check = CheckCall("DeleteInterface", name); !check.Succeeded()) {
    return check;
  }
  return interfaces_.erase(name) != 0 ? Result<void>() : Result<void>(Failure(name + ": No such device"));
}

Result<void> FakeKernel::SetUp(const std::string& interface, bool /*up*/) {
  return HasInterface(interface) ? Result<void>() : Result<void>(Failure(interface + ": No such device"));
}

Result<void> FakeKernel::SetTransmitPower(int wiphy, int power) {
  if (auto check = CheckCall("SetTransmitPower", "phy" + std::to_string(wiphy)); !check.Succeeded()) {
    return check;
  }
  powers[wiphy] = power;
  return {};
}

std::vector<LinkedStation> FakeKernel::GetStations(const std::string& interface) const {
  Question("GetStations");
  std::vector<LinkedStation> stations;
  const auto found = interfaces_.find(interface);
  if (found != interfaces_.end()) {
    for (const auto& [address, link] : found->second.links) {
      stations.push_back({address, link.authorized, -50, 300, 240,
                          static_cast<int>((timers_.Now() - link.since).count() / 1000)});
    }
  }
  return stations;
}

std::vector<ChannelSurvey> FakeKernel::GetSurvey(const std::string& interface) const {
  Question("GetSurvey");
  return HasInterface(interface) ? std::vector<ChannelSurvey>{{2412, false, 50, 40}, {2437, true, 1000, 250}}
                                 : std::vector<ChannelSurvey>();
}

std::string FakeKernel::GetCountry() const {
  Question("GetCountry");
  return country_;
}

Result<void> FakeKernel::RequestCountry(const std::string& code) {
  if (auto check = CheckCall("RequestCountry", code); !check.Succeeded()) {
    return check;
  }
  countryRequests.push_back(code);
  const bool knows = code == "DE" || code == "FR" || code == "US";
  if (takesCountries) {
    timers_.After(std::chrono::milliseconds(knows ? 50 : 3000),
                  [this, code, knows] { EnforceCountry(knows ? code : "00"); });
  }
  return {};
}

void FakeKernel::EnforceCountry(const std::string& code) {
  country_ = code;
  if (countrySink_) {
    countrySink_();
  }
}

std::set<std::string> FakeKernel::GetBridges() const {
  Question("GetBridges");
  return bridges;
}

std::string FakeKernel::GetBridgeOf(const std::string& interface) const {
  Question("GetBridgeOf");
  const auto found = interfaces_.find(interface);
  return found != interfaces_.end() ? found->second.bridge : std::string();
}

Result<void> FakeKernel::SetBridge(const std::string& interface, const std::string& bridge) {
  if (auto check = CheckCall("SetBridge", interface); !check.Succeeded()) {
    return check;
  }
  const auto found = interfaces_.find(interface);
  if (found == interfaces_.end() || (!bridge.empty() && !bridges.contains(bridge))) {
    return Failure(interface + ": No such device");
  }
  if (!bridge.empty() && found->second.about.type == InterfaceType::Station && !found->second.fourAddress) {
    return Failure(interface + ": Device does not allow enslaving to a bridge");
  }
  found->second.bridge = bridge;
  return {};
}

std::map<MACAddress, std::string> FakeKernel::GetNeighbours() const {
  Question("GetNeighbours");
  return neighbours;
}

void FakeKernel::SetType(const std::string& name, InterfaceType type) {
  interfaces_.at(name).about.type = type;
}

void FakeKernel::SetChannel(const std::string& name, int frequency, int width) {
  WirelessInterface& about = interfaces_.at(name).about;
  about.frequency = frequency;
  about.channelWidth = width;
}

void FakeKernel::Link(const std::string& interface, const MACAddress& station, bool authorized) {
  interfaces_.at(interface).links[station] = {timers_.Now(), authorized};
}

void FakeKernel::Unlink(const std::string& interface, const MACAddress& station) {
  const auto found = interfaces_.find(interface);
  if (found != interfaces_.end()) {
    found->second.links.erase(station);
  }
}

}  // namespace TALO::Wifid
