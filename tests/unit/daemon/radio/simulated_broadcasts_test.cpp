#include "support/simulation.h"

#include <gtest/gtest.h>

#include <map>

// Frames for everybody, and the limit on them.

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

using Counts = std::map<MACAddress, BroadcastCount>;

/// "Home" with the device 01, which sends 20 frames a second and connects at 370.
class SimulatedBroadcastsTest : public testing::Test {
 protected:
  static Device Talker(int number, int perSecond) {
    Device device = MakeDevice(number);
    device.broadcastsPerSecond = perSecond;
    return device;
  }

  static Wifi::MACFilterGlobal Limit(int maximum, const std::vector<int>& devices = {}) {
    Wifi::MACFilterGlobal limit{{}, true, maximum};
    for (const int number : devices) {
      limit.devices.push_back({"", DeviceAddress(number)});
    }
    return limit;
  }

  /// Applying takes 20 milliseconds, bringing up a BSS 50.
  void ApplyAt(int moment) {
    AdvanceTo(moment);
    simulation_.Apply(plan_);
  }

  void AdvanceTo(int moment) {
    simulation_.Advance(moment - static_cast<int>(simulation_.timers.Now().count()));
  }

  BroadcastCount CountAt(int moment) {
    AdvanceTo(moment);
    return simulation_.driver.GetBroadcasts().at(DeviceAddress(1));
  }

  Scenario world_ = [] {
    Scenario world;
    world.devices = {Talker(1, 20)};
    return world;
  }();
  RadioPlan plan_ = MakeRadioPlan({MakeBSS(1)});
  Simulation simulation_{world_};
};

}  // namespace

TEST_F(SimulatedBroadcastsTest, AllPassWithoutALimit) {
  ApplyAt(0);
  EXPECT_EQ((BroadcastCount{0, 0}), CountAt(370));
  EXPECT_EQ((BroadcastCount{0, 0}), CountAt(419));
  EXPECT_EQ((BroadcastCount{1, 0}), CountAt(420));
  EXPECT_EQ((BroadcastCount{45, 0}), CountAt(2620));
}

TEST_F(SimulatedBroadcastsTest, TheFirstOfEachSecondPass) {
  plan_.broadcastLimit = Limit(5);
  ApplyAt(0);
  EXPECT_EQ((BroadcastCount{5, 0}), CountAt(620));
  EXPECT_EQ((BroadcastCount{5, 1}), CountAt(670));
  EXPECT_EQ((BroadcastCount{5, 15}), CountAt(1370));
  EXPECT_EQ((BroadcastCount{15, 30}), CountAt(2620));
}

TEST_F(SimulatedBroadcastsTest, ALimitThatNobodyReachesDropsNothing) {
  plan_.broadcastLimit = Limit(20);
  ApplyAt(0);
  EXPECT_EQ((BroadcastCount{45, 0}), CountAt(2620));
}

TEST_F(SimulatedBroadcastsTest, ALimitOfNoneDropsAll) {
  plan_.broadcastLimit = Limit(0);
  ApplyAt(0);
  EXPECT_EQ((BroadcastCount{0, 45}), CountAt(2620));
}

TEST_F(SimulatedBroadcastsTest, ALimitHoldsFromItsComingToItsEnd) {
  ApplyAt(0);
  plan_.broadcastLimit = Limit(5);
  ApplyAt(1850);
  // Of this second ten are sent, and ten are to come.
  EXPECT_EQ((BroadcastCount{30, 0}), CountAt(1870));
  EXPECT_EQ((BroadcastCount{30, 10}), CountAt(2370));
  EXPECT_EQ((BroadcastCount{35, 10}), CountAt(2620));
  plan_.broadcastLimit.enablePreventBroadcast = false;
  ApplyAt(2650);
  EXPECT_EQ((BroadcastCount{35, 11}), CountAt(2670));
  EXPECT_EQ((BroadcastCount{49, 11}), CountAt(3370));
}

TEST_F(SimulatedBroadcastsTest, ALimitConcernsTheListedDevicesAlone) {
  world_.devices = {Talker(1, 20), Talker(2, 10), Talker(3, 0)};
  Simulation simulation(world_);
  plan_.broadcastLimit = Limit(4, {2, 3});
  simulation.Apply(plan_);
  simulation.Advance(2370);
  EXPECT_EQ((Counts{{DeviceAddress(1), {40, 0}}, {DeviceAddress(2), {8, 12}}}),
            simulation.driver.GetBroadcasts());
}

TEST_F(SimulatedBroadcastsTest, ADeviceSendsWhileItIsConnected) {
  ApplyAt(0);
  const RadioPlan with = plan_;
  plan_.bsss.clear();
  ApplyAt(1000);
  EXPECT_EQ((BroadcastCount{13, 0}), CountAt(1020));
  EXPECT_EQ((BroadcastCount{13, 0}), CountAt(1990));
  plan_ = with;
  plan_.broadcastLimit = Limit(5);
  ApplyAt(2000);
  // It is back at 2370.
  EXPECT_EQ((BroadcastCount{18, 15}), CountAt(3370));
}

TEST_F(SimulatedBroadcastsTest, NothingWakesForThem) {
  plan_.broadcastLimit = Limit(5);
  ApplyAt(0);
  AdvanceTo(400);
  EXPECT_EQ(0U, simulation_.timers.CountWaiting());
}

// A beacon and a station take one percent each, ten frames a second another.
TEST_F(SimulatedBroadcastsTest, ThoseThatPassTakeTime) {
  world_.devices = {Talker(1, 70), Talker(2, 35)};
  Simulation simulation(world_);
  const auto utilisation = [&] { return simulation.Live(RadioFrequency::Band2_4GHz).utilisation; };
  simulation.ApplyNow(plan_);
  EXPECT_EQ(1, utilisation());
  simulation.Advance(1000);
  EXPECT_EQ(1 + 2 + 10, utilisation());
  plan_.broadcastLimit = Limit(10);
  simulation.ApplyNow(plan_);
  EXPECT_EQ(1 + 2 + 2, utilisation());
}

TEST_F(SimulatedBroadcastsTest, AFloodTakesNoMoreThanAll) {
  world_.devices = {Talker(1, 10000)};
  Simulation simulation(world_);
  simulation.ApplyNow(plan_);
  simulation.Advance(1000);
  EXPECT_EQ(100, simulation.Live(RadioFrequency::Band2_4GHz).utilisation);
}

}  // namespace TALO::Wifid
