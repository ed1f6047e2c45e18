#include "support/command_rows.h"

#include <cstddef>

namespace TALO::Tool {

const std::vector<CommandRow>& commandRows() {
  static const std::vector<CommandRow> rows = {
      {"help", false, "help"},
      {"getNetworks", false, "get networks"},
      {"getNetworkInterfaces", true, "get network interfaces"},
      {"createNetwork", true, "create network"},
      {"deleteNetwork", true, "delete network"},
      {"restartNetworks", true, "restart networks"},
      {"isAllNetworkAPDisabled", false, "is all network ap disabled"},
      {"getRadios", true, "get radios"},
      {"getRadioStatuses", true, "get radio statuses"},
      {"getRadioStatusesSimple", true, "get radio statuses simple"},
      {"getRadioIfStatuses", false, "get radio if statuses"},
      {"getInterfaceRadioMap", true, "get interface radio map"},
      {"getScanResults", true, "get scan results"},
      {"getStations", true, "get stations"},
      {"getStationStatuses", true, "get station statuses"},
      {"getStationInterfaces", true, "get station interfaces"},
      {"modifyStation", true, "modify station"},
      {"reconnectAllSTA", true, "reconnect all sta"},
      {"getBackhaul", true, "get backhaul"},
      {"getBackhaulInterfaces", true, "get backhaul interfaces"},
      {"modifyBackhaul", true, "modify backhaul"},
      {"getBackhaulSTA", true, "get backhaul sta"},
      {"getBackhaulSTAInterfaces", true, "get backhaul sta interfaces"},
      {"getBackhaulSTAStatuses", true, "get backhaul sta statuses"},
      {"modifyBackhaulSTA", true, "modify backhaul sta"},
      {"enableScan", true, "enable scan"},
      {"modifyMeshInfo", true, "modify mesh info"},
      {"swapBackhaulBand", true, "swap backhaul band"},
      {"isBackhaulBandSwapped", true, "is backhaul band swapped"},
      {"isWifiAdjustNeeded", true, "is wifi adjust needed"},
      {"getMACFilterGlobal", true, "get mac filter global"},
      {"getMACFilterProfiles", true, "get mac filter profiles"},
      {"setMACFilterGlobal", true, "set mac filter global"},
      {"createMACFilterProfile", true, "create mac filter profile"},
      {"modifyMACFilterProfile", true, "modify mac filter profile"},
      {"deleteMACFilterProfile", true, "delete mac filter profile"},
      {"updateSchedule", false, "update schedule"},
      {"getScheduleStatus", false, "get schedule status"},
      {"rotatePassword", false, "rotate password"},
      {"wpsERConfig", false, "wps er config"},
      {"getDevices", false, "get devices"},
      {"isDefaultWPS_PBCAvalible", false, "is default wps pbc avalible"},
      {"triggerWPSConnected", false, "trigger wps connected"},
      {"triggerDefaultWPS_PBC", false, "trigger default wps pbc"},
      {"triggerWPS_PBC", false, "trigger wps pbc"},
      {"triggerHWButton", false, "trigger hw button"},
      {"listCountryCode", true, "list country code"},
      {"getRemoteCountryCodeCapability", true, "get remote country code capability"},
      {"setCountryCode", true, "set country code"},
      {"getCountryCode", true, "get country code"},
      {"getIdsForTopo", true, "get ids for topo"},
      {"getActivateIdsForTopo", true, "get activate ids for topo"},
      {"getInterfacesForTopo", true, "get interfaces for topo"},
      {"setContext", true, "set context"},
      {"getContext", true, "get context"},
      {"activate", true, "activate"},
      {"deactivate", true, "deactivate"},
      {"modifyLogLevel", false, "modify log level"},
      {"getRadioConversionInfo", false, "get radio conversion info"},
  };
  return rows;
}

namespace {

std::string field(const std::string& text, std::size_t width) {
  return text + std::string(width - text.size(), ' ');
}

}  // namespace

std::string helpListing(bool debug) {
  std::string listing = "Usage: talowifitool [option] command args\n  Options are:\n";
  for (const CommandRow& row : commandRows()) {
    if (debug || !row.debugOnly) {
      listing += "    " + field(row.name, 40) + field(row.description, 50) + "\n";
    }
  }
  return listing + "\n";
}

}  // namespace TALO::Tool
