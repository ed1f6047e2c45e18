#pragma once

#include "daemon/service/bus_interface.h"
#include "daemon/service/engine.h"
#include "daemon/service/log.h"
#include "daemon/service/log_control.h"

#include <systemd/sd-bus.h>

namespace TALO::Wifid {

/// The daemon's objects on the bus: which operation goes to which request of the engine.
class Service {
 public:
  Service(Engine& engine, Log& log);

  /// Offers all interfaces. Throws CodecError when the bus does not take one.
  void Attach(sd_bus* bus);

 private:
  void HandleNetworks();
  void HandleRadios();
  void HandleLogLevel();

  Engine& engine_;
  Log& log_;
  BusInterface<Wifi::Bus::General> general_;
  BusInterface<Wifi::Bus::Mesh> mesh_;
  BusInterface<Wifi::Bus::Topology> topology_;
  BusInterface<Wifi::Bus::Tool> tool_;
  LogControl logControl_;
};

}  // namespace TALO::Wifid
