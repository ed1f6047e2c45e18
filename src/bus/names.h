#pragma once

/// Every name of the wire that is not an operation's.
namespace TALO::Wifi::Bus {

inline constexpr const char* kBusName = "com.talo.Wifi1";
inline constexpr const char* kObjectPath = "/com/talo/Wifi1";
inline constexpr const char* kErrorPrefix = "com.talo.Wifi1.Error.";

/// The standard interface for a service's log level; its texts are those of syslog.
inline constexpr const char* kLogControlPath = "/org/freedesktop/LogControl1";
inline constexpr const char* kLogControlInterface = "org.freedesktop.LogControl1";
inline constexpr const char* kLogLevelProperty = "LogLevel";
inline constexpr const char* kDebugLevel = "debug";

}  // namespace TALO::Wifi::Bus
