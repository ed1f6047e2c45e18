#pragma once

#include "daemon/radio/timers.h"

#include <cstddef>
#include <functional>
#include <map>
#include <optional>
#include <utility>

namespace TALO::Wifid {

/// Time that passes when the test says so.
class ManualTimers final : public Timers {
 public:
  Duration Now() const override { return now_; }
  Id After(Duration delay, std::function<void()> action) override;
  void Cancel(Id id) override;

  /// Lets time pass and makes every call that is due until then, each at its time. Advance(0) makes those
  /// that are due now.
  void Advance(Duration duration);

  /// Goes to the next call and makes it. False when nothing waits.
  bool RunNext();

  /// Goes on until nothing waits. Throws when that does not come to an end.
  void RunUntilIdle();

  std::size_t CountWaiting() const { return waiting_.size(); }
  /// How long until the next call; nothing where none waits.
  std::optional<Duration> UntilNext() const;

 private:
  using Moment = std::pair<Duration, Id>;

  Duration now_{};
  Id lastId_ = 0;
  std::map<Moment, std::function<void()>> waiting_;
};

}  // namespace TALO::Wifid
