#pragma once

#include "daemon/radio/timers.h"

#include <functional>
#include <set>

namespace TALO::Wifid {

/// The calls that one owner waits for. None comes after its end.
class OwnTimers {
 public:
  explicit OwnTimers(Timers& timers) : timers_(timers) {}
  OwnTimers(const OwnTimers&) = delete;
  OwnTimers& operator=(const OwnTimers&) = delete;
  ~OwnTimers();

  Timers::Duration Now() const { return timers_.Now(); }
  Timers::Id After(Timers::Duration delay, std::function<void()> action);
  void Cancel(Timers::Id id);

 private:
  Timers& timers_;
  std::set<Timers::Id> pending_;
};

}  // namespace TALO::Wifid
