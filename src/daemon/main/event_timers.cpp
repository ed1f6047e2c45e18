#include "daemon/main/event_timers.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <exception>
#include <system_error>

namespace TALO::Wifid {

namespace {

/// How late a timer may be, so that several wake the processor once.
constexpr std::uint64_t kAccuracyMicroseconds = 1000;

template <typename Rep, typename Period>
std::uint64_t InMicroseconds(std::chrono::duration<Rep, Period> duration) {
  return static_cast<std::uint64_t>(std::chrono::duration_cast<std::chrono::microseconds>(duration).count());
}

void Check(int result) {
  if (result < 0) {
    throw std::system_error(-result, std::generic_category(), "a timer cannot be set");
  }
}

}  // namespace

EventTimers::EventTimers(EventLoop& loop) : loop_(loop) {
  sd_event_source* source = nullptr;
  Check(sd_event_add_time(loop.GetEvent(), &source, CLOCK_MONOTONIC, 0, kAccuracyMicroseconds, OnTime, this));
  source_.reset(source);
  Arm();
}

Timers::Duration EventTimers::Now() const {
  return std::chrono::duration_cast<Duration>(std::chrono::steady_clock::now().time_since_epoch());
}

Timers::Id EventTimers::After(Duration delay, std::function<void()> action) {
  const Id id = ++lastId_;
  const Microseconds time = InMicroseconds(std::chrono::steady_clock::now().time_since_epoch()) +
                            InMicroseconds(std::max(delay, Duration::zero()));
  pending_[{time, id}] = std::move(action);
  times_[id] = time;
  Arm();
  return id;
}

void EventTimers::Cancel(Id id) {
  if (const auto time = times_.find(id); time != times_.end()) {
    pending_.erase({time->second, id});
    times_.erase(time);
    // The source stays as it is: the loop may be over, and one call for nothing does no harm.
  }
}

void EventTimers::Arm() {
  if (pending_.empty()) {
    Check(sd_event_source_set_enabled(source_.get(), SD_EVENT_OFF));
    return;
  }
  Check(sd_event_source_set_time(source_.get(), pending_.begin()->first.first));
  Check(sd_event_source_set_enabled(source_.get(), SD_EVENT_ONESHOT));
}

int EventTimers::OnTime(sd_event_source*, std::uint64_t time, void* self) {
  auto* timers = static_cast<EventTimers*>(self);
  try {
    timers->CallFirst(time);
  } catch (const std::exception&) {
    timers->loop_.Stop(std::current_exception());
  }
  return 0;
}

/// One a turn of the loop, so that timers set from actions keep nothing else waiting.
void EventTimers::CallFirst(Microseconds now) {
  if (pending_.empty() || pending_.begin()->first.first > now) {
    Arm();
    return;
  }
  // Forgotten before it is called: the action may set and cancel timers.
  auto first = pending_.extract(pending_.begin());
  times_.erase(first.key().second);
  Arm();
  first.mapped()();
}

}  // namespace TALO::Wifid
