#include "daemon/system/band_reading.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <string>

namespace TALO::Wifid {

namespace {

constexpr int kMillibelsPerDecibel = 100;
constexpr int kLowestFrequency = 2412;

// IEEE 802.11: HT Capability Information, VHT Capabilities Information, HE PHY Capabilities.
constexpr unsigned kHT40 = 0x0002;
constexpr unsigned kVHT160 = 0x0000000C;  ///< 0: 80 MHz at most
constexpr unsigned kHE40In2_4GHz = 0x02;
constexpr unsigned kHE80In5GHz = 0x04;
constexpr unsigned kHE160In5GHz = 0x08;

int NumberOfChannel(int frequency) {
  constexpr int kChannel14 = 2484;
  constexpr int kFirstOf5GHz = 5000;
  constexpr int kFirstOf4_9GHz = 4900;
  if (frequency == kChannel14) {
    return 14;
  }
  if (frequency < kFirstOf4_9GHz) {
    return (frequency - 2407) / 5;
  }
  return (frequency - (frequency < kFirstOf5GHz ? 4000 : kFirstOf5GHz)) / 5;
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
  if (frequency < kLowestFrequency) {
    return;
  }
  const auto power = channel.Number<std::uint32_t>(NL80211_FREQUENCY_ATTR_MAX_TX_POWER).value_or(0);
  channels_[frequency] = {.number = NumberOfChannel(frequency),
                          .frequency = frequency,
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
    finished.channels.push_back(channel);
    finished.channels.back().maximumWidth = std::min(channel.maximumWidth, finished.maximumWidth);
  }
  return finished;
}

}  // namespace TALO::Wifid
