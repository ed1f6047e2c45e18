// The traffic of a network's clients goes over the bridge that it is activated on.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"

namespace TALO::Hwsim {

namespace {

constexpr const char* kOtherRouterAddress = "10.0.1.1";

class Bridges : public Scenario {
 protected:
  Bridges() {
    MakeBridge("br1", kOtherRouterAddress);
    StartOnRadios();
    CreateNetwork("Home", 1);
    phone_.Join({});
    phone_.Host().SetAddress(phone_.Interface(), "10.0.0.2");
    // In the network of the other bridge, too.
    phone_.Host().SetAddress(phone_.Interface(), "10.0.1.2");
  }

  Client phone_{"phone", 2};
};

TEST_F(Bridges, TrafficFlowsOverTheBridgeOfTheNetworkAndStopsWhenItIsDeactivated) {
  phone_.Host().ExpectPing(kRouterAddress);
  EXPECT_FALSE(phone_.Host().Pings(kOtherRouterAddress));

  const std::string since = phone_.ConnectedSince();
  Do({"activate", "--id", "1", "--bridge", "br1"});
  EXPECT_EQ(Network(1)["bridge"], "br1");
  phone_.Host().ExpectPing(kOtherRouterAddress);
  EXPECT_FALSE(phone_.Host().Pings(kRouterAddress));
  EXPECT_EQ(phone_.ConnectedSince(), since);

  Do({"deactivate", "--id", "1"});
  phone_.ExpectDisconnected();
  EXPECT_FALSE(phone_.Host().Pings(kOtherRouterAddress));
  EXPECT_EQ(Devices(), std::set<std::string>{});

  Do({"activate", "--id", "1", "--bridge", "br0"});
  phone_.Join({});
  phone_.Host().ExpectPing(kRouterAddress);
}

TEST_F(Bridges, ClientsOfBothRadiosReachOneAnotherAndHostsOnACable) {
  Client laptop("laptop", 3);
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  laptop.Host().SetAddress(laptop.Interface(), "10.0.0.3");
  const NetworkNamespace desk("desk");
  Connect(NetworkNamespace(), "cable0", desk, "cable1");
  NetworkNamespace().Join("br0", "cable0");
  desk.SetAddress("cable1", "10.0.0.9");
  phone_.Host().ExpectPing("10.0.0.3");
  phone_.Host().ExpectPing("10.0.0.9");
  desk.ExpectPing("10.0.0.3");
}

TEST_F(Bridges, ABridgeThatIsNotThereIsRefused) {
  EXPECT_EQ(RunTool({"activate", "--id", "1", "--bridge", "br9"}),
            EndToEnd::Refusal("there is no bridge \"br9\": Not found"));
  phone_.Host().ExpectPing(kRouterAddress);
}

}  // namespace

}  // namespace TALO::Hwsim
