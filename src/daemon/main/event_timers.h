#pragma once

#include "daemon/main/event_loop.h"
#include "daemon/radio/timers.h"

#include <systemd/sd-event.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <utility>

namespace TALO::Wifid {

/// Timers on the event loop, by the monotonic clock.
class EventTimers final : public Timers {
 public:
  /// The loop must outlive this. What an action throws goes to the loop, which ends by it. Throws
  /// std::system_error when the loop takes no timer.
  explicit EventTimers(EventLoop& loop);
  EventTimers(const EventTimers&) = delete;
  EventTimers& operator=(const EventTimers&) = delete;

  Duration Now() const override;
  Id After(Duration delay, std::function<void()> action) override;
  void Cancel(Id id) override;

 private:
  struct UnrefSource {
    void operator()(sd_event_source* source) const noexcept { sd_event_source_disable_unref(source); }
  };
  using Microseconds = std::uint64_t;

  static int OnTime(sd_event_source* source, std::uint64_t time, void* self);
  void CallFirst(Microseconds now);
  void Arm();

  EventLoop& loop_;
  /// One for all timers: of several sources that are due at once, sd-event keeps no order.
  std::unique_ptr<sd_event_source, UnrefSource> source_;
  std::map<std::pair<Microseconds, Id>, std::function<void()>> pending_;  ///< by their time, then by making
  std::map<Id, Microseconds> times_;
  Id lastId_ = 0;
};

}  // namespace TALO::Wifid
