// Changing one network never drops a station of another: every kind of change, on a router full of stations.

#include "unit/daemon/service/undisturbed_stations.h"

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

namespace Bus = Wifi::Bus;
using enum RadioFrequency;
using Names = std::set<std::string>;
using Wifi::MACFilterAction;
using Wifi::WifiClient;
using Wifi::WifiClientForMesh;
using Wifi::WifiClientForTool;
using Wifi::WifiClientForTopo;

/// Part of a change; answers its error, "none" for success.
struct Step {
  std::string operation;  ///< empty for what comes without being asked for
  std::function<std::string(SimulatedService&)> take;
};

template <auto Method, typename... Arguments>
Step Call(Arguments... arguments) {
  return {Bus::NameOf<Method>(),
          [=](SimulatedService& service) { return service.ErrorOfCall<Method>(arguments...); }};
}

Step Wait(int seconds) {
  return {"", [seconds](SimulatedService& service) {
            service.Pass(std::chrono::seconds(seconds));
            return "none";
          }};
}

Step MoveClock(int seconds) {
  return {"", [seconds](SimulatedService& service) {
            service.SetClock(service.WallNow() + seconds);
            return "none";
          }};
}

/// A change, and the stations that it means.
struct Row {
  std::string name;
  std::vector<Step> steps;
  Names dropped;

  friend void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }
};

/// Names together.
Names And(Names names, const Names& more) {
  names.insert(more.begin(), more.end());
  return names;
}

/// A profile with the stations of networks 1 and 2 on one radio each.
Wifi::MACFilterProfile TwoStations(MACFilterAction action, int id = -1) {
  return {id, "Two", action, {{"", FullHouse::AddressOf(1, 0)}, {"", FullHouse::AddressOf(2, 1)}}};
}

Step CreateProfile(MACFilterAction action, bool applyToAll) {
  return Call<&WifiClient::CreateMACFilterProfile>(TwoStations(action), applyToAll);
}

Step ModifyProfile(MACFilterAction action) {
  return Call<&WifiClient::ModifyMACFilterProfile>(TwoStations(action, 1));
}

Step DeleteProfile() { return Call<&WifiClient::DeleteMACFilterProfiles>(std::set<int>{1}); }

Step Rotate(int networkId, RadioFrequency radio) {
  return Call<&WifiClientForTool::RotatePassword>(Wifi::NetworkRadioPair{networkId, radio});
}

Step OnFor(int seconds, RadioFrequency radio) {
  return Call<&WifiClient::SetSchedule>(Wifi::NetworkSchedule{2, radio, ScheduleMode::ValidFor, seconds, {}});
}

/// On in the week's first minutes. The routers start at noon of the first day.
Step OnInMinutes(int count) {
  return Call<&WifiClient::SetSchedule>(
      Wifi::NetworkSchedule{2, SmartConnect, ScheduleMode::Customized, 0, {{0, count}}});
}

Step Join(RadioFrequency radio, bool enable, const std::string& essid) {
  return Call<&WifiClient::ModifyStation>(
      Wifi::StationSetting{enable, essid, "", "uplink-password", {}, SecurityMode::PersonalWPA2, radio});
}

Step Activate(int networkId, const std::string& bridge) {
  return Call<&WifiClientForTopo::Activate>(Wifi::ActivationInfo{networkId, bridge});
}

Step OpenWPS() { return Call<&WifiClient::TriggerWPS_PBC>(Wifi::NetworkRadioPair{2, Band5GHz_1}); }

std::vector<Row> NetworkRows() {
  const Wifi::NetworkCreateInfo four{"Network 4", "Network 4", "battery-staple"};
  return {
      {"Create", {Call<&WifiClient::CreateNetwork>(four)}, {}},
      {"Delete", {Call<&WifiClient::DeleteNetwork>(2)}, StationsOf({2})},
      {"DeleteAndCreateInItsPlace",
       {Call<&WifiClient::DeleteNetwork>(2), Call<&WifiClient::CreateNetwork>(four)},
       StationsOf({2})},
      {"Deactivate", {Call<&WifiClientForTopo::Deactivate>(2)}, StationsOf({2})},
      {"DeactivateAndActivate",
       {Call<&WifiClientForTopo::Deactivate>(2), Activate(2, "br0")},
       StationsOf({2})},
      {"ActivateOnAnotherBridge", {Activate(2, "br-guest")}, {}},
      {"SetContext", {Call<&WifiClientForTopo::SetContext>(std::string("bridge"))}, {}},
      {"RotateOnOneRadio", {Rotate(2, Band5GHz_1)}, {"wlan1_2"}},
      {"RotateOnAllRadios", {Rotate(2, SmartConnect)}, StationsOf({2})},
      {"RestartWhatDiffers", {Call<&WifiClientForTool::RestartNetworks>(false)}, {}},
      {"RestartEverything", {Call<&WifiClientForTool::RestartNetworks>(true)}, StationsOf({0, 1, 2, 3})},
  };
}

std::vector<Row> ScheduleRows() {
  const auto update = [](ScheduleMode mode) { return Call<&WifiClientForTool::UpdateSchedule>(mode); };
  return {
      {"ScheduleThatIsOn", {OnFor(60, SmartConnect)}, {}},
      {"ScheduleThatIsOver", {OnFor(60, Band5GHz_1), Wait(60)}, {"wlan1_2"}},
      {"ScheduleThatIsTakenAway", {OnFor(60, SmartConnect), OnFor(0, SmartConnect), Wait(120)}, {}},
      {"WeeklyScheduleThatIsOff", {OnInMinutes(1)}, StationsOf({2})},
      {"WeeklyScheduleThatSwitchesOff", {OnInMinutes(721), Wait(60)}, StationsOf({2})},
      {"WeeklyScheduleThatSwitchesOn", {OnInMinutes(1), Wait(7 * 24 * 60 * 60)}, StationsOf({2})},
      {"ClockThatIsSet", {OnInMinutes(721), MoveClock(3600)}, StationsOf({2})},
      {"UpdateSchedules",
       {OnFor(3600, SmartConnect), update(ScheduleMode::ValidFor), update(ScheduleMode::Customized)},
       {}},
  };
}

std::vector<Row> MACFilterRows() {
  const auto assign = [](int profileId) { return Call<&WifiClient::AssignMACFilterProfile>(2, profileId); };
  const Wifi::MACFilterGlobal limit{{{"", FullHouse::AddressOf(2, 1)}}, true, 0};
  return {
      {"CreateProfile", {CreateProfile(MACFilterAction::Deny, false)}, {}},
      {"CreateDenyingProfileForAll", {CreateProfile(MACFilterAction::Deny, true)}, {"wlan0_1", "wlan1_2"}},
      {"AssignDenyingProfile", {CreateProfile(MACFilterAction::Deny, false), assign(1)}, {"wlan1_2"}},
      {"AssignAllowingProfile",
       {CreateProfile(MACFilterAction::Allow, false), assign(1)},
       {"wlan0_2", "wlan2_2"}},
      {"UnassignProfile", {CreateProfile(MACFilterAction::Deny, false), assign(1), assign(-1)}, {"wlan1_2"}},
      {"ModifyUnusedProfile",
       {CreateProfile(MACFilterAction::Deny, false), ModifyProfile(MACFilterAction::Allow)},
       {}},
      {"ModifyProfile",
       {CreateProfile(MACFilterAction::Deny, false), assign(1), ModifyProfile(MACFilterAction::Allow)},
       StationsOf({2})},
      {"DeleteProfile",
       {CreateProfile(MACFilterAction::Deny, true), DeleteProfile()},
       {"wlan0_1", "wlan1_2"}},
      {"LimitBroadcasts", {Call<&WifiClient::SetMACFilterGlobal>(limit)}, {}},
  };
}

std::vector<Row> StationAndWPSRows() {
  const Wifi::WPS_ERConfigInput registrar{"wlan1_2", "Network 2", "battery-staple", "PersonalWPA2"};
  return {
      {"JoinOnAnotherRadio", {Join(Band5GHz_1, true, "Nobody")}, {}},
      {"JoinElsewhere", {Join(Band2_4GHz, true, "Nobody")}, {"wlan0sta"}},
      {"JoinNothing", {Join(Band2_4GHz, false, "Uplink")}, {"wlan0sta"}},
      {"ReconnectStations", {Call<&WifiClient::ReconnectAllSTA>()}, {"wlan0sta", "wlan2bhs"}},
      {"ScanOnEveryRadio", {Call<&WifiClient::GetScanResults>(SmartConnect)}, {}},
      {"OpenWPSAndEndIt", {OpenWPS(), Call<&WifiClient::TriggerWPSConnected>(std::string("wlan1_2"))}, {}},
      {"EnrolByTheButton", {Call<&WifiClient::TriggerHWButton>(), Wait(30)}, {}},
      {"WPSThatNobodyUses", {OpenWPS(), Call<&WifiClient::DeleteNetwork>(2), Wait(130)}, StationsOf({2})},
      {"ConfigureRegistrar", {Call<&WifiClientForTool::WPSERConfig>(registrar)}, {}},
  };
}

std::vector<Row> RouterRows() {
  const auto backhaul = [](bool enable, const std::string& password, bool keepStations) {
    return Call<&WifiClientForMesh::ModifyBackhaul>(Wifi::BackhaulConfig{enable, "Mesh", password},
                                                    keepStations);
  };
  const auto country = [](CountryCode code) { return Call<&WifiClient::SetCountryCode>(code); };
  const auto scan = [](ScanType type) { return Call<&WifiClientForMesh::EnableScan>(type); };
  const auto swap = [](bool swapped) { return Call<&WifiClientForMesh::SwapBackhaulBand>(swapped); };
  return {
      {"SameBackhaul", {backhaul(true, "mesh-backhaul", true)}, {}},
      {"AnotherBackhaulPassword", {backhaul(true, "mesh-passphrase", true)}, StationsOf({0})},
      {"NoBackhaul", {backhaul(false, "mesh-backhaul", false)}, StationsOf({0})},
      {"NoBackhaulStation",
       {Call<&WifiClientForMesh::ModifyBackhaulSTA>(Wifi::BackhaulConfig{})},
       {"wlan2bhs"}},
      {"ScanModes", {scan(ScanType::BestAP), scan(ScanType::Disable), scan(ScanType::Default)}, {}},
      {"MeshInformation",
       {Call<&WifiClientForMesh::ModifyMeshInfo>(Wifi::MeshInfo{{SupportedModel::Dune40}, true})},
       {}},
      {"SwapBackhaul", {swap(true)}, And(StationsOf({0}), {"wlan2bhs"})},
      {"CountryWithTheSameChannels", {country(CountryCode::FR)}, {}},
      // It does not have channel 13.
      {"CountryWithoutAChannel", {country(CountryCode::US)}, {"wlan0_1", "wlan0_2", "wlan0_3", "wlan0sta"}},
      {"LogLevel", {Call<&WifiClientForTool::SetLogLevel>(Wifi::Util::LogLevel::Error)}, {}},
  };
}

std::vector<Row> AllRows() {
  std::vector<Row> rows;
  for (const auto& some :
       {NetworkRows(), ScheduleRows(), MACFilterRows(), StationAndWPSRows(), RouterRows()}) {
    rows.insert(rows.end(), some.begin(), some.end());
  }
  return rows;
}

class EveryChange : public testing::TestWithParam<Row> {};

TEST_P(EveryChange, DropsTheStationsThatItMeansAndNoOthers) {
  FullHouse house;
  for (const Step& step : GetParam().steps) {
    ASSERT_EQ(step.take(house.service), "none") << step.operation;
  }
  EXPECT_EQ(house.Dropped(), GetParam().dropped);
}

INSTANTIATE_TEST_SUITE_P(OnAFullHouse, EveryChange, testing::ValuesIn(AllRows()),
                         [](const auto& tested) { return tested.param.name; });

bool IsQuestion(const std::string& operation) {
  return operation.starts_with("Get") || operation.starts_with("Is") || operation.starts_with("List");
}

TEST(EveryOperationThatChanges, IsAmongTheChanges) {
  Names asked;
  for (const Row& row : AllRows()) {
    for (const Step& step : row.steps) {
      asked.insert(step.operation);
    }
  }
  const auto expectAsked = [&asked](auto row) {
    const std::string operation = decltype(row)::name.text;
    EXPECT_TRUE(IsQuestion(operation) || asked.contains(operation)) << operation;
  };
  Bus::General::ForEach(expectAsked);
  Bus::Mesh::ForEach(expectAsked);
  Bus::Topology::ForEach(expectAsked);
  Bus::Tool::ForEach(expectAsked);
}

TEST(AChangeThatARadioFails, DropsNoStationOfAnotherNetwork) {
  // The first plan is that of the start.
  FullHouse house({{{Band5GHz_1, 1, 1, "the firmware does not answer", std::nullopt}}, {}});
  EXPECT_EQ(house.service.ErrorOfCall<&WifiClient::DeleteNetwork>(2),
            "com.talo.Wifi1.Error.RadioFailed: the radio Band5GHz_1 cannot be set up: the firmware does not "
            "answer");
  EXPECT_EQ(house.Dropped(), StationsOf({2}));
}

}  // namespace

}  // namespace TALO::Wifid
