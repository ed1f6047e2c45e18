#include "daemon/system/band_reading.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <string>

namespace TALO::Wifid {

namespace {

constexpr int kMillibelsPerDecibel = 100;

// IEEE 802.11: HT Capability Information, VHT Capabilities Information, HE PHY Capabilities.
constexpr unsigned kHT40 = 0x0002;
constexpr unsigned kVHT160 = 0x0000000C;  ///< 0: 80 MHz at most
constexpr unsigned kHE40In2_4GHz = 0x02;
constexpr unsigned kHE80In5GHz = 0x04;
constexpr unsigned kHE160In5GHz = 0x08;

/// Channels that are numbered by their distance from a frequency that none has, 5 MHz each.
struct Numbering {
  int start;  ///< MHz
  int first;
  int last;
};

constexpr Numbering k2_4GHz = {2407, 1, 13};
constexpr Numbering k4_9GHz = {4000, 183, 196};  ///< the kernel has them in the 5 GHz band
constexpr Numbering k5GHz = {5000, 7, 185};

std::optional<int> NumberIn(const Numbering& numbering, int frequency) {
  constexpr int kStep = 5;
  if (frequency < numbering.start + numbering.first * kStep ||
      frequency > numbering.start + numbering.last * kStep || (frequency - numbering.start) % kStep != 0) {
    return std::nullopt;
  }
  return (frequency - numbering.start) / kStep;
}

/// Nothing for a frequency that no channel of the band with this number of the kernel has.
std::optional<int> NumberOfChannel(int band, int frequency) {
  constexpr int kChannel14 = 2484;
  if (band == NL80211_BAND_5GHZ) {
    const auto number = NumberIn(k5GHz, frequency);
    return number ? number : NumberIn(k4_9GHz, frequency);
  }
  if (band != NL80211_BAND_2GHZ) {
    return std::nullopt;
  }
  return frequency == kChannel14 ? std::optional(14) : NumberIn(k2_4GHz, frequency);
}

/// The widest channel that the country lets this one be a part of.
int AllowedWidth(const Attributes& channel) {
  if (channel.Has(NL80211_FREQUENCY_ATTR_NO_HT40_MINUS) && channel.Has(NL80211_FREQUENCY_ATTR_NO_HT40_PLUS)) {
    return 20;
  }
  if (channel.Has(NL80211_FREQUENCY_ATTR_NO_80MHZ)) {
    return 40;
  }
  return channel.Has(NL80211_FREQUENCY_ATTR_NO_160MHZ) ? 80 : 160;
}

}  // namespace

void BandReading::TakeChannel(const Attributes& channel) {
  const int frequency =
      static_cast<int>(channel.Number<std::uint32_t>(NL80211_FREQUENCY_ATTR_FREQ).value_or(0));
  const auto power = channel.Number<std::uint32_t>(NL80211_FREQUENCY_ATTR_MAX_TX_POWER).value_or(0);
  channels_[frequency] = {.frequency = frequency,
                          .disabled = channel.Has(NL80211_FREQUENCY_ATTR_DISABLED),
                          .listenOnly = channel.Has(NL80211_FREQUENCY_ATTR_NO_IR),
                          .radar = channel.Has(NL80211_FREQUENCY_ATTR_RADAR),
                          .maximumPower = static_cast<int>(power) / kMillibelsPerDecibel,
                          .maximumWidth = AllowedWidth(channel)};
}

void BandReading::TakeHighEfficiency(const Attributes& capabilities) {
  const std::string physical = capabilities.Bytes(NL80211_BAND_IFTYPE_ATTR_HE_CAP_PHY);
  if (capabilities.Inside(NL80211_BAND_IFTYPE_ATTR_IFTYPES).Has(NL80211_IFTYPE_AP) && !physical.empty()) {
    highEfficiency_ = static_cast<std::uint8_t>(physical[0]);
  }
}

void BandReading::Take(const Attributes& band) {
  for (const nlattr* channel : band.Inside(NL80211_BAND_ATTR_FREQS).All()) {
    TakeChannel(Attributes(channel));
  }
  // Only one of the messages has them.
  if (band.Has(NL80211_BAND_ATTR_HT_CAPA)) {
    highThroughput_ = band.Number<std::uint16_t>(NL80211_BAND_ATTR_HT_CAPA);
  }
  if (band.Has(NL80211_BAND_ATTR_VHT_CAPA)) {
    veryHighThroughput_ = band.Number<std::uint32_t>(NL80211_BAND_ATTR_VHT_CAPA);
  }
  for (const nlattr* capabilities : band.Inside(NL80211_BAND_ATTR_IFTYPE_DATA).All()) {
    TakeHighEfficiency(Attributes(capabilities));
  }
}

int BandReading::MaximumWidth(bool is5GHz) const {
  const unsigned widths = highEfficiency_.value_or(0);
  if (is5GHz && ((veryHighThroughput_.value_or(0) & kVHT160) != 0 || (widths & kHE160In5GHz) != 0)) {
    return 160;
  }
  if (is5GHz && (veryHighThroughput_ || (widths & kHE80In5GHz) != 0)) {
    return 80;
  }
  return (highThroughput_.value_or(0) & kHT40) != 0 || (!is5GHz && (widths & kHE40In2_4GHz) != 0) ? 40 : 20;
}

WiphyBand BandReading::Finish(int band) const {
  WiphyBand finished;
  finished.maximumWidth = MaximumWidth(band == NL80211_BAND_5GHZ);
  finished.highThroughput = highThroughput_.has_value();
  finished.veryHighThroughput = veryHighThroughput_.has_value();
  finished.veryHighThroughput160 = (veryHighThroughput_.value_or(0) & kVHT160) != 0;
  finished.highEfficiency = highEfficiency_.has_value();
  for (const auto& [frequency, channel] : channels_) {
    const auto number = NumberOfChannel(band, frequency);
    if (!number) {
      continue;
    }
    finished.channels.push_back(channel);
    finished.channels.back().number = *number;
    finished.channels.back().maximumWidth = std::min(channel.maximumWidth, finished.maximumWidth);
  }
  return finished;
}

}  // namespace TALO::Wifid
