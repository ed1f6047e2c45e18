#pragma once

#include "daemon/service/clock.h"

namespace TALO::Wifid {

/// The machine's own time.
class SystemClock final : public Clock {
 public:
  std::int64_t WallNow() const override;
};

}  // namespace TALO::Wifid
