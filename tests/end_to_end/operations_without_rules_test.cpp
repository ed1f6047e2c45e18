// Commands whose operations the daemon does not have yet: they fail, say so and change nothing.

#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/files.h"

#include <set>

namespace TALO::EndToEnd {

namespace {

struct UnsupportedCommand {
  Words words;
  const char* operation;
  const char* label = "";  ///< what is printed before the daemon is asked
};

void PrintTo(const UnsupportedCommand& command, std::ostream* out) { *out << command.words.at(0); }

const std::vector<UnsupportedCommand>& UnsupportedCommands() {
  static const std::vector<UnsupportedCommand> commands = {
      {{"getScanResults", "--radio", "Band2_4GHz"}, "GetScanResults"},
      {{"getStations"}, "GetStationSettings"},
      {{"getStationStatuses"}, "GetStationStatuses"},
      {{"getStationInterfaces"}, "GetStationInterfaces"},
      {{"modifyStation", "--enable", "1", "--radio", "Band5GHz_1", "--essid", "Upstream", "--user", "guest",
        "--password", "correct-horse", "--bssid", "02:00:00:00:00:0a", "--securityMode", "PersonalWPA2"},
       "ModifyStation"},
      {{"reconnectAllSTA"}, "ReconnectAllSTA"},
      {{"getBackhaul"}, "GetBackhaulSetting"},
      {{"getBackhaulInterfaces"}, "GetBackhaulInterfaces"},
      {{"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", "correct-horse"},
       "ModifyBackhaul"},
      {{"getBackhaulSTA"}, "GetBackhaulSTASetting"},
      {{"getBackhaulSTAInterfaces"}, "GetBackhaulSTAInterfaces"},
      {{"getBackhaulSTAStatuses"}, "GetBackhaulSTAStatuses"},
      {{"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", "correct-horse"},
       "ModifyBackhaulSTA"},
      {{"enableScan", "--type", "BestAP"}, "EnableScan"},
      {{"modifyMeshInfo", "--models", "Alder100", "Dune40", "--isRepeater", "1"}, "ModifyMeshInfo"},
      {{"swapBackhaulBand", "--enable", "1"}, "SwapBackhaulBand"},
      {{"isBackhaulBandSwapped"}, "IsBackhaulBandSwapped"},
      {{"isWifiAdjustNeeded"}, "IsWifiAdjustNeeded"},
      {{"getMACFilterGlobal"}, "GetMACFilterGlobal"},
      {{"getMACFilterProfiles"}, "GetMACFilterProfiles"},
      {{"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "100", "--devices",
        "phone", "02:00:00:00:00:0b"},
       "SetMACFilterGlobal"},
      {{"createMACFilterProfile", "--name", "guests", "--action", "Deny", "--applyToAll", "1", "--devices"},
       "CreateMACFilterProfile"},
      {{"modifyMACFilterProfile", "--id", "1", "--name", "guests", "--action", "Allow", "--devices"},
       "ModifyMACFilterProfile"},
      {{"deleteMACFilterProfile", "--id", "1"}, "DeleteMACFilterProfiles"},
      {{"updateSchedule", "--mode", "Customized"}, "UpdateSchedule"},
      {{"getScheduleStatus"}, "GetScheduleStatus"},
      {{"rotatePassword", "--id", "1", "--radio", "SmartConnect"}, "RotatePassword"},
      {{"wpsERConfig", "--ifName", "wlan0_1", "--ssid", "Home", "--key", "correct-horse", "--mode",
        "PersonalWPA2"},
       "WPSERConfig"},
      {{"getDevices"}, "GetDevices"},
      {{"isDefaultWPS_PBCAvalible"}, "GetDefaultWPSTarget"},
      {{"triggerWPSConnected", "--ifName", "wlan0_1"}, "TriggerWPSConnected"},
      {{"triggerDefaultWPS_PBC"}, "GetDefaultWPSTarget"},
      {{"triggerWPS_PBC", "--id", "1", "--radio", "Band2_4GHz"}, "TriggerWPS_PBC"},
      {{"triggerHWButton"}, "TriggerHWButton"},
      {{"listCountryCode"}, "ListCountryCode"},
      {{"getRemoteCountryCodeCapability", "--serial", "SN-1", "--model", "Birch200"},
       "GetRemoteCountryCodeCapability"},
      {{"setCountryCode", "--country", "FR"}, "SetCountryCode"},
      {{"getCountryCode"}, "GetCountryCode"},
      {{"getIdsForTopo", "--context", "router"}, "GetIdsForTopo"},
      {{"getActivateIdsForTopo"}, "GetActivatedIdsForTopo"},
      {{"getInterfacesForTopo"}, "GetInterfacesForTopo"},
      {{"setContext", "--context", "bridge"}, "SetContext"},
      {{"getContext"}, "GetContext", "Context: "},
      {{"activate", "--id", "1", "--bridge", "br1"}, "Activate"},
      {{"deactivate", "--id", "1"}, "Deactivate"},
  };
  return commands;
}

class OperationWithoutRules : public EndToEndTest, public testing::WithParamInterface<UnsupportedCommand> {
 protected:
  OperationWithoutRules() {
    StartDaemon();
    CreateNetwork("Home", 1);
  }

  /// All that can be read, and the stored state.
  std::string Picture() {
    return RunTool({"getNetworks"}).output + RunTool({"getRadios"}).output +
           RunTool({"getRadioStatuses"}).output + RunTool({"getRadioConversionInfo"}).output +
           ReadFile(StateFile());
  }
};

TEST_P(OperationWithoutRules, IsRefusedAndChangesNothing) {
  const UnsupportedCommand& command = GetParam();
  const std::string before = Picture();
  EXPECT_EQ(
      RunTool(command.words),
      Failure(command.label + std::string("Failed to execute command: the wifi daemon does not support ") +
              command.operation + " yet: Not supported\n"));
  EXPECT_EQ(Picture(), before);
}

INSTANTIATE_TEST_SUITE_P(Command, OperationWithoutRules, testing::ValuesIn(UnsupportedCommands()),
                         [](const auto& test) { return test.param.words.at(0); });

TEST(OperationsWithoutRules, AreThoseOfAllCommandsThatNoOtherCaseRuns) {
  std::set<std::string> commands = {"help",
                                    "getNetworks",
                                    "getNetworkInterfaces",
                                    "createNetwork",
                                    "deleteNetwork",
                                    "restartNetworks",
                                    "isAllNetworkAPDisabled",
                                    "getRadios",
                                    "getRadioStatuses",
                                    "getRadioStatusesSimple",
                                    "getRadioIfStatuses",
                                    "getInterfaceRadioMap",
                                    "getRadioConversionInfo",
                                    "modifyLogLevel"};
  for (const UnsupportedCommand& command : UnsupportedCommands()) {
    EXPECT_TRUE(commands.insert(command.words.at(0)).second) << command.words.at(0);
  }
  std::set<std::string> all;
  for (const Tool::CommandRow& row : Tool::commandRows()) {
    all.insert(row.name);
  }
  EXPECT_EQ(commands, all);
}

}  // namespace

}  // namespace TALO::EndToEnd
