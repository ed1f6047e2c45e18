#include "support/wire_table.h"

#include <algorithm>

namespace TALO::Wifi::Bus {

void PrintTo(const WireRow& row, std::ostream* out) {
  *out << row.interface << "." << row.name << "(" << row.arguments << ") -> (" << row.result << ")"
       << (row.sensitive ? " sensitive" : "");
}

const std::vector<WireRow>& WireTable() {
  static const std::string general = "com.talo.Wifi1.General";
  static const std::string mesh = "com.talo.Wifi1.Mesh";
  static const std::string topology = "com.talo.Wifi1.Topology";
  static const std::string tool = "com.talo.Wifi1.Tool";
  constexpr bool kSensitive = true;
  static const std::vector<WireRow> table = {
      {general, "GetNetworkInterfaces", "", "a{ias}"},
      {general, "GetNetworkSettings", "", "a(iayaybiaysbssisasba(ibbsssayaysas))", kSensitive},
      {general, "CreateNetwork", "(ayayay)", "i", kSensitive},
      {general, "DeleteNetwork", "i", ""},
      {general, "GetScheduleStatus", "", "a{ia(iii)}"},
      {general, "IsAllNetworkAPDisabled", "", "b"},
      {general, "GetRadioStatuses", "", "a(ibiiiisas)"},
      {general, "GetRadioStatusesSimple", "", "a(ibisas)"},
      {general, "GetRadioIfStatuses", "", "a(isas)"},
      {general, "GetRadioSettings", "", "a(ibiiiiq)"},
      {general, "GetNetworkInterfaceRadioMap", "", "a{si}"},
      {general, "GetRadioConversionInfo", "", "(a{ii}b)"},
      {general, "GetMACFilterProfiles", "", "a(isia(ss))"},
      {general, "CreateMACFilterProfile", "(isia(ss))b", "i"},
      {general, "ModifyMACFilterProfile", "(isia(ss))", ""},
      {general, "DeleteMACFilterProfiles", "ai", ""},
      {general, "GetMACFilterGlobal", "", "(a(ss)bi)"},
      {general, "SetMACFilterGlobal", "(a(ss)bi)", ""},
      {general, "GetScanResults", "i", "a(iaysiiiibi)"},
      {general, "GetStationSettings", "", "a(bayayaysii)", kSensitive},
      {general, "GetStationStatuses", "", "a(isbssaysiiii)"},
      {general, "GetStationInterfaces", "", "a{is}"},
      {general, "ModifyStation", "(bayayaysii)", "", kSensitive},
      {general, "ReconnectAllSTA", "", ""},
      {general, "GetDevices", "", "a(sssiayisiiii)"},
      {general, "GetDefaultWPSTarget", "", "(ii)"},
      {general, "TriggerWPS_PBC", "(ii)", ""},
      {general, "IsWPS_PBCAvailable", "(ii)", "b"},
      {general, "TriggerWPSConnected", "s", ""},
      {general, "TriggerHWButton", "", ""},
      {general, "ListCountryCode", "", "(ba{qs})"},
      {general, "SetCountryCode", "q", ""},
      {general, "GetCountryCode", "", "q"},
      {general, "GetNetworkSetting", "i", "(iayaybiaysbssisasba(ibbsssayaysas))", kSensitive},
      {general, "SetSchedule", "(iiiia(ii))", ""},
      {general, "AssignMACFilterProfile", "ii", ""},
      {mesh, "ModifyBackhaul", "(bayay)b", "", kSensitive},
      {mesh, "GetBackhaulSetting", "", "(bayayai)", kSensitive},
      {mesh, "GetBackhaulInterfaces", "", "a{is}"},
      {mesh, "ModifyBackhaulSTA", "(bayay)", "", kSensitive},
      {mesh, "GetBackhaulSTASetting", "", "(bayayai)", kSensitive},
      {mesh, "GetBackhaulSTAInterfaces", "", "a{is}"},
      {mesh, "GetBackhaulSTAStatuses", "", "a(isbisiii)"},
      {mesh, "EnableScan", "i", ""},
      {mesh, "ModifyMeshInfo", "(aib)", ""},
      {mesh, "SwapBackhaulBand", "b", ""},
      {mesh, "IsBackhaulBandSwapped", "", "b"},
      {mesh, "GetRemoteCountryCodeCapability", "si", "(ba{qs})"},
      {mesh, "IsWifiAdjustNeeded", "", "b"},
      {topology, "GetContext", "", "s"},
      {topology, "SetContext", "s", ""},
      {topology, "GetIdsForTopo", "s", "ai"},
      {topology, "GetActivatedIdsForTopo", "", "ai"},
      {topology, "GetInterfacesForTopo", "", "a{ias}"},
      {topology, "Activate", "(is)", ""},
      {topology, "Deactivate", "i", ""},
      {tool, "UpdateSchedule", "i", ""},
      {tool, "RotatePassword", "(ii)", ""},
      {tool, "RestartNetworks", "b", ""},
      {tool, "SetLogLevel", "i", ""},
      {tool, "WPSERConfig", "(sayays)", "", kSensitive},
  };
  return table;
}

WireRow FindWireRow(std::string_view interface, std::string_view name) {
  const auto row = std::ranges::find_if(
      WireTable(), [&](const WireRow& each) { return each.interface == interface && each.name == name; });
  return row == WireTable().end() ? WireRow{} : *row;
}

}  // namespace TALO::Wifi::Bus
