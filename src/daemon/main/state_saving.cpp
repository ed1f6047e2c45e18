#include "daemon/main/state_saving.h"

#include <chrono>
#include <cstdlib>

namespace TALO::Wifid {

StateSaving::StateSaving(EventLoop& loop, StateStore& store, Timers& timers, Log& log)
    : log_(log), loop_(loop.GetWatched()), writer_(loop_, store, timers, [&log] {
        log.Write(Severity::Error,
                  "the disk has not taken the state for 10 seconds; until it has, nothing is changed", {});
      }) {}

void StateSaving::EndIfHanging() {
  constexpr auto kPatience = std::chrono::seconds(2);
  if (!writer_.IsDoneWithin(kPatience)) {
    log_.Write(Severity::Error, "talowifid ends while the state is being saved", {});
    std::_Exit(EXIT_SUCCESS);
  }
}

}  // namespace TALO::Wifid
