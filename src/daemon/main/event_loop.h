#pragma once

#include "bus/message.h"
#include "daemon/main/options.h"
#include "daemon/service/log.h"
#include "daemon/system/event_watch.h"

#include <sys/signalfd.h>
#include <systemd/sd-event.h>

#include <exception>
#include <functional>
#include <memory>
#include <utility>

namespace TALO::Wifid {

/// The daemon's one loop over bus, signals and watchdog, and the bus that it serves.
class EventLoop {
 public:
  /// Connects to the bus. Throws std::system_error when there is none.
  EventLoop(Options::Bus bus, Log& log);
  EventLoop(const EventLoop&) = delete;
  EventLoop& operator=(const EventLoop&) = delete;
  ~EventLoop();

  sd_bus* GetBus() const { return bus_.get(); }
  sd_event* GetEvent() const { return event_.get(); }
  /// For doors that are watched on it: what their actions throw ends Run().
  Loop GetWatched() {
    return {GetEvent(), [this](std::exception_ptr failure) { Stop(std::move(failure)); }};
  }

  /// Asks for the daemon's name. Once the bus has given it, callers find the daemon, and `opened` is called.
  /// When another has the name Run() fails. Does nothing when the daemon is about to end.
  void Open(std::function<void()> opened);

  /// What is done on SIGTERM and SIGINT; it leads to End(), now or later. Without it they end Run() at once.
  void WhenAskedToEnd(std::function<void()> action) { askedToEnd_ = std::move(action); }

  /// Serves until End(), tells the service manager, gives the name back and lets the bus have what was sent
  /// to it, unless it does not take it in good time. Throws std::system_error when the bus is lost or does
  /// not give the name, and what Stop() was given.
  void Run();

  /// Ends Run().
  void End();

  /// Ends Run() with a failure. For what goes wrong inside the loop, where nothing may be thrown.
  void Stop(std::exception_ptr failure);

 private:
  struct UnrefEvent {
    void operator()(sd_event* event) const noexcept { sd_event_unref(event); }
  };

  static int OnDisconnected(sd_bus_message* message, void* self, sd_bus_error* error);
  static int OnNameAnswer(sd_bus_message* answer, void* self, sd_bus_error* error);
  static int OnSignal(sd_event_source* source, const signalfd_siginfo* signal, void* self);

  Log& log_;
  std::function<void()> opened_;
  std::function<void()> askedToEnd_;
  bool ending_ = false;
  std::unique_ptr<sd_event, UnrefEvent> event_;
  Wifi::Bus::BusHandle bus_;
  std::exception_ptr failure_;
};

}  // namespace TALO::Wifid
