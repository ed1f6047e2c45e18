#pragma once

#include "bus/message.h"
#include "daemon/main/options.h"
#include "daemon/service/log.h"

#include <systemd/sd-event.h>

#include <memory>

namespace TALO::Wifid {

/// The daemon's one loop over bus, signals and watchdog, and the bus that it serves.
class EventLoop {
 public:
  /// Connects to the bus. Throws std::system_error when there is none.
  EventLoop(Options::Bus bus, Log& log);

  sd_bus* GetBus() const { return bus_.get(); }

  /// Takes the daemon's name: from here on callers find it. Throws std::system_error when another has it.
  void RequestName();

  /// Tells systemd that the daemon is ready and serves until SIGTERM or SIGINT, or until the bus is lost,
  /// which throws std::system_error.
  void Run();

 private:
  struct UnrefEvent {
    void operator()(sd_event* event) const noexcept { sd_event_unref(event); }
  };

  static int OnDisconnected(sd_bus_message* message, void* self, sd_bus_error* error);

  Log& log_;
  std::unique_ptr<sd_event, UnrefEvent> event_;
  Wifi::Bus::BusHandle bus_;
};

}  // namespace TALO::Wifid
