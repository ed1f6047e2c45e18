// What is killed comes back, and nothing else is lost.

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/programs.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

#include <csignal>

namespace TALO::Hwsim {

namespace {

/// A router with two networks, one of them with another password and a filter, and an upstream connection.
class Crashes : public Scenario {
 protected:
  Crashes() {
    StartOnRadios();
    CreateNetwork("Home", 1);
    CreateNetwork("Guests", 2, "welcome-guest");
    Do({"rotatePassword", "--id", "2", "--radio", "SmartConnect"});
    EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "laptop", "--action", "Deny", "--devices",
                       "laptop", laptop_.Address(), "--applyToAll", "0"}),
              EndToEnd::Success("ID: 1\n"));
    Call<&Wifi::WifiClient::AssignMACFilterProfile>(2, 1);
    Do({"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", "Uplink", "--user", "",
        "--password", "uplink-password", "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"});
    ExpectStationInTheEnd("Band2_4GHz", "connected");
    networks_ = Ask({"getNetworks"});
    phone_.Join(Guests());
    laptop_.Join({.frequency = k5GHz, .keyManagement = "SAE"});
    ExpectDevicesInTheEnd({phone_.Address(), laptop_.Address()});
  }

  KnownNetwork Guests() const {
    return {.ssid = "Guests", .passphrase = networks_[1]["passphrase"].asString()};
  }

  /// Kills one of the daemon's programs, and waits until another runs.
  void KillProgram(const std::string& name) {
    const pid_t killed = FindChild(Daemon().GetId(), name);
    ASSERT_GT(killed, 0);
    ASSERT_EQ(kill(killed, SIGKILL), 0);
    WaitUntil(name + " runs again", [&] {
      const pid_t now = FindChild(Daemon().GetId(), name);
      return now > 0 && now != killed;
    });
  }

  /// All is as it was, for those in the air, too.
  void ExpectAllBack() {
    WaitUntil("the networks are as they were", [&] { return Ask({"getNetworks"}) == networks_; });
    ExpectDevicesInTheEnd({phone_.Address(), laptop_.Address()});
    WaitUntil("the phone is connected", [&] { return phone_.IsConnected(); });
    WaitUntil("the laptop is connected", [&] { return laptop_.IsConnected(); });
    ExpectStationInTheEnd("Band2_4GHz", "connected");
    // Password and filter are those that were set.
    laptop_.BeginToJoin(Guests());
    laptop_.ExpectRefused();
    phone_.BeginToJoin({.ssid = "Guests", .passphrase = "welcome-guest"});
    phone_.ExpectRefused();
  }

  NetworkNamespace neighbour_{"neighbour"};
  ForeignAP upstream_{
      neighbour_, neighbour_.TakeRadio(4), {.ssid = "Uplink", .passphrase = "uplink-password"}};
  Client phone_{"phone", 2};
  Client laptop_{"laptop", 3};
  Json::Value networks_;
};

TEST_F(Crashes, ClientsComeBackToTheNetworksOfAKilledHostapd) {
  upstream_.Control().ForgetEvents();
  KillProgram("hostapd");
  ExpectAllBack();
  EXPECT_FALSE(upstream_.Control().Has("AP-STA-DISCONNECTED"));
}

TEST_F(Crashes, TheUpstreamConnectionOfAKilledSupplicantComesBackAndNoClientNotices) {
  const std::string phoneSince = phone_.ConnectedSince();
  const std::string laptopSince = laptop_.ConnectedSince();
  upstream_.Control().ForgetEvents();
  KillProgram("wpa_supplicant");
  upstream_.Control().WaitFor({"AP-STA-CONNECTED"});
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  EXPECT_EQ(phone_.ConnectedSince(), phoneSince);
  EXPECT_EQ(laptop_.ConnectedSince(), laptopSince);
  ExpectAllBack();
}

TEST_F(Crashes, AHostapdThatHangsFailsWhatItIsAskedAndAllComesBack) {
  const pid_t stopped = FindChild(Daemon().GetId(), "hostapd");
  ASSERT_GT(stopped, 0);
  ASSERT_EQ(kill(stopped, SIGSTOP), 0);
  const auto refused = RunTool({"createNetwork", "--ssid", "Third", "--password", "correct-horse"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_NE(refused.output.find("hostapd has not answered within 10 seconds: Radio failed"),
            std::string::npos)
      << refused.output;
  ExpectAllBack();
}

TEST_F(Crashes, ARadioWhoseInterfaceWasDeletedComesBack) {
  OutputOf({"iw", "dev", "wlan0", "del"});
  WaitUntil("the interface is made again", [] { return Succeeds({"iw", "dev", "wlan0", "info"}); });
  ExpectAllBack();
}

TEST_F(Crashes, AKilledDaemonTakesUpWhatWas) {
  Daemon().SendSignal(SIGKILL);
  EXPECT_EQ(Daemon().Wait(), -SIGKILL);
  StartOnRadios();
  ExpectAllBack();
}

}  // namespace

}  // namespace TALO::Hwsim
