#include "daemon/model/capabilities.h"

#include "support/daemon_samples.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::Util::MACAddress;

using Radios = std::vector<RadioFrequency>;

TEST(RadiosOf, NamesTheRadiosOfEveryModel) {
  EXPECT_EQ(RadiosOf(SupportedModel::Alder100), (Radios{Band2_4GHz, Band5GHz_1, Band5GHz_2}));
  EXPECT_EQ(RadiosOf(SupportedModel::Birch200), (Radios{Band2_4GHz, Band5GHz_1, Band5GHz_2}));
  EXPECT_EQ(RadiosOf(SupportedModel::Cedar300), (Radios{Band2_4GHz, Band5GHz}));
  EXPECT_EQ(RadiosOf(SupportedModel::Dune40), (Radios{Band2_4GHz, Band5GHz}));
}

TEST(RadiosOf, KnowsNoRadioOfWhatIsNoModel) {
  EXPECT_EQ(RadiosOf(SupportedModel::Error), Radios{});
  EXPECT_EQ(RadiosOf(static_cast<SupportedModel>(4)), Radios{});
}

TEST(BSSInterface, NamesTheSlotBehindTheRadio) {
  const RadioCapability radio = TriBandRadios().radios[2];
  EXPECT_EQ(BSSInterface(radio, 1), "wlan2_1");
  EXPECT_EQ(BSSInterface(radio, 9), "wlan2_9");
  EXPECT_EQ(BSSInterface(radio, 16), "wlan2_16");
}

TEST(BSSAddress, CountsUpFromTheRadiosOwn) {
  const RadioCapability radio = TriBandRadios().radios[1];
  EXPECT_EQ(BSSAddress(radio, 1), MACAddress("02:00:00:00:01:01"));
  EXPECT_EQ(BSSAddress(radio, 9), MACAddress("02:00:00:00:01:09"));
  EXPECT_EQ(BSSAddress(radio, 10), MACAddress("02:00:00:00:01:0a"));
  EXPECT_EQ(BSSAddress(radio, 15), MACAddress("02:00:00:00:01:0f"));
  EXPECT_EQ(BSSAddress(radio, 16), MACAddress("02:00:00:00:01:10"));
}

TEST(BSSAddress, AddsToALastByteThatIsNotZero) {
  RadioCapability radio = TriBandRadios().radios[0];
  radio.address = MACAddress("de:ad:be:ef:7f:e9");
  EXPECT_EQ(BSSAddress(radio, 1), MACAddress("de:ad:be:ef:7f:ea"));
  EXPECT_EQ(BSSAddress(radio, 7), MACAddress("de:ad:be:ef:7f:f0"));
  EXPECT_EQ(BSSAddress(radio, 16), MACAddress("de:ad:be:ef:7f:f9"));
}

TEST(BSSAddress, CountsOnWhereTheLastByteIsFull) {
  RadioCapability radio = TriBandRadios().radios[0];
  radio.address = MACAddress("de:ad:be:ef:7f:f8");
  EXPECT_EQ(BSSAddress(radio, 0), MACAddress("de:ad:be:ef:7f:f8"));
  EXPECT_EQ(BSSAddress(radio, 7), MACAddress("de:ad:be:ef:7f:ff"));
  EXPECT_EQ(BSSAddress(radio, 8), MACAddress("de:ad:be:ef:80:00"));
  EXPECT_EQ(BSSAddress(radio, 16), MACAddress("de:ad:be:ef:80:08"));
  radio.address = MACAddress("de:ad:be:7f:ff:ff");
  EXPECT_EQ(BSSAddress(radio, 1), MACAddress("de:ad:be:80:00:00"));
}

}  // namespace

}  // namespace TALO::Wifid
