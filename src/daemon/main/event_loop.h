#pragma once

#include "bus/message.h"
#include "daemon/main/options.h"
#include "daemon/service/log.h"

#include <systemd/sd-event.h>

#include <exception>
#include <memory>

namespace TALO::Wifid {

/// The daemon's one loop over bus, signals and watchdog, and the bus that it serves.
class EventLoop {
 public:
  /// Connects to the bus. Throws std::system_error when there is none.
  EventLoop(Options::Bus bus, Log& log);

  sd_bus* GetBus() const { return bus_.get(); }
  sd_event* GetEvent() const { return event_.get(); }

  /// Takes the daemon's name, so that callers find it from here on, and tells systemd that the daemon is
  /// ready. Throws std::system_error when another has the name.
  void Open();

  /// Serves until SIGTERM or SIGINT. Throws std::system_error when the bus is lost, and what Stop() was
  /// given.
  void Run();

  /// Ends Run() with a failure. For what goes wrong inside the loop, where nothing may be thrown.
  void Stop(std::exception_ptr failure);

 private:
  struct UnrefEvent {
    void operator()(sd_event* event) const noexcept { sd_event_unref(event); }
  };

  static int OnDisconnected(sd_bus_message* message, void* self, sd_bus_error* error);

  Log& log_;
  std::unique_ptr<sd_event, UnrefEvent> event_;
  Wifi::Bus::BusHandle bus_;
  std::exception_ptr failure_;
};

}  // namespace TALO::Wifid
