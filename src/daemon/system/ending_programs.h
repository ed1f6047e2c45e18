#pragma once

#include "daemon/radio/linux/children.h"
#include "daemon/system/event_watch.h"
#include "daemon/system/running_program.h"

#include <list>
#include <memory>

namespace TALO::Wifid {

/// Programs that were killed and may not be gone yet. Nobody waits for them while the daemon serves.
class EndingPrograms {
 public:
  /// The loop must outlive this.
  explicit EndingPrograms(const Loop& loop) : loop_(loop) {}
  EndingPrograms(const EndingPrograms&) = delete;
  EndingPrograms& operator=(const EndingPrograms&) = delete;
  /// Gives them two seconds, so that a daemon that starts next finds the radios free.
  ~EndingPrograms();

  /// Kills it and sees it to its end.
  void Take(const Children::Program& program, std::unique_ptr<RunningProgram> running);

  /// Whether one that was started just so may still be there.
  bool Has(const Children::Program& program);

 private:
  struct Ending {
    Children::Program program;
    std::unique_ptr<RunningProgram> running;
    std::unique_ptr<EventWatch> end = nullptr;
  };

  void Watch(Ending& ending);
  void Reap();

  const Loop& loop_;
  std::list<Ending> endings_;
};

}  // namespace TALO::Wifid
