#include "bus/connection.h"
#include "client/wifi_client_for_tool.h"

#include <memory>
#include <utility>

namespace TALO::Wifi {

namespace {

using Bus::Connection;

/// The tool client over the bus.
class WifiClientForToolProxy final : public WifiClientForTool {
 public:
  explicit WifiClientForToolProxy(std::shared_ptr<Connection> connection)
      : connection_(std::move(connection)) {}

  void UpdateSchedule(Util::ScheduleMode mode) override {
    return connection_->Call<&WifiClientForTool::UpdateSchedule>(mode);
  }
  void RotatePassword(const NetworkRadioPair& target) override {
    return connection_->Call<&WifiClientForTool::RotatePassword>(target);
  }
  void RestartNetworks(bool force) override {
    return connection_->Call<&WifiClientForTool::RestartNetworks>(force);
  }
  void SetLogLevel(Util::LogLevel level) override {
    return connection_->Call<&WifiClientForTool::SetLogLevel>(level);
  }
  void WPSERConfig(const WPS_ERConfigInput& input) override {
    return connection_->Call<&WifiClientForTool::WPSERConfig>(input);
  }

 private:
  std::shared_ptr<Connection> connection_;
};

}  // namespace

std::shared_ptr<WifiClientForTool> WifiClientFactoryForTool::GetInstance() {
  return std::make_shared<WifiClientForToolProxy>(Connection::Shared());
}

}  // namespace TALO::Wifi
