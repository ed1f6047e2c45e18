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
#include <functional>
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

/// Whether the band has a channel of that number there.
bool IsChannel(bool is5GHz, int number, int frequency) {
  if (!is5GHz) {
    return number == 14 ? frequency == 2484 : number >= 1 && number < 14 && frequency == 2407 + 5 * number;
  }
  return (number >= 7 && number <= 185 && frequency == 5000 + 5 * number) ||
         (number >= 183 && number <= 196 && frequency == 4000 + 5 * number);
}

void CheckBand(const WiphyBand& band, bool is5GHz) {
  Require(std::ranges::adjacent_find(band.channels, std::ranges::greater_equal(),
                                     &Wifid::WiphyChannel::frequency) == band.channels.end(),
          "channels are in the order of their frequencies, each once");
  Require(band.maximumWidth >= 20 && band.maximumWidth <= 160, "a band is 20 to 160 MHz wide");
  for (const Wifid::WiphyChannel& channel : band.channels) {
    Require(IsChannel(is5GHz, channel.number, channel.frequency), "a channel is one of its band");
    const int number = Wifid::ChannelAt(channel.frequency);
    Require(number == 0 || channel.number == number, "a channel has one number everywhere");
    Require(channel.maximumWidth >= 20 && channel.maximumWidth <= band.maximumWidth,
            "a channel is a part of none that is wider than the band");
    const Wifid::ChannelSettings settings = Wifid::SettingsOf(band, is5GHz, channel.number, 0);
    Require(settings.channel == channel.number && settings.width >= 20 && settings.width <= band.maximumWidth,
            "a channel is used no wider than the band is");
    Require((settings.width == 20) == (settings.secondary == 0), "what is wider has a secondary channel");
  }
}

bool IsWidth(int width) { return width == 20 || width == 40 || width == 80 || width == 160; }

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
      const std::vector<int>& channels = radio.capability.channels;
      Require(radio.capability.maximumBSSs >= 1 && !channels.empty(),
              "a radio carries a network on some channel");
      Require(std::ranges::adjacent_find(channels, std::ranges::greater_equal()) == channels.end() &&
                  channels.front() >= 1 && channels.back() <= 196,
              "a radio's channels are in order, each once");
      Require(IsWidth(radio.capability.maximumChannelWidth), "a radio's channels have a width");
    }
  }
}

void Read(const Messages& messages) {
  const auto interfaces = Wifid::ReadInterfaces(messages);
  Require(interfaces.size() <= messages.size(), "a message tells of one interface");
  Require(std::ranges::is_sorted(interfaces, {}, &Wifid::WirelessInterface::index),
          "interfaces are in the order of their numbers");
  for (const Wifid::WirelessInterface& interface : interfaces) {
    Require(interface.channelWidth == 0 || interface.channelWidth == 320 || IsWidth(interface.channelWidth),
            "an interface's channel has a width, or it is not known");
  }
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
