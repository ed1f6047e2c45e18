#include "daemon/model/views.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::Util::MACAddress;

const MACAddress kPhone("aa:bb:cc:dd:ee:01");

TEST(NetworkSetting, ShowsThePassphraseOfEachRadioAndWhenItWasSet) {
  const Capabilities capabilities = TriBandRouter();
  State state = StateWithNetworks(capabilities, 1);
  state.networks[0].radioPassphrases = {{Band5GHz_1, "lower passphrase", 1'700'000'000}};
  const Wifi::NetworkSetting setting = NetworkSettingOf({state, capabilities, {}}, state.networks[0]);
  EXPECT_EQ(setting.passphrase, "passphrase1");
  EXPECT_EQ(setting.passphraseChangedAt, "1970-01-01T00:16:41Z");
  ASSERT_EQ(setting.radios.size(), 3u);
  EXPECT_EQ(setting.radios[0].passphrase, "passphrase1");
  EXPECT_EQ(setting.radios[0].passphraseChangedAt, "1970-01-01T00:16:41Z");
  EXPECT_EQ(setting.radios[1].passphrase, "lower passphrase");
  EXPECT_EQ(setting.radios[1].passphraseChangedAt, "2023-11-14T22:13:20Z");
  EXPECT_EQ(setting.radios[2].passphrase, "passphrase1");
  EXPECT_EQ(setting.radios[2].passphraseChangedAt, "1970-01-01T00:16:41Z");
}

TEST(NetworkSetting, NamesItsMACFilterProfile) {
  const Capabilities capabilities = DualBandRouter();
  State state = StateWithNetworks(capabilities, 2);
  state.macFilterProfiles = {{4, "Guests", Wifi::MACFilterAction::Deny, {}}};
  state.networks[1].macFilterProfileId = 4;
  const auto settings = NetworkSettings({state, capabilities, {}});
  ASSERT_EQ(settings.size(), 2u);
  EXPECT_EQ(settings[0].macFilterProfileId, -1);
  EXPECT_EQ(settings[0].macFilterProfileName, "");
  EXPECT_EQ(settings[1].macFilterProfileId, 4);
  EXPECT_EQ(settings[1].macFilterProfileName, "Guests");
}

/// Network 2 has a phone on the upper radio, the backhaul has a node there.
std::vector<LiveRadio> OnePhoneAndOneNode() {
  LiveRadio radio;
  radio.radio = Band5GHz;
  radio.up = true;
  radio.bsss = {{0,
                 "wlan1_0",
                 MACAddress("02:00:00:00:01:00"),
                 true,
                 {{MACAddress("aa:bb:cc:dd:ee:99"), "node", "", -40, 866, 866, 10}}},
                {2,
                 "wlan1_2",
                 MACAddress("02:00:00:00:01:02"),
                 true,
                 {{kPhone, "Phone", "192.0.2.7", -50, 433, 200, 30}}}};
  return {radio};
}

TEST(Devices, AreTheStationsOfTheNetworks) {
  const Capabilities capabilities = DualBandRouter();
  const State state = StateWithNetworks(capabilities, 2);
  EXPECT_EQ(ConnectedDevices({state, capabilities, OnePhoneAndOneNode()}),
            (std::vector<Wifi::DeviceInfo>{
                {kPhone, "Phone", "192.0.2.7", 2, "ssid2", Band5GHz, "wlan1_2", -50, 433, 200, 30}}));
}

TEST(Devices, AreNoneOfANetworkThatIsGone) {
  const Capabilities capabilities = DualBandRouter();
  const State state = StateWithNetworks(capabilities, 1);
  EXPECT_EQ(ConnectedDevices({state, capabilities, OnePhoneAndOneNode()}), std::vector<Wifi::DeviceInfo>{});
}

}  // namespace

}  // namespace TALO::Wifid
