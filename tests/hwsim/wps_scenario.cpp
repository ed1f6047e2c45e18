// A button lets one client in.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"
#include "support/story_test.h"

namespace TALO::Hwsim {

namespace {

class WPS : public Scenario {
 protected:
  WPS() {
    StartOnRadios();
    CreateNetwork("Home", 1);
    CreateNetwork("Guests", 2, "welcome-guest");
  }

  /// Waits until a client that pushed its button has looked at all channels once more.
  static void ExpectScan(Client& client) {
    client.Control().ForgetEvents();
    client.Control().WaitFor({"CTRL-EVENT-SCAN-RESULTS"});
  }
};

TEST_F(WPS, OneClientJoinsTheNetworkThatWasAskedFor) {
  EndToEnd::SignalLog signals(kBusAddress);
  Client printer("printer", 2);
  Client latecomer("latecomer", 3);
  Do({"triggerWPS_PBC", "--id", "2", "--radio", "Band2_4GHz"});
  printer.PushButton();
  printer.Control().WaitFor({"WPS-SUCCESS"});
  printer.ExpectConnected();
  EXPECT_EQ(printer.SSID(), "Guests");
  signals.WaitFor("WPSFinished wlan0_2 enrolled");
  ExpectDevicesInTheEnd({printer.Address()});
  EXPECT_EQ(Record("getDevices", "address", printer.Address())["interface"], "wlan0_2");

  latecomer.PushButton();
  ExpectScan(latecomer);
  ExpectScan(latecomer);
  EXPECT_FALSE(latecomer.Control().Has("WPS-CRED-RECEIVED"));
  EXPECT_FALSE(latecomer.IsConnected());
  EXPECT_EQ(Devices(), std::set<std::string>{printer.Address()});
}

TEST_F(WPS, AClientThatIsLetInComesBackByItself) {
  Client printer("printer", 2);
  Do({"triggerDefaultWPS_PBC"});
  printer.PushButton();
  printer.ExpectConnected();
  EXPECT_EQ(printer.SSID(), "Home");
  printer.Leave();
  printer.BeginToRejoin();
  printer.ExpectConnected();
  EXPECT_EQ(printer.SSID(), "Home");
}

TEST_F(WPS, TwoClientsThatPushTogetherEndTheSessionOutside) {
  EndToEnd::SignalLog signals(kBusAddress);
  Client printer("printer", 2);
  Client camera("camera", 3);
  Do({"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"});
  printer.PushButton();
  camera.PushButton();
  signals.WaitFor("WPSFinished wlan0_1 overlap");
  EXPECT_EQ(Devices(), std::set<std::string>{});
  EXPECT_FALSE(printer.IsConnected());
  EXPECT_FALSE(camera.IsConnected());
}

TEST_F(WPS, AnotherSessionIsRefusedUntilTheFirstIsEnded) {
  EndToEnd::SignalLog signals(kBusAddress);
  Do({"triggerWPS_PBC", "--id", "2", "--radio", "Band5GHz"});
  EXPECT_EQ(RunTool({"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"}),
            EndToEnd::Refusal("a WPS session runs on the interface \"wlan1_2\": Busy"));
  Do({"triggerWPSConnected", "--ifName", "wlan1_2"});
  signals.WaitFor("WPSFinished wlan1_2 cancelled");
  Client printer("printer", 2);
  printer.PushButton();
  ExpectScan(printer);
  ExpectScan(printer);
  EXPECT_FALSE(printer.Control().Has("WPS-CRED-RECEIVED"));
  EXPECT_EQ(Devices(), std::set<std::string>{});
  Do({"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"});
  printer.ExpectConnected();
  EXPECT_EQ(printer.SSID(), "Home");
}

TEST_F(WPS, AClientGetsThePasswordOfNowAfterItWasRotated) {
  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  Client printer("printer", 2);
  Do({"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"});
  printer.PushButton();
  printer.ExpectConnected();
  ExpectDevicesInTheEnd({printer.Address()});
}

}  // namespace

}  // namespace TALO::Hwsim
