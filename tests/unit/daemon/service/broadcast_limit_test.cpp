// The limit on broadcasts, from the bus to the air.

#include "daemon/model/first_state.h"
#include "daemon/radio/simulated/hardware.h"
#include "support/simulated_service.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using Wifi::WifiClient;

/// A network on both radios; device 01 is on 5 GHz and device 02 on 2.4 GHz, each with 20 frames a second.
class BroadcastLimit : public testing::Test {
 protected:
  BroadcastLimit() { service_.Pass(std::chrono::seconds(5)); }

  static Scenario World() {
    Scenario world;
    world.devices = {MakeDevice(1), MakeDevice(2)};
    world.devices[1].bands = {RadioFrequency::Band2_4GHz};
    for (Device& device : world.devices) {
      device.knows = {{"One", "battery-staple"}};
      device.broadcastsPerSecond = 20;
    }
    return world;
  }

  static State OneNetwork() {
    State state = MakeFirstState(MakeSimulatedCapabilities(SupportedModel::Cedar300), CountryCode::DE);
    state.networks = {MakeNetwork(1, 1, "One")};
    state.nextNetworkId = 2;
    return state;
  }

  void Set(const Wifi::MACFilterGlobal& limit) {
    ASSERT_EQ(service_.ErrorOfCall<&WifiClient::SetMACFilterGlobal>(limit), "none");
  }

  /// What ten seconds add to the frames of a device.
  BroadcastCount InTenSeconds(int device) {
    const BroadcastCount before = service_.Driver().GetBroadcasts().at(DeviceAddress(device));
    service_.Pass(std::chrono::seconds(10));
    const BroadcastCount after = service_.Driver().GetBroadcasts().at(DeviceAddress(device));
    return {after.passed - before.passed, after.dropped - before.dropped};
  }

  const Wifi::MACFilterDevice second_{"", DeviceAddress(2)};
  SimulatedService service_{SupportedModel::Cedar300, World(), OneNetwork(), 1000};
};

TEST_F(BroadcastLimit, HoldsOnEveryRadioForEachDevice) {
  EXPECT_EQ(InTenSeconds(1), (BroadcastCount{200, 0}));
  Set({{}, true, 5});
  EXPECT_EQ(InTenSeconds(1), (BroadcastCount{50, 150}));
  EXPECT_EQ(InTenSeconds(2), (BroadcastCount{50, 150}));
}

TEST_F(BroadcastLimit, HoldsForThoseThatAreListed) {
  Set({{second_}, true, 5});
  EXPECT_EQ(InTenSeconds(1), (BroadcastCount{200, 0}));
  EXPECT_EQ(InTenSeconds(2), (BroadcastCount{50, 150}));
}

TEST_F(BroadcastLimit, EndsWhenItIsSwitchedOff) {
  Set({{second_}, true, 5});
  Set({{}, false, 5});
  EXPECT_EQ(InTenSeconds(2), (BroadcastCount{200, 0}));
}

TEST_F(BroadcastLimit, StaysAsItWasWhenAnotherIsRefused) {
  Set({{}, true, 5});
  EXPECT_NE(service_.ErrorOfCall<&WifiClient::SetMACFilterGlobal>(Wifi::MACFilterGlobal{{}, true, -1}),
            "none");
  EXPECT_EQ(InTenSeconds(1), (BroadcastCount{50, 150}));
}

}  // namespace

}  // namespace TALO::Wifid
