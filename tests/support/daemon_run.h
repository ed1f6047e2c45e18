#pragma once

#include "daemon/radio/simulated/simulated_driver.h"
#include "daemon/service/bus_announcer.h"
#include "daemon/service/engine.h"
#include "daemon/service/schedule_keeper.h"
#include "daemon/service/service.h"
#include "daemon/service/wps_sessions.h"
#include "daemon/store/state_directory.h"
#include "daemon/store/state_file.h"
#include "support/bus_pair.h"
#include "support/direct_writer.h"
#include "support/fake_doors.h"
#include "support/manual_timers.h"
#include "support/operation_calls.h"
#include "support/temporary_directory.h"
#include "support/zone_calendar.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Wifid {

/// A time of day that passes as the timers' time does.
class TimersClock final : public Clock {
 public:
  TimersClock(const Timers& timers, std::int64_t start) : timers_(timers), start_(start) {}

  std::int64_t WallNow() const override {
    return start_ + std::chrono::duration_cast<std::chrono::seconds>(timers_.Now()).count();
  }
  void WhenSet(std::function<void()>) override {}  // nobody sets it

 private:
  const Timers& timers_;
  std::int64_t start_;
};

/// What is there before a daemon starts and after it has ended: the time, the place, the state directory and
/// what the radios of a dual-band router find.
struct World {
  explicit World(std::int64_t start, ZoneCalendar place = Greenwich(), Scenario found = {})
      : clock(timers, start), calendar(std::move(place)), scenario(std::move(found)) {}

  /// Lets time pass up to this one.
  void PassUntil(std::int64_t time) { timers.Advance(std::chrono::seconds(time - clock.WallNow())); }

  TemporaryDirectory directory;
  ManualTimers timers;
  TimersClock clock;
  ZoneCalendar calendar;
  Scenario scenario;
};

/// A daemon from its objects on a bus down to the state file and the simulated radios, put together as the
/// program does it, on the time of its world: from its start, with the state that the one before left, to its
/// end.
class DaemonRun {
 public:
  explicit DaemonRun(World& world);

  /// The error of a call, "none" for success.
  template <auto Method, typename... Arguments>
  std::string ErrorOfCall(const Arguments&... arguments) {
    return ErrorOf(Settle(SendCall<Method>(pair_, arguments...)));
  }

  /// The value of a call's answer.
  template <auto Method, typename... Arguments>
  auto Value(const Arguments&... arguments) {
    return ValueOfAnswer<Method>(Settle(SendCall<Method>(pair_, arguments...)));
  }

  /// Makes "Home" with "correct-horse".
  void CreateHome();
  /// The interfaces that are up, radio by radio, each with a blank behind.
  std::string InterfacesUp();
  /// The ends of WPS sessions that were told of so far, as in "wlan0_1 timed out".
  std::vector<std::string> FinishedWPS();

 private:
  /// Lets time pass until the call is answered.
  sd_bus_message* Settle(std::uint64_t cookie);

  World& world_;
  Log log_{Severity::Critical};
  FakeRandom random_;
  BusAnnouncer announcer_{log_};
  SimulatedDriver driver_;
  StateDirectory directory_;
  StateFile store_;
  DirectWriter writer_{store_};
  Engine engine_;
  WPSSessions wps_{engine_};
  ScheduleKeeper schedules_;
  Service service_;
  BusPair pair_;
};

}  // namespace TALO::Wifid
