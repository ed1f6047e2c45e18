#include "daemon/radio/linux/control/hostapd_files.h"

#include "support/print_model.h"
#include "values/enum_names.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Rule = AccessPlan::Rule;

const std::string kKey = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789ABCDEF";

HostapdSetup On2GHz() {
  HostapdSetup setup;
  setup.channel.channel = 6;
  setup.channel.highThroughput = true;
  setup.controlDirectory = "/run/wifi/hostapd";
  return setup;
}

BSSPlan Home() {
  BSSPlan bss;
  bss.networkId = 3;
  bss.interface = "wlan0_3";
  bss.bssid = Wifi::Util::MACAddress("02:00:00:00:00:03");
  bss.ssid = "Home";
  bss.securityMode = SecurityMode::PersonalWPA3;
  bss.passphrase = "correct-horse";
  return bss;
}

/// What every file of the BSS above begins with.
const std::string kBeginning =
    "interface=wlan0_3\n"
    "driver=nl80211\n"
    "ctrl_interface=/run/wifi/hostapd\n"
    "hw_mode=g\n"
    "channel=6\n"
    "wmm_enabled=1\n"
    "ieee80211n=1\n"
    "bssid=02:00:00:00:00:03\n";
const std::string kHome = "ssid2=486f6d65\n";
const std::string kWPA3 =
    "wpa=2\n"
    "wpa_key_mgmt=SAE\n"
    "rsn_pairwise=CCMP\n"
    "ieee80211w=2\n";
const std::string kPassphrase = "wpa_passphrase=correct-horse\n";
const std::string kWPS =
    "eap_server=1\n"
    "wps_state=2\n"
    "wps_independent=1\n"
    "config_methods=push_button virtual_push_button\n"
    "device_name=Router\n"
    "manufacturer=Router\n"
    "model_name=Router\n"
    "device_type=6-0050F204-1\n";

/// The file of the BSS above with these lines behind its SSID.
std::string HomeWith(const std::string& lines) { return kBeginning + kHome + lines; }

std::string FileOf(const BSSPlan& bss, const std::string& bridge = "") {
  return BSSFile(On2GHz(), bss, bridge, {"/run/wifi/accept", "/run/wifi/deny"});
}

/// The lines between channel and BSS.
std::string ChannelLines(const ChannelSettings& channel) {
  const std::string text = HolderFile({channel, "/run"}, "wlan0");
  const std::string before = "ctrl_interface=/run\n";
  const std::size_t begin = text.find(before) + before.size();
  return text.substr(begin, text.find("ssid=holder") - begin);
}

TEST(HolderFile, HoldsTheRadioHiddenAndAdmitsNobody) {
  EXPECT_EQ(HolderFile(On2GHz(), "wlan0"),
            "interface=wlan0\n"
            "driver=nl80211\n"
            "ctrl_interface=/run/wifi/hostapd\n"
            "hw_mode=g\n"
            "channel=6\n"
            "wmm_enabled=1\n"
            "ieee80211n=1\n"
            "ssid=holder\n"
            "ignore_broadcast_ssid=1\n"
            "start_disabled=1\n"
            "macaddr_acl=1\n");
}

TEST(HostapdFiles, SayHowTheChannelIsUsed) {
  ChannelSettings channel{.band5GHz = true, .channel = 40, .width = 20};
  EXPECT_EQ(ChannelLines(channel), "hw_mode=a\nchannel=40\nwmm_enabled=1\n");

  channel.highThroughput = true;
  channel.width = 40;
  channel.secondary = -1;
  EXPECT_EQ(ChannelLines(channel), "hw_mode=a\nchannel=40\nwmm_enabled=1\nieee80211n=1\nht_capab=[HT40-]\n");

  channel.veryHighThroughput = true;
  channel.highEfficiency = true;
  EXPECT_EQ(ChannelLines(channel),
            "hw_mode=a\nchannel=40\nwmm_enabled=1\nieee80211n=1\nht_capab=[HT40-]\nieee80211ac=1\n"
            "ieee80211ax=1\n");

  channel.width = 80;
  channel.centre = 42;
  EXPECT_EQ(ChannelLines(channel),
            "hw_mode=a\nchannel=40\nwmm_enabled=1\nieee80211n=1\nht_capab=[HT40-]\nieee80211ac=1\n"
            "vht_oper_chwidth=1\nvht_oper_centr_freq_seg0_idx=42\nieee80211ax=1\n"
            "he_oper_chwidth=1\nhe_oper_centr_freq_seg0_idx=42\n");

  channel.channel = 36;
  channel.secondary = 1;
  channel.width = 160;
  channel.centre = 50;
  channel.highEfficiency = false;
  EXPECT_EQ(ChannelLines(channel),
            "hw_mode=a\nchannel=36\nwmm_enabled=1\nieee80211n=1\nht_capab=[HT40+]\nieee80211ac=1\n"
            "vht_oper_chwidth=2\nvht_oper_centr_freq_seg0_idx=50\n");

  channel.veryHighThroughput160 = true;
  EXPECT_EQ(ChannelLines(channel),
            "hw_mode=a\nchannel=36\nwmm_enabled=1\nieee80211n=1\nht_capab=[HT40+]\nieee80211ac=1\n"
            "vht_capab=[VHT160]\nvht_oper_chwidth=2\nvht_oper_centr_freq_seg0_idx=50\n");
}

TEST(BSSFile, HasALineSetForEachSecurityMode) {
  const std::vector<std::pair<SecurityMode, std::string>> rows = {
      {SecurityMode::Disabled, ""},
      {SecurityMode::OWE, "wpa=2\nwpa_key_mgmt=OWE\nrsn_pairwise=CCMP\nieee80211w=2\n"},
      {SecurityMode::PersonalWPA, "wpa=1\nwpa_key_mgmt=WPA-PSK\nwpa_pairwise=TKIP\n" + kPassphrase},
      {SecurityMode::PersonalWPA2, "wpa=2\nwpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\n" + kPassphrase + kWPS},
      {SecurityMode::PersonalWPA3, kWPA3 + kPassphrase},
      {SecurityMode::PersonalWPAMixed,
       "wpa=3\nwpa_key_mgmt=WPA-PSK\nwpa_pairwise=TKIP\nrsn_pairwise=CCMP\n" + kPassphrase + kWPS},
      {SecurityMode::PersonalWPA2_3Mixed,
       "wpa=2\nwpa_key_mgmt=WPA-PSK SAE\nrsn_pairwise=CCMP\nieee80211w=1\nsae_require_mfp=1\n" + kPassphrase +
           kWPS},
  };
  for (const auto& [mode, lines] : rows) {
    BSSPlan bss = Home();
    bss.securityMode = mode;
    EXPECT_TRUE(CanCarry(mode));
    EXPECT_EQ(FileOf(bss), HomeWith(lines)) << Wifi::Util::EnumNameOf(mode);
  }
}

TEST(BSSFile, TakesAKeyAsItIsAndForWPA3AsAPassword) {
  const std::string psk = "wpa_psk=" + kKey + "\n";
  const std::string password = "sae_password=" + kKey + "\n";
  const std::vector<std::pair<SecurityMode, std::string>> rows = {
      {SecurityMode::PersonalWPA, "wpa=1\nwpa_key_mgmt=WPA-PSK\nwpa_pairwise=TKIP\n" + psk},
      {SecurityMode::PersonalWPA2, "wpa=2\nwpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\n" + psk + kWPS},
      {SecurityMode::PersonalWPA3, kWPA3 + password},
      {SecurityMode::PersonalWPA2_3Mixed,
       "wpa=2\nwpa_key_mgmt=WPA-PSK SAE\nrsn_pairwise=CCMP\nieee80211w=1\nsae_require_mfp=1\n" + psk +
           password + kWPS},
  };
  for (const auto& [mode, lines] : rows) {
    BSSPlan bss = Home();
    bss.securityMode = mode;
    bss.passphrase = kKey;
    EXPECT_EQ(FileOf(bss), HomeWith(lines)) << Wifi::Util::EnumNameOf(mode);
  }
}

TEST(BSSFile, IsRefusedForAModeThatHostapdCannotCarry) {
  for (const SecurityMode mode :
       {SecurityMode::WEP, SecurityMode::EnterpriseWPA, SecurityMode::EnterpriseWPA2,
        SecurityMode::EnterpriseWPA3, SecurityMode::EnterpriseWPAMixed, SecurityMode::Error}) {
    BSSPlan bss = Home();
    bss.securityMode = mode;
    EXPECT_FALSE(CanCarry(mode));
    EXPECT_THROW(FileOf(bss), std::invalid_argument) << static_cast<int>(mode);
  }
}

TEST(BSSFile, HasAnyBytesInItsSSIDAndNothingElseOfThem) {
  BSSPlan bss = Home();
  bss.ssid = std::string("a\nwpa=0\0\"\xff", 10);
  EXPECT_EQ(FileOf(bss), kBeginning + "ssid2=610a7770613d300022ff\n" + kWPA3 + kPassphrase);
}

TEST(BSSFile, TakesEveryPassphraseAsItIs) {
  BSSPlan bss = Home();
  bss.passphrase = " #\"a|id=b\\n=' ";
  EXPECT_EQ(FileOf(bss), kBeginning + kHome + kWPA3 + "wpa_passphrase= #\"a|id=b\\n=' \n");
  bss.passphrase = "correct-horse\nwpa=0";
  EXPECT_THROW(FileOf(bss), std::invalid_argument);
}

TEST(BSSFile, HidesItsSSIDAndThenHasNoWPS) {
  BSSPlan bss = Home();
  bss.hidden = true;
  bss.securityMode = SecurityMode::PersonalWPA2;
  EXPECT_FALSE(HasWPS(bss));
  EXPECT_EQ(FileOf(bss), kBeginning + kHome +
                             "ignore_broadcast_ssid=1\n"
                             "wpa=2\nwpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\n" +
                             kPassphrase);
}

TEST(BSSFile, OfTheBackhaulCarriesOtherNodesAndHasNoWPS) {
  BSSPlan bss = Home();
  bss.networkId = kBackhaulNetworkId;
  bss.securityMode = SecurityMode::PersonalWPA2;
  EXPECT_FALSE(HasWPS(bss));
  EXPECT_EQ(FileOf(bss, "br0"), kBeginning + kHome +
                                    "bridge=br0\n"
                                    "wds_sta=1\n"
                                    "max_num_sta=99\n"
                                    "wpa=2\nwpa_key_mgmt=WPA-PSK\nrsn_pairwise=CCMP\n" +
                                    kPassphrase);
}

TEST(BSSFile, NamesTheListThatItsAccessGoesBy) {
  const Wifi::Util::MACAddress one("02:00:00:00:01:01");
  const Wifi::Util::MACAddress other("02:00:00:00:01:02");
  struct Row {
    AccessPlan access;
    std::string lines;
    std::string accept;
    std::string deny;
  };
  const std::string both = "02:00:00:00:01:01\n02:00:00:00:01:02\n";
  const std::string others = kWPA3 + kPassphrase;
  const std::string onlyListed = others + "macaddr_acl=1\naccept_mac_file=/run/wifi/accept\n";
  const std::string allButListed = others + "macaddr_acl=0\ndeny_mac_file=/run/wifi/deny\n";
  const std::vector<Row> rows = {
      {{Rule::Everybody, {}}, others, "", ""},
      {{Rule::OnlyListed, {other, one}}, onlyListed, both, ""},
      {{Rule::OnlyListed, {}}, onlyListed, "", ""},
      {{Rule::AllButListed, {other, one}}, allButListed, "", both},
  };
  for (const Row& row : rows) {
    BSSPlan bss = Home();
    bss.access = row.access;
    EXPECT_EQ(FileOf(bss), HomeWith(row.lines));
    EXPECT_EQ(AcceptFile(row.access), row.accept);
    EXPECT_EQ(DenyFile(row.access), row.deny);
  }
}

TEST(HasWPS, IsForModesThatWPSHandsOut) {
  for (const SecurityMode mode :
       {SecurityMode::PersonalWPA2, SecurityMode::PersonalWPAMixed, SecurityMode::PersonalWPA2_3Mixed}) {
    BSSPlan bss = Home();
    bss.securityMode = mode;
    EXPECT_TRUE(HasWPS(bss));
  }
  for (const SecurityMode mode :
       {SecurityMode::Disabled, SecurityMode::OWE, SecurityMode::PersonalWPA, SecurityMode::PersonalWPA3}) {
    BSSPlan bss = Home();
    bss.securityMode = mode;
    EXPECT_FALSE(HasWPS(bss));
  }
}

}  // namespace

}  // namespace TALO::Wifid
