#include "bus/operations.h"

#include "bus/names.h"
#include "support/wire_table.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

namespace TALO::Wifi::Bus {

namespace {

/// What the rows say, in the form of the table.
template <typename Interface>
void AppendRows(std::vector<WireRow>& table) {
  Interface::ForEach([&table](auto row) {
    using Row = decltype(row);
    table.push_back({Interface::name.text, Row::name.text, Row::Traits::ArgumentsCodec::signature.text,
                     Row::Traits::ResultCodec::signature.text, Row::sensitive});
  });
}

std::vector<WireRow> AllRows() {
  std::vector<WireRow> table;
  AppendRows<General>(table);
  AppendRows<Mesh>(table);
  AppendRows<Topology>(table);
  AppendRows<Tool>(table);
  return table;
}

std::vector<std::string> WordsOf(const char* text) {
  std::istringstream stream(text);
  std::vector<std::string> words;
  for (std::string word; stream >> word;) {
    words.push_back(word);
  }
  return words;
}

template <typename Visit>
void ForEachOperation(Visit visit) {
  General::ForEach(visit);
  Mesh::ForEach(visit);
  Topology::ForEach(visit);
  Tool::ForEach(visit);
}

TEST(Operations, HaveTheNamesAndSignaturesThatOtherProgramsKnow) { EXPECT_EQ(AllRows(), WireTable()); }

TEST(Operations, AreAsManyAsTheMethodsOfTheirClients) {
  EXPECT_EQ(General::size, 36U);
  EXPECT_EQ(Mesh::size, 13U);
  EXPECT_EQ(Topology::size, 7U);
  EXPECT_EQ(Tool::size, 5U);
}

TEST(Operations, HaveNamesThatAreTheirsAlone) {
  std::vector<std::string> names;
  for (const WireRow& row : AllRows()) {
    names.push_back(row.name);
  }
  std::ranges::sort(names);
  EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
}

#define EXPECT_NAMED(Client, Method) EXPECT_STREQ(NameOf<&Client::Method>(), #Method)

TEST(Operations, BearTheNamesOfTheMethodsOfWifiClient) {
  EXPECT_NAMED(WifiClient, GetNetworkInterfaces);
  EXPECT_NAMED(WifiClient, GetNetworkSettings);
  EXPECT_NAMED(WifiClient, CreateNetwork);
  EXPECT_NAMED(WifiClient, DeleteNetwork);
  EXPECT_NAMED(WifiClient, GetScheduleStatus);
  EXPECT_NAMED(WifiClient, IsAllNetworkAPDisabled);
  EXPECT_NAMED(WifiClient, GetRadioStatuses);
  EXPECT_NAMED(WifiClient, GetRadioStatusesSimple);
  EXPECT_NAMED(WifiClient, GetRadioIfStatuses);
  EXPECT_NAMED(WifiClient, GetRadioSettings);
  EXPECT_NAMED(WifiClient, GetNetworkInterfaceRadioMap);
  EXPECT_NAMED(WifiClient, GetRadioConversionInfo);
  EXPECT_NAMED(WifiClient, GetMACFilterProfiles);
  EXPECT_NAMED(WifiClient, CreateMACFilterProfile);
  EXPECT_NAMED(WifiClient, ModifyMACFilterProfile);
  EXPECT_NAMED(WifiClient, DeleteMACFilterProfiles);
  EXPECT_NAMED(WifiClient, GetMACFilterGlobal);
  EXPECT_NAMED(WifiClient, SetMACFilterGlobal);
  EXPECT_NAMED(WifiClient, GetScanResults);
  EXPECT_NAMED(WifiClient, GetStationSettings);
  EXPECT_NAMED(WifiClient, GetStationStatuses);
  EXPECT_NAMED(WifiClient, GetStationInterfaces);
  EXPECT_NAMED(WifiClient, ModifyStation);
  EXPECT_NAMED(WifiClient, ReconnectAllSTA);
  EXPECT_NAMED(WifiClient, GetDevices);
  EXPECT_NAMED(WifiClient, GetDefaultWPSTarget);
  EXPECT_NAMED(WifiClient, TriggerWPS_PBC);
  EXPECT_NAMED(WifiClient, IsWPS_PBCAvailable);
  EXPECT_NAMED(WifiClient, TriggerWPSConnected);
  EXPECT_NAMED(WifiClient, TriggerHWButton);
  EXPECT_NAMED(WifiClient, ListCountryCode);
  EXPECT_NAMED(WifiClient, SetCountryCode);
  EXPECT_NAMED(WifiClient, GetCountryCode);
  EXPECT_NAMED(WifiClient, GetNetworkSetting);
  EXPECT_NAMED(WifiClient, SetSchedule);
  EXPECT_NAMED(WifiClient, AssignMACFilterProfile);
}

TEST(Operations, BearTheNamesOfTheMethodsOfWifiClientForMesh) {
  EXPECT_NAMED(WifiClientForMesh, ModifyBackhaul);
  EXPECT_NAMED(WifiClientForMesh, GetBackhaulSetting);
  EXPECT_NAMED(WifiClientForMesh, GetBackhaulInterfaces);
  EXPECT_NAMED(WifiClientForMesh, ModifyBackhaulSTA);
  EXPECT_NAMED(WifiClientForMesh, GetBackhaulSTASetting);
  EXPECT_NAMED(WifiClientForMesh, GetBackhaulSTAInterfaces);
  EXPECT_NAMED(WifiClientForMesh, GetBackhaulSTAStatuses);
  EXPECT_NAMED(WifiClientForMesh, EnableScan);
  EXPECT_NAMED(WifiClientForMesh, ModifyMeshInfo);
  EXPECT_NAMED(WifiClientForMesh, SwapBackhaulBand);
  EXPECT_NAMED(WifiClientForMesh, IsBackhaulBandSwapped);
  EXPECT_NAMED(WifiClientForMesh, GetRemoteCountryCodeCapability);
  EXPECT_NAMED(WifiClientForMesh, IsWifiAdjustNeeded);
}

TEST(Operations, BearTheNamesOfTheMethodsOfWifiClientForTopo) {
  EXPECT_NAMED(WifiClientForTopo, GetContext);
  EXPECT_NAMED(WifiClientForTopo, SetContext);
  EXPECT_NAMED(WifiClientForTopo, GetIdsForTopo);
  EXPECT_NAMED(WifiClientForTopo, GetActivatedIdsForTopo);
  EXPECT_NAMED(WifiClientForTopo, GetInterfacesForTopo);
  EXPECT_NAMED(WifiClientForTopo, Activate);
  EXPECT_NAMED(WifiClientForTopo, Deactivate);
}

TEST(Operations, BearTheNamesOfTheMethodsOfWifiClientForTool) {
  EXPECT_NAMED(WifiClientForTool, UpdateSchedule);
  EXPECT_NAMED(WifiClientForTool, RotatePassword);
  EXPECT_NAMED(WifiClientForTool, RestartNetworks);
  EXPECT_NAMED(WifiClientForTool, SetLogLevel);
  EXPECT_NAMED(WifiClientForTool, WPSERConfig);
}

TEST(Operations, NameEachOfTheirArgumentsAndTheirResult) {
  ForEachOperation([](auto row) {
    using Row = decltype(row);
    SCOPED_TRACE(Row::name.text);
    EXPECT_EQ(WordsOf(Row::argumentNames.text).size(), std::tuple_size_v<typename Row::Arguments>);
    EXPECT_EQ(WordsOf(Row::resultName.text).size(), std::is_void_v<typename Row::Result> ? 0U : 1U);
  });
}

TEST(NamesOnTheBus, AreThoseThatOtherProgramsKnow) {
  EXPECT_STREQ(kBusName, "com.talo.Wifi1");
  EXPECT_STREQ(kObjectPath, "/com/talo/Wifi1");
  EXPECT_STREQ(kErrorPrefix, "com.talo.Wifi1.Error.");
  EXPECT_STREQ(kLogControlPath, "/org/freedesktop/LogControl1");
  EXPECT_STREQ(kLogControlInterface, "org.freedesktop.LogControl1");
  EXPECT_STREQ(kLogLevelProperty, "LogLevel");
  EXPECT_STREQ(kDebugLevel, "debug");
}

}  // namespace

}  // namespace TALO::Wifi::Bus
