#pragma once

#include "daemon/main/event_loop.h"
#include "daemon/radio/timers.h"
#include "daemon/service/log.h"
#include "daemon/system/background_writer.h"

namespace TALO::Wifid {

/// Saving beside the daemon's loop, with a word in the log where the disk does not answer.
class StateSaving {
 public:
  StateSaving(EventLoop& loop, StateStore& store, Timers& timers, Log& log);

  StateWriter& GetWriter() { return writer_; }

  /// Runs the loop to its end. Ends the process where a save does not come to its end within seconds then: a
  /// disk that does not answer is not waited for, and what it holds is whole at every instant. Throws what
  /// ended the loop.
  void RunLoop();

 private:
  bool IsHanging() const;

  EventLoop& eventLoop_;
  Log& log_;
  Loop loop_;
  BackgroundWriter writer_;
};

}  // namespace TALO::Wifid
