#include "daemon/radio/linux/control/channel_settings.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

constexpr int kNarrow = 20;            ///< MHz of a channel
constexpr int kNumbersPerChannel = 4;  ///< from one channel of 20 MHz to the next in the 5 GHz band

bool IsUsable(const WiphyChannel& channel) {
  return !channel.disabled && !channel.listenOnly && !channel.radar;
}

/// Whether a channel is there that may be part of one so wide.
bool HasUsable(const WiphyBand& band, int number, int width) {
  return std::ranges::any_of(band.channels, [&](const WiphyChannel& each) {
    return each.number == number && IsUsable(each) && each.maximumWidth >= width;
  });
}

bool CanBe(const WiphyBand& band, int width) {
  const bool isEnabled = width == 40 ? band.highThroughput : band.veryHighThroughput || band.highEfficiency;
  return isEnabled && width <= band.maximumWidth;
}

/// The first channel of those that channels of the 5 GHz band are bound together from.
int RunOf(int channel) {
  constexpr int kMiddle = 100;
  constexpr int kUpper = 149;
  constexpr int kLower = 36;
  return channel >= kUpper ? kUpper : channel >= kMiddle ? kMiddle : kLower;
}

/// Whether the channels are there that make this width in the 5 GHz band, and then the width in `settings`.
bool Widen5GHz(const WiphyBand& band, int width, ChannelSettings& settings) {
  const int run = RunOf(settings.channel);
  const int count = width / kNarrow;
  const int distance = settings.channel - run;
  if (distance < 0 || distance % kNumbersPerChannel != 0) {
    return false;
  }
  const int place = distance / kNumbersPerChannel;
  const int first = run + place / count * count * kNumbersPerChannel;
  for (int i = 0; i < count; ++i) {
    if (!HasUsable(band, first + i * kNumbersPerChannel, width)) {
      return false;
    }
  }
  settings.width = width;
  settings.secondary = place % 2 == 0 ? 1 : -1;
  settings.centre = width > 40 ? first + (count - 1) * kNumbersPerChannel / 2 : 0;
  return true;
}

/// Likewise for 40 MHz in the 2.4 GHz band, above where there is room. Channel 14 is on its own.
bool Widen2GHz(const WiphyBand& band, ChannelSettings& settings) {
  constexpr int kLast = 13;
  constexpr int kWidth = 40;
  for (const int side : {1, -1}) {
    const int other = settings.channel + side * kNumbersPerChannel;
    if (settings.channel <= kLast && other <= kLast && HasUsable(band, settings.channel, kWidth) &&
        HasUsable(band, other, kWidth)) {
      settings.width = kWidth;
      settings.secondary = side;
      return true;
    }
  }
  return false;
}

bool Widen(const WiphyBand& band, int width, ChannelSettings& settings) {
  if (!CanBe(band, width)) {
    return false;
  }
  if (settings.band5GHz) {
    return Widen5GHz(band, width, settings);
  }
  return width == 40 && Widen2GHz(band, settings);
}

}  // namespace

ChannelSettings SettingsOf(const WiphyBand& band, bool band5GHz, int channel, int width) {
  ChannelSettings settings;
  settings.band5GHz = band5GHz;
  settings.channel = channel;
  settings.highThroughput = band.highThroughput;
  settings.veryHighThroughput = band5GHz && band.veryHighThroughput;
  settings.highEfficiency = band.highEfficiency;
  if (HasUsable(band, channel, kNarrow)) {
    for (const int each : {160, 80, 40}) {
      if ((width == 0 || each <= width) && Widen(band, each, settings)) {
        break;
      }
    }
  }
  settings.veryHighThroughput160 = settings.width == 160 && band.veryHighThroughput160;
  return settings;
}

int ChannelAt(int frequency) {
  if (frequency == 2484) {
    return 14;
  }
  if (frequency >= 2412 && frequency <= 2472 && (frequency - 2407) % 5 == 0) {
    return (frequency - 2407) / 5;
  }
  if (frequency >= 5160 && frequency <= 5885 && frequency % 5 == 0) {
    return (frequency - 5000) / 5;
  }
  return 0;
}

}  // namespace TALO::Wifid
