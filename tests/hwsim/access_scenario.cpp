// MAC filters keep clients out of the air.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"

namespace TALO::Hwsim {

namespace {

class Access : public Scenario {
 protected:
  Access() {
    StartOnRadios();
    CreateNetwork("Home", 1);
    phone_.Join({});
    laptop_.Join({.keyManagement = "SAE"});
  }

  void CreateProfile(const std::string& action, Client& client) {
    EXPECT_EQ(RunTool({"createMACFilterProfile", "--name", "list", "--action", action, "--devices", "device",
                       client.Address(), "--applyToAll", "1"}),
              EndToEnd::Success("ID: 1\n"));
  }

  /// One is out and stays out, the other did not notice anything.
  void ExpectOutAndUndisturbed(Client& out, Client& undisturbed, const std::string& since) {
    out.ExpectDisconnected();
    out.ExpectRefused();
    EXPECT_FALSE(out.IsConnected());
    ExpectDevicesInTheEnd({undisturbed.Address()});
    EXPECT_EQ(undisturbed.ConnectedSince(), since);
  }

  void ExpectReadmitted(Client& client) {
    client.Join({});
    ExpectDevicesInTheEnd({phone_.Address(), laptop_.Address()});
  }

  Client phone_{"phone", 2};
  Client laptop_{"laptop", 3};
};

TEST_F(Access, WhoIsDeniedIsDroppedAndRefusedUntilTheProfileIsDeleted) {
  const std::string since = laptop_.ConnectedSince();
  CreateProfile("Deny", phone_);
  ExpectOutAndUndisturbed(phone_, laptop_, since);
  Do({"deleteMACFilterProfile", "--id", "1"});
  ExpectReadmitted(phone_);
  EXPECT_EQ(laptop_.ConnectedSince(), since);
}

TEST_F(Access, WhoIsNotAllowedIsDroppedAndRefusedUntilTheProfileIsDeleted) {
  const std::string since = phone_.ConnectedSince();
  CreateProfile("Allow", phone_);
  ExpectOutAndUndisturbed(laptop_, phone_, since);
  Do({"deleteMACFilterProfile", "--id", "1"});
  ExpectReadmitted(laptop_);
  EXPECT_EQ(phone_.ConnectedSince(), since);
}

TEST_F(Access, AChangedProfileIsInForceAtOnce) {
  CreateProfile("Deny", phone_);
  phone_.ExpectDisconnected();
  Do({"modifyMACFilterProfile", "--id", "1", "--name", "list", "--action", "Deny", "--devices", "laptop",
      laptop_.Address()});
  laptop_.ExpectDisconnected();
  phone_.Join({});
  laptop_.ExpectRefused();
  ExpectDevicesInTheEnd({phone_.Address()});
}

TEST_F(Access, AProfileIsStillInForceAfterTheRadiosWereDown) {
  CreateProfile("Allow", phone_);
  laptop_.ExpectDisconnected();
  Do({"restartNetworks", "--force", "1"});
  phone_.Join({});
  laptop_.BeginToJoin({});
  laptop_.ExpectRefused();
  ExpectDevicesInTheEnd({phone_.Address()});
}

}  // namespace

}  // namespace TALO::Hwsim
