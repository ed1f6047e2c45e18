#include "client/json_serializer.h"
#include "support/styled_json.h"

#include <gtest/gtest.h>
#include <json/value.h>

// Stations, backhaul, MAC filters and devices as JSON.

namespace TALO::Wifi::Daemon {

namespace {

using Util::MACAddress;
using Util::RadioFrequency;
using Util::ScanType;
using Util::SecurityMode;

TEST(StationSettingJson, HoldsEveryMember) {
  StationSetting setting;
  setting.enable = true;
  setting.essid = "Office";
  setting.user = "kim";
  setting.password = "correct-horse";
  setting.bssid = MACAddress("00:11:22:33:44:55");
  setting.securityMode = SecurityMode::EnterpriseWPA2;
  setting.radio = RadioFrequency::Band5GHz;
  EXPECT_EQ(JsonSerializer::Serialize<StationSetting>(setting).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:11:22:33:44:55',",
                "\t'enable' : true,",
                "\t'essid' : 'Office',",
                "\t'essidHex' : '4f6666696365',",
                "\t'password' : 'correct-horse',",
                "\t'radio' : 'Band5GHz',",
                "\t'securityMode' : 'EnterpriseWPA2',",
                "\t'user' : 'kim',",
                "\t'userHex' : '6b696d'",
                "}",
            }));
}

TEST(StationSettingJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<StationSetting>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:00:00:00:00:00',",
                "\t'enable' : false,",
                "\t'essid' : '',",
                "\t'essidHex' : '',",
                "\t'password' : '',",
                "\t'radio' : 'Error',",
                "\t'securityMode' : 'Error',",
                "\t'user' : '',",
                "\t'userHex' : ''",
                "}",
            }));
}

TEST(StationStatusJson, HoldsEveryMember) {
  StationStatus status;
  status.radio = RadioFrequency::Band5GHz_2;
  status.interface = "wl2";
  status.connected = true;
  status.state = "connected";
  status.reason = "none";
  status.essid = "Office";
  status.bssid = MACAddress("00:11:22:33:44:55");
  status.channel = 100;
  status.signal = -61;
  status.transmitRate = 866;
  status.connectedTime = 3600;
  EXPECT_EQ(JsonSerializer::Serialize<StationStatus>(status).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:11:22:33:44:55',",
                "\t'channel' : 100,",
                "\t'connected' : true,",
                "\t'connectedTime' : 3600,",
                "\t'essid' : 'Office',",
                "\t'essidHex' : '4f6666696365',",
                "\t'interface' : 'wl2',",
                "\t'radio' : 'Band5GHz_2',",
                "\t'reason' : 'none',",
                "\t'signal' : -61,",
                "\t'state' : 'connected',",
                "\t'transmitRate' : 866",
                "}",
            }));
}

TEST(StationStatusJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<StationStatus>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'bssid' : '00:00:00:00:00:00',",
                "\t'channel' : 0,",
                "\t'connected' : false,",
                "\t'connectedTime' : 0,",
                "\t'essid' : '',",
                "\t'essidHex' : '',",
                "\t'interface' : '',",
                "\t'radio' : 'Error',",
                "\t'reason' : '',",
                "\t'signal' : 0,",
                "\t'state' : '',",
                "\t'transmitRate' : 0",
                "}",
            }));
}

TEST(ScanResultJson, HoldsEveryMember) {
  ScanResult result;
  result.radio = RadioFrequency::Band2_4GHz;
  result.ssid = "Caf\xC3\xA9";
  result.bssid = MACAddress("AA:BB:CC:DD:EE:FF");
  result.channel = 6;
  result.channelWidth = 40;
  result.signal = -80;
  result.securityMode = SecurityMode::OWE;
  result.wps = true;
  result.age = 12;
  EXPECT_EQ(JsonSerializer::Serialize<ScanResult>(result).toStyledString(),
            StyledJson({
                "{",
                "\t'age' : 12,",
                "\t'bssid' : 'aa:bb:cc:dd:ee:ff',",
                "\t'channel' : 6,",
                "\t'channelWidth' : 40,",
                "\t'radio' : 'Band2_4GHz',",
                "\t'securityMode' : 'OWE',",
                "\t'signal' : -80,",
                "\t'ssid' : 'Caf\\u00e9',",
                "\t'ssidHex' : '436166c3a9',",
                "\t'wps' : true",
                "}",
            }));
}

TEST(ScanResultJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<ScanResult>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'age' : 0,",
                "\t'bssid' : '00:00:00:00:00:00',",
                "\t'channel' : 0,",
                "\t'channelWidth' : 0,",
                "\t'radio' : 'Error',",
                "\t'securityMode' : 'Error',",
                "\t'signal' : 0,",
                "\t'ssid' : '',",
                "\t'ssidHex' : '',",
                "\t'wps' : false",
                "}",
            }));
}

/// The backhaul access point and the backhaul station are set up alike.
template <typename T>
class BackhaulSettingJson : public testing::Test {};
using BackhaulSettings = testing::Types<BackhaulSetting, BackhaulSTASetting>;
TYPED_TEST_SUITE(BackhaulSettingJson, BackhaulSettings);

TYPED_TEST(BackhaulSettingJson, HoldsEveryMember) {
  TypeParam setting;
  setting.enable = true;
  setting.ssid = "mesh-7";
  setting.password = "correct-horse";
  setting.radios = {RadioFrequency::Band5GHz_2, RadioFrequency::Band2_4GHz};
  EXPECT_EQ(JsonSerializer::Serialize<TypeParam>(setting).toStyledString(),
            StyledJson({
                "{",
                "\t'enable' : true,",
                "\t'password' : 'correct-horse',",
                "\t'radios' : ",
                "\t[",
                "\t\t'Band2_4GHz',",
                "\t\t'Band5GHz_2'",
                "\t],",
                "\t'ssid' : 'mesh-7',",
                "\t'ssidHex' : '6d6573682d37'",
                "}",
            }));
}

TYPED_TEST(BackhaulSettingJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<TypeParam>({}).toStyledString(), StyledJson({
                                                                           "{",
                                                                           "\t'enable' : false,",
                                                                           "\t'password' : '',",
                                                                           "\t'radios' : [],",
                                                                           "\t'ssid' : '',",
                                                                           "\t'ssidHex' : ''",
                                                                           "}",
                                                                       }));
}

TEST(BackhaulSTAStatusJson, HoldsEveryMember) {
  BackhaulSTAStatus status;
  status.radio = RadioFrequency::Band5GHz;
  status.interface = "wl1";
  status.connected = true;
  status.scanType = ScanType::BestAP;
  status.parent = MACAddress("00:11:22:33:44:55");
  status.channel = 44;
  status.signal = -50;
  status.connectedTime = 60;
  EXPECT_EQ(JsonSerializer::Serialize<BackhaulSTAStatus>(status).toStyledString(),
            StyledJson({
                "{",
                "\t'channel' : 44,",
                "\t'connected' : true,",
                "\t'connectedTime' : 60,",
                "\t'interface' : 'wl1',",
                "\t'parent' : '00:11:22:33:44:55',",
                "\t'radio' : 'Band5GHz',",
                "\t'scanType' : 'BestAP',",
                "\t'signal' : -50",
                "}",
            }));
}

TEST(BackhaulSTAStatusJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<BackhaulSTAStatus>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'channel' : 0,",
                "\t'connected' : false,",
                "\t'connectedTime' : 0,",
                "\t'interface' : '',",
                "\t'parent' : '00:00:00:00:00:00',",
                "\t'radio' : 'Error',",
                "\t'scanType' : 'Default',",
                "\t'signal' : 0",
                "}",
            }));
}

TEST(MACFilterGlobalJson, HoldsEveryMember) {
  MACFilterGlobal global;
  global.devices = {{"TV", MACAddress("00:11:22:33:44:55")}, {"", MACAddress()}};
  global.enablePreventBroadcast = true;
  global.maximumBroadcast = 100;
  EXPECT_EQ(JsonSerializer::Serialize<MACFilterGlobal>(global).toStyledString(),
            StyledJson({
                "{",
                "\t'devices' : ",
                "\t[",
                "\t\t{",
                "\t\t\t'address' : '00:11:22:33:44:55',",
                "\t\t\t'name' : 'TV'",
                "\t\t},",
                "\t\t{",
                "\t\t\t'address' : '00:00:00:00:00:00',",
                "\t\t\t'name' : ''",
                "\t\t}",
                "\t],",
                "\t'enablePreventBroadcast' : true,",
                "\t'maximumBroadcast' : 100",
                "}",
            }));
}

TEST(MACFilterGlobalJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<MACFilterGlobal>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'devices' : [],",
                "\t'enablePreventBroadcast' : false,",
                "\t'maximumBroadcast' : 0",
                "}",
            }));
}

TEST(MACFilterProfileJson, HoldsEveryMember) {
  MACFilterProfile profile;
  profile.id = 3;
  profile.name = "Children";
  profile.action = MACFilterAction::Deny;
  profile.devices = {{"Tablet", MACAddress("00-11-22-33-44-55")}};
  EXPECT_EQ(JsonSerializer::Serialize<MACFilterProfile>(profile).toStyledString(),
            StyledJson({
                "{",
                "\t'action' : 'Deny',",
                "\t'devices' : ",
                "\t[",
                "\t\t{",
                "\t\t\t'address' : '00:11:22:33:44:55',",
                "\t\t\t'name' : 'Tablet'",
                "\t\t}",
                "\t],",
                "\t'id' : 3,",
                "\t'name' : 'Children'",
                "}",
            }));
}

TEST(MACFilterProfileJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<MACFilterProfile>({}).toStyledString(), StyledJson({
                                                                                  "{",
                                                                                  "\t'action' : 'Error',",
                                                                                  "\t'devices' : [],",
                                                                                  "\t'id' : -1,",
                                                                                  "\t'name' : ''",
                                                                                  "}",
                                                                              }));
}

TEST(DeviceInfoJson, HoldsEveryMember) {
  DeviceInfo device;
  device.address = MACAddress("00:11:22:33:44:55");
  device.name = "kims-phone";
  device.ipAddress = "192.168.1.20";
  device.networkId = 2;
  device.ssid = "Home";
  device.radio = RadioFrequency::Band5GHz;
  device.interface = "wl1.1";
  device.signal = -45;
  device.transmitRate = 1200;
  device.receiveRate = 960;
  device.connectedTime = 86400;
  EXPECT_EQ(JsonSerializer::Serialize<DeviceInfo>(device).toStyledString(),
            StyledJson({
                "{",
                "\t'address' : '00:11:22:33:44:55',",
                "\t'connectedTime' : 86400,",
                "\t'interface' : 'wl1.1',",
                "\t'ipAddress' : '192.168.1.20',",
                "\t'name' : 'kims-phone',",
                "\t'networkId' : 2,",
                "\t'radio' : 'Band5GHz',",
                "\t'receiveRate' : 960,",
                "\t'signal' : -45,",
                "\t'ssid' : 'Home',",
                "\t'ssidHex' : '486f6d65',",
                "\t'transmitRate' : 1200",
                "}",
            }));
}

TEST(DeviceInfoJson, LeavesOutNothingThatIsEmpty) {
  EXPECT_EQ(JsonSerializer::Serialize<DeviceInfo>({}).toStyledString(),
            StyledJson({
                "{",
                "\t'address' : '00:00:00:00:00:00',",
                "\t'connectedTime' : 0,",
                "\t'interface' : '',",
                "\t'ipAddress' : '',",
                "\t'name' : '',",
                "\t'networkId' : 0,",
                "\t'radio' : 'Error',",
                "\t'receiveRate' : 0,",
                "\t'signal' : 0,",
                "\t'ssid' : '',",
                "\t'ssidHex' : '',",
                "\t'transmitRate' : 0",
                "}",
            }));
}

}  // namespace

}  // namespace TALO::Wifi::Daemon
