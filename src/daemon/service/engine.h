#pragma once

#include "daemon/model/change.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/model/schedules.h"
#include "daemon/model/views.h"
#include "daemon/radio/radio_driver.h"
#include "daemon/service/announcer.h"
#include "daemon/service/clock.h"
#include "daemon/service/done.h"
#include "daemon/service/log.h"
#include "daemon/service/radio_queue.h"
#include "daemon/store/state_writer.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace TALO::Wifid {

/// Holds the state and carries changes through: validate, make the new state, store it durably, apply it to
/// the radios, announce, answer. A success that it reports is stored and in the air; a change that fails at
/// any step leaves state, store and radios as they were. Changes that touch a radio in common go through one
/// after the other; others pass, but for the time in which a state is stored: the next is made from it.
/// Questions are answered at once, from the state in force.
class Engine {
 public:
  template <typename Answer>
  using Done = Wifid::Done<Answer>;
  template <typename Answer>
  using Rule = std::function<Result<Change<Answer>>(const State&)>;
  using Radios = RadioQueue::Radios;

  struct Doors {
    StateWriter& store;
    RadioDriver& driver;
    Clock& clock;
    const Calendar& calendar;
    Announcer& announcer;
    Log& log;
  };

  Engine(const Doors& doors, State state);

  /// Brings the radios to the state; call once, before anything else. A radio that fails is logged and left
  /// for Restart().
  void Start(std::function<void()> done);

  const State& GetState() const { return state_; }
  const Capabilities& GetCapabilities() const { return doors_.driver.GetCapabilities(); }
  const Doors& GetDoors() const { return doors_; }
  Radios AllRadios() const;

  /// Runs `view` on the state and what is in the air now.
  template <typename View>
  auto Ask(View view) const {
    const auto live = doors_.driver.GetLive();
    return view(Picture{state_, GetCapabilities(), live});
  }

  /// Carries a change through. `rule` makes it, from the state in force once the change's turn on `radios`
  /// has come; it may change the plans of those radios only. Here as below, what nobody awaits any more by
  /// the time of its turn is dropped.
  template <typename Answer>
  void Make(const Radios& radios, Rule<Answer> rule, Done<Answer> done) {
    queue_.Enter(radios, [this, radios, rule = std::move(rule), done = std::move(done)](auto ticket) {
      WhenSettled([this, ticket, radios, rule, done] {
        try {
          MakeNow<Answer>(ticket, radios, rule, done);
        } catch (...) {
          queue_.Leave(ticket);
          throw;
        }
      });
    });
  }

  /// A change of the plans of every radio.
  template <typename Answer>
  void Make(Rule<Answer> rule, Done<Answer> done) {
    Make<Answer>(AllRadios(), std::move(rule), std::move(done));
  }

  /// Uses a radio for something that changes no plan, when its turn has come; `use` calls what it is given
  /// when done.
  void Use(RadioFrequency radio, std::function<void(std::function<void()> leave)> use);

  /// Brings every radio to its plan again: what differs, or everything.
  void Restart(ApplyMode mode, Done<void> done);

  /// Evaluates the schedules against the clock and brings the radios to what follows.
  void EvaluateSchedules(Done<void> done);

  /// The daemon is about to end: what has had its turn and the uses of radios are carried through, every
  /// other change is refused with Busy. Calls `done` when nothing is under way any more, perhaps at once.
  /// Call once.
  void End(std::function<void()> done);

 private:
  using Finish = std::function<void(const Result<void>&)>;

  /// Whether its turn comes too late: nobody awaits it any more, or the daemon ends, which is answered. Its
  /// turn is over then.
  template <typename Answer>
  bool IsTooLate(RadioQueue::Ticket ticket, const Done<Answer>& done) {
    if (done.IsAwaited() && !ending_) {
      return false;
    }
    if (ending_) {
      done(Refusal{ErrorCode::Busy, "the wifi daemon is about to end"});
    }
    queue_.Leave(ticket);
    return true;
  }

  /// A change whose turn has come, while nothing is being saved.
  template <typename Answer>
  void MakeNow(RadioQueue::Ticket ticket, const Radios& radios, const Rule<Answer>& rule,
               const Done<Answer>& done) {
    if (IsTooLate(ticket, done)) {
      return;
    }
    auto change = rule(state_);
    if (!change.Succeeded()) {
      done(change.Why());
      queue_.Leave(ticket);
      return;
    }
    auto made = std::make_shared<Change<Answer>>(std::move(change.Value()));
    Commit(radios, made->state, [this, ticket, made, done](const Result<void>& committed) {
      if (!committed.Succeeded()) {
        done(committed.Why());
      } else if constexpr (std::is_void_v<Answer>) {
        done({});
      } else {
        done(made->answer);
      }
      queue_.Leave(ticket);
    });
  }

  /// Does something that makes a new state once no other is on its way to the store, in the order asked for.
  void WhenSettled(std::function<void()> action);
  void Settle();
  void Save(const State& state, Finish finish);

  void Commit(const Radios& radios, const State& next, Finish finish);
  /// The second half: it is stored and in force from here on.
  void PutInForce(const Radios& radios, const State& next, Finish finish);
  void RollBack(const Radios& radios, const State& before, const State& after, const Refusal& why,
                Finish finish);
  /// Applies the plans of those radios that are not as planned, or of all with ApplyMode::Everything; answers
  /// the first failure once every radio has answered.
  void Apply(const Radios& radios, ApplyMode mode, Finish finish);
  std::vector<RadioPlan> Plans() const;

  Doors doors_;
  State state_;
  std::set<NetworkOnRadio> scheduledOff_;
  std::map<RadioFrequency, RadioPlan> applied_;  ///< as the radio stands; absent where it is not known
  RadioQueue queue_;
  bool saving_ = false;
  bool settling_ = false;
  std::deque<std::function<void()>> unsettled_;  ///< wait until the save is done
  bool saveOwed_ = false;  ///< the store failed last, and may hold something else than is in force
  bool ending_ = false;
};

}  // namespace TALO::Wifid
