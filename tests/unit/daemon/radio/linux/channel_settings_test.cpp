#include "daemon/radio/linux/control/channel_settings.h"

#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <stdexcept>
#include <vector>

namespace TALO::Wifid {

void PrintTo(const ChannelSettings& settings, std::ostream* out) {
  *out << (settings.band5GHz ? "5 GHz" : "2.4 GHz") << " channel " << settings.channel << " width "
       << settings.width << " secondary " << settings.secondary << " centre " << settings.centre
       << (settings.highThroughput ? " n" : "") << (settings.veryHighThroughput ? " ac" : "")
       << (settings.veryHighThroughput160 ? " 160" : "") << (settings.highEfficiency ? " ax" : "");
}

namespace {

WiphyBand Band2GHz() {
  WiphyBand band;
  for (int number = 1; number <= 13; ++number) {
    band.channels.push_back({.number = number, .frequency = 2407 + 5 * number, .maximumWidth = 40});
  }
  band.channels.push_back({.number = 14, .frequency = 2484});
  band.maximumWidth = 40;
  band.highThroughput = true;
  band.veryHighThroughput = true;  // as hwsim has it; it is not for this band
  band.highEfficiency = true;
  return band;
}

WiphyBand Band5GHz() {
  WiphyBand band;
  for (const auto& [first, last] : std::vector<std::array<int, 2>>{{36, 64}, {100, 144}, {149, 177}}) {
    for (int number = first; number <= last; number += 4) {
      band.channels.push_back({.number = number, .frequency = 5000 + 5 * number, .maximumWidth = 160});
    }
  }
  band.maximumWidth = 160;
  band.highThroughput = true;
  band.veryHighThroughput = true;
  band.highEfficiency = true;
  return band;
}

WiphyChannel& ChannelOf(WiphyBand& band, int number) {
  for (WiphyChannel& channel : band.channels) {
    if (channel.number == number) {
      return channel;
    }
  }
  throw std::out_of_range("no such channel");
}

ChannelSettings On2GHz(int channel, int width, int secondary) {
  return {.band5GHz = false,
          .channel = channel,
          .width = width,
          .secondary = secondary,
          .centre = 0,
          .highThroughput = true,
          .veryHighThroughput = false,
          .highEfficiency = true};
}

ChannelSettings On5GHz(int channel, int width, int secondary, int centre) {
  return {.band5GHz = true,
          .channel = channel,
          .width = width,
          .secondary = secondary,
          .centre = centre,
          .highThroughput = true,
          .veryHighThroughput = true,
          .highEfficiency = true};
}

TEST(SettingsOf, AreTheWidestThatTheBandHasChannelsFor) {
  const std::vector<ChannelSettings> rows = {
      On5GHz(36, 160, 1, 50),   On5GHz(40, 160, -1, 50),   On5GHz(44, 160, 1, 50),   On5GHz(64, 160, -1, 50),
      On5GHz(100, 160, 1, 114), On5GHz(128, 160, -1, 114), On5GHz(132, 80, 1, 138),  On5GHz(144, 80, -1, 138),
      On5GHz(149, 160, 1, 163), On5GHz(165, 160, 1, 163),  On5GHz(177, 160, -1, 163)};
  for (const ChannelSettings& row : rows) {
    EXPECT_EQ(SettingsOf(Band5GHz(), true, row.channel, 0), row);
  }
}

TEST(SettingsOf, AreNotWiderThanAskedFor) {
  EXPECT_EQ(SettingsOf(Band5GHz(), true, 48, 160), On5GHz(48, 160, -1, 50));
  EXPECT_EQ(SettingsOf(Band5GHz(), true, 48, 80), On5GHz(48, 80, -1, 42));
  EXPECT_EQ(SettingsOf(Band5GHz(), true, 52, 80), On5GHz(52, 80, 1, 58));
  EXPECT_EQ(SettingsOf(Band5GHz(), true, 48, 40), On5GHz(48, 40, -1, 0));
  EXPECT_EQ(SettingsOf(Band5GHz(), true, 48, 20), On5GHz(48, 20, 0, 0));
}

TEST(SettingsOf, LieAboveIn2GHzWhereThereIsRoomAndBelowElse) {
  const std::vector<ChannelSettings> rows = {On2GHz(1, 40, 1),   On2GHz(6, 40, 1),   On2GHz(9, 40, 1),
                                             On2GHz(10, 40, -1), On2GHz(13, 40, -1), On2GHz(14, 20, 0)};
  for (const ChannelSettings& row : rows) {
    EXPECT_EQ(SettingsOf(Band2GHz(), false, row.channel, 0), row);
  }
}

TEST(SettingsOf, LeaveOutWidthsOfWhichAChannelCannotBeUsed) {
  WiphyBand radar = Band5GHz();
  for (const int number : {52, 56, 60, 64}) {
    ChannelOf(radar, number).radar = true;
  }
  EXPECT_EQ(SettingsOf(radar, true, 36, 0), On5GHz(36, 80, 1, 42));

  WiphyBand listenOnly = Band5GHz();
  ChannelOf(listenOnly, 44).listenOnly = true;
  EXPECT_EQ(SettingsOf(listenOnly, true, 36, 0), On5GHz(36, 40, 1, 0));

  WiphyBand disabled = Band5GHz();
  ChannelOf(disabled, 40).disabled = true;
  EXPECT_EQ(SettingsOf(disabled, true, 36, 0), On5GHz(36, 20, 0, 0));

  WiphyBand narrow = Band5GHz();
  ChannelOf(narrow, 48).maximumWidth = 40;
  EXPECT_EQ(SettingsOf(narrow, true, 36, 0), On5GHz(36, 40, 1, 0));
  ChannelOf(narrow, 36).maximumWidth = 20;
  EXPECT_EQ(SettingsOf(narrow, true, 36, 0), On5GHz(36, 20, 0, 0));

  WiphyBand alone = Band2GHz();
  ChannelOf(alone, 6).maximumWidth = 20;
  EXPECT_EQ(SettingsOf(alone, false, 6, 0), On2GHz(6, 20, 0));

  WiphyBand below = Band2GHz();
  ChannelOf(below, 10).disabled = true;
  EXPECT_EQ(SettingsOf(below, false, 6, 0), On2GHz(6, 40, -1));
}

TEST(SettingsOf, Are20MHzWideOnAChannelThatCannotBeUsed) {
  WiphyBand band = Band5GHz();
  ChannelOf(band, 36).radar = true;
  EXPECT_EQ(SettingsOf(band, true, 36, 0), On5GHz(36, 20, 0, 0));
  EXPECT_EQ(SettingsOf(band, true, 34, 0), On5GHz(34, 20, 0, 0));
  EXPECT_EQ(SettingsOf(band, true, 0, 0), On5GHz(0, 20, 0, 0));
}

TEST(SettingsOf, HaveNoWidthThatTheRadioCannotDo) {
  WiphyBand band = Band5GHz();
  band.maximumWidth = 80;
  EXPECT_EQ(SettingsOf(band, true, 36, 0), On5GHz(36, 80, 1, 42));

  band.veryHighThroughput = false;
  ChannelSettings without = On5GHz(36, 80, 1, 42);
  without.veryHighThroughput = false;
  EXPECT_EQ(SettingsOf(band, true, 36, 0), without);

  band.highEfficiency = false;
  without = On5GHz(36, 40, 1, 0);
  without.veryHighThroughput = false;
  without.highEfficiency = false;
  EXPECT_EQ(SettingsOf(band, true, 36, 0), without);

  band.highThroughput = false;
  EXPECT_EQ(SettingsOf(band, true, 36, 0), (ChannelSettings{.band5GHz = true, .channel = 36, .width = 20}));
}

TEST(SettingsOf, SayWhether160MHzAreThoseOf80211acToo) {
  WiphyBand band = Band5GHz();
  EXPECT_FALSE(SettingsOf(band, true, 36, 160).veryHighThroughput160);
  band.veryHighThroughput160 = true;
  EXPECT_TRUE(SettingsOf(band, true, 36, 160).veryHighThroughput160);
  EXPECT_FALSE(SettingsOf(band, true, 36, 80).veryHighThroughput160);
}

TEST(ChannelAt, IsTheNumberOfAFrequencyOfEitherBand) {
  const std::vector<std::array<int, 2>> rows = {{2412, 1},  {2437, 6},   {2472, 13},  {2484, 14}, {5160, 32},
                                                {5180, 36}, {5745, 149}, {5885, 177}, {2407, 0},  {2413, 0},
                                                {2477, 0},  {2483, 0},   {5155, 0},   {5181, 0},  {5955, 0},
                                                {60480, 0}, {0, 0},      {-5180, 0}};
  for (const auto& [frequency, channel] : rows) {
    EXPECT_EQ(ChannelAt(frequency), channel) << frequency;
  }
}

}  // namespace

}  // namespace TALO::Wifid
