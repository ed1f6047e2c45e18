#pragma once

#include "client/records.h"
#include "values/export.h"

#include <memory>

namespace TALO::Wifi {

/// The tool client: what operators do to a running router. The rules of WifiClient hold for its operations
/// too.
class TALO_WIFI_API WifiClientForTool {
 public:
  virtual ~WifiClientForTool() = default;

  /// Evaluates all schedules of that mode again, now.
  virtual void UpdateSchedule(Util::ScheduleMode mode) = 0;

  /// Gives a network a new random passphrase on one radio or all (`SmartConnect`) and drops the stations that
  /// used the old one.
  virtual void RotatePassword(const NetworkRadioPair& target) = 0;

  /// Brings up again what is not as it should be; with `force` everything goes down and up.
  virtual void RestartNetworks(bool force) = 0;

  /// How much the daemon logs, from now until it is restarted.
  virtual void SetLogLevel(Util::LogLevel level) = 0;

  /// Hands SSID, key and mode to the external registrar on an interface.
  virtual void WPSERConfig(const WPS_ERConfigInput& input) = 0;
};

/// Hands out the tool client.
class TALO_WIFI_API WifiClientFactoryForTool {
 public:
  /// A client on this process's connection to the bus. Throws talo::dbus::DbusError when there is no bus.
  static std::shared_ptr<WifiClientForTool> GetInstance();
};

}  // namespace TALO::Wifi
