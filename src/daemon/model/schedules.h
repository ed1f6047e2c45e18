#pragma once

#include "client/service_records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/change.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"

#include <cstdint>
#include <optional>
#include <set>

/// Schedules are evaluated from the clock each time, never from transitions that were remembered: they are
/// right after a restart, a power cut and a jump of the clock. All times are seconds since 1970, UTC.
namespace TALO::Wifid {

/// The door to local time.
class Calendar {
 public:
  virtual ~Calendar() = default;

  /// The minute of the week in local time, Monday 00:00 being 0, at a point in time.
  virtual int MinuteOfWeek(std::int64_t time) const = 0;
};

/// Whether a schedule whose windows are in their order can be: `Customized` has up to 64 windows within the
/// week, none empty, none overlapping another, and no seconds; `ValidFor` no windows and no negative number
/// of seconds. InvalidArgument else, and for a mode that does not exist, LimitReached for too many windows.
Result<void> CheckSchedule(const Wifi::NetworkSchedule& schedule);

/// Gives a network a schedule on one radio, or on all for `SmartConnect`, in place of those it had there,
/// whatever their mode; takes them away for no seconds and no windows. `ValidFor` takes a number of seconds
/// of at least 1 from `now`; `Customized` takes windows within the week in any order, none empty, none
/// overlapping another; they may touch. NotFound for an unknown network, what ResolveRadios says for the
/// radio, InvalidArgument for anything outside those limits, for a mode that does not exist and for what
/// belongs to the other mode, LimitReached for more than 64 windows.
Result<Change<void>> SetSchedule(const State& state, const Capabilities& capabilities,
                                 const Wifi::NetworkSchedule& schedule, std::int64_t now);

/// Whether the schedule lets its BSS be on the air. A window is on in those minutes that the local clock
/// shows: one that the clock skips when summer begins is not made up for, one that it shows twice when summer
/// ends is on twice.
bool IsOn(const ScheduleState& schedule, std::int64_t now, const Calendar& calendar);

/// When it switches next, on or off: the first second after `now` at which IsOn differs. Nothing where it
/// never does again. Asks the calendar some twenty times, and as often again where local time jumps.
std::optional<std::int64_t> NextSwitch(const ScheduleState& schedule, std::int64_t now,
                                       const Calendar& calendar);

/// Every network and radio whose schedule keeps it off the air now.
std::set<NetworkOnRadio> ScheduledOff(const State& state, std::int64_t now, const Calendar& calendar);

/// The earliest next switch of all schedules; nothing where none switches again.
std::optional<std::int64_t> NextSwitchOfAll(const State& state, std::int64_t now, const Calendar& calendar);

/// What callers are shown: each scheduled network with its entries in the order of the radios. A switch that
/// is too far away for the record is shown as far as it can tell.
Wifi::ScheduleStatus ScheduleStatusOf(const State& state, std::int64_t now, const Calendar& calendar);

}  // namespace TALO::Wifid
