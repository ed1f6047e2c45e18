#include "daemon/model/views.h"
#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::NetworkRadioSetting;
using Wifi::NetworkSetting;

using Interfaces = std::map<int, std::set<std::string>>;

std::vector<LiveRadio> LiveOf(const State& state, const Capabilities& radios) {
  return LiveAsPlanned(MakePlan(state, radios, {}));
}

NetworkRadioSetting HomeOn(RadioFrequency radio, const std::string& number) {
  NetworkRadioSetting setting;
  setting.radio = radio;
  setting.enable = true;
  setting.up = true;
  setting.interface = "wlan" + number + "_1";
  setting.radioInterface = "wlan" + number;
  setting.bssid = "02:00:00:00:0" + number + ":01";
  setting.ssid = "Home";
  setting.passphrase = "battery-staple";
  setting.passphraseChangedAt = "1970-01-01T00:16:40Z";
  setting.keyManagement = {"WPA-PSK", "SAE"};
  return setting;
}

NetworkSetting Home() {
  NetworkSetting setting;
  setting.id = 1;
  setting.networkName = "Home";
  setting.ssid = "Home";
  setting.hidden = false;
  setting.securityMode = SecurityMode::PersonalWPA2_3Mixed;
  setting.passphrase = "battery-staple";
  setting.passphraseChangedAt = "1970-01-01T00:16:40Z";
  setting.activated = true;
  setting.context = "router";
  setting.bridge = "br0";
  setting.macFilterProfileId = -1;
  setting.macFilterProfileName = "";
  setting.up = true;
  return setting;
}

NetworkSetting HomeOnTriBand() {
  NetworkSetting setting = Home();
  setting.interfaces = {"wlan0_1", "wlan1_1", "wlan2_1"};
  setting.radios = {HomeOn(RadioFrequency::Band2_4GHz, "0"), HomeOn(RadioFrequency::Band5GHz_1, "1"),
                    HomeOn(RadioFrequency::Band5GHz_2, "2")};
  return setting;
}

TEST(NetworkSettings, ShowsEveryMemberOnATriBandRouter) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  const Capabilities radios = TriBandRadios();
  EXPECT_EQ(NetworkSettings({state, radios, LiveOf(state, radios)}),
            (std::vector<NetworkSetting>{HomeOnTriBand()}));
}

TEST(NetworkSettings, ShowsEveryMemberOnADualBandRouter) {
  State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  state.radios = {{RadioFrequency::Band2_4GHz, true, 6, 20, 100, 6},
                  {RadioFrequency::Band5GHz, true, 36, 80, 100, 6}};
  const Capabilities radios = DualBandRadios();
  NetworkSetting expected = Home();
  expected.interfaces = {"wlan0_1", "wlan1_1"};
  expected.radios = {HomeOn(RadioFrequency::Band2_4GHz, "0"), HomeOn(RadioFrequency::Band5GHz, "1")};
  EXPECT_EQ(NetworkSettings({state, radios, LiveOf(state, radios)}), (std::vector<NetworkSetting>{expected}));
}

TEST(NetworkSettings, ShowsNoBSSIDWhereTheBSSIsNotUp) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  const Capabilities radios = TriBandRadios();
  auto live = LiveOf(state, radios);
  live[0].bsss[0].up = false;
  live[1].bsss.clear();
  NetworkSetting expected = HomeOnTriBand();
  for (const std::size_t down : {0U, 1U}) {
    expected.radios[down].up = false;
    expected.radios[down].bssid = "";
  }
  EXPECT_EQ(NetworkSettings({state, radios, live}), (std::vector<NetworkSetting>{expected}));

  // The last one goes down, and the network with it; a radio that says nothing has nothing up.
  live.pop_back();
  expected.radios[2].up = false;
  expected.radios[2].bssid = "";
  expected.up = false;
  EXPECT_EQ(NetworkSettings({state, radios, live}), (std::vector<NetworkSetting>{expected}));
}

TEST(NetworkSettings, ShowsTheBSSIDThatIsInTheAir) {
  const State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  const Capabilities radios = TriBandRadios();
  auto live = LiveOf(state, radios);
  live[1].bsss[0].bssid = Wifi::Util::MACAddress("AA-BB-CC-DD-EE-FF");
  NetworkSetting expected = HomeOnTriBand();
  expected.radios[1].bssid = "aa:bb:cc:dd:ee:ff";
  EXPECT_EQ(NetworkSettings({state, radios, live}), (std::vector<NetworkSetting>{expected}));
}

TEST(NetworkSettings, ShowsADeactivatedNetworkAsNotWanted) {
  State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
  state.networks[0].activated = false;
  const Capabilities radios = TriBandRadios();
  NetworkSetting expected = HomeOnTriBand();
  expected.activated = false;
  expected.up = false;
  for (NetworkRadioSetting& radio : expected.radios) {
    radio.enable = false;
    radio.up = false;
    radio.bssid = "";
  }
  EXPECT_EQ(NetworkSettings({state, radios, LiveOf(state, radios)}), (std::vector<NetworkSetting>{expected}));
}

TEST(NetworkSettings, ShowsNetworksInTheOrderOfTheirIDs) {
  const State state =
      MakeState(9, {MakeNetwork(2, 3, "Two"), MakeNetwork(5, 1, "Five"), MakeNetwork(8, 2, "Eight")});
  const Capabilities radios = TriBandRadios();
  const auto settings = NetworkSettings({state, radios, LiveOf(state, radios)});
  ASSERT_EQ(settings.size(), 3U);
  EXPECT_EQ(settings[0].id, 2);
  EXPECT_EQ(settings[0].radios[1].bssid, "02:00:00:00:01:03");
  EXPECT_EQ(settings[1].id, 5);
  EXPECT_EQ(settings[1].radios[1].bssid, "02:00:00:00:01:01");
  EXPECT_EQ(settings[2].id, 8);
  EXPECT_EQ(settings[2].radios[1].bssid, "02:00:00:00:01:02");
}

TEST(NetworkSettings, NamesTheKeyManagementOfEverySecurityMode) {
  using enum SecurityMode;
  const std::map<SecurityMode, std::vector<std::string>> rows = {
      {Error, {}},
      {Disabled, {}},
      {OWE, {"OWE"}},
      {WEP, {}},
      {PersonalWPA, {"WPA-PSK"}},
      {PersonalWPA2, {"WPA-PSK"}},
      {PersonalWPA3, {"SAE"}},
      {PersonalWPAMixed, {"WPA-PSK"}},
      {PersonalWPA2_3Mixed, {"WPA-PSK", "SAE"}},
      {EnterpriseWPA, {"WPA-EAP"}},
      {EnterpriseWPA2, {"WPA-EAP"}},
      {EnterpriseWPA3, {"WPA-EAP"}},
      {EnterpriseWPAMixed, {"WPA-EAP"}},
  };
  ASSERT_EQ(rows.size(), 13U);
  const Capabilities radios = DualBandRadios();
  for (const auto& [mode, suites] : rows) {
    State state = MakeState(2, {MakeNetwork(1, 1, "Home")});
    state.networks[0].securityMode = mode;
    const auto settings = NetworkSettings({state, radios, {}});
    ASSERT_EQ(settings.size(), 1U);
    EXPECT_EQ(settings[0].securityMode, mode);
    EXPECT_EQ(settings[0].radios[0].keyManagement, suites) << static_cast<int>(mode);
    EXPECT_EQ(settings[0].radios[1].keyManagement, suites) << static_cast<int>(mode);
  }
}

TEST(NetworkInterfaces, NamesThoseOfEveryNetworkUpOrNot) {
  State state = MakeState(4, {MakeNetwork(1, 2, "One"), MakeNetwork(3, 1, "Three")});
  state.networks[1].activated = false;
  EXPECT_EQ(NetworkInterfaces({state, TriBandRadios(), {}}),
            (Interfaces{{1, {"wlan0_2", "wlan1_2", "wlan2_2"}}, {3, {"wlan0_1", "wlan1_1", "wlan2_1"}}}));
  EXPECT_EQ(NetworkInterfaces({state, DualBandRadios(), {}}),
            (Interfaces{{1, {"wlan0_2", "wlan1_2"}}, {3, {"wlan0_1", "wlan1_1"}}}));
}

TEST(NetworkInterfaces, IsEmptyWithoutNetworks) {
  const State state = MakeState(1, {});
  const Capabilities radios = TriBandRadios();
  EXPECT_EQ(NetworkInterfaces({state, radios, LiveOf(state, radios)}), Interfaces{});
}

TEST(IsAllNetworkAPDisabled, IsFalseWhileAnyBSSIsUp) {
  const State state = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const Capabilities radios = TriBandRadios();
  auto live = LiveOf(state, radios);
  EXPECT_FALSE(IsAllNetworkAPDisabled({state, radios, live}));
  for (LiveRadio& radio : live) {
    for (LiveBSS& bss : radio.bsss) {
      bss.up = false;
    }
  }
  EXPECT_TRUE(IsAllNetworkAPDisabled({state, radios, live}));
  live[2].bsss[1].up = true;
  EXPECT_FALSE(IsAllNetworkAPDisabled({state, radios, live}));
}

TEST(IsAllNetworkAPDisabled, IsTrueWithoutNetworksAndWithoutRadios) {
  const State state = MakeState(1, {});
  const Capabilities radios = TriBandRadios();
  EXPECT_TRUE(IsAllNetworkAPDisabled({state, radios, LiveOf(state, radios)}));
  EXPECT_TRUE(IsAllNetworkAPDisabled({state, radios, {}}));
}

}  // namespace

}  // namespace TALO::Wifid
