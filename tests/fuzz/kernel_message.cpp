// Whatever the kernel is said to have told: netlink messages one behind the other, each with its length in
// front.

#include "daemon/radio/linux/control/channel_settings.h"
#include "daemon/radio/linux/hardware.h"
#include "daemon/system/link_messages.h"
#include "daemon/system/wiphy_reading.h"
#include "daemon/system/wireless_readings.h"
#include "fuzz/support/require.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <set>
#include <string>
#include <vector>

namespace TALO::Fuzz {

namespace {

using Wifid::Messages;
using Wifid::Wiphy;
using Wifid::WiphyBand;

/// The last may be cut off; none is empty.
Messages Split(std::string input) {
  Messages messages;
  while (input.size() >= sizeof(std::uint32_t)) {
    std::uint32_t length = 0;
    std::memcpy(&length, input.data(), sizeof length);
    const std::size_t size = std::clamp<std::size_t>(length, sizeof length, input.size());
    messages.push_back(input.substr(0, size));
    input.erase(0, size);
  }
  return messages;
}

void CheckBand(const WiphyBand& band, bool is5GHz) {
  Require(std::ranges::is_sorted(band.channels, {}, &Wifid::WiphyChannel::frequency),
          "channels are in the order of their frequencies");
  Require(band.maximumWidth >= 20 && band.maximumWidth <= 160, "a band is 20 to 160 MHz wide");
  for (const Wifid::WiphyChannel& channel : band.channels) {
    const int number = Wifid::ChannelAt(channel.frequency);
    Require(number == 0 || channel.number == number, "a channel's number is its frequency's");
    Require(channel.number >= 0, "no channel has a negative number");
    const Wifid::ChannelSettings settings = Wifid::SettingsOf(band, is5GHz, channel.number, 0);
    Require(settings.channel == channel.number && settings.width >= 20 && settings.width <= band.maximumWidth,
            "a channel is used no wider than the band is");
    Require((settings.width == 20) == (settings.secondary == 0), "what is wider has a secondary channel");
  }
}

void CheckWiphys(const std::vector<Wiphy>& wiphys) {
  std::set<int> indices;
  for (const Wiphy& wiphy : wiphys) {
    Require(indices.insert(wiphy.index).second, "a radio is told of once");
    if (wiphy.band2_4GHz) {
      CheckBand(*wiphy.band2_4GHz, false);
    }
    if (wiphy.band5GHz) {
      CheckBand(*wiphy.band5GHz, true);
    }
  }
}

/// Radios on whatever hardware there is, or a sentence.
void CheckAssignment(const std::vector<Wiphy>& wiphys,
                     const std::vector<Wifid::WirelessInterface>& interfaces) {
  for (const auto model : {Wifid::SupportedModel::Alder100, Wifid::SupportedModel::Dune40}) {
    const auto assigned = Wifid::AssignHardware(model, wiphys, interfaces, {});
    if (!assigned.Succeeded()) {
      Require(!assigned.Why().sentence.empty(), "a refusal says why");
      continue;
    }
    std::set<int> used;
    for (const Wifid::RadioHardware& radio : assigned.Value()) {
      Require(used.insert(radio.wiphy).second, "a phy carries one radio");
      Require(radio.capability.maximumBSSs >= 1 && !radio.capability.channels.empty(),
              "a radio carries a network on some channel");
    }
  }
}

void Read(const Messages& messages) {
  const auto interfaces = Wifid::ReadInterfaces(messages);
  Require(interfaces.size() <= messages.size(), "a message tells of one interface");
  Require(std::ranges::is_sorted(interfaces, {}, &Wifid::WirelessInterface::index),
          "interfaces are in the order of their numbers");
  const auto wiphys = Wifid::ReadWiphys(messages);
  CheckWiphys(wiphys);
  CheckAssignment(wiphys, interfaces);
  Require(Wifid::ReadStations(messages).size() <= messages.size(), "a message tells of one station");
  Require(Wifid::ReadSurvey(messages).size() <= messages.size(), "a message tells of one channel");
  Require(Wifid::ReadLinks(messages).size() == messages.size(), "a message tells of one link");
  for (const auto& [device, address] : Wifid::ReadNeighbours(messages)) {
    Require(device != Wifi::Util::MACAddress() && !address.empty(), "a neighbour has its addresses");
  }
  const std::string country = Wifid::ReadCountry(messages);
  Require(country.empty() || country.size() == 2, "a country has two letters");
  for (const std::string& message : messages) {
    Wifid::IsCountryChange(message);
  }
}

}  // namespace

}  // namespace TALO::Fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  TALO::Fuzz::Read(TALO::Fuzz::Split(std::string(reinterpret_cast<const char*>(data), size)));
  return 0;
}
