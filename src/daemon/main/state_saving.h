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

  /// Ends the process here where a save does not come to its end within seconds: a disk that does not answer
  /// is not waited for, and what it holds is whole at every instant.
  void EndIfHanging();

 private:
  Log& log_;
  Loop loop_;
  BackgroundWriter writer_;
};

}  // namespace TALO::Wifid
