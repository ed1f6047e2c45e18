// What is killed or hangs comes back, and nothing else is lost.

#include "hwsim/support/furnished_router.h"
#include "hwsim/support/waiting.h"

#include <csignal>

namespace TALO::Hwsim {

namespace {

class Crashes : public FurnishedRouter {};

TEST_F(Crashes, ClientsComeBackToTheNetworksOfAKilledHostapd) {
  ForgetEvents();
  Stopwatch watch("hostapd was killed");
  ExpectAnother("hostapd", SendSignal("hostapd", SIGKILL), watch);
  ExpectClientsBack(watch);
  ExpectAllBack(watch);
  EXPECT_FALSE(upstream_.Control().Has("AP-STA-DISCONNECTED"));
  ExpectPasswordAndFilterInForce();
}

TEST_F(Crashes, TheUpstreamConnectionOfAKilledSupplicantComesBackAndNoClientNotices) {
  const ClientsSince since = AskClients();
  ForgetEvents();
  Stopwatch watch("wpa_supplicant was killed");
  ExpectAnother("wpa_supplicant", SendSignal("wpa_supplicant", SIGKILL), watch);
  upstream_.Control().WaitFor({"AP-STA-CONNECTED"});
  watch.Tell("the upstream connection is back");
  ExpectAllBack(watch);
  EXPECT_EQ(AskClients(), since);
  ExpectPasswordAndFilterInForce();
}

TEST_F(Crashes, ARadioWhoseInterfaceWasDeletedComesBack) {
  const std::string since = laptop_.ConnectedSince();
  Stopwatch watch("the interface was deleted");
  OutputOf({"iw", "dev", "wlan0", "del"});
  WaitUntil("the interface is made again", [] { return Succeeds({"iw", "dev", "wlan0", "info"}); });
  watch.Tell("it is there again");
  phone_.ExpectDisconnected();
  phone_.ExpectConnected();
  ExpectAllBack(watch);
  EXPECT_EQ(laptop_.ConnectedSince(), since);
  ExpectPasswordAndFilterInForce();
}

TEST_F(Crashes, AKilledDaemonTakesUpWhatWas) {
  ForgetEvents();
  Stopwatch watch("the daemon was killed");
  Daemon().SendSignal(SIGKILL);
  EXPECT_EQ(Daemon().Wait(), -SIGKILL);
  StartOnRadios();
  watch.Tell("another serves");
  ExpectClientsBack(watch);
  ExpectAllBack(watch);
  ExpectPasswordAndFilterInForce();
}

class Hangs : public FurnishedRouter {};

TEST_F(Hangs, ClientsComeBackToTheNetworksOfAHangingHostapd) {
  ForgetEvents();
  Stopwatch watch("hostapd hung");
  ExpectAnother("hostapd", SendSignal("hostapd", SIGSTOP), watch);
  ExpectClientsBack(watch);
  ExpectAllBack(watch);
  EXPECT_FALSE(upstream_.Control().Has("AP-STA-DISCONNECTED"));
  ExpectPasswordAndFilterInForce();
}

TEST_F(Hangs, AChangeFailsByAHangingHostapdAndAllIsAsItWas) {
  ForgetEvents();
  Stopwatch watch("hostapd hung");
  const pid_t hangs = SendSignal("hostapd", SIGSTOP);
  const EndToEnd::ToolRun run = RunTool({"createNetwork", "--ssid", "Party", "--password", "party-secret"});
  watch.Tell("the change was refused");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.output.starts_with("Create Network ID: Failed to execute command: ")) << run.output;
  EXPECT_NE(run.output.find("hostapd has not answered within 10 seconds"), std::string::npos) << run.output;
  EXPECT_TRUE(run.output.ends_with(": Radio failed\n")) << run.output;
  ExpectAnother("hostapd", hangs, watch);
  ExpectClientsBack(watch);
  ExpectAllBack(watch);
  ExpectPasswordAndFilterInForce();
}

TEST_F(Hangs, TheUpstreamConnectionOfAHangingSupplicantComesBackAndNoClientNotices) {
  const ClientsSince since = AskClients();
  ForgetEvents();
  Stopwatch watch("wpa_supplicant hung");
  ExpectAnother("wpa_supplicant", SendSignal("wpa_supplicant", SIGSTOP), watch);
  upstream_.Control().WaitFor({"AP-STA-CONNECTED"});
  watch.Tell("the upstream connection is back");
  ExpectAllBack(watch);
  EXPECT_EQ(AskClients(), since);
}

}  // namespace

}  // namespace TALO::Hwsim
