#pragma once

#include "daemon/service/bus_interface.h"
#include "daemon/service/engine.h"
#include "daemon/service/log_control.h"
#include "daemon/service/random_source.h"
#include "daemon/service/schedule_keeper.h"
#include "daemon/service/wps_sessions.h"

#include <systemd/sd-bus.h>

namespace TALO::Wifid {

/// The daemon's objects on the bus: which operation goes to which rule and request.
class Service {
 public:
  struct Parts {
    Engine& engine;
    WPSSessions& wps;
    ScheduleKeeper& schedules;
    RandomSource& random;
    Log& log;
    std::string bridge;  ///< where new networks send the traffic of their stations
    Admission admit;     ///< asked before each call of an operation
  };

  explicit Service(Parts parts);

  /// Offers all interfaces. Throws CodecError when the bus does not take one.
  void Attach(sd_bus* bus);

 private:
  void HandleNetworks();
  void HandleRadios();
  void HandleStations();
  void HandleMACFilters();
  void HandleSchedulesAndPasswords();
  void HandleWPS();
  void HandleCountry();
  void HandleMesh();
  void HandleTopology();
  void HandleLogLevel();

  Parts parts_;
  BusInterface<Wifi::Bus::General> general_;
  BusInterface<Wifi::Bus::Mesh> mesh_;
  BusInterface<Wifi::Bus::Topology> topology_;
  BusInterface<Wifi::Bus::Tool> tool_;
  LogControl logControl_;
};

}  // namespace TALO::Wifid
