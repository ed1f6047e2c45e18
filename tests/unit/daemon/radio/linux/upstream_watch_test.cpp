#include "daemon/radio/linux/upstream_watch.h"

#include "daemon/radio/linux/bss_stations.h"
#include "daemon/radio/linux/secrets.h"
#include "support/events.h"
#include "support/machine/fake_machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What the driver remembers: of upstream connections, of stations, of secrets.

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;
using Wifi::Util::MACAddress;

const MACAddress kFirst("0a:00:00:00:00:01");
const MACAddress kSecond("0a:00:00:00:00:02");

TEST(UpstreamWatch, FollowsWhatWpaSupplicantTells) {
  FakeMachine machine;
  UpstreamWatch watch(machine.kernel, machine.timers);
  EXPECT_EQ("disabled ", Describe(watch.GetLive()));
  watch.Begin("wlan0", "Uplink", false);
  EXPECT_EQ("disabled Uplink", Describe(watch.GetLive()));
  watch.Begin("wlan0", "Uplink", true);
  const std::string trying =
      "SME: Trying to authenticate with 06:00:00:00:00:01 (SSID='Uplink' freq=2412 MHz)";
  const std::string connected =
      "CTRL-EVENT-CONNECTED - Connection to 06:00:00:00:00:01 completed [id=0 id_str=]";
  const std::string disabled =
      "CTRL-EVENT-SSID-TEMP-DISABLED id=0 ssid=\"Uplink\" auth_failures=1 duration=10 reason=";
  const std::string isConnecting = "connecting to Uplink 06:00:00:00:00:01 on channel 0";
  const std::string isConnected =
      "connected to Uplink 06:00:00:00:00:01 on channel 0, 0 dBm, 0 Mbit/s for 0 s";
  const std::vector<std::pair<std::string, std::string>> steps = {
      {"CTRL-EVENT-SCAN-RESULTS ", "scanning for Uplink"},
      {"SME: something else", "scanning for Uplink"},
      {"CTRL-EVENT-NETWORK-NOT-FOUND ", "failed to join Uplink: no such access point"},
      // While it tries again it stays failed.
      {"CTRL-EVENT-SCAN-STARTED ", "failed to join Uplink: no such access point"},
      {trying, "failed to join Uplink: no such access point"},
      {connected, isConnected},
      {"CTRL-EVENT-NETWORK-NOT-FOUND ", isConnected},
      {"CTRL-EVENT-DISCONNECTED bssid=06:00:00:00:00:01 reason=3", "scanning for Uplink"},
      {trying, isConnecting},
      {"CTRL-EVENT-DISCONNECTED bssid=06:00:00:00:00:01 reason=15", "scanning for Uplink"},
      {disabled + "WRONG_KEY", "failed to join Uplink: wrong password"},
      {"CTRL-EVENT-DISCONNECTED bssid=06:00:00:00:00:01 reason=3", "failed to join Uplink: wrong password"},
      {disabled + "AUTH_FAILED", "failed to join Uplink: wrong user or password"},
      {disabled + "CONN_FAILED", "failed to join Uplink: the access point refuses it"},
      {connected, isConnected},
  };
  for (const auto& [text, state] : steps) {
    const auto message = ReadMessage("IFNAME=wlan0 <3>" + text);
    ASSERT_TRUE(message) << text;
    watch.Take(*message);
    EXPECT_EQ(state, Describe(watch.GetLive())) << text;
  }
  EXPECT_TRUE(watch.IsConnected());
  machine.kernel.Link("wlan0", MACAddress("06:00:00:00:00:01"));
  machine.kernel.SetChannel("wlan0", 2437, 20);
  machine.Advance(7000);
  EXPECT_EQ("connected to Uplink 06:00:00:00:00:01 on channel 6, -50 dBm, 300 Mbit/s for 7 s",
            Describe(watch.GetLive()));
  watch.End();
  EXPECT_EQ("disabled ", Describe(watch.GetLive()));
  EXPECT_EQ("", watch.GetInterface());
}

class BSSStationsTest : public testing::Test {
 protected:
  BSSStationsTest() { bss_.interface = "wlan0"; }

  FakeMachine machine_;
  Lines lines_;
  BSSStations stations_{machine_.kernel, machine_.timers,
                        [this](const RadioEvent& event) { lines_.push_back(Describe(event)); }};
  BSSPlan bss_ = [] {
    BSSPlan bss;
    bss.networkId = 3;
    return bss;
  }();
};

TEST_F(BSSStationsTest, WhoIsThereAlreadyStaysAndWhoIsNotDoesNotLeave) {
  stations_.Leave(bss_, kFirst, "left");
  stations_.Come(bss_, kSecond);
  stations_.Come(bss_, kFirst);
  stations_.Come(bss_, kSecond);
  EXPECT_EQ((Lines{"0a:00:00:00:00:02 connected to wlan0 (3)", "0a:00:00:00:00:01 connected to wlan0 (3)"}),
            lines_);
  const std::vector<LiveStation> live = stations_.GetLive("wlan0");
  ASSERT_EQ(2U, live.size());
  EXPECT_EQ(kSecond, live[0].address);
  EXPECT_TRUE(stations_.GetLive("wlan1").empty());
}

TEST_F(BSSStationsTest, DropsThoseWhomTheAccessDoesNotAdmit) {
  stations_.Come(bss_, kFirst);
  stations_.Come(bss_, kSecond);
  lines_.clear();
  stations_.Drop(bss_, {AccessPlan::Rule::AllButListed, {kFirst}}, "refused");
  EXPECT_EQ((Lines{"0a:00:00:00:00:01 left wlan0 (3): refused"}), lines_);
  stations_.DropAll(bss_, "BSS down");
  stations_.DropAll(bss_, "BSS down");
  EXPECT_EQ(
      (Lines{"0a:00:00:00:00:01 left wlan0 (3): refused", "0a:00:00:00:00:02 left wlan0 (3): BSS down"}),
      lines_);
}

TEST_F(BSSStationsTest, TheKernelIsNotAskedForEveryLook) {
  machine_.kernel.Link("wlan0", kFirst);
  stations_.Come(bss_, kFirst);
  EXPECT_EQ(-50, stations_.GetLive("wlan0").at(0).signal);
  machine_.kernel.Unlink("wlan0", kFirst);
  machine_.Advance(999);
  EXPECT_EQ(-50, stations_.GetLive("wlan0").at(0).signal);
  machine_.Advance(1);
  EXPECT_EQ(0, stations_.GetLive("wlan0").at(0).signal);
  // Who comes is looked at.
  machine_.kernel.Link("wlan0", kSecond);
  stations_.Come(bss_, kSecond);
  EXPECT_EQ(-50, stations_.GetLive("wlan0").at(1).signal);
}

// The access point makes an interface of its own for each.
TEST_F(BSSStationsTest, AStationInFourAddressModeIsShownWithWhatTheKernelKnowsOfIt) {
  const auto add = [this](const std::string& name, InterfaceType type, const MACAddress& station) {
    const MACAddress address("0e:00:00:00:00:0" + std::to_string(name.size() % 10));
    ASSERT_TRUE(machine_.kernel.AddInterface({0, name, type, address, false}).Succeeded());
    machine_.kernel.Link(name, station);
  };
  add("wlan0.sta1", InterfaceType::AccessPointVLAN, kFirst);
  // Of another BSS, and no such interface.
  add("wlan00.sta1", InterfaceType::AccessPointVLAN, kSecond);
  add("wlan0.other1", InterfaceType::Station, kSecond);
  stations_.Come(bss_, kFirst);
  stations_.Come(bss_, kSecond);
  const std::vector<LiveStation> live = stations_.GetLive("wlan0");
  ASSERT_EQ(2U, live.size());
  EXPECT_EQ(-50, live[0].signal);
  EXPECT_EQ(300, live[0].transmitRate);
  EXPECT_EQ(0, live[1].signal);
}

RadioPlan PlanWith(RadioFrequency radio, const std::string& passphrase) {
  RadioPlan plan;
  plan.radio = radio;
  plan.bsss.emplace_back();
  plan.bsss.back().passphrase = passphrase;
  return plan;
}

TEST(Secrets, AreHiddenWhereverTheyStand) {
  Secrets secrets;
  EXPECT_EQ("", secrets.Hide(""));
  RadioPlan plan = PlanWith(RadioFrequency::Band2_4GHz, "correct-horse");
  plan.bsss.push_back({});
  plan.station =
      StationPlan{"wlan0sta", "Uplink", "user", "uplink-password", {}, SecurityMode::EnterpriseWPA2};
  plan.backhaulStation = BackhaulStationPlan{"wlan0bhs", "Mesh", "mesh-password", ScanType::Default};
  secrets.Learn(plan);
  EXPECT_EQ("*** and *** and ***, psk=\"***\", password=***",
            secrets.Hide("correct-horse and correct-horse and mesh-password, psk=\"uplink-password\", "
                         "password=75706c696e6b2d70617373776f7264"));
}

TEST(Secrets, AreHiddenWhole) {
  Secrets secrets;
  secrets.Learn(PlanWith(RadioFrequency::Band2_4GHz, "correct-horse"));
  secrets.Learn(PlanWith(RadioFrequency::Band5GHz, "correct-horse-battery"));
  EXPECT_EQ("*** ***", secrets.Hide("correct-horse-battery correct-horse"));
}

TEST(Secrets, AreRememberedOnceMore) {
  Secrets secrets;
  for (const char* passphrase :
       {"first-passphrase", "second-passphrase", "second-passphrase", "third-passphrase"}) {
    secrets.Learn(PlanWith(RadioFrequency::Band2_4GHz, passphrase));
  }
  EXPECT_EQ("first-passphrase *** ***", secrets.Hide("first-passphrase second-passphrase third-passphrase"));
}

}  // namespace

}  // namespace TALO::Wifid
