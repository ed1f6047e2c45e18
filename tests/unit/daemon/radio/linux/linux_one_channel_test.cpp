#include "support/events.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

// A station beside access points, on hardware that can be on one channel alone.

namespace TALO::Wifid {

namespace {

using Phase = LiveUpstream::Phase;
using Wifi::Util::MACAddress;

const MACAddress kUplink("06:00:00:00:00:01");

std::vector<Wiphy> WithChannels(int maximum) {
  std::vector<Wiphy> wiphys = {MakeWiphy(0), MakeWiphy(1)};
  for (Wiphy& wiphy : wiphys) {
    wiphy.maximumChannels = maximum;
  }
  return wiphys;
}

class OneChannel : protected LinuxRouter {
 public:
  explicit OneChannel(int maximumChannels = 1) : LinuxRouter(WithChannels(maximumChannels)) {}

 protected:
  void PutUplinkOn(int frequency, const std::string& passphrase = "uplink-password") {
    machine.supplicant.TakeOffTheAir(kUplink);
    machine.supplicant.air = {{"Uplink", kUplink, frequency, -60, passphrase}};
    // Until who was connected is heard to be so no more.
    machine.Advance(10);
  }
  /// With a network and a station, on the channel.
  std::string Begin(int channel) {
    RadioPlan plan = Plan(0, {1});
    plan.channel = channel;
    plan.station = Station("Uplink", "uplink-password");
    return Describe(Apply(plan));
  }
  bool IsConnected() {
    return WaitFor([this] { return Live(0).station.phase == Phase::Connected; });
  }
};

class OneChannelTest : public testing::Test, protected OneChannel {};

TEST_F(OneChannelTest, AnAutomaticChannelFollowsTheAccessPointOfTheStation) {
  PutUplinkOn(2437);
  ASSERT_EQ("done", Begin(kAutomaticChannel));
  EXPECT_EQ(1, Live(0).channel);
  ASSERT_TRUE(IsConnected());
  EXPECT_EQ(6, Live(0).channel);
  EXPECT_EQ(1U, Live(0).bsss.size());
  // Nor does it go back by itself.
  ASSERT_TRUE(Apply(Plan(1, {1})).Succeeded());
  ASSERT_EQ("done", Begin(kAutomaticChannel));
  EXPECT_EQ(6, Live(0).channel);

  PutUplinkOn(2462);
  ASSERT_TRUE(IsConnected());
  EXPECT_EQ(11, Live(0).channel);
}

TEST_F(OneChannelTest, ABackhaulStationIsFollowedToo) {
  PutUplinkOn(2437);
  RadioPlan plan = Plan(0, {1});
  plan.channel = kAutomaticChannel;
  plan.backhaulStation = BackhaulStationPlan{"wlan0bhs", "Uplink", "uplink-password", ScanType::Default};
  ASSERT_EQ("done", Describe(Apply(plan)));
  ASSERT_TRUE(WaitFor([this] { return Live(0).backhaulStation.phase == Phase::Connected; }));
  EXPECT_EQ(6, Live(0).channel);
}

TEST_F(OneChannelTest, AChannelThatWasChosenStays) {
  PutUplinkOn(2437);
  ASSERT_EQ("done", Begin(1));
  machine.Advance(60'000);
  EXPECT_EQ(1, Live(0).channel);
  EXPECT_NE(Phase::Connected, Live(0).station.phase);
}

TEST_F(OneChannelTest, AnAccessPointWhereNoneMaySendIsNotFollowed) {
  // Channel 13 in a country that does not have it.
  PutUplinkOn(2472);
  RadioPlan plan = Plan(0, {1});
  plan.channel = kAutomaticChannel;
  plan.country = CountryCode::US;
  plan.station = Station("Uplink", "uplink-password");
  ASSERT_EQ("done", Describe(Apply(plan)));
  machine.Advance(60'000);
  EXPECT_EQ(1, Live(0).channel);
}

TEST_F(OneChannelTest, AnAccessPointWithAnotherPasswordIsFollowedOnce) {
  PutUplinkOn(2437, "another-password");
  ASSERT_EQ("done", Begin(kAutomaticChannel));
  ASSERT_TRUE(WaitFor([this] { return Live(0).station.reason == "wrong password"; }));
  const int before = machine.hostapd.addedBSSs;
  machine.supplicant.air = {{"Uplink", kUplink, 2462, -60, "another-password"}};
  machine.supplicant.TellOf(
      "wlan0sta", "SME: Trying to authenticate with 06:00:00:00:00:01 (SSID='Uplink' freq=2462 MHz)");
  machine.Advance(60'000);
  EXPECT_EQ(before, machine.hostapd.addedBSSs);
}

class TwoChannelsTest : public testing::Test, protected OneChannel {
 public:
  TwoChannelsTest() : OneChannel(2) {}
};

TEST_F(TwoChannelsTest, NothingIsFollowed) {
  PutUplinkOn(2437);
  ASSERT_EQ("done", Begin(kAutomaticChannel));
  ASSERT_TRUE(IsConnected());
  EXPECT_EQ(1, Live(0).channel);
}

}  // namespace

}  // namespace TALO::Wifid
