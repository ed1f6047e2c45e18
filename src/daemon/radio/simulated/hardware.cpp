#include "daemon/radio/simulated/hardware.h"

#include "client/bytes.h"
#include "daemon/model/country.h"

#include <algorithm>
#include <string>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr int kMaximumBSSs = 16;
constexpr int kLastChannelOf2_4GHz = 14;

std::vector<int> ChannelsOf(RadioFrequency radio) {
  switch (radio) {
    case RadioFrequency::Band2_4GHz:
      return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    case RadioFrequency::Band5GHz:
      return {36, 40, 44, 48, 52, 56, 60, 64, 100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
    case RadioFrequency::Band5GHz_1:
      return {36, 40, 44, 48, 52, 56, 60, 64};
    case RadioFrequency::Band5GHz_2:
      return {100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
    case RadioFrequency::Error:
    case RadioFrequency::SmartConnect:
      break;
  }
  return {};
}

/// Locally administered, one block of 256 addresses a radio.
Wifi::Util::MACAddress AddressOfRadio(std::size_t index) {
  return Wifi::Util::MACAddress("02:00:00:00:" + Wifi::ToHex(std::string(1, static_cast<char>(index))) +
                                ":00");
}

bool IsOf2_4GHz(int channel) { return channel <= kLastChannelOf2_4GHz; }

/// The lowest and the highest channel number that a transmission touches. Numbers are 5 MHz apart.
std::pair<int, int> SpanOf(int channel, int width) {
  constexpr int kHalfOf20MHz = 2;
  if (IsOf2_4GHz(channel)) {
    // The second half of 40 MHz lies above.
    return {channel - kHalfOf20MHz, channel + kHalfOf20MHz + (width > 20 ? 4 : 0)};
  }
  // Wider channels of 5 GHz are fixed blocks of 20 MHz channels, which count by four from 36.
  constexpr int kFirst = 36;
  const int numbers = width / 5;
  const int first = kFirst + (channel - kFirst) / numbers * numbers;
  return {first - kHalfOf20MHz, first + numbers - kHalfOf20MHz - 1};
}

}  // namespace

Capabilities MakeSimulatedCapabilities(SupportedModel model) {
  Capabilities capabilities{model, {}};
  for (const RadioFrequency radio : RadiosOf(model)) {
    const std::size_t index = capabilities.radios.size();
    const int maximumWidth = radio == RadioFrequency::Band2_4GHz ? 40 : 80;
    capabilities.radios.push_back({radio, "wlan" + std::to_string(index), AddressOfRadio(index), kMaximumBSSs,
                                   ChannelsOf(radio), maximumWidth});
  }
  return capabilities;
}

bool IsChannel(int channel) {
  for (const RadioFrequency radio : {RadioFrequency::Band2_4GHz, RadioFrequency::Band5GHz}) {
    const std::vector<int> channels = ChannelsOf(radio);
    if (std::ranges::find(channels, channel) != channels.end()) {
      return true;
    }
  }
  return false;
}

bool IsSameBand(RadioFrequency a, RadioFrequency b) {
  return (a == RadioFrequency::Band2_4GHz) == (b == RadioFrequency::Band2_4GHz);
}

std::optional<RadioFrequency> RadioMeant(const Capabilities& capabilities, RadioFrequency named) {
  const auto& radios = capabilities.radios;
  auto found = std::ranges::find(radios, named, &RadioCapability::radio);
  if (found == radios.end()) {
    found = std::ranges::find_if(
        radios, [named](const RadioCapability& radio) { return IsSameBand(radio.radio, named); });
  }
  return found != radios.end() ? std::optional(found->radio) : std::nullopt;
}

int WidthOn(int channel, int width, const RadioCapability& radio, CountryCode country) {
  constexpr int kNarrowest = 20;
  const std::vector<int> usable = UsableChannels(country, radio);
  int widest = width != 0 ? width : radio.maximumChannelWidth;
  const auto fits = [&] {
    // The middles of the 20 MHz channels that it is made of.
    const auto [low, high] = SpanOf(channel, widest);
    for (int part = low + 2; part < high; part += 4) {
      if (!std::ranges::binary_search(usable, part)) {
        return false;
      }
    }
    return true;
  };
  while (widest > kNarrowest && !fits()) {
    widest /= 2;
  }
  return widest;
}

bool DoOverlap(int channel, int width, int otherChannel, int otherWidth) {
  const auto [low, high] = SpanOf(channel, width);
  const auto [otherLow, otherHigh] = SpanOf(otherChannel, otherWidth);
  return IsOf2_4GHz(channel) == IsOf2_4GHz(otherChannel) && low <= otherHigh && otherLow <= high;
}

}  // namespace TALO::Wifid
