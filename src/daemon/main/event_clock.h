#pragma once

#include "daemon/service/clock.h"
#include "daemon/store/descriptor.h"

#include <systemd/sd-event.h>

#include <functional>
#include <memory>

namespace TALO::Wifid {

/// The machine's own time of day, watched on the event loop for being set.
class EventClock final : public Clock {
 public:
  /// The loop must outlive this. Throws std::system_error when the clock cannot be watched.
  explicit EventClock(sd_event* event);
  EventClock(const EventClock&) = delete;
  EventClock& operator=(const EventClock&) = delete;

  std::int64_t WallNow() const override;
  void WhenSet(std::function<void()> action) override;

 private:
  struct UnrefSource {
    void operator()(sd_event_source* source) const noexcept { sd_event_source_disable_unref(source); }
  };

  static int OnSet(sd_event_source* source, int descriptor, std::uint32_t events, void* self);
  void Watch();

  std::function<void()> action_;
  Descriptor timer_;  ///< far in the future; the kernel cancels it when the clock is set
  std::unique_ptr<sd_event_source, UnrefSource> source_;
};

}  // namespace TALO::Wifid
