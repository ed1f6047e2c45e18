#include "bus/connection.h"
#include "client/wifi_client_for_mesh.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifi {

namespace {

using Bus::Connection;

/// The mesh client over the bus.
class WifiClientForMeshProxy final : public WifiClientForMesh {
 public:
  explicit WifiClientForMeshProxy(std::shared_ptr<Connection> connection)
      : connection_(std::move(connection)) {}

  void ModifyBackhaul(const BackhaulConfig& config, bool keepStations) override {
    return connection_->Call<&WifiClientForMesh::ModifyBackhaul>(config, keepStations);
  }
  BackhaulSetting GetBackhaulSetting() override {
    return connection_->Call<&WifiClientForMesh::GetBackhaulSetting>();
  }
  std::map<Util::RadioFrequency, std::string> GetBackhaulInterfaces() override {
    return connection_->Call<&WifiClientForMesh::GetBackhaulInterfaces>();
  }
  void ModifyBackhaulSTA(const BackhaulConfig& config) override {
    return connection_->Call<&WifiClientForMesh::ModifyBackhaulSTA>(config);
  }
  BackhaulSTASetting GetBackhaulSTASetting() override {
    return connection_->Call<&WifiClientForMesh::GetBackhaulSTASetting>();
  }
  std::map<Util::RadioFrequency, std::string> GetBackhaulSTAInterfaces() override {
    return connection_->Call<&WifiClientForMesh::GetBackhaulSTAInterfaces>();
  }
  std::vector<BackhaulSTAStatus> GetBackhaulSTAStatuses() override {
    return connection_->Call<&WifiClientForMesh::GetBackhaulSTAStatuses>();
  }
  void EnableScan(Util::ScanType type) override {
    return connection_->Call<&WifiClientForMesh::EnableScan>(type);
  }
  void ModifyMeshInfo(const MeshInfo& info) override {
    return connection_->Call<&WifiClientForMesh::ModifyMeshInfo>(info);
  }
  void SwapBackhaulBand(bool swap) override {
    return connection_->Call<&WifiClientForMesh::SwapBackhaulBand>(swap);
  }
  bool IsBackhaulBandSwapped() override {
    return connection_->Call<&WifiClientForMesh::IsBackhaulBandSwapped>();
  }
  CountryCodeCapability GetRemoteCountryCodeCapability(const std::string& serial,
                                                       Util::SupportedModel model) override {
    return connection_->Call<&WifiClientForMesh::GetRemoteCountryCodeCapability>(serial, model);
  }
  bool IsWifiAdjustNeeded() override { return connection_->Call<&WifiClientForMesh::IsWifiAdjustNeeded>(); }

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace

std::shared_ptr<WifiClientForMesh> WifiClientFactoryForMesh::GetInstance() {
  return std::make_shared<WifiClientForMeshProxy>(Connection::Shared());
}

}  // namespace TALO::Wifi
