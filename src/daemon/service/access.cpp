#include "daemon/service/access.h"

#include <algorithm>
#include <array>
#include <vector>

namespace TALO::Wifid {

namespace {

constexpr uid_t kRoot = 0;

constexpr std::string_view kGeneral = "com.talo.Wifi1.General";
constexpr std::string_view kMesh = "com.talo.Wifi1.Mesh";
constexpr std::string_view kTopology = "com.talo.Wifi1.Topology";
constexpr std::string_view kTool = "com.talo.Wifi1.Tool";
constexpr std::string_view kPeer = "org.freedesktop.DBus.Peer";
constexpr std::string_view kProperties = "org.freedesktop.DBus.Properties";

// Written out, not made from the operations: a new one stays closed until somebody opens it here.
constexpr auto kOpenMethods = std::to_array<OpenMethod>({
    {kGeneral, "GetNetworkInterfaces"},
    {kGeneral, "GetNetworkSettings"},
    {kGeneral, "CreateNetwork"},
    {kGeneral, "DeleteNetwork"},
    {kGeneral, "GetScheduleStatus"},
    {kGeneral, "IsAllNetworkAPDisabled"},
    {kGeneral, "GetRadioStatuses"},
    {kGeneral, "GetRadioStatusesSimple"},
    {kGeneral, "GetRadioIfStatuses"},
    {kGeneral, "GetRadioSettings"},
    {kGeneral, "GetNetworkInterfaceRadioMap"},
    {kGeneral, "GetRadioConversionInfo"},
    {kGeneral, "GetMACFilterProfiles"},
    {kGeneral, "CreateMACFilterProfile"},
    {kGeneral, "ModifyMACFilterProfile"},
    {kGeneral, "DeleteMACFilterProfiles"},
    {kGeneral, "GetMACFilterGlobal"},
    {kGeneral, "SetMACFilterGlobal"},
    {kGeneral, "GetScanResults"},
    {kGeneral, "GetStationSettings"},
    {kGeneral, "GetStationStatuses"},
    {kGeneral, "GetStationInterfaces"},
    {kGeneral, "ModifyStation"},
    {kGeneral, "ReconnectAllSTA"},
    {kGeneral, "GetDevices"},
    {kGeneral, "GetDefaultWPSTarget"},
    {kGeneral, "TriggerWPS_PBC"},
    {kGeneral, "IsWPS_PBCAvailable"},
    {kGeneral, "TriggerWPSConnected"},
    {kGeneral, "TriggerHWButton"},
    {kGeneral, "ListCountryCode"},
    {kGeneral, "SetCountryCode"},
    {kGeneral, "GetCountryCode"},
    {kGeneral, "GetNetworkSetting"},
    {kGeneral, "SetSchedule"},
    {kGeneral, "AssignMACFilterProfile"},
    {kMesh, "ModifyBackhaul"},
    {kMesh, "GetBackhaulSetting"},
    {kMesh, "GetBackhaulInterfaces"},
    {kMesh, "ModifyBackhaulSTA"},
    {kMesh, "GetBackhaulSTASetting"},
    {kMesh, "GetBackhaulSTAInterfaces"},
    {kMesh, "GetBackhaulSTAStatuses"},
    {kMesh, "EnableScan"},
    {kMesh, "ModifyMeshInfo"},
    {kMesh, "SwapBackhaulBand"},
    {kMesh, "IsBackhaulBandSwapped"},
    {kMesh, "GetRemoteCountryCodeCapability"},
    {kMesh, "IsWifiAdjustNeeded"},
    {kTopology, "GetContext"},
    {kTopology, "SetContext"},
    {kTopology, "GetIdsForTopo"},
    {kTopology, "GetActivatedIdsForTopo"},
    {kTopology, "GetInterfacesForTopo"},
    {kTopology, "Activate"},
    {kTopology, "Deactivate"},
    {kTool, "UpdateSchedule"},
    {kTool, "RotatePassword"},
    {kTool, "RestartNetworks"},
    {kTool, "SetLogLevel"},
    {kTool, "WPSERConfig"},
    // The properties of org.freedesktop.LogControl1, the only ones there are.
    {kProperties, "Get"},
    {kProperties, "GetAll"},
    {kProperties, "Set"},
    {"org.freedesktop.DBus.Introspectable", "Introspect"},
    {kPeer, "GetMachineId"},
    {kPeer, "Ping"},
});

}  // namespace

bool Access::IsAdministrator(const Identity& caller) const {
  return caller.user == kRoot || caller.user == ownUser_ || (group_ && caller.groups.contains(*group_));
}

std::span<const OpenMethod> OpenMethods() { return kOpenMethods; }

bool IsOpen(const OpenMethod& method) {
  // Asked for every call.
  static const std::vector<OpenMethod> kSorted = [] {
    std::vector<OpenMethod> rows(kOpenMethods.begin(), kOpenMethods.end());
    std::sort(rows.begin(), rows.end());
    return rows;
  }();
  return std::binary_search(kSorted.begin(), kSorted.end(), method);
}

}  // namespace TALO::Wifid
