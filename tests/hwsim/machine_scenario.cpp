// What the machine gives every scenario: radios, others in the air, a system bus.

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

#include <filesystem>

namespace TALO::Hwsim {

namespace {

class Machine : public Scenario {};

TEST_F(Machine, HasSixRadiosOfBothBands) {
  for (int radio = 0; radio < 6; ++radio) {
    const std::string info = OutputOf({"iw", "phy", "phy" + std::to_string(radio), "info"});
    EXPECT_NE(info.find(" MHz [6] (20.0 dBm)"), std::string::npos) << info;
    EXPECT_NE(info.find(" MHz [36]"), std::string::npos) << info;
  }
  EXPECT_FALSE(std::filesystem::exists("/sys/class/ieee80211/phy6"));
}

TEST_F(Machine, BeginsInTheWorldDomainWhere5GHzIsNotForAccessPoints) {
  EXPECT_NE(OutputOf({"iw", "reg", "get"}).find("country 00:"), std::string::npos);
  EXPECT_NE(OutputOf({"iw", "phy", "phy1", "info"}).find(" MHz [36] (20.0 dBm) (no IR)"), std::string::npos);
}

TEST_F(Machine, LetsAClientJoinAnAccessPointByItsPasswordOnly) {
  const NetworkNamespace neighbour("neighbour");
  const std::string interface = neighbour.TakeRadio(2);
  ForeignAP accessPoint(neighbour, interface, {.ssid = "Elsewhere", .passphrase = "their-secret"});
  neighbour.SetAddress(interface, "10.0.0.2");
  EXPECT_EQ(accessPoint.Address(), "02:00:00:00:02:00");

  Client phone("phone", 3);
  EXPECT_EQ(phone.Address(), "02:00:00:00:03:00");
  phone.Host().SetAddress(phone.Interface(), "10.0.0.3");
  phone.BeginToJoin({.ssid = "Elsewhere", .passphrase = "another-secret", .frequency = k2_4GHz});
  phone.ExpectRefused();
  EXPECT_FALSE(phone.IsConnected());
  EXPECT_FALSE(accessPoint.Has(phone.Address()));
  EXPECT_FALSE(phone.Host().Pings("10.0.0.2"));

  phone.Join({.ssid = "Elsewhere", .passphrase = "their-secret", .frequency = k2_4GHz});
  EXPECT_EQ(phone.SSID(), "Elsewhere");
  EXPECT_TRUE(phone.IsConnected());
  WaitUntil("the access point knows the phone", [&] { return accessPoint.Has(phone.Address()); });
  phone.Host().ExpectPing("10.0.0.2");

  phone.Leave();
  EXPECT_FALSE(phone.IsConnected());
  phone.BeginToRejoin();
  phone.ExpectConnected();
  EXPECT_NE(phone.ConnectedSince(), "");
}

TEST_F(Machine, LetsAClientKeepTheSecretOfSAE) {
  const NetworkNamespace neighbour("neighbour");
  ForeignAP accessPoint(neighbour, neighbour.TakeRadio(2),
                        {.ssid = "Elsewhere",
                         .passphrase = "their-secret",
                         .more = "wpa_key_mgmt=WPA-PSK SAE\nieee80211w=1\nsae_require_mfp=1\n"});
  Client phone("phone", 3);
  EXPECT_FALSE(phone.KeepsSecret());
  phone.BeginToJoin(
      {.ssid = "Elsewhere", .passphrase = "another-secret", .frequency = k2_4GHz, .keyManagement = "SAE"});
  phone.ExpectRefused();
  EXPECT_FALSE(phone.KeepsSecret());
  phone.Join(
      {.ssid = "Elsewhere", .passphrase = "their-secret", .frequency = k2_4GHz, .keyManagement = "SAE"});
  EXPECT_EQ(phone.Status("key_mgmt"), "SAE");
  EXPECT_TRUE(phone.KeepsSecret());
}

TEST_F(Machine, LetsAClientJoinByAButton) {
  const NetworkNamespace neighbour("neighbour");
  ForeignAP accessPoint(
      neighbour, neighbour.TakeRadio(2),
      {.ssid = "Elsewhere",
       .passphrase = "their-secret",
       .more = "eap_server=1\nwps_state=2\nconfig_methods=push_button virtual_push_button\n"});
  Client phone("phone", 3);
  accessPoint.Control().Do("WPS_PBC");
  phone.PushButton();
  phone.Control().WaitFor({"WPS-SUCCESS"});
  phone.ExpectConnected();
  EXPECT_EQ(phone.SSID(), "Elsewhere");
}

TEST_F(Machine, TellsAClientWhoIsInTheAir) {
  Client phone("phone", 3);
  EXPECT_FALSE(phone.Hears("Elsewhere", k2_4GHz));
  const NetworkNamespace neighbour("neighbour");
  const ForeignAP accessPoint(neighbour, neighbour.TakeRadio(2),
                              {.ssid = "Elsewhere", .passphrase = "their-secret"});
  WaitUntil("the phone hears the access point", [&] { return phone.Hears("Elsewhere", k2_4GHz); });
}

TEST_F(Machine, ConnectsTwoHostsByACableAndABridge) {
  const NetworkNamespace host("host");
  Connect(NetworkNamespace(), "cable0", host, "cable1");
  host.SetAddress("cable1", "10.0.0.9");
  EXPECT_FALSE(host.Pings(kRouterAddress));
  NetworkNamespace().Join("br0", "cable0");
  host.ExpectPing(kRouterAddress);
}

TEST_F(Machine, ReachesWhatIsBehindAClientInFourAddressMode) {
  const NetworkNamespace neighbour("neighbour");
  neighbour.MakeBridge("br2");
  neighbour.SetAddress("br2", "10.0.2.1");
  ForeignAP accessPoint(
      neighbour, neighbour.TakeRadio(2),
      {.ssid = "Elsewhere", .passphrase = "their-secret", .more = "wds_sta=1\n", .bridge = "br2"});
  Client node("node", 3, "br1");
  const NetworkNamespace desk("desk");
  Connect(node.Host(), "cable0", desk, "cable1");
  node.Host().Join("br1", "cable0");
  desk.SetAddress("cable1", "10.0.2.9");
  node.Join({.ssid = "Elsewhere", .passphrase = "their-secret"});
  neighbour.ExpectPing("10.0.2.9");
}

TEST_F(Machine, LetsRootUseTheDaemonByTheShippedPolicy) {
  StartDaemon({"--radio-driver", "simulated", "--model", "Dune40"});
  CreateNetwork("Home", 1);
  EXPECT_EQ(Network(1)["ssid"], "Home");
  EXPECT_EQ(Devices(), std::set<std::string>{});
  EXPECT_EQ(Call<&Wifi::WifiClient::GetNetworkSetting>(1).ssid, "Home");
}

TEST_F(Machine, RunsTheDaemonAsAUserWithTheRightsOfItsUnit) {
  StartDaemon({"--radio-driver", "simulated", "--model", "Dune40"});
  const std::string status =
      OutputOf({"grep", "-E",
                "^(Uid|CapEff|CapBnd|NoNewPrivs):", "/proc/" + std::to_string(Daemon().Id()) + "/status"});
  // CAP_NET_ADMIN is number 12, CAP_NET_RAW 13.
  EXPECT_NE(status.find("CapEff:\t0000000000003000\nCapBnd:\t0000000000003000\nNoNewPrivs:\t1\n"),
            std::string::npos)
      << status;
  EXPECT_EQ(status.find("Uid:\t0\t"), std::string::npos) << status;
}

}  // namespace

}  // namespace TALO::Hwsim
