#pragma once

#include "values/export.h"

namespace TALO::Wifi::Daemon {

class TALO_WIFI_API LogLevelHelper {
 public:
  /// True while the daemon logs at debug level. Throws talo::dbus::DbusError when the daemon cannot be asked.
  static bool IsDebugLogLevel();
};

}  // namespace TALO::Wifi::Daemon
