#include "daemon/main/state_saving.h"

#include "daemon/main/system_journal.h"

#include <chrono>
#include <cstdlib>
#include <exception>

namespace TALO::Wifid {

StateSaving::StateSaving(EventLoop& loop, StateStore& store, Timers& timers, Log& log)
    : eventLoop_(loop), log_(log), loop_(loop.GetWatched()), writer_(loop_, store, timers, [&log] {
        log.Write(Severity::Error,
                  "the disk has not taken the state for 10 seconds; until it has, no change is made and no "
                  "schedule is kept",
                  {});
      }) {}

bool StateSaving::IsHanging() const {
  constexpr auto kPatience = std::chrono::seconds(2);
  const bool isHanging = !writer_.IsDoneWithin(kPatience);
  if (isHanging) {
    log_.Write(Severity::Error, "talowifid ends while the state is being saved", {});
  }
  return isHanging;
}

void StateSaving::RunLoop() {
  try {
    eventLoop_.Run();
  } catch (const std::exception& failure) {
    if (IsHanging()) {
      SayWhyNot(failure.what());
      std::_Exit(EXIT_FAILURE);
    }
    throw;
  }
  if (IsHanging()) {
    std::_Exit(EXIT_SUCCESS);
  }
}

}  // namespace TALO::Wifid
