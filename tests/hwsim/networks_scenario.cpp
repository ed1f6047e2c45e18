// Networks come and go in the air.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

#include <ctime>

namespace TALO::Hwsim {

namespace {

using Wifi::NetworkSchedule;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScheduleMode;

class Networks : public Scenario {
 protected:
  void ExpectDevice(Client& client, int id, const std::string& interface, const std::string& radio) {
    const Json::Value device = Record("getDevices", "address", client.Address());
    EXPECT_EQ(device["networkId"], id);
    EXPECT_EQ(device["ssid"], client.SSID());
    EXPECT_EQ(device["interface"], interface);
    EXPECT_EQ(device["radio"], radio);
    EXPECT_LT(device["signal"].asInt(), 0);
  }

  /// On in these minutes of the week only.
  void SetOnTimes(int id, const Wifi::ScheduleWindow& window) {
    Call<&Wifi::WifiClient::SetSchedule>(
        NetworkSchedule{id, RadioFrequency::SmartConnect, ScheduleMode::Customized, 0, {window}});
  }
};

TEST_F(Networks, ANetworkIsJoinedOnBothRadiosByItsPasswordOnlyUntilItIsDeleted) {
  StartOnRadios();
  CreateNetwork("Home", 1);
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), EndToEnd::Success("0\n"));
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  phone.BeginToJoin({.passphrase = "another-secret"});
  phone.ExpectRefused();
  laptop.BeginToJoin({.passphrase = "another-secret", .frequency = k5GHz, .keyManagement = "SAE"});
  laptop.ExpectRefused();
  EXPECT_EQ(Devices(), std::set<std::string>{});

  phone.Join({});
  EXPECT_EQ(phone.Status("key_mgmt"), "WPA2-PSK");
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  EXPECT_EQ(laptop.Status("key_mgmt"), "SAE");
  ExpectDevicesInTheEnd({phone.Address(), laptop.Address()});
  ExpectDevice(phone, 1, "wlan0_1", "Band2_4GHz");
  ExpectDevice(laptop, 1, "wlan1_1", "Band5GHz");
  const Json::Value radios = Network(1)["radios"];
  EXPECT_EQ(radios[0]["bssid"], phone.Status("bssid"));
  EXPECT_EQ(radios[1]["bssid"], laptop.Status("bssid"));

  Do({"deleteNetwork", "--id", "1"});
  phone.ExpectDisconnected();
  laptop.ExpectDisconnected();
  EXPECT_EQ(Devices(), std::set<std::string>{});
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), EndToEnd::Success("1\n"));
  phone.Control().Do("REMOVE_NETWORK all");
  laptop.Control().Do("REMOVE_NETWORK all");
  WaitUntil("Home is gone at 2.4 GHz", [&] { return !phone.Hears("Home", k2_4GHz); });
  WaitUntil("Home is gone at 5 GHz", [&] { return !laptop.Hears("Home", k5GHz); });
}

TEST_F(Networks, WhatHappensToOneNetworkNoClientOfAnotherNotices) {
  StartOnRadios();
  MakeBridge("br1", "10.0.1.1");
  CreateNetwork("Home", 1);
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  Client visitor("visitor", 4);
  phone.Join({});
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  const std::string phoneSince = phone.ConnectedSince();
  const std::string laptopSince = laptop.ConnectedSince();
  const auto expectUndisturbed = [&](const std::string& what) {
    EXPECT_EQ(phone.ConnectedSince(), phoneSince) << what;
    EXPECT_EQ(laptop.ConnectedSince(), laptopSince) << what;
    EXPECT_TRUE(phone.IsConnected()) << what;
    EXPECT_TRUE(laptop.IsConnected()) << what;
  };

  CreateNetwork("Guests", 2, "welcome-guest");
  visitor.Join({.ssid = "Guests", .passphrase = "welcome-guest"});
  expectUndisturbed("another network");
  Do({"activate", "--id", "2", "--bridge", "br1"});
  expectUndisturbed("its bridge");

  Do({"rotatePassword", "--id", "2", "--radio", "SmartConnect"});
  visitor.ExpectDisconnected();
  visitor.Join({.ssid = "Guests", .passphrase = Network(2)["passphrase"].asString()});
  expectUndisturbed("its password");

  EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "none", "--action", "Deny", "--devices", "visitor",
                     visitor.Address(), "--applyToAll", "0"}),
            EndToEnd::Success("ID: 1\n"));
  Call<&Wifi::WifiClient::AssignMACFilterProfile>(2, 1);
  visitor.ExpectDisconnected();
  Call<&Wifi::WifiClient::AssignMACFilterProfile>(2, -1);
  expectUndisturbed("its filter");

  // A minute that is days away, then all the week.
  const int away = static_cast<int>((std::time(nullptr) / 60 + 5000) % 10079);
  SetOnTimes(2, {away, away + 1});
  WaitUntil("Guests is off", [&] { return !Network(2)["up"].asBool(); });
  expectUndisturbed("its schedule, off");
  SetOnTimes(2, {0, 10080});
  ExpectUpInTheEnd(2);
  visitor.Join({.ssid = "Guests", .passphrase = Network(2)["passphrase"].asString()});
  expectUndisturbed("its schedule, on");

  Do({"deleteNetwork", "--id", "2"});
  visitor.ExpectDisconnected();
  expectUndisturbed("its end");
  ExpectDevicesInTheEnd({phone.Address(), laptop.Address()});
}

TEST_F(Networks, NetworksAreAsTheyWereAfterTheDaemonIsStartedAgain) {
  StartOnRadios();
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2, "welcome-guest");
  const Json::Value home = Network(1);
  StartOnRadios();
  EXPECT_EQ(Network(1), home);
  Client phone("phone", 2);
  phone.Join({.ssid = "Guests", .passphrase = "welcome-guest"});
  phone.Join({.frequency = k5GHz, .keyManagement = "WPA-PSK SAE"});
}

}  // namespace

}  // namespace TALO::Hwsim
