#include "bus/connection.h"
#include "client/wifi_client_for_topo.h"

#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>

namespace TALO::Wifi {

namespace {

using Bus::Connection;

/// The topology client over the bus.
class WifiClientForTopoProxy final : public WifiClientForTopo {
 public:
  explicit WifiClientForTopoProxy(std::shared_ptr<Connection> connection)
      : connection_(std::move(connection)) {}

  std::string GetContext() override { return connection_->Call<&WifiClientForTopo::GetContext>(); }
  void SetContext(const std::string& context) override {
    return connection_->Call<&WifiClientForTopo::SetContext>(context);
  }
  std::set<int> GetIdsForTopo(const std::string& context) override {
    return connection_->Call<&WifiClientForTopo::GetIdsForTopo>(context);
  }
  std::set<int> GetActivatedIdsForTopo() override {
    return connection_->Call<&WifiClientForTopo::GetActivatedIdsForTopo>();
  }
  std::map<int, std::set<std::string>> GetInterfacesForTopo() override {
    return connection_->Call<&WifiClientForTopo::GetInterfacesForTopo>();
  }
  void Activate(const ActivationInfo& activation) override {
    return connection_->Call<&WifiClientForTopo::Activate>(activation);
  }
  void Deactivate(int networkId) override {
    return connection_->Call<&WifiClientForTopo::Deactivate>(networkId);
  }

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace

std::shared_ptr<WifiClientForTopo> WifiClientFactoryForTopo::GetInstance() {
  return std::make_shared<WifiClientForTopoProxy>(Connection::Shared());
}

}  // namespace TALO::Wifi
