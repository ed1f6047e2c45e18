#include "daemon/system/event_watch.h"

#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

void Check(int result) {
  if (result < 0) {
    throw std::system_error(-result, std::generic_category(), "a descriptor cannot be watched");
  }
}

}  // namespace

EventWatch::EventWatch(const Loop& loop, int descriptor, std::uint32_t events, std::function<void()> action)
    : loop_(loop), action_(std::make_shared<const std::function<void()>>(std::move(action))) {
  sd_event_source* source = nullptr;
  Check(sd_event_add_io(loop.event, &source, descriptor, events, OnReady, this));
  source_.reset(source);
}

void EventWatch::SetEvents(std::uint32_t events) {
  Check(sd_event_source_set_io_events(source_.get(), events));
}

int EventWatch::OnReady(sd_event_source*, int, std::uint32_t, void* self) {
  // The watch may be gone when its action returns.
  const Loop& loop = static_cast<EventWatch*>(self)->loop_;
  const auto action = static_cast<EventWatch*>(self)->action_;
  try {
    (*action)();
  } catch (const std::exception&) {
    loop.failed(std::current_exception());
  }
  return 0;
}

}  // namespace TALO::Wifid
