#include "daemon/radio/linux/control/hostapd_commands.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

namespace TALO::Wifid {

namespace {

using Rule = AccessPlan::Rule;

const std::string kKey = "0123456789abcdef0123456789abcdef0123456789abcdef0123456789ABCDEF";

const Wifi::Util::MACAddress kAnna("02:00:00:00:01:01");
const Wifi::Util::MACAddress kBen("02:00:00:00:01:02");
const Wifi::Util::MACAddress kCleo("02:00:00:00:01:03");

Commands Change(const AccessPlan& before, const AccessPlan& after) {
  return ChangeAccess("wlan0_1", before, after);
}

TEST(HostapdCommands, NamePhyFileAndInterface) {
  EXPECT_EQ(AddBSS("phy0", "/run/wifi/wlan0_1.conf"), "ADD bss_config=phy0:/run/wifi/wlan0_1.conf");
  EXPECT_EQ(RemoveBSS("wlan0_1"), "REMOVE wlan0_1");
  EXPECT_EQ(StartPushButton("wlan0_1"), "IFNAME=wlan0_1 WPS_PBC");
  EXPECT_EQ(CancelPushButton("wlan0_1"), "IFNAME=wlan0_1 WPS_CANCEL");
}

TEST(ChangePassphrase, DropsEverybodyBeforeAndAfterTheCachedKeys) {
  for (const SecurityMode mode :
       {SecurityMode::PersonalWPA, SecurityMode::PersonalWPA2, SecurityMode::PersonalWPA3,
        SecurityMode::PersonalWPAMixed, SecurityMode::PersonalWPA2_3Mixed}) {
    EXPECT_TRUE(CanChangePassphrase(mode, "correct-horse", "another \"one\" "));
    EXPECT_EQ(ChangePassphrase("wlan0_1", mode, "another \"one\" "),
              (Commands{"IFNAME=wlan0_1 SET wpa_passphrase another \"one\" ", "IFNAME=wlan0_1 RELOAD_WPA_PSK",
                        "IFNAME=wlan0_1 DEAUTHENTICATE ff:ff:ff:ff:ff:ff", "IFNAME=wlan0_1 PMKSA_FLUSH",
                        "IFNAME=wlan0_1 DEAUTHENTICATE ff:ff:ff:ff:ff:ff"}));
  }
}

TEST(ChangePassphrase, GivesAKeyAsItIs) {
  for (const SecurityMode mode :
       {SecurityMode::PersonalWPA, SecurityMode::PersonalWPA2, SecurityMode::PersonalWPAMixed}) {
    EXPECT_TRUE(CanChangePassphrase(mode, "correct-horse", kKey));
    EXPECT_TRUE(CanChangePassphrase(mode, kKey, "correct-horse"));
    EXPECT_EQ(
        ChangePassphrase("wlan0_1", mode, kKey),
        (Commands{"IFNAME=wlan0_1 SET wpa_psk " + kKey, "IFNAME=wlan0_1 DEAUTHENTICATE ff:ff:ff:ff:ff:ff",
                  "IFNAME=wlan0_1 PMKSA_FLUSH", "IFNAME=wlan0_1 DEAUTHENTICATE ff:ff:ff:ff:ff:ff"}));
  }
}

TEST(ChangePassphrase, CannotBeDoneWhereWPA3HasAPasswordOfItsOwn) {
  for (const SecurityMode mode : {SecurityMode::PersonalWPA3, SecurityMode::PersonalWPA2_3Mixed}) {
    EXPECT_FALSE(CanChangePassphrase(mode, "correct-horse", kKey));
    EXPECT_FALSE(CanChangePassphrase(mode, kKey, "correct-horse"));
    EXPECT_FALSE(CanChangePassphrase(mode, kKey, kKey));
    EXPECT_THROW(ChangePassphrase("wlan0_1", mode, kKey), std::invalid_argument);
  }
}

TEST(ChangePassphrase, IsForModesThatHaveOne) {
  for (const SecurityMode mode : {SecurityMode::Disabled, SecurityMode::OWE, SecurityMode::EnterpriseWPA2,
                                  SecurityMode::WEP, SecurityMode::Error}) {
    EXPECT_FALSE(CanChangePassphrase(mode, "correct-horse", "another"));
    EXPECT_THROW(ChangePassphrase("wlan0_1", mode, "another"), std::invalid_argument);
  }
}

TEST(ChangeHidden, SaysSoInTheBeaconToo) {
  EXPECT_EQ(ChangeHidden("wlan0_1", true),
            (Commands{"IFNAME=wlan0_1 SET ignore_broadcast_ssid 1", "IFNAME=wlan0_1 UPDATE_BEACON"}));
  EXPECT_EQ(ChangeHidden("wlan0_1", false),
            (Commands{"IFNAME=wlan0_1 SET ignore_broadcast_ssid 0", "IFNAME=wlan0_1 UPDATE_BEACON"}));
}

TEST(ChangeHidden, CannotBringWPSBack) {
  BSSPlan bss;
  bss.networkId = 1;
  bss.securityMode = SecurityMode::PersonalWPA2;
  EXPECT_FALSE(CanChangeHidden(bss));
  bss.hidden = true;
  EXPECT_TRUE(CanChangeHidden(bss));
  bss.hidden = false;
  bss.securityMode = SecurityMode::PersonalWPA3;
  EXPECT_TRUE(CanChangeHidden(bss));
}

TEST(ChangeAccess, IsNothingWhereNothingChanges) {
  EXPECT_EQ(Change({}, {}), Commands{});
  EXPECT_EQ(Change({Rule::OnlyListed, {kAnna}}, {Rule::OnlyListed, {kAnna}}), Commands{});
  EXPECT_EQ(Change({Rule::AllButListed, {kAnna}}, {Rule::AllButListed, {kAnna}}), Commands{});
}

TEST(ChangeAccess, OfAListAddsWhoComesBeforeItTakesOffWhoGoes) {
  EXPECT_EQ(Change({Rule::OnlyListed, {kAnna, kBen}}, {Rule::OnlyListed, {kBen, kCleo}}),
            (Commands{"IFNAME=wlan0_1 ACCEPT_ACL ADD_MAC 02:00:00:00:01:03",
                      "IFNAME=wlan0_1 ACCEPT_ACL DEL_MAC 02:00:00:00:01:01"}));
  EXPECT_EQ(Change({Rule::AllButListed, {kAnna, kBen}}, {Rule::AllButListed, {kBen, kCleo}}),
            (Commands{"IFNAME=wlan0_1 DENY_ACL ADD_MAC 02:00:00:00:01:03",
                      "IFNAME=wlan0_1 DENY_ACL DEL_MAC 02:00:00:00:01:01"}));
}

TEST(ChangeAccess, FillsTheListBeforeItHoldsAndDropsTheOthersAfter) {
  EXPECT_EQ(
      Change({}, {Rule::OnlyListed, {kBen, kAnna}}),
      (Commands{"IFNAME=wlan0_1 ACCEPT_ACL ADD_MAC 02:00:00:00:01:01",
                "IFNAME=wlan0_1 ACCEPT_ACL ADD_MAC 02:00:00:00:01:02", "IFNAME=wlan0_1 SET macaddr_acl 1",
                "IFNAME=wlan0_1 ACCEPT_ACL DEL_MAC ff:ff:ff:ff:ff:ff"}));
  EXPECT_EQ(
      Change({Rule::AllButListed, {kAnna}}, {Rule::OnlyListed, {kBen}}),
      (Commands{"IFNAME=wlan0_1 ACCEPT_ACL ADD_MAC 02:00:00:00:01:02", "IFNAME=wlan0_1 SET macaddr_acl 1",
                "IFNAME=wlan0_1 ACCEPT_ACL DEL_MAC ff:ff:ff:ff:ff:ff",
                "IFNAME=wlan0_1 DENY_ACL DEL_MAC 02:00:00:00:01:01"}));
}

TEST(ChangeAccess, EmptiesTheListAfterItHolds) {
  EXPECT_EQ(Change({Rule::OnlyListed, {kAnna, kBen}}, {}),
            (Commands{"IFNAME=wlan0_1 SET macaddr_acl 0", "IFNAME=wlan0_1 ACCEPT_ACL CLEAR"}));
  EXPECT_EQ(Change({Rule::AllButListed, {kAnna}}, {}),
            (Commands{"IFNAME=wlan0_1 DENY_ACL DEL_MAC 02:00:00:00:01:01"}));
  EXPECT_EQ(Change({}, {Rule::AllButListed, {kAnna}}),
            (Commands{"IFNAME=wlan0_1 DENY_ACL ADD_MAC 02:00:00:00:01:01"}));
}

TEST(ChangeAccess, DropsWhoWasAcceptedAndIsDeniedWhileTheListStillHolds) {
  EXPECT_EQ(Change({Rule::OnlyListed, {kAnna, kBen}}, {Rule::AllButListed, {kBen, kCleo}}),
            (Commands{"IFNAME=wlan0_1 DENY_ACL ADD_MAC 02:00:00:00:01:02",
                      "IFNAME=wlan0_1 DENY_ACL ADD_MAC 02:00:00:00:01:03",
                      "IFNAME=wlan0_1 ACCEPT_ACL DEL_MAC 02:00:00:00:01:02",
                      "IFNAME=wlan0_1 SET macaddr_acl 0", "IFNAME=wlan0_1 ACCEPT_ACL CLEAR"}));
}

}  // namespace

}  // namespace TALO::Wifid
