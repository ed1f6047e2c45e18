#include "client/json_serializer.h"
#include "support/styled_json.h"

#include <gtest/gtest.h>
#include <json/value.h>

// Networks, radios and countries as JSON.

namespace TALO::Wifi::Daemon {

namespace {

using Util::MACAddress;
using Util::RadioFrequency;
using Util::SecurityMode;

TEST(NetworkSettingJson, HoldsEveryMember) {
  NetworkRadioSetting radio;
  radio.radio = RadioFrequency::Band2_4GHz;
  radio.enable = true;
  radio.up = true;
  radio.interface = "wl0.1";
  radio.radioInterface = "wl0";
  radio.bssid = "00:11:22:33:44:55";
  radio.ssid = "Home";
  radio.passphrase = "rotated-pass";
  radio.passphraseChangedAt = "2026-02-01T00:00:00Z";
  radio.keyManagement = {"WPA-PSK", "SAE"};
  NetworkRadioSetting otherRadio;
  otherRadio.radio = RadioFrequency::Band5GHz;
  NetworkSetting network;
  network.id = 7;
  network.networkName = "Living room";
  network.ssid = "Home";
  network.hidden = true;
  network.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  network.passphrase = "correct-horse";
  network.passphraseChangedAt = "2026-01-31T12:00:00Z";
  network.activated = true;
  network.context = "router";
  network.bridge = "br0";
  network.macFilterProfileId = 3;
  network.macFilterProfileName = "Children";
  network.interfaces = {"wl0.1", "wl1.1"};
  network.up = true;
  network.radios = {radio, otherRadio};
  EXPECT_EQ(JsonSerializer::Serialize<NetworkSetting>(network).toStyledString(),
            StyledJson({
                "{",
                "\t'activated' : true,",
                "\t'bridge' : 'br0',",
                "\t'context' : 'router',",
                "\t'hidden' : true,",
                "\t'id' : 7,",
                "\t'interfaces' : ",
                "\t[",
                "\t\t'wl0.1',",
                "\t\t'wl1.1'",
                "\t],",
                "\t'macFilterProfileId' : 3,",
                "\t'macFilterProfileName' : 'Children',",
                "\t'networkName' : 'Living room',",
                "\t'networkNameHex' : '4c6976696e6720726f6f6d',",
                "\t'passphrase' : 'correct-horse',",
                "\t'passphraseChangedAt' : '2026-01-31T12:00:00Z',",
                "\t'radios' : ",
                "\t[",
                "\t\t{",
                "\t\t\t'bssid' : '00:11:22:33:44:55',",
                "\t\t\t'enable' : true,",
                "\t\t\t'interface' : 'wl0.1',",
                "\t\t\t'keyManagement' : ",
                "\t\t\t[",
                "\t\t\t\t'WPA-PSK',",
                "\t\t\t\t'SAE'",
                "\t\t\t],",
                "\t\t\t'passphrase' : 'rotated-pass',",
                "\t\t\t'passphraseChangedAt' : '2026-02-01T00:00:00Z',",
                "\t\t\t'radio' : 'Band2_4GHz',",
                "\t\t\t'radioInterface' : 'wl0',",
                "\t\t\t'ssid' : 'Home',",
                "\t\t\t'ssidHex' : '486f6d65',",
                "\t\t\t'up' : true",
                "\t\t},",
                "\t\t{",
                "\t\t\t'bssid' : '',",
                "\t\t\t'enable' : false,",
                "\t\t\t'interface' : '',",
                "\t\t\t'keyManagement' : [],",
                "\t\t\t'passphrase' : '',",
                "\t\t\t'passphraseChangedAt' : '',",
                "\t\t\t'radio' : 'Band5GHz',",
                "\t\t\t'radioInterface' : '',",
                "\t\t\t'ssid' : '',",
                "\t\t\t'ssidHex' : '',",
                "\t\t\t'up' : false",
                "\t\t}",
                "\t],",
                "\t'securityMode' : 'PersonalWPA2_3Mixed',",
                "\t'ssid' : 'Home',",
                "\t'ssidHex' : '486f6d65',",
                "\t'up' : true",
                "}",
            }));
}

TEST(NetworkSettingJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<NetworkSetting>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'activated' : false,",
                "\t'bridge' : '',",
                "\t'context' : '',",
                "\t'hidden' : false,",
                "\t'id' : 0,",
                "\t'interfaces' : [],",
                "\t'macFilterProfileId' : -1,",
                "\t'macFilterProfileName' : '',",
                "\t'networkName' : '',",
                "\t'networkNameHex' : '',",
                "\t'passphrase' : '',",
                "\t'passphraseChangedAt' : '',",
                "\t'radios' : [],",
                "\t'securityMode' : 'Error',",
                "\t'ssid' : '',",
                "\t'ssidHex' : '',",
                "\t'up' : false",
                "}",
            }));
}

TEST(RadioSettingJson, HoldsEveryMember) {
  RadioSetting radio;
  radio.radio = RadioFrequency::Band5GHz_1;
  radio.enable = true;
  radio.channel = 36;
  radio.channelWidth = 80;
  radio.transmitPower = 75;
  radio.wifiGeneration = 6;
  radio.country = CountryCode::DE;
  EXPECT_EQ(JsonSerializer::Serialize<RadioSetting>(radio).toStyledString(), StyledJson({
                                                                                 "{",
                                                                                 "\t'channel' : 36,",
                                                                                 "\t'channelWidth' : 80,",
                                                                                 "\t'country' : 'DE',",
                                                                                 "\t'enable' : true,",
                                                                                 "\t'radio' : 'Band5GHz_1',",
                                                                                 "\t'transmitPower' : 75,",
                                                                                 "\t'wifiGeneration' : 6",
                                                                                 "}",
                                                                             }));
}

TEST(RadioSettingJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioSetting>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'channel' : 0,",
                "\t'channelWidth' : 0,",
                "\t'country' : 'MaxCountryCode',",
                "\t'enable' : false,",
                "\t'radio' : 'Error',",
                "\t'transmitPower' : 0,",
                "\t'wifiGeneration' : 0",
                "}",
            }));
}

TEST(RadioStatusJson, HoldsEveryMember) {
  RadioStatus radio;
  radio.radio = RadioFrequency::Band2_4GHz;
  radio.up = true;
  radio.channel = 11;
  radio.channelWidth = 20;
  radio.utilisation = 42;
  radio.stations = 5;
  radio.bssid = MACAddress("00:11:22:33:44:55");
  radio.interfaces = {"wl0", "wl0.1"};
  EXPECT_EQ(JsonSerializer::Serialize<RadioStatus>(radio).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:11:22:33:44:55',",
                "\t'channel' : 11,",
                "\t'channelWidth' : 20,",
                "\t'interfaces' : ",
                "\t[",
                "\t\t'wl0',",
                "\t\t'wl0.1'",
                "\t],",
                "\t'radio' : 'Band2_4GHz',",
                "\t'stations' : 5,",
                "\t'up' : true,",
                "\t'utilisation' : 42",
                "}",
            }));
}

TEST(RadioStatusJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioStatus>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:00:00:00:00:00',",
                "\t'channel' : 0,",
                "\t'channelWidth' : 0,",
                "\t'interfaces' : [],",
                "\t'radio' : 'Error',",
                "\t'stations' : 0,",
                "\t'up' : false,",
                "\t'utilisation' : 0",
                "}",
            }));
}

TEST(RadioStatusSimpleJson, HoldsEveryMember) {
  RadioStatusSimple radio;
  radio.radio = RadioFrequency::Band5GHz;
  radio.up = true;
  radio.channel = 149;
  radio.bssid = MACAddress("00:11:22:33:44:56");
  radio.interfaces = {"wl1"};
  EXPECT_EQ(JsonSerializer::Serialize<RadioStatusSimple>(radio).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:11:22:33:44:56',",
                "\t'channel' : 149,",
                "\t'interfaces' : ",
                "\t[",
                "\t\t'wl1'",
                "\t],",
                "\t'radio' : 'Band5GHz',",
                "\t'up' : true",
                "}",
            }));
}

TEST(RadioStatusSimpleJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioStatusSimple>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:00:00:00:00:00',",
                "\t'channel' : 0,",
                "\t'interfaces' : [],",
                "\t'radio' : 'Error',",
                "\t'up' : false",
                "}",
            }));
}

TEST(RadioIfStatusJson, HoldsEveryMember) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioIfStatus>({RadioFrequency::Band5GHz, "wl1", {"wl1.1", "wl1.2"}})
                .toStyledString(),
            StyledJson({
                "{",
                "\t'enabledInterfaces' : ",
                "\t[",
                "\t\t'wl1.1',",
                "\t\t'wl1.2'",
                "\t],",
                "\t'radio' : 'Band5GHz',",
                "\t'radioInterface' : 'wl1'",
                "}",
            }));
}

TEST(RadioIfStatusJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioIfStatus>({}).toStyledString(), StyledJson({
                                                                               "{",
                                                                               "\t'enabledInterfaces' : [],",
                                                                               "\t'radio' : 'Error',",
                                                                               "\t'radioInterface' : ''",
                                                                               "}",
                                                                           }));
}

TEST(RadioConversionInfoJson, HoldsEveryMember) {
  RadioConversionInfo info;
  info.conversionMap = {{RadioFrequency::Band5GHz, RadioFrequency::Band5GHz_1},
                        {RadioFrequency::Band2_4GHz, RadioFrequency::Band2_4GHz}};
  info.backhaulSwapped = true;
  EXPECT_EQ(JsonSerializer::Serialize<RadioConversionInfo>(info).toStyledString(),
            StyledJson({
                "{",
                "\t'backhaulSwapped' : true,",
                "\t'conversionMap' : ",
                "\t{",
                "\t\t'Band2_4GHz' : 'Band2_4GHz',",
                "\t\t'Band5GHz' : 'Band5GHz_1'",
                "\t}",
                "}",
            }));
}

TEST(RadioConversionInfoJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<RadioConversionInfo>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'backhaulSwapped' : false,",
                "\t'conversionMap' : {}",
                "}",
            }));
}

TEST(CountryCodeCapabilityJson, HoldsEveryMember) {
  EXPECT_EQ(JsonSerializer::Serialize<CountryCodeCapability>(
                {true, {{CountryCode::US, "1-11,36-48"}, {CountryCode::DE, "1-13,36-64"}}})
                .toStyledString(),
            StyledJson({
                "{",
                "\t'codes' : ",
                "\t{",
                "\t\t'DE' : '1-13,36-64',",
                "\t\t'US' : '1-11,36-48'",
                "\t},",
                "\t'immutable' : true",
                "}",
            }));
}

TEST(CountryCodeCapabilityJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<CountryCodeCapability>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'codes' : {},",
                "\t'immutable' : false",
                "}",
            }));
}

}  // namespace

}  // namespace TALO::Wifi::Daemon
