#include "daemon/main/event_loop.h"

#include "bus/names.h"
#include "daemon/service/message_ids.h"

#include <systemd/sd-daemon.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <string>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

constexpr const char* kNoName = "the name com.talo.Wifi1 cannot be taken on the bus";

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

void TakeSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  sigaddset(&signals, SIGTERM);
  sigaddset(&signals, SIGINT);
  sigprocmask(SIG_BLOCK, &signals, nullptr);
  // A file that may not grow fails the request that wanted it to, and not the daemon.
  std::signal(SIGXFSZ, SIG_IGN);
}

/// What the bus answered to a request for a name, as a negative errno unless it is ours.
int NameGiven(sd_bus_message* answer) {
  constexpr std::uint32_t kPrimaryOwner = 1;
  if (const int error = sd_bus_message_get_errno(answer); error != 0) {
    return -error;
  }
  std::uint32_t given = 0;
  const int read = sd_bus_message_read(answer, "u", &given);
  return read < 0 || given == kPrimaryOwner ? read : -EEXIST;
}

/// Gives the name back without waiting for an answer.
void ReleaseName(sd_bus* bus) {
  sd_bus_message* message = nullptr;
  if (sd_bus_message_new_method_call(bus, &message, "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                     "org.freedesktop.DBus", "ReleaseName") < 0) {
    return;
  }
  const Bus::Message release(message);
  if (sd_bus_message_append(message, "s", Bus::kBusName) >= 0 &&
      sd_bus_message_set_expect_reply(message, 0) >= 0) {
    sd_bus_send(bus, message, nullptr);
  }
}

/// As sd_bus_flush, which waits for ever for a bus that takes nothing.
void Flush(sd_bus* bus) {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::seconds(2);
  std::uint64_t queued = 0;
  while (sd_bus_is_ready(bus) > 0 && sd_bus_get_n_queued_write(bus, &queued) >= 0 && queued > 0) {
    const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now()).count();
    const int processed = sd_bus_process(bus, nullptr);
    if (left <= 0 || processed < 0 ||
        (processed == 0 && sd_bus_wait(bus, static_cast<std::uint64_t>(left)) < 0)) {
      return;
    }
  }
}

}  // namespace

EventLoop::EventLoop(Options::Bus bus, Log& log) : log_(log) {
  // sd-event takes them from here; a blocked signal waits until the loop runs.
  TakeSignals();
  sd_event* event = nullptr;
  Check(sd_event_new(&event), "the event loop cannot be made");
  event_.reset(event);
  Check(sd_event_add_signal(event, nullptr, SIGTERM, OnSignal, this), "SIGTERM cannot be handled");
  Check(sd_event_add_signal(event, nullptr, SIGINT, OnSignal, this), "SIGINT cannot be handled");
  Check(sd_event_set_watchdog(event, 1), "the watchdog cannot be set");

  bus_.reset(OpenBus(bus));
  // Else the loop's end waits for ever for a bus that takes nothing; the destructor closes it.
  Check(sd_bus_set_close_on_exit(bus_.get(), 0), "the bus cannot be kept open");
  Check(sd_bus_attach_event(bus_.get(), event, SD_EVENT_PRIORITY_NORMAL), "the bus cannot be watched");
  Check(sd_bus_match_signal(bus_.get(), nullptr, "org.freedesktop.DBus.Local", "/org/freedesktop/DBus/Local",
                            "org.freedesktop.DBus.Local", "Disconnected", OnDisconnected, this),
        "the loss of the bus cannot be watched");
}

int EventLoop::OnDisconnected(sd_bus_message*, void* self, sd_bus_error*) {
  return sd_event_exit(static_cast<EventLoop*>(self)->event_.get(), -ECONNRESET);
}

EventLoop::~EventLoop() {
  sd_bus_detach_event(bus_.get());
  sd_bus_close(bus_.get());
}

int EventLoop::OnSignal(sd_event_source*, const signalfd_siginfo*, void* self) {
  auto& loop = *static_cast<EventLoop*>(self);
  loop.ending_ = true;
  if (loop.askedToEnd_) {
    loop.askedToEnd_();
  } else {
    loop.End();
  }
  return 0;
}

// Not waited for: a bus that does not answer must not keep the signals waiting.
void EventLoop::Open(std::function<void()> opened) {
  opened_ = std::move(opened);
  if (!ending_) {
    Check(sd_bus_request_name_async(bus_.get(), nullptr, Bus::kBusName, 0, OnNameAnswer, this), kNoName);
  }
}

int EventLoop::OnNameAnswer(sd_bus_message* answer, void* self, sd_bus_error*) {
  auto& loop = *static_cast<EventLoop*>(self);
  if (loop.ending_) {
    return 0;
  }
  if (const int given = NameGiven(answer); given < 0) {
    loop.Stop(std::make_exception_ptr(std::system_error(-given, std::generic_category(), kNoName)));
    return 0;
  }
  loop.log_.Write(Severity::Information, "talowifid serves com.talo.Wifi1",
                  {.messageId = MessageIds::kServes});
  loop.opened_();
  return 0;
}

void EventLoop::Run() {
  const int result = sd_event_loop(event_.get());
  if (failure_) {
    std::rethrow_exception(failure_);
  }
  Check(result, "the bus is lost");
  sd_notify(0, "STOPPING=1");
  ReleaseName(bus_.get());
  // Here, where everything that answers may call is still there.
  Flush(bus_.get());
  log_.Write(Severity::Information, "talowifid ends", {.messageId = MessageIds::kEnds});
}

void EventLoop::End() { sd_event_exit(event_.get(), 0); }

void EventLoop::Stop(std::exception_ptr failure) {
  failure_ = std::move(failure);
  sd_event_exit(event_.get(), -ECANCELED);
}

}  // namespace TALO::Wifid
