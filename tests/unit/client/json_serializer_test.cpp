#include "client/json_serializer.h"

#include "support/styled_json.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <concepts>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifi::Daemon {

namespace {

static_assert(IMPL::IsContainer<std::vector<NetworkSetting>>::value);
static_assert(IMPL::IsContainer<std::vector<std::string>>::value);
static_assert(IMPL::IsContainer<std::set<Util::RadioFrequency>>::value);
static_assert(IMPL::IsContainer<std::map<int, std::string>>::value);
static_assert(!IMPL::IsContainer<NetworkSetting>::value);
static_assert(!IMPL::IsContainer<MACFilterGlobal>::value);
static_assert(!IMPL::IsContainer<std::string>::value);
static_assert(!IMPL::IsContainer<int>::value);

template <typename T>
concept Serialized = requires(const T& value) {
  { JsonSerializer::Serialize<T>(value) } -> std::same_as<Json::Value>;
};

// Records only; whoever has a container of them makes the array.
static_assert(Serialized<NetworkSetting> && Serialized<RadioSetting> && Serialized<RadioStatus>);
static_assert(Serialized<RadioStatusSimple> && Serialized<StationSetting> && Serialized<StationStatus>);
static_assert(Serialized<ScanResult> && Serialized<BackhaulSetting> && Serialized<BackhaulSTASetting>);
static_assert(Serialized<BackhaulSTAStatus> && Serialized<MACFilterGlobal> && Serialized<MACFilterProfile>);
static_assert(Serialized<DeviceInfo>);
static_assert(!Serialized<std::vector<NetworkSetting>> && !Serialized<std::set<int>>);
static_assert(!Serialized<std::map<int, std::string>>);

Json::Value JsonOf(const StationSetting& setting) { return JsonSerializer::Serialize(setting); }

TEST(JsonSerializer, NamesEveryEnumerationThatHasAName) {
  StationSetting setting;
  setting.radio = Util::RadioFrequency::Band5GHz_2;
  setting.securityMode = Util::SecurityMode::PersonalWPA2_3Mixed;
  EXPECT_EQ(JsonOf(setting)["radio"], Json::Value("Band5GHz_2"));
  EXPECT_EQ(JsonOf(setting)["securityMode"], Json::Value("PersonalWPA2_3Mixed"));
}

TEST(JsonSerializer, NamesTheSentinels) {
  EXPECT_EQ(JsonOf({})["radio"], Json::Value("Error"));
  EXPECT_EQ(JsonOf({})["securityMode"], Json::Value("Error"));
  EXPECT_EQ(JsonSerializer::Serialize(RadioSetting())["country"], Json::Value("MaxCountryCode"));
}

TEST(JsonSerializer, GivesTheNumberOfAValueWithoutAName) {
  StationSetting setting;
  setting.radio = static_cast<Util::RadioFrequency>(7);
  setting.securityMode = static_cast<Util::SecurityMode>(-2);
  EXPECT_EQ(JsonOf(setting)["radio"], Json::Value(7));
  EXPECT_EQ(JsonOf(setting)["securityMode"], Json::Value(-2));
  RadioSetting radio;
  radio.country = static_cast<CountryCode>(65535);
  EXPECT_EQ(JsonSerializer::Serialize(radio)["country"], Json::Value(65535));
}

TEST(JsonSerializer, GivesTheNumberOfAKeyWithoutAName) {
  CountryCodeCapability capability;
  capability.codes = {{static_cast<CountryCode>(198), "1-11"}, {CountryCode::ZW, "1-13"}};
  EXPECT_EQ(JsonSerializer::Serialize(capability).toStyledString(),
            StyledJson({"{", "\t'codes' : ", "\t{", "\t\t'198' : '1-11',", "\t\t'ZW' : '1-13'", "\t},",
                        "\t'immutable' : false", "}"}));
}

TEST(JsonSerializer, GivesNumbersOfTheWholeRange) {
  RadioSetting radio;
  radio.channel = -2147483647 - 1;
  radio.channelWidth = 2147483647;
  EXPECT_EQ(JsonSerializer::Serialize(radio)["channel"].toStyledString(), "-2147483648\n");
  EXPECT_EQ(JsonSerializer::Serialize(radio)["channelWidth"].toStyledString(), "2147483647\n");
}

TEST(JsonSerializer, GivesAMACAddressInItsTextForm) {
  StationSetting setting;
  EXPECT_EQ(JsonOf(setting)["bssid"], Json::Value("00:00:00:00:00:00"));
  setting.bssid = Util::MACAddress("AA-BB-CC-DD-EE-0F");
  EXPECT_EQ(JsonOf(setting)["bssid"], Json::Value("aa:bb:cc:dd:ee:0f"));
}

TEST(JsonSerializer, EscapesWhatTextMayHold) {
  StationSetting setting;
  setting.password = "\"\\/\b\f\n\r\t\x01 Caf\xC3\xA9 \xE2\x98\x95 \xF0\x9F\x98\x80";
  EXPECT_EQ(JsonOf(setting)["password"].toStyledString(),
            R"("\"\\/\b\f\n\r\t\u0001 Caf\u00e9 \u2615 \ud83d\ude00")"
            "\n");
}

TEST(JsonSerializer, KeepsAZeroByteInText) {
  StationSetting setting;
  setting.essid = std::string("a\0b", 3);
  EXPECT_EQ(JsonOf(setting)["essid"].toStyledString(), "\"a\\u0000b\"\n");
  EXPECT_EQ(JsonOf(setting)["essidHex"].toStyledString(), "\"610062\"\n");
}

TEST(JsonSerializer, ReplacesBytesThatAreNotUTF8AndKeepsThemExactlyBesides) {
  StationSetting setting;
  setting.essid = "Caf\xE9\xFF";
  setting.user = "\x80";
  setting.password = "\xFE";
  const Json::Value json = JsonOf(setting);
  EXPECT_EQ(json["essid"].toStyledString(), "\"Caf\\ufffd\\ufffd\"\n");
  EXPECT_EQ(json["essidHex"].toStyledString(), "\"436166e9ff\"\n");
  EXPECT_EQ(json["user"].toStyledString(), "\"\\ufffd\"\n");
  EXPECT_EQ(json["userHex"].toStyledString(), "\"80\"\n");
  EXPECT_EQ(json["password"].toStyledString(), "\"\\ufffd\"\n");
  EXPECT_FALSE(json.isMember("passwordHex"));
}

TEST(JsonSerializer, OrdersASetAsTheSetIsOrdered) {
  BackhaulSetting setting;
  setting.radios = {Util::RadioFrequency::Band5GHz_1, Util::RadioFrequency::Error,
                    Util::RadioFrequency::Band2_4GHz};
  EXPECT_EQ(JsonSerializer::Serialize(setting)["radios"].toStyledString(),
            StyledJson({"[", "\t'Error',", "\t'Band2_4GHz',", "\t'Band5GHz_1'", "]"}));
}

TEST(JsonSerializer, KeepsTheOrderOfAVector) {
  RadioStatusSimple status;
  status.interfaces = {"wl1.2", "wl0", "wl1.10", "wl0"};
  EXPECT_EQ(JsonSerializer::Serialize(status)["interfaces"].toStyledString(),
            StyledJson({"[", "\t'wl1.2',", "\t'wl0',", "\t'wl1.10',", "\t'wl0'", "]"}));
}

}  // namespace

}  // namespace TALO::Wifi::Daemon
