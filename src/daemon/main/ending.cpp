#include "daemon/main/ending.h"

namespace TALO::Wifid {

void Ending::Begin(const std::function<void()>& finish) {
  if (begun_) {
    finish();
    return;
  }
  begun_ = true;
  timers_.After(kPatience, [this, finish] {
    engine_.GetDoors().log.Write(Severity::Warning,
                                 "talowifid does not wait any longer for what is under way");
    finish();
  });
  engine_.End(finish);
}

}  // namespace TALO::Wifid
