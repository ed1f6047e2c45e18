#include "daemon/system/wiphy_reading.h"

#include "support/netlink_bytes.h"

#include <gtest/gtest.h>
#include <linux/nl80211.h>

#include <cstdint>
#include <ostream>
#include <string>
#include <vector>

namespace TALO::Wifid {

void PrintTo(const WiphyChannel& channel, std::ostream* out) {
  *out << channel.number << " " << channel.frequency << " MHz " << channel.maximumPower << " dBm "
       << channel.maximumWidth << " MHz" << (channel.disabled ? " disabled" : "")
       << (channel.listenOnly ? " listen only" : "") << (channel.radar ? " radar" : "");
}

namespace {

using Channels = std::vector<WiphyChannel>;

/// What the kernel tells of one radio, with these attributes beside its number.
Wiphy Read(const std::string& attributes) {
  const auto wiphys = ReadWiphys(
      {WirelessMessage(NL80211_CMD_NEW_WIPHY, Attribute(NL80211_ATTR_WIPHY, Raw(3U)) + attributes)});
  EXPECT_EQ(wiphys.size(), 1U);
  return wiphys.at(0);
}

std::string Types(const std::vector<int>& types) {
  std::string flags;
  for (const int type : types) {
    flags += Attribute(type, "");
  }
  return flags;
}

std::string Supports(const std::vector<int>& types) {
  return Attribute(NL80211_ATTR_SUPPORTED_IFTYPES, Types(types));
}

std::string Limit(std::uint32_t count, const std::vector<int>& types) {
  return Attribute(
      1, Attribute(NL80211_IFACE_LIMIT_MAX, Raw(count)) + Attribute(NL80211_IFACE_LIMIT_TYPES, Types(types)));
}

std::string Combination(const std::string& limits, std::uint32_t most, std::uint32_t channels) {
  return Attribute(1, Attribute(NL80211_IFACE_COMB_LIMITS, limits) +
                          Attribute(NL80211_IFACE_COMB_MAXNUM, Raw(most)) +
                          Attribute(NL80211_IFACE_COMB_NUM_CHANNELS, Raw(channels)));
}

constexpr int kStation = NL80211_IFTYPE_STATION;
constexpr int kAccessPoint = NL80211_IFTYPE_AP;

/// A radio that makes access points, with these combinations.
Wiphy WithCombinations(const std::string& combinations) {
  return Read(Supports({kStation, kAccessPoint}) +
              Attribute(NL80211_ATTR_INTERFACE_COMBINATIONS, combinations));
}

std::string Channel(std::uint32_t frequency, const std::vector<int>& flags) {
  return Attribute(0, Attribute(NL80211_FREQUENCY_ATTR_FREQ, Raw(frequency)) + Types(flags) +
                          Attribute(NL80211_FREQUENCY_ATTR_MAX_TX_POWER, Raw(2000U)));
}

std::string Band(int band, const std::string& attributes) {
  return Attribute(NL80211_ATTR_WIPHY_BANDS, Attribute(band, attributes));
}

std::string Frequencies(const std::string& channels) { return Attribute(NL80211_BAND_ATTR_FREQS, channels); }

std::string HT(unsigned capabilities) {
  return Attribute(NL80211_BAND_ATTR_HT_CAPA, Raw(static_cast<std::uint16_t>(capabilities)));
}

std::string VHT(unsigned capabilities) { return Attribute(NL80211_BAND_ATTR_VHT_CAPA, Raw(capabilities)); }

std::string HE(int type, char widths) {
  return Attribute(NL80211_BAND_ATTR_IFTYPE_DATA,
                   Attribute(1, Attribute(NL80211_BAND_IFTYPE_ATTR_IFTYPES, Types({type})) +
                                    Attribute(NL80211_BAND_IFTYPE_ATTR_HE_CAP_PHY,
                                              std::string(1, widths) + std::string(10, '\0'))));
}

int Width5GHz(const std::string& attributes) {
  return Read(Band(NL80211_BAND_5GHZ, attributes)).band5GHz->maximumWidth;
}

int Width2_4GHz(const std::string& attributes) {
  return Read(Band(NL80211_BAND_2GHZ, attributes)).band2_4GHz->maximumWidth;
}

TEST(ReadWiphys, ReadsWhatARealKernelTold) {
  const auto wiphys = ReadWiphys(ReadFixture("wiphys"));
  ASSERT_EQ(wiphys.size(), 1U);
  const Wiphy& wiphy = wiphys[0];
  EXPECT_EQ(wiphy.index, 0);
  EXPECT_EQ(wiphy.name, "phy0");
  EXPECT_EQ(wiphy.maximumAccessPoints, 2048);
  EXPECT_EQ(wiphy.maximumStations, 2046);
  EXPECT_EQ(wiphy.maximumChannels, 1);
  EXPECT_TRUE(wiphy.fourAddress);
  ASSERT_TRUE(wiphy.band2_4GHz);
  EXPECT_EQ(wiphy.band2_4GHz->maximumWidth, 40);
  EXPECT_TRUE(wiphy.band2_4GHz->highThroughput);
  EXPECT_FALSE(wiphy.band2_4GHz->veryHighThroughput);
  EXPECT_TRUE(wiphy.band2_4GHz->highEfficiency);
  ASSERT_TRUE(wiphy.band5GHz);
  EXPECT_EQ(wiphy.band5GHz->maximumWidth, 160);
  EXPECT_TRUE(wiphy.band5GHz->highThroughput);
  EXPECT_TRUE(wiphy.band5GHz->veryHighThroughput);
  EXPECT_TRUE(wiphy.band5GHz->highEfficiency);
}

TEST(ReadWiphys, ReadsTheChannelsOf2_4GHzThatARealKernelTold) {
  const auto wiphys = ReadWiphys(ReadFixture("wiphys"));
  Channels expected;
  for (int number = 1; number <= 13; ++number) {
    expected.push_back({number, 2407 + 5 * number, false, false, false, 20, 40});
  }
  ASSERT_EQ(wiphys.at(0).band2_4GHz->channels.size(), 14U);
  const WiphyChannel last = wiphys[0].band2_4GHz->channels.back();
  EXPECT_EQ(last.number, 14);
  EXPECT_EQ(last.frequency, 2484);
  EXPECT_TRUE(last.disabled);
  Channels found = wiphys[0].band2_4GHz->channels;
  found.pop_back();
  EXPECT_EQ(found, expected);
}

TEST(ReadWiphys, ReadsTheChannelsOf5GHzThatARealKernelTold) {
  struct Row {
    std::vector<int> numbers;
    int power;
    int width;
    bool radar;
  };
  const std::vector<Row> rows = {
      {{36, 40, 44, 48}, 23, 160, false},
      {{52, 56, 60, 64}, 20, 160, true},
      {{100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140}, 26, 160, true},
      {{149, 153, 157, 161, 165, 169}, 13, 80, false},
      {{171, 172}, 13, 20, false},
      {{173}, 13, 80, false},
  };
  Channels expected;
  for (const Row& row : rows) {
    for (const int number : row.numbers) {
      expected.push_back({number, 5000 + 5 * number, false, false, row.radar, row.power, row.width});
    }
  }
  const auto wiphys = ReadWiphys(ReadFixture("wiphys"));
  Channels found;
  std::vector<int> disabled;
  for (const WiphyChannel& channel : wiphys.at(0).band5GHz->channels) {
    if (channel.disabled) {
      disabled.push_back(channel.number);
    } else {
      found.push_back(channel);
    }
  }
  EXPECT_EQ(found, expected);
  EXPECT_EQ(disabled, (std::vector<int>{174, 175, 176, 177, 178, 179, 180, 181, 182, 183, 184, 185}));
}

TEST(ReadWiphys, SurvivesEveryCutOfWhatARealKernelTold) {
  for (const std::string& message : ReadFixture("wiphys")) {
    for (std::size_t length = 0; length < message.size(); ++length) {
      EXPECT_LE(ReadWiphys({message.substr(0, length)}).size(), 1U);
    }
  }
}

TEST(ReadWiphys, KeepsRadiosApartAndInOrder) {
  const auto named = [](std::uint32_t index, const std::string& name) {
    return WirelessMessage(NL80211_CMD_NEW_WIPHY, Attribute(NL80211_ATTR_WIPHY, Raw(index)) +
                                                      Attribute(NL80211_ATTR_WIPHY_NAME, name + '\0'));
  };
  const auto wiphys = ReadWiphys({named(7, "phy7"), named(2, "phy2"), WirelessMessage(3, "")});
  ASSERT_EQ(wiphys.size(), 2U);
  EXPECT_EQ(wiphys[0].name, "phy2");
  EXPECT_EQ(wiphys[1].index, 7);
  EXPECT_EQ(wiphys[1].name, "phy7");
}

TEST(ReadWiphys, CountsAccessPointsAsCombinationsAllow) {
  EXPECT_EQ(Read(Supports({kStation})).maximumAccessPoints, 0);
  EXPECT_EQ(Read(Supports({kStation, kAccessPoint})).maximumAccessPoints, 1);
  EXPECT_EQ(WithCombinations(Combination(Limit(8, {kAccessPoint}), 8, 1)).maximumAccessPoints, 8);
  // All together may be fewer than of each kind.
  EXPECT_EQ(WithCombinations(Combination(Limit(8, {kAccessPoint}), 4, 1)).maximumAccessPoints, 4);
  EXPECT_EQ(WithCombinations(Combination(Limit(1, {kStation}) + Limit(2, {kAccessPoint}) +
                                             Limit(3, {kAccessPoint, NL80211_IFTYPE_MESH_POINT}),
                                         9, 1))
                .maximumAccessPoints,
            5);
  EXPECT_EQ(WithCombinations(Combination(Limit(2, {kAccessPoint}), 2, 1) +
                             Combination(Limit(4, {kAccessPoint}), 4, 1))
                .maximumAccessPoints,
            4);
  EXPECT_EQ(WithCombinations(Combination(Limit(4, {kStation}), 4, 1)).maximumAccessPoints, 1);
}

TEST(ReadWiphys, CountsTheStationsThatFitBesideTwoAccessPoints) {
  const auto fit = [](const std::string& limits, std::uint32_t most) {
    return WithCombinations(Combination(limits, most, 1)).maximumStations;
  };
  EXPECT_EQ(fit(Limit(1, {kStation}) + Limit(2, {kAccessPoint}), 3), 1);
  EXPECT_EQ(fit(Limit(4, {kStation, kAccessPoint}), 4), 2);
  EXPECT_EQ(fit(Limit(1, {kStation, kAccessPoint}) + Limit(2, {kAccessPoint}), 3), 1);
  EXPECT_EQ(fit(Limit(1, {kStation}) + Limit(1, {kAccessPoint}), 2), 0);
  EXPECT_EQ(fit(Limit(4, {kStation, kAccessPoint}), 2), 0);
  EXPECT_EQ(fit(Limit(2, {kStation, kAccessPoint}), 4), 0);
  EXPECT_EQ(fit(Limit(8, {kAccessPoint}), 8), 0);
  EXPECT_EQ(fit(Limit(8, {kStation}), 8), 0);
  EXPECT_EQ(Read(Supports({kStation, kAccessPoint})).maximumStations, 0);
}

TEST(ReadWiphys, CountsChannelsWhereAStationIsBesideAccessPoints) {
  const std::string both = Limit(3, {kStation, kAccessPoint});
  EXPECT_EQ(WithCombinations(Combination(both, 3, 2)).maximumChannels, 2);
  EXPECT_EQ(
      WithCombinations(Combination(both, 3, 1) + Combination(Limit(4, {kStation}), 4, 3)).maximumChannels, 1);
}

TEST(ReadWiphys, Has4AddressModeWhereTheKernelsOwnStackHasIt) {
  EXPECT_TRUE(Read(Supports({kStation, kAccessPoint, NL80211_IFTYPE_AP_VLAN})).fourAddress);
  EXPECT_FALSE(Read(Supports({kStation, kAccessPoint})).fourAddress);
  EXPECT_FALSE(Read(Supports({kAccessPoint, NL80211_IFTYPE_AP_VLAN})).fourAddress);
}

TEST(ReadWiphys, KnowsHowWideABandGoes) {
  EXPECT_EQ(Width5GHz(HT(0x0000)), 20);
  EXPECT_EQ(Width5GHz(HT(0x0002)), 40);
  EXPECT_EQ(Width5GHz(HT(0x0002) + VHT(0x00000000)), 80);
  EXPECT_EQ(Width5GHz(HT(0x0002) + VHT(0x00000004)), 160);
  EXPECT_EQ(Width5GHz(HT(0x0002) + VHT(0x00000008)), 160);
  EXPECT_EQ(Width5GHz(HT(0x0002) + VHT(0xFFFFFFF3)), 80);
  EXPECT_EQ(Width5GHz(HT(0x0002) + HE(kAccessPoint, 0x04)), 80);
  EXPECT_EQ(Width5GHz(HT(0x0002) + HE(kAccessPoint, 0x08)), 160);
  EXPECT_EQ(Width5GHz(HT(0x0002) + HE(kStation, 0x08)), 40);
  EXPECT_EQ(Width2_4GHz(HT(0x0000)), 20);
  EXPECT_EQ(Width2_4GHz(HT(0x0002) + VHT(0x00000004)), 40);
  EXPECT_EQ(Width2_4GHz(HT(0x0000) + HE(kAccessPoint, 0x02)), 40);
  EXPECT_EQ(Width2_4GHz(HT(0x0000) + HE(kAccessPoint, 0x0C)), 20);
}

TEST(ReadWiphys, KnowsWhether80211acGoesTo160MHz) {
  const auto goes = [](const std::string& attributes) {
    return Read(Band(NL80211_BAND_5GHZ, HT(0x0002) + attributes)).band5GHz->veryHighThroughput160;
  };
  EXPECT_TRUE(goes(VHT(0x00000004)));
  EXPECT_TRUE(goes(VHT(0x00000008)));
  EXPECT_FALSE(goes(VHT(0xFFFFFFF3) + HE(kAccessPoint, 0x08)));
  EXPECT_FALSE(goes(HE(kAccessPoint, 0x08)));
}

TEST(ReadWiphys, KnowsTheStandardsOfABand) {
  const auto band = Read(Band(NL80211_BAND_5GHZ, HT(0))).band5GHz;
  EXPECT_TRUE(band->highThroughput);
  EXPECT_FALSE(band->veryHighThroughput || band->highEfficiency);
  EXPECT_FALSE(Read(Band(NL80211_BAND_5GHZ, HE(kStation, 0x08))).band5GHz->highEfficiency);
  EXPECT_TRUE(Read(Band(NL80211_BAND_5GHZ, HE(kAccessPoint, 0x08))).band5GHz->highEfficiency);
  EXPECT_FALSE(Read(Band(NL80211_BAND_6GHZ, HT(0))).band5GHz);
  EXPECT_FALSE(Read(Band(NL80211_BAND_5GHZ, HT(0))).band2_4GHz);
}

TEST(ReadWiphys, KnowsWhatTheCountryAllowsOnAChannel) {
  const std::string wide = HT(0x0002) + VHT(0x00000004);
  const auto read = [&](const std::vector<int>& flags) {
    return Read(Band(NL80211_BAND_5GHZ, wide + Frequencies(Channel(5180, flags)))).band5GHz->channels.at(0);
  };
  EXPECT_EQ(read({}), (WiphyChannel{36, 5180, false, false, false, 20, 160}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_DISABLED}), (WiphyChannel{36, 5180, true, false, false, 20, 160}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_NO_IR}), (WiphyChannel{36, 5180, false, true, false, 20, 160}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_RADAR}), (WiphyChannel{36, 5180, false, false, true, 20, 160}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_NO_160MHZ}), (WiphyChannel{36, 5180, false, false, false, 20, 80}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_NO_160MHZ, NL80211_FREQUENCY_ATTR_NO_80MHZ}),
            (WiphyChannel{36, 5180, false, false, false, 20, 40}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_NO_HT40_MINUS}),
            (WiphyChannel{36, 5180, false, false, false, 20, 160}));
  EXPECT_EQ(read({NL80211_FREQUENCY_ATTR_NO_HT40_MINUS, NL80211_FREQUENCY_ATTR_NO_HT40_PLUS}),
            (WiphyChannel{36, 5180, false, false, false, 20, 20}));
}

/// The numbers of those that are taken for channels of the band.
std::vector<int> NumbersIn(int band, const std::vector<std::uint32_t>& frequencies) {
  std::string channels;
  for (const std::uint32_t frequency : frequencies) {
    channels += Channel(frequency, {});
  }
  const Wiphy wiphy = Read(Band(band, Frequencies(channels)));
  std::vector<int> numbers;
  for (const WiphyChannel& channel :
       (band == NL80211_BAND_5GHZ ? wiphy.band5GHz : wiphy.band2_4GHz)->channels) {
    numbers.push_back(channel.number);
  }
  return numbers;
}

TEST(ReadWiphys, PassesOverWhatIsNoChannelOf2_4GHz) {
  EXPECT_EQ(NumbersIn(NL80211_BAND_2GHZ,
                      {0, 2407, 2411, 2412, 2413, 2472, 2477, 2483, 2484, 2489, 5000, 5180, 0x80000000U}),
            (std::vector<int>{1, 13, 14}));
}

TEST(ReadWiphys, PassesOverWhatIsNoChannelOf5GHz) {
  EXPECT_EQ(NumbersIn(NL80211_BAND_5GHZ,
                      {0,    2412, 4910,   4915,          4980,        4985,        5000,
                       5030, 5035, 5160,   5180,          5181,        5885,        5925,
                       5930, 5955, 60'480, 2'000'000'000, 0x7fffffffU, 0x80000000U, 0xffffffffU}),
            (std::vector<int>{183, 196, 7, 32, 36, 177, 185}));
}

TEST(ReadWiphys, OrdersAndNumbersChannels) {
  const auto bands = Read(Band(NL80211_BAND_5GHZ, Frequencies(Channel(5825, {}) + Channel(4920, {}))));
  EXPECT_EQ(bands.band5GHz->channels,
            (Channels{{184, 4920, false, false, false, 20, 20}, {165, 5825, false, false, false, 20, 20}}));
}

}  // namespace

}  // namespace TALO::Wifid
