#include "daemon/main/event_clock.h"

#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <ctime>
#include <limits>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

EventClock::EventClock(sd_event* event) : timer_(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {
  if (!timer_.IsOpen()) {
    throw std::system_error(errno, std::generic_category(), "the clock cannot be watched");
  }
  Watch();
  sd_event_source* source = nullptr;
  if (const int result = sd_event_add_io(event, &source, timer_.Get(), EPOLLIN, OnSet, this); result < 0) {
    throw std::system_error(-result, std::generic_category(), "the clock cannot be watched");
  }
  source_.reset(source);
}

void EventClock::Watch() {
  itimerspec never{};
  never.it_value.tv_sec = std::numeric_limits<decltype(never.it_value.tv_sec)>::max();
  if (timerfd_settime(timer_.Get(), TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) != 0) {
    throw std::system_error(errno, std::generic_category(), "the clock cannot be watched");
  }
}

int EventClock::OnSet(sd_event_source*, int descriptor, std::uint32_t, void* self) {
  // Reading fails with ECANCELED, which is the message.
  std::uint64_t expirations = 0;
  if (read(descriptor, &expirations, sizeof expirations) < 0 && errno == ECANCELED) {
    auto* clock = static_cast<EventClock*>(self);
    clock->Watch();
    if (clock->action_) {
      clock->action_();
    }
  }
  return 0;
}

std::int64_t EventClock::WallNow() const {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::seconds>(now).count();
}

void EventClock::WhenSet(std::function<void()> action) { action_ = std::move(action); }

}  // namespace TALO::Wifid
