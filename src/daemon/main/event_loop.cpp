#include "daemon/main/event_loop.h"

#include "bus/names.h"

#include <systemd/sd-daemon.h>

#include <cerrno>
#include <csignal>
#include <string>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

int Check(int result, const char* what) {
  if (result < 0) {
    throw std::system_error(-result, std::generic_category(), what);
  }
  return result;
}

sd_bus* OpenBus(Options::Bus which) {
  sd_bus* bus = nullptr;
  if (which == Options::Bus::System) {
    Check(sd_bus_open_system(&bus), "the system bus cannot be reached");
  } else {
    Check(sd_bus_open_user(&bus), "the session bus cannot be reached");
  }
  return bus;
}

void BlockTerminationSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
}

}  // namespace

EventLoop::EventLoop(Options::Bus bus, Log& log) : log_(log) {
  // sd-event takes them from here; a blocked signal waits until the loop runs.
  BlockTerminationSignals();
  sd_event* event = nullptr;
  Check(sd_event_new(&event), "the event loop cannot be made");
  event_.reset(event);
  Check(sd_event_add_signal(event, nullptr, SIGTERM, nullptr, nullptr), "SIGTERM cannot be handled");
  Check(sd_event_add_signal(event, nullptr, SIGINT, nullptr, nullptr), "SIGINT cannot be handled");
  Check(sd_event_set_watchdog(event, 1), "the watchdog cannot be set");

  bus_.reset(OpenBus(bus));
  Check(sd_bus_attach_event(bus_.get(), event, SD_EVENT_PRIORITY_NORMAL), "the bus cannot be watched");
  Check(sd_bus_match_signal(bus_.get(), nullptr, "org.freedesktop.DBus.Local", "/org/freedesktop/DBus/Local",
                            "org.freedesktop.DBus.Local", "Disconnected", OnDisconnected, this),
        "the loss of the bus cannot be watched");
}

int EventLoop::OnDisconnected(sd_bus_message*, void* self, sd_bus_error*) {
  return sd_event_exit(static_cast<EventLoop*>(self)->event_.get(), -ECONNRESET);
}

void EventLoop::Open() {
  Check(sd_bus_request_name(bus_.get(), Bus::kBusName, 0),
        "the name com.talo.Wifi1 cannot be taken on the bus");
  sd_notify(0, "READY=1");
  log_.Write(Severity::Information, "talowifid serves com.talo.Wifi1");
}

void EventLoop::Run() {
  const int result = sd_event_loop(event_.get());
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  Check(result, "the bus is lost");
  sd_notify(0, "STOPPING=1");
  log_.Write(Severity::Information, "talowifid ends");
}

void EventLoop::Stop(std::exception_ptr failure) {
  failure_ = std::move(failure);
  sd_event_exit(event_.get(), -ECANCELED);
}

}  // namespace TALO::Wifid
