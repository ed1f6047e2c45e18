#include "values/mac_address.h"

#include <gtest/gtest.h>

#include <concepts>
#include <cstddef>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace TALO::Wifi::Util {

namespace {

// Addresses travel as values; a text becomes one only where that is asked for.
static_assert(std::regular<MACAddress> && std::totally_ordered<MACAddress>);
static_assert(std::is_constructible_v<MACAddress, const std::string&>);
static_assert(!std::is_convertible_v<std::string, MACAddress>);
static_assert(!std::is_trivially_destructible_v<MACAddress>);

TEST(MACAddress, TakesSixGroupsOfTwoHexadecimalDigits) {
  const std::vector<std::pair<std::string, std::string>> addresses = {
      {"00:11:22:33:44:55", "00:11:22:33:44:55"}, {"00-11-22-33-44-55", "00:11:22:33:44:55"},
      {"aa:bb:cc:dd:ee:ff", "aa:bb:cc:dd:ee:ff"}, {"AA:BB:CC:DD:EE:FF", "aa:bb:cc:dd:ee:ff"},
      {"AA-BB-CC-DD-EE-FF", "aa:bb:cc:dd:ee:ff"}, {"aA:Bb:cC:Dd:eE:Ff", "aa:bb:cc:dd:ee:ff"},
      {"0a-1B-2c-3D-4e-5F", "0a:1b:2c:3d:4e:5f"}, {"67:89:01:9a:F0:0f", "67:89:01:9a:f0:0f"},
      {"00:00:00:00:00:00", "00:00:00:00:00:00"}, {"ff:ff:ff:ff:ff:ff", "ff:ff:ff:ff:ff:ff"},
  };
  for (const auto& [given, canonical] : addresses) {
    SCOPED_TRACE(given);
    EXPECT_EQ(MACAddress(given).ToString(), canonical);
  }
}

TEST(MACAddress, RefusesEverythingElse) {
  const std::vector<std::string> texts = {
      "",
      "0",
      "address",
      "001122334455",
      "0011.2233.4455",
      "00.11.22.33.44.55",
      "00 11 22 33 44 55",
      "00_11_22_33_44_55",
      "00:11:22:33:44",
      "00:11:22:33:44:",
      "00:11:22:33:44:5",
      "00:11:22:33:44:555",
      "00:11:22:33:44:55:",
      "00:11:22:33:44:55:66",
      ":00:11:22:33:44:55",
      "0:1:2:3:4:5",
      "0:011:22:33:44:55",
      "000:1:22:33:44:55",
      "00::1:22:33:44:55",
      "00:11:22:33:44-55",
      "00-11:22:33:44:55",
      "00-11-22-33-44:55",
      "00:11-22:33-44:55",
      " 00:11:22:33:44:55",
      "00:11:22:33:44:55 ",
      "00:11:22:33:44:55\n",
      "0x:11:22:33:44:55",
      "+0:11:22:33:44:55",
      "-1:11:22:33:44:55",
      "00:11:22:33:44:5 ",
      "::::::::::::::::: ",
      ":::::::::::::::::",
      "-----------------",
      "\xC3\xA9:11:22:33:44:55",
      "00:11:22:33:44:\xFF\xFF",
      std::string("00:11:22:33:44:5\0", 17),
      std::string("00:11:22:33:44:55\0", 18),
      std::string(100000, 'a'),
  };
  for (const std::string& text : texts) {
    SCOPED_TRACE(text);
    try {
      const MACAddress address(text);
      ADD_FAILURE() << "taken as " << address.ToString();
    } catch (const std::invalid_argument& error) {
      EXPECT_EQ(std::string(error.what()), std::string(("Invalid MAC address: " + text).c_str()));
    }
  }
}

TEST(MACAddress, RefusesTheNeighboursOfTheHexadecimalDigitsAtEveryPlace) {
  const std::string good = "00:11:22:33:44:55";
  for (std::size_t place = 0; place < good.size(); ++place) {
    if (good[place] == ':') {
      continue;
    }
    for (const char c : {'/', ':', '@', 'G', '`', 'g', '-', '\0'}) {
      std::string text = good;
      text[place] = c;
      SCOPED_TRACE(text);
      EXPECT_THROW(MACAddress{text}, std::invalid_argument);
    }
  }
}

TEST(MACAddress, IsAllZeroWhenMadeFromNothing) { EXPECT_EQ(MACAddress().ToString(), "00:00:00:00:00:00"); }

TEST(MACAddress, IsEqualToTheSameAddressInAnotherForm) {
  EXPECT_EQ(MACAddress("AA-BB-CC-DD-EE-0F"), MACAddress("aa:bb:cc:dd:ee:0f"));
  EXPECT_EQ(MACAddress(), MACAddress("00:00:00:00:00:00"));
  EXPECT_NE(MACAddress("aa:bb:cc:dd:ee:0f"), MACAddress("aa:bb:cc:dd:ee:f0"));
}

TEST(MACAddress, IsOrderedByItsGroupsFromTheLeft) {
  const std::vector<std::string> ascending = {"00:00:00:00:00:00", "00:00:00:00:00:01", "00:00:00:00:00:0A",
                                              "00-00-00-00-01-00", "09:ff:ff:ff:ff:ff", "0A-00-00-00-00-00",
                                              "A0:00:00:00:00:00", "ff:ff:ff:ff:ff:ff"};
  for (std::size_t i = 1; i < ascending.size(); ++i) {
    EXPECT_LT(MACAddress(ascending[i - 1]), MACAddress(ascending[i]));
  }
}

TEST(MACAddress, KeepsItsValueWhenCopiedAndMoved) {
  const MACAddress original("00:11:22:33:44:55");
  MACAddress copy(original);
  EXPECT_EQ(copy, original);
  const MACAddress moved(std::move(copy));
  EXPECT_EQ(moved, original);
  MACAddress assigned;
  assigned = original;
  EXPECT_EQ(assigned, original);
  MACAddress moveAssigned;
  moveAssigned = std::move(assigned);
  EXPECT_EQ(moveAssigned, original);
}

}  // namespace

}  // namespace TALO::Wifi::Util
