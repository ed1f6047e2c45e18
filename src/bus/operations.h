#pragma once

// The operations of the four interfaces: one row each, naming the client's method, its arguments and its
// result. What a client calls, what the daemon offers and what both put on the wire is made from these rows.

#include "bus/codec.h"
#include "bus/fixed_string.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_mesh.h"
#include "client/wifi_client_for_tool.h"
#include "client/wifi_client_for_topo.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>

namespace TALO::Wifi::Bus {

template <auto Method>
struct MethodTraits;

template <typename Interface, typename ResultType, typename... ArgumentTypes,
          ResultType (Interface::*Method)(ArgumentTypes...)>
struct MethodTraits<Method> {
  using Client = Interface;
  using Result = ResultType;
  using Arguments = std::tuple<std::decay_t<ArgumentTypes>...>;
  using ArgumentsCodec = Bus::ArgumentsCodec<std::decay_t<ArgumentTypes>...>;
  using ResultCodec = Bus::ResultCodec<ResultType>;
};

/// One row. `ArgumentNames` and `ResultName` are separated by blanks; they appear in the introspection.
template <FixedString Name, auto MethodPointer, FixedString ArgumentNames, FixedString ResultName>
struct Operation : MethodTraits<MethodPointer> {
  using Traits = MethodTraits<MethodPointer>;
  static constexpr auto method = MethodPointer;
  static constexpr auto name = Name;
  static constexpr auto argumentNames = ArgumentNames;
  static constexpr auto resultName = ResultName;
  static constexpr bool sensitive = Traits::ArgumentsCodec::holdsSecret || Traits::ResultCodec::holdsSecret;
};

template <FixedString Name, typename... Rows>
struct Interface {
  static constexpr auto name = Name;
  static constexpr std::size_t size = sizeof...(Rows);

  /// Calls `visit` with a value of each row's type, in order.
  template <typename Visit>
  static constexpr void ForEach(Visit visit) {
    (visit(Rows{}), ...);
  }
};

// clang-format off

/// Rows in the order of WifiClient.
using General = Interface<"com.talo.Wifi1.General",
    Operation<"GetNetworkInterfaces", &WifiClient::GetNetworkInterfaces, "", "interfaces">,
    Operation<"GetNetworkSettings", &WifiClient::GetNetworkSettings, "", "networks">,
    Operation<"CreateNetwork", &WifiClient::CreateNetwork, "info", "networkId">,
    Operation<"DeleteNetwork", &WifiClient::DeleteNetwork, "networkId", "">,
    Operation<"GetScheduleStatus", &WifiClient::GetScheduleStatus, "", "status">,
    Operation<"IsAllNetworkAPDisabled", &WifiClient::IsAllNetworkAPDisabled, "", "disabled">,
    Operation<"GetRadioStatuses", &WifiClient::GetRadioStatuses, "", "radios">,
    Operation<"GetRadioStatusesSimple", &WifiClient::GetRadioStatusesSimple, "", "radios">,
    Operation<"GetRadioIfStatuses", &WifiClient::GetRadioIfStatuses, "", "radios">,
    Operation<"GetRadioSettings", &WifiClient::GetRadioSettings, "", "radios">,
    Operation<"GetNetworkInterfaceRadioMap", &WifiClient::GetNetworkInterfaceRadioMap, "", "radios">,
    Operation<"GetRadioConversionInfo", &WifiClient::GetRadioConversionInfo, "", "info">,
    Operation<"GetMACFilterProfiles", &WifiClient::GetMACFilterProfiles, "", "profiles">,
    Operation<"CreateMACFilterProfile", &WifiClient::CreateMACFilterProfile, "profile applyToAll", "profileId">,
    Operation<"ModifyMACFilterProfile", &WifiClient::ModifyMACFilterProfile, "profile", "">,
    Operation<"DeleteMACFilterProfiles", &WifiClient::DeleteMACFilterProfiles, "profileIds", "">,
    Operation<"GetMACFilterGlobal", &WifiClient::GetMACFilterGlobal, "", "global">,
    Operation<"SetMACFilterGlobal", &WifiClient::SetMACFilterGlobal, "global", "">,
    Operation<"GetScanResults", &WifiClient::GetScanResults, "radio", "results">,
    Operation<"GetStationSettings", &WifiClient::GetStationSettings, "", "stations">,
    Operation<"GetStationStatuses", &WifiClient::GetStationStatuses, "", "stations">,
    Operation<"GetStationInterfaces", &WifiClient::GetStationInterfaces, "", "interfaces">,
    Operation<"ModifyStation", &WifiClient::ModifyStation, "setting", "">,
    Operation<"ReconnectAllSTA", &WifiClient::ReconnectAllSTA, "", "">,
    Operation<"GetDevices", &WifiClient::GetDevices, "", "devices">,
    Operation<"GetDefaultWPSTarget", &WifiClient::GetDefaultWPSTarget, "", "target">,
    Operation<"TriggerWPS_PBC", &WifiClient::TriggerWPS_PBC, "target", "">,
    Operation<"IsWPS_PBCAvailable", &WifiClient::IsWPS_PBCAvailable, "target", "available">,
    Operation<"TriggerWPSConnected", &WifiClient::TriggerWPSConnected, "interface", "">,
    Operation<"TriggerHWButton", &WifiClient::TriggerHWButton, "", "">,
    Operation<"ListCountryCode", &WifiClient::ListCountryCode, "", "capability">,
    Operation<"SetCountryCode", &WifiClient::SetCountryCode, "country", "">,
    Operation<"GetCountryCode", &WifiClient::GetCountryCode, "", "country">,
    Operation<"GetNetworkSetting", &WifiClient::GetNetworkSetting, "networkId", "network">,
    Operation<"SetSchedule", &WifiClient::SetSchedule, "schedule", "">,
    Operation<"AssignMACFilterProfile", &WifiClient::AssignMACFilterProfile, "networkId profileId", "">>;

/// Rows in the order of WifiClientForMesh.
using Mesh = Interface<"com.talo.Wifi1.Mesh",
    Operation<"ModifyBackhaul", &WifiClientForMesh::ModifyBackhaul, "config keepStations", "">,
    Operation<"GetBackhaulSetting", &WifiClientForMesh::GetBackhaulSetting, "", "setting">,
    Operation<"GetBackhaulInterfaces", &WifiClientForMesh::GetBackhaulInterfaces, "", "interfaces">,
    Operation<"ModifyBackhaulSTA", &WifiClientForMesh::ModifyBackhaulSTA, "config", "">,
    Operation<"GetBackhaulSTASetting", &WifiClientForMesh::GetBackhaulSTASetting, "", "setting">,
    Operation<"GetBackhaulSTAInterfaces", &WifiClientForMesh::GetBackhaulSTAInterfaces, "", "interfaces">,
    Operation<"GetBackhaulSTAStatuses", &WifiClientForMesh::GetBackhaulSTAStatuses, "", "statuses">,
    Operation<"EnableScan", &WifiClientForMesh::EnableScan, "type", "">,
    Operation<"ModifyMeshInfo", &WifiClientForMesh::ModifyMeshInfo, "info", "">,
    Operation<"SwapBackhaulBand", &WifiClientForMesh::SwapBackhaulBand, "swap", "">,
    Operation<"IsBackhaulBandSwapped", &WifiClientForMesh::IsBackhaulBandSwapped, "", "swapped">,
    Operation<"GetRemoteCountryCodeCapability", &WifiClientForMesh::GetRemoteCountryCodeCapability,
              "serial model", "capability">,
    Operation<"IsWifiAdjustNeeded", &WifiClientForMesh::IsWifiAdjustNeeded, "", "needed">>;

/// Rows in the order of WifiClientForTopo.
using Topology = Interface<"com.talo.Wifi1.Topology",
    Operation<"GetContext", &WifiClientForTopo::GetContext, "", "context">,
    Operation<"SetContext", &WifiClientForTopo::SetContext, "context", "">,
    Operation<"GetIdsForTopo", &WifiClientForTopo::GetIdsForTopo, "context", "networkIds">,
    Operation<"GetActivatedIdsForTopo", &WifiClientForTopo::GetActivatedIdsForTopo, "", "networkIds">,
    Operation<"GetInterfacesForTopo", &WifiClientForTopo::GetInterfacesForTopo, "", "interfaces">,
    Operation<"Activate", &WifiClientForTopo::Activate, "activation", "">,
    Operation<"Deactivate", &WifiClientForTopo::Deactivate, "networkId", "">>;

/// Rows in the order of WifiClientForTool.
using Tool = Interface<"com.talo.Wifi1.Tool",
    Operation<"UpdateSchedule", &WifiClientForTool::UpdateSchedule, "mode", "">,
    Operation<"RotatePassword", &WifiClientForTool::RotatePassword, "target", "">,
    Operation<"RestartNetworks", &WifiClientForTool::RestartNetworks, "force", "">,
    Operation<"SetLogLevel", &WifiClientForTool::SetLogLevel, "level", "">,
    Operation<"WPSERConfig", &WifiClientForTool::WPSERConfig, "input", "">>;

// clang-format on

/// The interface that carries a client's operations.
template <typename Client>
struct InterfaceOfClient;
template <>
struct InterfaceOfClient<WifiClient> {
  using Type = General;
};
template <>
struct InterfaceOfClient<WifiClientForMesh> {
  using Type = Mesh;
};
template <>
struct InterfaceOfClient<WifiClientForTopo> {
  using Type = Topology;
};
template <>
struct InterfaceOfClient<WifiClientForTool> {
  using Type = Tool;
};
template <auto Method>
using InterfaceOf = typename InterfaceOfClient<typename MethodTraits<Method>::Client>::Type;

/// A type that stands for a method; two methods are the same where their tags are.
template <auto Method>
struct MethodTag {};

/// The name of a method on the bus, null for one without a row.
template <auto Method>
constexpr const char* NameOf() {
  const char* name = nullptr;
  InterfaceOf<Method>::ForEach([&name](auto row) {
    using Row = decltype(row);
    if constexpr (std::is_same_v<MethodTag<Method>, MethodTag<Row::method>>) {
      name = Row::name.text;
    }
  });
  return name;
}

}  // namespace TALO::Wifi::Bus
