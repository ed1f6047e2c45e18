// The router hears access points of others and joins them.

#include "hwsim/support/client.h"
#include "hwsim/support/foreign_ap.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

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

  void ModifyStation(const std::string& password) {
    Do({"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", kSSID, "--user", "",
        "--password", password, "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"});
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
  WaitUntil("both are heard", [&] {
    std::set<std::string> heard;
    for (const Json::Value& result : Ask({"getScanResults", "--radio", "Band2_4GHz"})) {
      heard.insert(result["ssidHex"].asString());
    }
    EXPECT_FALSE(heard.contains("486f6d65"));
    return heard == std::set<std::string>{kSSIDHex, "4f6666696365"};
  });
  for (const Json::Value& result : Ask({"getScanResults", "--radio", "Band2_4GHz"})) {
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
  ModifyStation("uplink-password");
  ExpectStationInTheEnd("Band2_4GHz", "connected");
  const Json::Value status = Record("getStationStatuses", "radio", "Band2_4GHz");
  EXPECT_EQ(status["essidHex"], kSSIDHex);
  EXPECT_EQ(status["bssid"], "02:00:00:00:02:00");
  EXPECT_EQ(status["interface"], "wlan0sta");
  EXPECT_EQ(status["channel"], 6);
  EXPECT_TRUE(phone.IsConnected());

  upstream_->Control().ForgetEvents();
  Do({"reconnectAllSTA"});
  upstream_->Control().WaitFor({"AP-STA-DISCONNECTED"});
  upstream_->Control().WaitFor({"AP-STA-CONNECTED"});
  ExpectStationInTheEnd("Band2_4GHz", "connected");
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
  Do({"modifyStation", "--enable", "0", "--radio", "Band2_4GHz", "--essid", kSSID, "--user", "", "--password",
      "uplink-password", "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"});
  upstream_->Control().WaitFor({"AP-STA-DISCONNECTED"});
  ExpectStationInTheEnd("Band2_4GHz", "disabled");
}

}  // namespace

}  // namespace TALO::Hwsim
