#include "daemon/radio/linux/control/supplicant_files.h"

#include "values/enum_names.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

const std::string kKey = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789ABCDEF";

StationPlan Uplink() {
  StationPlan station;
  station.interface = "wlan0sta";
  station.ssid = "Uplink";
  station.passphrase = "correct-horse";
  station.securityMode = SecurityMode::PersonalWPA2;
  return station;
}

const std::string kCommon =
    "p2p_disabled=1\n"
    "sae_pwe=2\n";
const std::string kBeginning = kCommon +
                               "network={\n"
                               "ssid=55706c696e6b\n"
                               "scan_ssid=1\n";
const std::string kWPA2 =
    "key_mgmt=WPA-PSK WPA-PSK-SHA256\n"
    "proto=RSN\n"
    "pairwise=CCMP\n"
    "ieee80211w=1\n";
const std::string kPassphrase = "psk=\"correct-horse\"\n";

TEST(ListenerFile, HasNoNetwork) { EXPECT_EQ(ListenerFile(), kCommon); }

TEST(StationFile, HasALineSetForEachSecurityMode) {
  const std::string identity =
      "eap=PEAP\n"
      "identity=616e6e61\n"
      "password=636f72726563742d686f727365\n"
      "phase2=\"auth=MSCHAPV2\"\n";
  const std::vector<std::pair<SecurityMode, std::string>> rows = {
      {SecurityMode::Disabled, "key_mgmt=NONE\n"},
      {SecurityMode::OWE, "key_mgmt=OWE\nproto=RSN\npairwise=CCMP\nieee80211w=2\n"},
      {SecurityMode::PersonalWPA, "key_mgmt=WPA-PSK\nproto=WPA\npairwise=CCMP TKIP\n" + kPassphrase},
      {SecurityMode::PersonalWPA2, kWPA2 + kPassphrase},
      {SecurityMode::PersonalWPA3, "key_mgmt=SAE\nproto=RSN\npairwise=CCMP\nieee80211w=2\n" + kPassphrase},
      {SecurityMode::PersonalWPAMixed,
       "key_mgmt=WPA-PSK WPA-PSK-SHA256\nproto=RSN WPA\npairwise=CCMP TKIP\nieee80211w=1\n" + kPassphrase},
      {SecurityMode::PersonalWPA2_3Mixed,
       "key_mgmt=SAE WPA-PSK WPA-PSK-SHA256\nproto=RSN\npairwise=CCMP\nieee80211w=1\n" + kPassphrase},
      {SecurityMode::EnterpriseWPA, "key_mgmt=WPA-EAP\nproto=WPA\npairwise=CCMP TKIP\n" + identity},
      {SecurityMode::EnterpriseWPA2,
       "key_mgmt=WPA-EAP WPA-EAP-SHA256\nproto=RSN\npairwise=CCMP\nieee80211w=1\n" + identity},
      {SecurityMode::EnterpriseWPA3,
       "key_mgmt=WPA-EAP-SHA256\nproto=RSN\npairwise=CCMP\nieee80211w=2\n" + identity},
      {SecurityMode::EnterpriseWPAMixed,
       "key_mgmt=WPA-EAP WPA-EAP-SHA256\nproto=RSN WPA\npairwise=CCMP TKIP\nieee80211w=1\n" + identity},
  };
  for (const auto& [mode, lines] : rows) {
    StationPlan station = Uplink();
    station.securityMode = mode;
    station.user = "anna";
    EXPECT_TRUE(CanJoin(mode));
    EXPECT_EQ(StationFile(station), kBeginning + lines + "}\n") << Wifi::Util::EnumNameOf(mode);
  }
}

TEST(StationFile, IsRefusedForAModeThatCannotBeJoined) {
  for (const SecurityMode mode : {SecurityMode::WEP, SecurityMode::Error}) {
    StationPlan station = Uplink();
    station.securityMode = mode;
    EXPECT_FALSE(CanJoin(mode));
    EXPECT_THROW(StationFile(station), std::invalid_argument);
  }
}

TEST(StationFile, NamesTheOnlyAccessPoint) {
  StationPlan station = Uplink();
  station.bssid = Wifi::Util::MACAddress("0a:00:00:00:00:01");
  EXPECT_EQ(StationFile(station), kBeginning + "bssid=0a:00:00:00:00:01\n" + kWPA2 + kPassphrase + "}\n");
}

TEST(StationFile, TakesAKeyAsItIsAndForWPA3AsAPassword) {
  StationPlan station = Uplink();
  station.passphrase = kKey;
  EXPECT_EQ(StationFile(station), kBeginning + kWPA2 + "psk=" + kKey + "\n}\n");
  station.securityMode = SecurityMode::PersonalWPA3;
  EXPECT_EQ(StationFile(station), kBeginning +
                                      "key_mgmt=SAE\nproto=RSN\npairwise=CCMP\nieee80211w=2\n"
                                      "sae_password=\"" +
                                      kKey + "\"\n}\n");
  station.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  EXPECT_EQ(StationFile(station), kBeginning +
                                      "key_mgmt=SAE WPA-PSK WPA-PSK-SHA256\nproto=RSN\npairwise=CCMP\n"
                                      "ieee80211w=1\npsk=" +
                                      kKey + "\nsae_password=\"" + kKey + "\"\n}\n");
}

TEST(StationFile, HoldsAnyBytesAndNothingElseOfThem) {
  StationPlan station = Uplink();
  station.ssid = std::string("a\n}\0\"\xff", 6);
  station.passphrase = " \"quoted\" # \\n}";
  EXPECT_EQ(StationFile(station), kCommon + "network={\nssid=610a7d0022ff\nscan_ssid=1\n" + kWPA2 +
                                      "psk=\" \"quoted\" # \\n}\"\n}\n");

  station = Uplink();
  station.securityMode = SecurityMode::EnterpriseWPA2;
  station.user = "an\n\"na";
  station.passphrase = std::string("p\0\"#", 4);
  EXPECT_EQ(StationFile(station),
            kBeginning +
                "key_mgmt=WPA-EAP WPA-EAP-SHA256\nproto=RSN\npairwise=CCMP\nieee80211w=1\n"
                "eap=PEAP\nidentity=616e0a226e61\npassword=70002223\nphase2=\"auth=MSCHAPV2\"\n}\n");
}

TEST(StationFile, TakesTheLongestUserAndPassword) {
  StationPlan station = Uplink();
  station.securityMode = SecurityMode::EnterpriseWPA2;
  station.user = std::string(253, 'u');
  station.passphrase = std::string(253, 'p');
  EXPECT_NO_THROW(StationFile(station));
}

TEST(BackhaulStationFile, LooksForAParentAsItsScanTypeSays) {
  BackhaulStationPlan plan;
  plan.interface = "wlan0bhs";
  plan.ssid = "Uplink";
  plan.passphrase = "correct-horse";
  plan.scanType = ScanType::Default;
  EXPECT_EQ(BackhaulStationFile(plan), kBeginning + kWPA2 + kPassphrase + "}\n");
  plan.scanType = ScanType::BestAP;
  EXPECT_EQ(BackhaulStationFile(plan),
            kBeginning + kWPA2 + kPassphrase + "bgscan=\"simple:30:-65:300\"\n}\n");
  plan.scanType = ScanType::Disable;
  EXPECT_EQ(BackhaulStationFile(plan), kBeginning + kWPA2 + kPassphrase + "disabled=1\n}\n");
}

TEST(SupplicantCommands, NameInterfaceFileAndBridge) {
  EXPECT_EQ(AddStation("wlan0sta", "/run/wifi/wlan0sta.conf", "/run/wifi/wpa", "br0"),
            "INTERFACE_ADD wlan0sta\t/run/wifi/wlan0sta.conf\tnl80211\t/run/wifi/wpa\t\tbr0");
  EXPECT_EQ(AddStation("wlan0sta", "/run/wifi/wlan0sta.conf", "/run/wifi/wpa", ""),
            "INTERFACE_ADD wlan0sta\t/run/wifi/wlan0sta.conf\tnl80211\t/run/wifi/wpa\t\t");
  EXPECT_EQ(RemoveStation("wlan0sta"), "INTERFACE_REMOVE wlan0sta");
  EXPECT_EQ(ToInterface("wlan0sta", "SCAN freq=2412"), "IFNAME=wlan0sta SCAN freq=2412");
}

}  // namespace

}  // namespace TALO::Wifid
