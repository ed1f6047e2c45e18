#include "support/fake_daemon.h"

#include "client/log_level_helper.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_mesh.h"
#include "client/wifi_client_for_tool.h"
#include "client/wifi_client_for_topo.h"

#include <memory>

namespace TALO::Wifi {

FakeDaemon& FakeDaemon::Get() {
  static FakeDaemon daemon;
  return daemon;
}

void FakeDaemon::Obtained(const std::string& factory) {
  calls.push_back(factory + "::GetInstance()");
  FailIfAsked(factory);
}

void FakeDaemon::FailIfAsked(const std::string& name) const {
  if (const auto failure = failures.find(name); failure != failures.end()) {
    std::rethrow_exception(failure->second);
  }
}

namespace {

class FakeWifiClient final : public WifiClient {
 public:
  std::map<int, std::set<std::string>> GetNetworkInterfaces() override {
    FakeDaemon::Get().Called("GetNetworkInterfaces");
    return FakeDaemon::Get().networkInterfaces;
  }
  std::vector<NetworkSetting> GetNetworkSettings() override {
    FakeDaemon::Get().Called("GetNetworkSettings");
    return FakeDaemon::Get().networkSettings;
  }
  int CreateNetwork(const NetworkCreateInfo& info) override {
    FakeDaemon::Get().Called("CreateNetwork", info);
    return FakeDaemon::Get().newNetworkId;
  }
  void DeleteNetwork(int networkId) override { FakeDaemon::Get().Called("DeleteNetwork", networkId); }
  ScheduleStatus GetScheduleStatus() override {
    FakeDaemon::Get().Called("GetScheduleStatus");
    return FakeDaemon::Get().scheduleStatus;
  }
  bool IsAllNetworkAPDisabled() override {
    FakeDaemon::Get().Called("IsAllNetworkAPDisabled");
    return FakeDaemon::Get().isAllNetworkAPDisabled;
  }
  std::vector<RadioStatus> GetRadioStatuses() override {
    FakeDaemon::Get().Called("GetRadioStatuses");
    return FakeDaemon::Get().radioStatuses;
  }
  std::vector<RadioStatusSimple> GetRadioStatusesSimple() override {
    FakeDaemon::Get().Called("GetRadioStatusesSimple");
    return FakeDaemon::Get().radioStatusesSimple;
  }
  std::vector<RadioIfStatus> GetRadioIfStatuses() override {
    FakeDaemon::Get().Called("GetRadioIfStatuses");
    return FakeDaemon::Get().radioIfStatuses;
  }
  std::vector<RadioSetting> GetRadioSettings() override {
    FakeDaemon::Get().Called("GetRadioSettings");
    return FakeDaemon::Get().radioSettings;
  }
  std::map<std::string, Util::RadioFrequency> GetNetworkInterfaceRadioMap() override {
    FakeDaemon::Get().Called("GetNetworkInterfaceRadioMap");
    return FakeDaemon::Get().networkInterfaceRadioMap;
  }
  RadioConversionInfo GetRadioConversionInfo() override {
    FakeDaemon::Get().Called("GetRadioConversionInfo");
    return FakeDaemon::Get().radioConversionInfo;
  }
  std::vector<MACFilterProfile> GetMACFilterProfiles() override {
    FakeDaemon::Get().Called("GetMACFilterProfiles");
    return FakeDaemon::Get().macFilterProfiles;
  }
  int CreateMACFilterProfile(const MACFilterProfile& profile, bool applyToAll) override {
    FakeDaemon::Get().Called("CreateMACFilterProfile", profile, applyToAll);
    return FakeDaemon::Get().newMACFilterProfileId;
  }
  void ModifyMACFilterProfile(const MACFilterProfile& profile) override {
    FakeDaemon::Get().Called("ModifyMACFilterProfile", profile);
  }
  void DeleteMACFilterProfiles(const std::set<int>& profileIds) override {
    FakeDaemon::Get().Called("DeleteMACFilterProfiles", profileIds);
  }
  MACFilterGlobal GetMACFilterGlobal() override {
    FakeDaemon::Get().Called("GetMACFilterGlobal");
    return FakeDaemon::Get().macFilterGlobal;
  }
  void SetMACFilterGlobal(const MACFilterGlobal& global) override {
    FakeDaemon::Get().Called("SetMACFilterGlobal", global);
  }
  std::vector<ScanResult> GetScanResults(Util::RadioFrequency radio) override {
    FakeDaemon::Get().Called("GetScanResults", radio);
    return FakeDaemon::Get().scanResults;
  }
  std::vector<StationSetting> GetStationSettings() override {
    FakeDaemon::Get().Called("GetStationSettings");
    return FakeDaemon::Get().stationSettings;
  }
  std::vector<StationStatus> GetStationStatuses() override {
    FakeDaemon::Get().Called("GetStationStatuses");
    return FakeDaemon::Get().stationStatuses;
  }
  std::map<Util::RadioFrequency, std::string> GetStationInterfaces() override {
    FakeDaemon::Get().Called("GetStationInterfaces");
    return FakeDaemon::Get().stationInterfaces;
  }
  void ModifyStation(const StationSetting& setting) override {
    FakeDaemon::Get().Called("ModifyStation", setting);
  }
  void ReconnectAllSTA() override { FakeDaemon::Get().Called("ReconnectAllSTA"); }
  std::vector<DeviceInfo> GetDevices() override {
    FakeDaemon::Get().Called("GetDevices");
    return FakeDaemon::Get().devices;
  }
  NetworkRadioPair GetDefaultWPSTarget() override {
    FakeDaemon::Get().Called("GetDefaultWPSTarget");
    return FakeDaemon::Get().defaultWPSTarget;
  }
  void TriggerWPS_PBC(const NetworkRadioPair& target) override {
    FakeDaemon::Get().Called("TriggerWPS_PBC", target);
  }
  bool IsWPS_PBCAvailable(const NetworkRadioPair& target) override {
    FakeDaemon::Get().Called("IsWPS_PBCAvailable", target);
    return FakeDaemon::Get().isWPS_PBCAvailable;
  }
  void TriggerWPSConnected(const std::string& interface) override {
    FakeDaemon::Get().Called("TriggerWPSConnected", interface);
  }
  void TriggerHWButton() override { FakeDaemon::Get().Called("TriggerHWButton"); }
  CountryCodeCapability ListCountryCode() override {
    FakeDaemon::Get().Called("ListCountryCode");
    return FakeDaemon::Get().listCountryCode;
  }
  void SetCountryCode(CountryCode country) override { FakeDaemon::Get().Called("SetCountryCode", country); }
  CountryCode GetCountryCode() override {
    FakeDaemon::Get().Called("GetCountryCode");
    return FakeDaemon::Get().countryCode;
  }
  NetworkSetting GetNetworkSetting(int networkId) override {
    FakeDaemon::Get().Called("GetNetworkSetting", networkId);
    return FakeDaemon::Get().networkSetting;
  }
  void SetSchedule(const NetworkSchedule& schedule) override {
    FakeDaemon::Get().Called("SetSchedule", schedule);
  }
  void AssignMACFilterProfile(int networkId, int profileId) override {
    FakeDaemon::Get().Called("AssignMACFilterProfile", networkId, profileId);
  }
};

class FakeWifiClientForMesh final : public WifiClientForMesh {
 public:
  void ModifyBackhaul(const BackhaulConfig& config, bool keepStations) override {
    FakeDaemon::Get().Called("ModifyBackhaul", config, keepStations);
  }
  BackhaulSetting GetBackhaulSetting() override {
    FakeDaemon::Get().Called("GetBackhaulSetting");
    return FakeDaemon::Get().backhaulSetting;
  }
  std::map<Util::RadioFrequency, std::string> GetBackhaulInterfaces() override {
    FakeDaemon::Get().Called("GetBackhaulInterfaces");
    return FakeDaemon::Get().backhaulInterfaces;
  }
  void ModifyBackhaulSTA(const BackhaulConfig& config) override {
    FakeDaemon::Get().Called("ModifyBackhaulSTA", config);
  }
  BackhaulSTASetting GetBackhaulSTASetting() override {
    FakeDaemon::Get().Called("GetBackhaulSTASetting");
    return FakeDaemon::Get().backhaulSTASetting;
  }
  std::map<Util::RadioFrequency, std::string> GetBackhaulSTAInterfaces() override {
    FakeDaemon::Get().Called("GetBackhaulSTAInterfaces");
    return FakeDaemon::Get().backhaulSTAInterfaces;
  }
  std::vector<BackhaulSTAStatus> GetBackhaulSTAStatuses() override {
    FakeDaemon::Get().Called("GetBackhaulSTAStatuses");
    return FakeDaemon::Get().backhaulSTAStatuses;
  }
  void EnableScan(Util::ScanType type) override { FakeDaemon::Get().Called("EnableScan", type); }
  void ModifyMeshInfo(const MeshInfo& info) override { FakeDaemon::Get().Called("ModifyMeshInfo", info); }
  void SwapBackhaulBand(bool swap) override { FakeDaemon::Get().Called("SwapBackhaulBand", swap); }
  bool IsBackhaulBandSwapped() override {
    FakeDaemon::Get().Called("IsBackhaulBandSwapped");
    return FakeDaemon::Get().isBackhaulBandSwapped;
  }
  CountryCodeCapability GetRemoteCountryCodeCapability(const std::string& serial,
                                                       Util::SupportedModel model) override {
    FakeDaemon::Get().Called("GetRemoteCountryCodeCapability", serial, model);
    return FakeDaemon::Get().remoteCountryCodeCapability;
  }
  bool IsWifiAdjustNeeded() override {
    FakeDaemon::Get().Called("IsWifiAdjustNeeded");
    return FakeDaemon::Get().isWifiAdjustNeeded;
  }
};

class FakeWifiClientForTopo final : public WifiClientForTopo {
 public:
  std::string GetContext() override {
    FakeDaemon::Get().Called("GetContext");
    return FakeDaemon::Get().context;
  }
  void SetContext(const std::string& context) override { FakeDaemon::Get().Called("SetContext", context); }
  std::set<int> GetIdsForTopo(const std::string& context) override {
    FakeDaemon::Get().Called("GetIdsForTopo", context);
    return FakeDaemon::Get().idsForTopo;
  }
  std::set<int> GetActivatedIdsForTopo() override {
    FakeDaemon::Get().Called("GetActivatedIdsForTopo");
    return FakeDaemon::Get().activatedIdsForTopo;
  }
  std::map<int, std::set<std::string>> GetInterfacesForTopo() override {
    FakeDaemon::Get().Called("GetInterfacesForTopo");
    return FakeDaemon::Get().interfacesForTopo;
  }
  void Activate(const ActivationInfo& activation) override {
    FakeDaemon::Get().Called("Activate", activation);
  }
  void Deactivate(int networkId) override { FakeDaemon::Get().Called("Deactivate", networkId); }
};

class FakeWifiClientForTool final : public WifiClientForTool {
 public:
  void UpdateSchedule(Util::ScheduleMode mode) override { FakeDaemon::Get().Called("UpdateSchedule", mode); }
  void RotatePassword(const NetworkRadioPair& target) override {
    FakeDaemon::Get().Called("RotatePassword", target);
  }
  void RestartNetworks(bool force) override { FakeDaemon::Get().Called("RestartNetworks", force); }
  void SetLogLevel(Util::LogLevel level) override { FakeDaemon::Get().Called("SetLogLevel", level); }
  void WPSERConfig(const WPS_ERConfigInput& input) override {
    FakeDaemon::Get().Called("WPSERConfig", input);
  }
};

}  // namespace

std::shared_ptr<WifiClient> WifiClientFactory::GetInstance() {
  FakeDaemon::Get().Obtained("WifiClientFactory");
  return std::make_shared<FakeWifiClient>();
}

std::shared_ptr<WifiClientForMesh> WifiClientFactoryForMesh::GetInstance() {
  FakeDaemon::Get().Obtained("WifiClientFactoryForMesh");
  return std::make_shared<FakeWifiClientForMesh>();
}

std::shared_ptr<WifiClientForTopo> WifiClientFactoryForTopo::GetInstance() {
  FakeDaemon::Get().Obtained("WifiClientFactoryForTopo");
  return std::make_shared<FakeWifiClientForTopo>();
}

std::shared_ptr<WifiClientForTool> WifiClientFactoryForTool::GetInstance() {
  FakeDaemon::Get().Obtained("WifiClientFactoryForTool");
  return std::make_shared<FakeWifiClientForTool>();
}

namespace Daemon {

bool LogLevelHelper::IsDebugLogLevel() {
  FakeDaemon::Get().Called("IsDebugLogLevel");
  return FakeDaemon::Get().isDebugLogLevel;
}

}  // namespace Daemon

}  // namespace TALO::Wifi
