// A rotated password shuts out who knows only the old one.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"

namespace TALO::Hwsim {

namespace {

class Passwords : public Scenario {
 protected:
  Passwords() {
    StartOnRadios();
    CreateNetwork("Home", 1);
  }

  /// Refused as often as it tries, which is with the secret that it keeps first.
  static void ExpectShutOut(Client& client) {
    client.ExpectRefused();
    client.ExpectRefused();
    EXPECT_FALSE(client.IsConnected());
  }
};

TEST_F(Passwords, AClientIsDroppedAndJoinsByTheNewPasswordOnly) {
  CreateNetwork("Guests", 2, "welcome-guest");
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  Client visitor("visitor", 4);
  phone.Join({});
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  visitor.Join({.ssid = "Guests", .passphrase = "welcome-guest"});
  const std::string since = visitor.ConnectedSince();

  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  phone.ExpectDisconnected();
  laptop.ExpectDisconnected();
  ExpectShutOut(phone);
  ExpectShutOut(laptop);
  EXPECT_EQ(Devices(), std::set<std::string>{visitor.Address()});

  const std::string passphrase = Network(1)["passphrase"].asString();
  EXPECT_EQ(passphrase.size(), 20U);
  phone.Join({.passphrase = passphrase});
  laptop.Join({.passphrase = passphrase, .frequency = k5GHz, .keyManagement = "SAE"});
  EXPECT_EQ(visitor.ConnectedSince(), since);
}

TEST_F(Passwords, AClientThatWasAwayHasNoUseOfTheSecretThatItKept) {
  Client laptop("laptop", 2);
  laptop.Join({.keyManagement = "SAE"});
  laptop.Leave();
  ASSERT_TRUE(laptop.KeepsSecret());
  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  laptop.BeginToRejoin();
  ExpectShutOut(laptop);
  laptop.Join({.passphrase = Network(1)["passphrase"].asString(), .keyManagement = "SAE"});
}

TEST_F(Passwords, OneRadioMayGetAPasswordOfItsOwn) {
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  phone.Join({});
  laptop.Join({.frequency = k5GHz});
  const std::string since = laptop.ConnectedSince();
  Do({"rotatePassword", "--id", "1", "--radio", "Band2_4GHz"});
  phone.ExpectDisconnected();
  ExpectShutOut(phone);
  EXPECT_EQ(laptop.ConnectedSince(), since);
  const Json::Value radios = Network(1)["radios"];
  EXPECT_EQ(radios[1]["passphrase"], "correct-horse");
  phone.Join({.passphrase = radios[0]["passphrase"].asString()});
}

TEST_F(Passwords, TheNewPasswordIsStillInForceAfterTheDaemonIsStartedAgain) {
  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  const std::string passphrase = Network(1)["passphrase"].asString();
  StartOnRadios();
  Client phone("phone", 2);
  phone.BeginToJoin({});
  phone.ExpectRefused();
  phone.Join({.passphrase = passphrase});
}

}  // namespace

}  // namespace TALO::Hwsim
