#include "daemon/service/schedule_keeper.h"

#include <algorithm>

namespace TALO::Wifid {

namespace {

constexpr std::int64_t kRetryAfter = 60;

}  // namespace

ScheduleKeeper::ScheduleKeeper(Engine& engine, Timers& timers) : engine_(engine), timers_(timers) {
  engine_.GetDoors().clock.WhenSet([this] { Evaluate(); });
}

ScheduleKeeper::~ScheduleKeeper() {
  engine_.GetDoors().clock.WhenSet({});
  if (timer_) {
    timers_.Cancel(*timer_);
  }
}

void ScheduleKeeper::Rearm() {
  if (timer_) {
    timers_.Cancel(*timer_);
    timer_.reset();
  }
  const auto& doors = engine_.GetDoors();
  const std::int64_t now = doors.clock.WallNow();
  auto next = NextSwitchOfAll(engine_.GetState(), now, doors.calendar);
  if (behind_) {
    next = std::min(next.value_or(now + kRetryAfter), now + kRetryAfter);
  }
  if (!next) {
    return;
  }
  // A long wait is cut, so that its milliseconds fit; waking early only looks again.
  constexpr std::int64_t kLongestWait = 7L * 24 * 60 * 60;
  const std::chrono::seconds wait(std::clamp<std::int64_t>(*next - now, 0, kLongestWait));
  timer_ = timers_.After(wait, [this] {
    timer_.reset();
    Evaluate();
  });
}

void ScheduleKeeper::Evaluate() {
  engine_.EvaluateSchedules([this](const Result<void>& evaluated) {
    behind_ = !evaluated.Succeeded();
    if (behind_) {
      engine_.GetDoors().log.Write(Severity::Error,
                                   "a schedule could not switch: " + evaluated.Why().sentence);
    }
    Rearm();
  });
}

}  // namespace TALO::Wifid
