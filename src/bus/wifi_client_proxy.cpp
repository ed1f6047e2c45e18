#include "bus/connection.h"
#include "client/wifi_client.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifi {

namespace {

using Bus::Connection;

/// The general client over the bus.
class WifiClientProxy final : public WifiClient {
 public:
  explicit WifiClientProxy(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

  std::map<int, std::set<std::string>> GetNetworkInterfaces() override {
    return connection_->Call<&WifiClient::GetNetworkInterfaces>();
  }
  std::vector<NetworkSetting> GetNetworkSettings() override {
    return connection_->Call<&WifiClient::GetNetworkSettings>();
  }
  int CreateNetwork(const NetworkCreateInfo& info) override {
    return connection_->Call<&WifiClient::CreateNetwork>(info);
  }
  void DeleteNetwork(int networkId) override {
    return connection_->Call<&WifiClient::DeleteNetwork>(networkId);
  }
  ScheduleStatus GetScheduleStatus() override { return connection_->Call<&WifiClient::GetScheduleStatus>(); }
  bool IsAllNetworkAPDisabled() override { return connection_->Call<&WifiClient::IsAllNetworkAPDisabled>(); }
  std::vector<RadioStatus> GetRadioStatuses() override {
    return connection_->Call<&WifiClient::GetRadioStatuses>();
  }
  std::vector<RadioStatusSimple> GetRadioStatusesSimple() override {
    return connection_->Call<&WifiClient::GetRadioStatusesSimple>();
  }
  std::vector<RadioIfStatus> GetRadioIfStatuses() override {
    return connection_->Call<&WifiClient::GetRadioIfStatuses>();
  }
  std::vector<RadioSetting> GetRadioSettings() override {
    return connection_->Call<&WifiClient::GetRadioSettings>();
  }
  std::map<std::string, Util::RadioFrequency> GetNetworkInterfaceRadioMap() override {
    return connection_->Call<&WifiClient::GetNetworkInterfaceRadioMap>();
  }
  RadioConversionInfo GetRadioConversionInfo() override {
    return connection_->Call<&WifiClient::GetRadioConversionInfo>();
  }
  std::vector<MACFilterProfile> GetMACFilterProfiles() override {
    return connection_->Call<&WifiClient::GetMACFilterProfiles>();
  }
  int CreateMACFilterProfile(const MACFilterProfile& profile, bool applyToAll) override {
    return connection_->Call<&WifiClient::CreateMACFilterProfile>(profile, applyToAll);
  }
  void ModifyMACFilterProfile(const MACFilterProfile& profile) override {
    return connection_->Call<&WifiClient::ModifyMACFilterProfile>(profile);
  }
  void DeleteMACFilterProfiles(const std::set<int>& profileIds) override {
    return connection_->Call<&WifiClient::DeleteMACFilterProfiles>(profileIds);
  }
  MACFilterGlobal GetMACFilterGlobal() override {
    return connection_->Call<&WifiClient::GetMACFilterGlobal>();
  }
  void SetMACFilterGlobal(const MACFilterGlobal& global) override {
    return connection_->Call<&WifiClient::SetMACFilterGlobal>(global);
  }
  std::vector<ScanResult> GetScanResults(Util::RadioFrequency radio) override {
    return connection_->Call<&WifiClient::GetScanResults>(radio);
  }
  std::vector<StationSetting> GetStationSettings() override {
    return connection_->Call<&WifiClient::GetStationSettings>();
  }
  std::vector<StationStatus> GetStationStatuses() override {
    return connection_->Call<&WifiClient::GetStationStatuses>();
  }
  std::map<Util::RadioFrequency, std::string> GetStationInterfaces() override {
    return connection_->Call<&WifiClient::GetStationInterfaces>();
  }
  void ModifyStation(const StationSetting& setting) override {
    return connection_->Call<&WifiClient::ModifyStation>(setting);
  }
  void ReconnectAllSTA() override { return connection_->Call<&WifiClient::ReconnectAllSTA>(); }
  std::vector<DeviceInfo> GetDevices() override { return connection_->Call<&WifiClient::GetDevices>(); }
  NetworkRadioPair GetDefaultWPSTarget() override {
    return connection_->Call<&WifiClient::GetDefaultWPSTarget>();
  }
  void TriggerWPS_PBC(const NetworkRadioPair& target) override {
    return connection_->Call<&WifiClient::TriggerWPS_PBC>(target);
  }
  bool IsWPS_PBCAvailable(const NetworkRadioPair& target) override {
    return connection_->Call<&WifiClient::IsWPS_PBCAvailable>(target);
  }
  void TriggerWPSConnected(const std::string& interface) override {
    return connection_->Call<&WifiClient::TriggerWPSConnected>(interface);
  }
  void TriggerHWButton() override { return connection_->Call<&WifiClient::TriggerHWButton>(); }
  CountryCodeCapability ListCountryCode() override {
    return connection_->Call<&WifiClient::ListCountryCode>();
  }
  void SetCountryCode(CountryCode country) override {
    return connection_->Call<&WifiClient::SetCountryCode>(country);
  }
  CountryCode GetCountryCode() override { return connection_->Call<&WifiClient::GetCountryCode>(); }
  NetworkSetting GetNetworkSetting(int networkId) override {
    return connection_->Call<&WifiClient::GetNetworkSetting>(networkId);
  }
  void SetSchedule(const NetworkSchedule& schedule) override {
    return connection_->Call<&WifiClient::SetSchedule>(schedule);
  }
  void AssignMACFilterProfile(int networkId, int profileId) override {
    return connection_->Call<&WifiClient::AssignMACFilterProfile>(networkId, profileId);
  }

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace

std::shared_ptr<WifiClient> WifiClientFactory::GetInstance() {
  return std::make_shared<WifiClientProxy>(Connection::Shared());
}

}  // namespace TALO::Wifi
