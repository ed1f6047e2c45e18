#pragma once

#include "bus/message.h"
#include "daemon/service/log.h"
#include "values/enums.h"

namespace TALO::Wifid {

/// The standard interface for a service's log: level, target and identifier.
class LogControl {
 public:
  explicit LogControl(Log& log) : log_(log) {}
  LogControl(const LogControl&) = delete;
  LogControl& operator=(const LogControl&) = delete;

  /// Offers the interface. Throws CodecError when the bus does not take it.
  void Attach(sd_bus* bus);

 private:
  static int GetLevel(sd_bus* bus, const char* path, const char* interface, const char* property,
                      sd_bus_message* reply, void* self, sd_bus_error* error);
  static int SetLevel(sd_bus* bus, const char* path, const char* interface, const char* property,
                      sd_bus_message* value, void* self, sd_bus_error* error);
  static int GetTarget(sd_bus* bus, const char* path, const char* interface, const char* property,
                       sd_bus_message* reply, void* self, sd_bus_error* error);
  static int SetTarget(sd_bus* bus, const char* path, const char* interface, const char* property,
                       sd_bus_message* value, void* self, sd_bus_error* error);
  static int GetIdentifier(sd_bus* bus, const char* path, const char* interface, const char* property,
                           sd_bus_message* reply, void* self, sd_bus_error* error);

  Log& log_;
  Wifi::Bus::Slot slot_;
};

}  // namespace TALO::Wifid
