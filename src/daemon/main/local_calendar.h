#pragma once

#include "daemon/model/schedules.h"

namespace TALO::Wifid {

/// Local time as the machine is set to. A new setting holds from the next question on.
class LocalCalendar final : public Calendar {
 public:
  int MinuteOfWeek(std::int64_t time) const override;
};

}  // namespace TALO::Wifid
