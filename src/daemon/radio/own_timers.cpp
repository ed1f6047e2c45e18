#include "daemon/radio/own_timers.h"

#include <memory>
#include <utility>

namespace TALO::Wifid {

OwnTimers::~OwnTimers() {
  for (const Timers::Id id : pending_) {
    timers_.Cancel(id);
  }
}

Timers::Id OwnTimers::After(Timers::Duration delay, std::function<void()> action) {
  const auto id = std::make_shared<Timers::Id>();
  *id = timers_.After(delay, [this, id, action = std::move(action)] {
    pending_.erase(*id);
    action();
  });
  pending_.insert(*id);
  return *id;
}

void OwnTimers::Cancel(Timers::Id id) {
  pending_.erase(id);
  timers_.Cancel(id);
}

}  // namespace TALO::Wifid
