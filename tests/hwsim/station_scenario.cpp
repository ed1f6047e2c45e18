// The router hears access points of others and joins them.

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

#include <chrono>
#include <optional>

namespace TALO::Hwsim {

namespace {

// Not UTF-8: the byte 0xff is in no character.
const std::string kSSID = "Up\xfflink";
const std::string kSSIDHex = "5570ff6c696e6b";

class Stations : public Scenario {
 protected:
  Stations() {
    StartOnRadios();
    Raise();
  }

  void Raise() { upstream_.emplace(neighbour_, interface_, ForeignAPSetup{kSSID, "uplink-password"}); }

  void ModifyStation(const std::string& password) { Do(StationCommand("Band2_4GHz", kSSID, password)); }

  /// How long, by the daemon's word, a client and the upstream connection have been there.
  struct ConnectedTimes {
    std::chrono::steady_clock::time_point asked;
    int device = 0;
    int upstream = 0;
    std::chrono::steady_clock::time_point answered;
  };
  ConnectedTimes AskForConnectedTimes(Client& client) {
    ConnectedTimes times;
    times.asked = std::chrono::steady_clock::now();
    times.device = Record("getDevices", "address", client.Address())["connectedTime"].asInt();
    times.upstream = Record("getStationStatuses", "radio", "Band2_4GHz")["connectedTime"].asInt();
    times.answered = std::chrono::steady_clock::now();
    return times;
  }

  NetworkNamespace neighbour_{"neighbour"};
  std::string interface_ = neighbour_.TakeRadio(2);
  std::optional<ForeignAP> upstream_;
};

TEST_F(Stations, AScanTellsOfAccessPointsOfOthersAndOfNoneOfItsOwn) {
  CreateNetwork("Home", 1);
  const NetworkNamespace office("office");
  ForeignAP other(office, office.TakeRadio(3),
                  {.ssid = "Office", .passphrase = "office-secret", .channel = 1});
  Json::Value results;
  WaitUntil("both are heard", [&] {
    results = Ask({"getScanResults", "--radio", "Band2_4GHz"});
    std::set<std::string> heard;
    for (const Json::Value& result : results) {
      heard.insert(result["ssidHex"].asString());
    }
    EXPECT_FALSE(heard.contains("486f6d65"));
    return heard == std::set<std::string>{kSSIDHex, "4f6666696365"};
  });
  for (const Json::Value& result : results) {
    const bool isOffice = result["ssid"] == "Office";
    EXPECT_EQ(result["bssid"], isOffice ? "02:00:00:00:03:00" : "02:00:00:00:02:00");
    EXPECT_EQ(result["channel"], isOffice ? 1 : 6);
    EXPECT_EQ(result["channelWidth"], 20);
    EXPECT_EQ(result["securityMode"], "PersonalWPA2");
    EXPECT_LT(result["signal"].asInt(), 0);
  }
}

TEST_F(Stations, AnAccessPointIsJoinedAndJoinedAgain) {
  CreateNetwork("Home", 1);
  Client phone("phone", 3);
  phone.Join({});
  const std::string since = phone.ConnectedSince();
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  const Json::Value status = Record("getStationStatuses", "radio", "Band2_4GHz");
  EXPECT_EQ(status["essidHex"], kSSIDHex);
  EXPECT_EQ(status["bssid"], "02:00:00:00:02:00");
  EXPECT_EQ(status["interface"], "wlan0sta");
  EXPECT_EQ(status["channel"], 6);
  EXPECT_EQ(phone.ConnectedSince(), since);

  upstream_->Control().ForgetEvents();
  Do({"reconnectAllSTA"});
  upstream_->Control().WaitFor({"AP-STA-DISCONNECTED"});
  upstream_->Control().WaitFor({"AP-STA-CONNECTED"});
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  EXPECT_EQ(phone.ConnectedSince(), since);
}

TEST_F(Stations, WhatHappensToNetworksNeitherTheUpstreamNorAClientOfAnotherNotices) {
  CreateNetwork("Home", 1);
  Client phone("phone", 3);
  phone.Join({});
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  ExpectDevicesInTheEnd({phone.Address()});
  const std::string since = phone.ConnectedSince();
  upstream_->Control().ForgetEvents();
  const ConnectedTimes before = AskForConnectedTimes(phone);
  const auto expectUndisturbed = [&](const std::string& what) {
    const ConnectedTimes now = AskForConnectedTimes(phone);
    // The daemon tells whole seconds, and what it heard within the last one.
    const auto atLeast =
        std::chrono::duration_cast<std::chrono::seconds>(now.asked - before.answered).count() - 2;
    EXPECT_GE(now.device, before.device + atLeast) << what;
    EXPECT_GE(now.upstream, before.upstream + atLeast) << what;
    EXPECT_EQ(phone.ConnectedSince(), since) << what;
    EXPECT_FALSE(upstream_->Control().Has("AP-STA-DISCONNECTED")) << what;
  };
  CreateNetwork("Guests", 2, "welcome-guest");
  expectUndisturbed("a new network");
  Do({"rotatePassword", "--id", "2", "--radio", "SmartConnect"});
  expectUndisturbed("its password");
  Do({"deactivate", "--id", "2"});
  expectUndisturbed("its absence");
  Do({"deleteNetwork", "--id", "2"});
  expectUndisturbed("its end");
}

TEST_F(Stations, AnAccessPointThatWentAwayIsJoinedOnceItIsBack) {
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  upstream_.reset();
  WaitUntil("the loss is noticed",
            [&] { return Record("getStationStatuses", "radio", "Band2_4GHz")["connected"] == false; });
  Raise();
  ExpectStationInTheEnd("Band2_4GHz", "connected");
}

TEST_F(Stations, AWrongPasswordIsTheReasonAndTheRightOneMendsIt) {
  ModifyStation("another-password");
  ExpectStationInTheEnd("Band2_4GHz", "failed");
  const Json::Value status = Record("getStationStatuses", "radio", "Band2_4GHz");
  EXPECT_EQ(status["connected"], false);
  EXPECT_EQ(status["reason"], "wrong password");
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
}

TEST_F(Stations, AStationThatIsSwitchedOffParts) {
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  upstream_->Control().ForgetEvents();
  Do(StationCommand("Band2_4GHz", kSSID, "uplink-password", false));
  upstream_->Control().WaitFor({"AP-STA-DISCONNECTED"});
  ExpectStationInTheEnd("Band2_4GHz", "disabled");
}

}  // namespace

}  // namespace TALO::Hwsim
