// Nodes of a mesh join one another with all that is behind them.

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

namespace TALO::Hwsim {

namespace {

constexpr const char* kDesk = "10.0.0.9";

class Backhaul : public Scenario {
 protected:
  Backhaul() { StartOnRadios(); }

  /// A host on a cable to a bridge of another.
  void PutDeskBehind(const NetworkNamespace& node, const std::string& bridge) {
    Connect(node, "cable0", desk_, "cable1");
    node.Join(bridge, "cable0");
    desk_.SetAddress("cable1", kDesk);
  }

  NetworkNamespace desk_{"desk"};
};

TEST_F(Backhaul, AHostBehindANodeThatJoinedIsReached) {
  CreateNetwork("Home", 1);
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  Client node("node", 2, "br7");
  PutDeskBehind(node.Host(), "br7");
  EXPECT_FALSE(desk_.Pings(kRouterAddress));
  node.Join({.ssid = "Mesh", .passphrase = "mesh-backhaul", .frequency = k5GHz});
  desk_.ExpectPing(kRouterAddress);
  NetworkNamespace().ExpectPing(kDesk);

  Client phone("phone", 3);
  phone.Join({});
  phone.Host().SetAddress(phone.Interface(), "10.0.0.2");
  phone.Host().ExpectPing(kDesk);

  const std::string since = phone.ConnectedSince();
  Do({"modifyBackhaul", "--enable", "0", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  node.ExpectDisconnected();
  EXPECT_FALSE(desk_.Pings(kRouterAddress));
  EXPECT_EQ(phone.ConnectedSince(), since);
}

TEST_F(Backhaul, ANodeWithAnotherPasswordIsRefused) {
  Do({"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "mesh-backhaul"});
  Client node("node", 2, "br7");
  node.BeginToJoin({.ssid = "Mesh", .passphrase = "another-secret", .frequency = k5GHz});
  node.ExpectRefused();
  EXPECT_FALSE(node.IsConnected());
}

TEST_F(Backhaul, WhatIsBehindTheParentIsReachedFromTheRouterAndItsClients) {
  CreateNetwork("Home", 1);
  const NetworkNamespace parent("parent");
  parent.MakeBridge("br7");
  ForeignAP accessPoint(parent, parent.TakeRadio(2),
                        {.ssid = "Upper",
                         .passphrase = "mesh-backhaul",
                         .channel = 36,
                         .more = "wds_sta=1\n",
                         .bridge = "br7"});
  PutDeskBehind(parent, "br7");
  Do({"modifyBackhaulSTA", "--enable", "1", "--ssid", "Upper", "--password", "mesh-backhaul"});
  WaitUntil("the parent is joined",
            [&] { return Record("getBackhaulSTAStatuses", "radio", "Band5GHz")["connected"] == true; });
  const Json::Value status = Record("getBackhaulSTAStatuses", "radio", "Band5GHz");
  EXPECT_EQ(status["parent"], accessPoint.Address());
  EXPECT_EQ(status["interface"], "wlan1bhs");
  EXPECT_EQ(status["channel"], 36);
  NetworkNamespace().ExpectPing(kDesk);

  Client phone("phone", 3);
  phone.Join({});
  phone.Host().SetAddress(phone.Interface(), "10.0.0.2");
  phone.Host().ExpectPing(kDesk);
}

}  // namespace

}  // namespace TALO::Hwsim
