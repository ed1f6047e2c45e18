#pragma once

#include "daemon/radio/simulated/simulated_driver.h"
#include "daemon/service/engine.h"
#include "daemon/service/service.h"
#include "support/admit_all.h"
#include "support/bus_pair.h"
#include "support/fake_doors.h"
#include "support/manual_timers.h"
#include "support/operation_calls.h"
#include "support/plan_record.h"
#include "support/zone_calendar.h"

#include <chrono>
#include <cstdint>
#include <map>
#include <string>

namespace TALO::Wifid {

/// The daemon from its objects on the bus down to simulated radios, in one process and with a time that the
/// test owns. Its local time is UTC.
class SimulatedService {
 public:
  /// A router of that model with this state, started `now` seconds after 1970. Its radios are not up yet.
  SimulatedService(SupportedModel model, Scenario scenario, const State& state, std::int64_t now);

  /// Time on every clock, and what is due until then.
  void Pass(std::chrono::seconds time);

  /// Somebody sets the machine's clock.
  void SetClock(std::int64_t now);

  /// Brings the radios to their plans once more, which a minute is enough for, and says how that went.
  Result<void> Restart();

  /// As the daemon ends, which a minute is enough for. Nothing may be asked of it after this.
  void End();

  /// Calls the operation and gives it five seconds, which is more than any takes. The error of its answer,
  /// "none" for success.
  template <auto Method, typename... Arguments>
  std::string ErrorOfCall(const Arguments&... arguments) {
    const std::uint64_t cookie = SendCall<Method>(pair_, arguments...);
    pair_.RunUntilQuiet();
    Pass(std::chrono::seconds(5));
    return ErrorOf(pair_.WaitForAnswer(cookie));
  }

  Timers::Duration Now() const { return timers_.Now(); }
  std::int64_t WallNow() const { return clock_.now; }
  const SimulatedDriver& Driver() const { return driver_; }
  /// The plan that each radio reached last.
  const std::map<RadioFrequency, RadioPlan>& ReachedPlans() const { return record_.Reached(); }
  const State& GetState() const { return engine_.GetState(); }
  FakeStore& Store() { return store_; }
  BusPair& Bus() { return pair_; }
  /// What the radios have told so far.
  const std::vector<RadioEvent>& Events() const { return announcer_.happened; }

 private:
  Journal journal_;
  ManualTimers timers_;
  SimulatedDriver driver_;
  PlanRecord record_{driver_};
  FakeStore store_{journal_};
  FakeClock clock_;
  ZoneCalendar calendar_ = Greenwich();
  FakeAnnouncer announcer_{journal_};
  FakeRandom random_;
  Log log_{Severity::Critical};
  Engine engine_;
  WPSSessions wps_{engine_};
  ScheduleKeeper schedules_{engine_, timers_};
  Service service_{{engine_, wps_, schedules_, random_, log_, "br0", AdmitAll}};
  BusPair pair_;
};

}  // namespace TALO::Wifid
