#pragma once

#include <systemd/sd-event.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>

namespace TALO::Wifid {

/// The event loop that the doors are watched on. Must outlive them.
struct Loop {
  sd_event* event = nullptr;
  /// Is told what an action threw, since nothing may be thrown through the loop.
  std::function<void(std::exception_ptr)> failed;
};

/// Calls an action on the event loop whenever a descriptor is ready, until its end, which may come from
/// inside the action.
class EventWatch {
 public:
  /// For these events of epoll. Throws std::system_error when the loop does not take the descriptor.
  EventWatch(const Loop& loop, int descriptor, std::uint32_t events, std::function<void()> action);
  EventWatch(const EventWatch&) = delete;
  EventWatch& operator=(const EventWatch&) = delete;
  ~EventWatch() = default;

  void SetEvents(std::uint32_t events);

 private:
  struct UnrefSource {
    void operator()(sd_event_source* source) const noexcept { sd_event_source_disable_unref(source); }
  };

  static int OnReady(sd_event_source* source, int descriptor, std::uint32_t events, void* self);

  const Loop& loop_;
  std::shared_ptr<const std::function<void()>> action_;
  std::unique_ptr<sd_event_source, UnrefSource> source_;
};

}  // namespace TALO::Wifid
