#pragma once

#include "values/export.h"

#include <string>

namespace TALO::Wifi::Bus {

/// The daemon's log level as a syslog word, asked over this process's connection. Throws DbusError.
TALO_WIFI_API std::string QueryLogLevel();

}  // namespace TALO::Wifi::Bus
