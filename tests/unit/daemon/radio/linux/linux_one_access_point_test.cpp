#include "support/machine/linux_router.h"
#include "support/routers.h"

#include <gtest/gtest.h>

// Hardware that has one access point at once.

namespace TALO::Wifid {

namespace {

using Interfaces = std::vector<std::string>;

std::vector<Wiphy> WithOneAccessPoint() {
  std::vector<Wiphy> wiphys = {MakeWiphy(0), MakeWiphy(1)};
  wiphys[0].maximumAccessPoints = 1;
  wiphys[0].maximumStations = 0;
  return wiphys;
}

class OneAccessPointTest : public testing::Test, protected LinuxRouter {
 protected:
  OneAccessPointTest() : LinuxRouter(WithOneAccessPoint()) {}
};

TEST_F(OneAccessPointTest, CarriesOneNetworkThatDevicesJoin) {
  EXPECT_EQ(1, driver->GetCapabilities().radios.at(0).maximumBSSs);
  ASSERT_EQ("done", Describe(Apply(Plan(0, {1}))));
  EXPECT_EQ((Interfaces{"wlan0_1"}), machine.hostapd.GetBSSs("phy0"));
  EXPECT_EQ("br0", machine.kernel.GetBridgeOf("wlan0_1"));
  EXPECT_EQ(Plan(0, {1}).bsss[0].bssid, machine.kernel.InterfaceOf("wlan0_1").address);
  EXPECT_EQ("wlan0_1", Join(1, 1).on);
  EXPECT_TRUE(Live(0).up);
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
}

TEST_F(OneAccessPointTest, ChangesItInPlaceAndTakesItDown) {
  ASSERT_EQ("done", Describe(Apply(Plan(0, {1}))));
  Join(1, 1);
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].hidden = true;
  ASSERT_EQ("done", Describe(Apply(plan)));
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
  plan.channel = 6;
  ASSERT_EQ("done", Describe(Apply(plan)));
  EXPECT_EQ(6, Live(0).channel);
  ASSERT_EQ("done", Describe(Apply(Plan(0, {2}))));
  EXPECT_EQ((Interfaces{"wlan0_2"}), machine.hostapd.GetBSSs("phy0"));
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0_1"));
  ASSERT_EQ("done", Describe(Apply(Plan(0, {}))));
  EXPECT_TRUE(machine.hostapd.GetBSSs("phy0").empty());
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0_2"));
}

TEST_F(OneAccessPointTest, SaysWhatItCannotCarry) {
  EXPECT_EQ("NotSupported the radio Band2_4GHz cannot bring up 2 access points: its hardware has 1 at once",
            Describe(Apply(Plan(0, {0, 1}))));
  RadioPlan plan = Plan(0, {1});
  plan.station = Station("Uplink", "uplink-password");
  EXPECT_EQ(ErrorCode::NotSupported, WhyNot(Apply(plan)).code);
  // The other radio has more.
  EXPECT_EQ("done", Describe(Apply(Plan(1, {0, 1, 2}))));
}

TEST_F(OneAccessPointTest, BringsItBackWhenHostapdIsKilled) {
  ASSERT_EQ("done", Describe(Apply(Plan(0, {1}))));
  Join(1, 1);
  machine.hostapd.Die("killed by signal 9");
  ASSERT_TRUE(WaitFor([this] { return Live(0).up && Live(0).bsss.size() == 1; }));
  Settle();
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
}

TEST_F(OneAccessPointTest, NothingOfItStays) {
  ASSERT_EQ("done", Describe(Apply(Plan(0, {1}))));
  driver.reset();
  EXPECT_FALSE(machine.kernel.HasInterface("wlan0_1"));
}

}  // namespace

}  // namespace TALO::Wifid
