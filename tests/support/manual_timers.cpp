#include "support/manual_timers.h"

#include <algorithm>
#include <stdexcept>

namespace TALO::Wifid {

Timers::Id ManualTimers::After(Duration delay, std::function<void()> action) {
  const Id id = ++lastId_;
  waiting_.emplace(Moment{now_ + std::max(delay, Duration(0)), id}, std::move(action));
  return id;
}

void ManualTimers::Cancel(Id id) {
  std::erase_if(waiting_, [id](const auto& entry) { return entry.first.second == id; });
}

void ManualTimers::Advance(Duration duration) {
  const Duration end = now_ + duration;
  while (!waiting_.empty() && waiting_.begin()->first.first <= end) {
    RunNext();
  }
  now_ = end;
}

bool ManualTimers::RunNext() {
  if (waiting_.empty()) {
    return false;
  }
  auto next = waiting_.extract(waiting_.begin());
  now_ = next.key().first;
  next.mapped()();
  return true;
}

void ManualTimers::RunUntilIdle() {
  constexpr int kEndless = 1'000'000;
  for (int calls = 0; RunNext(); ++calls) {
    if (calls == kEndless) {
      throw std::logic_error("the timers never come to rest");
    }
  }
}

std::optional<Timers::Duration> ManualTimers::UntilNext() const {
  return waiting_.empty() ? std::nullopt : std::optional(waiting_.begin()->first.first - now_);
}

}  // namespace TALO::Wifid
