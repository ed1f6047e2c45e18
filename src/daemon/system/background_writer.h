#pragma once

#include "daemon/radio/timers.h"
#include "daemon/store/descriptor.h"
#include "daemon/store/state_store.h"
#include "daemon/store/state_writer.h"
#include "daemon/system/event_watch.h"

#include <chrono>
#include <functional>
#include <thread>

namespace TALO::Wifid {

/// Saves on a thread of its own, which lives as long as one save: a disk may take its time to sync, and the
/// event loop must not wait for it. The store is used by that thread alone while it saves.
class BackgroundWriter final : public StateWriter {
 public:
  static constexpr auto kPatience = std::chrono::seconds(10);

  /// Calls `late` when a save has taken kPatience and goes on. Loop, store and timers must outlive it. Throws
  /// std::system_error when the system has no descriptor left.
  BackgroundWriter(const Loop& loop, StateStore& store, Timers& timers, std::function<void()> late);
  /// Waits for the end of a save under way; nobody is told of it any more.
  ~BackgroundWriter() override;

  void Save(const State& state, Saved saved) override;

  /// Whether nothing is being saved any more, waiting for that so long; the destructor waits for ever.
  bool IsDoneWithin(std::chrono::milliseconds time) const;

 private:
  void Work(const State& state);
  void Finish();

  StateStore& store_;
  Timers& timers_;
  std::function<void()> late_;
  Timers::Id patience_{};
  Descriptor done_;
  EventWatch watch_;
  std::thread worker_;
  Result<void> result_;  ///< the worker's until it has told of its end
  Saved saved_;
};

}  // namespace TALO::Wifid
