#include "daemon/service/engine.h"

#include "daemon/model/merge.h"
#include "daemon/service/message_ids.h"

#include <exception>
#include <utility>

namespace TALO::Wifid {

Engine::Engine(const Doors& doors, State state) : doors_(doors), state_(std::move(state)) {}

RadioQueue::Radios Engine::AllRadios() const {
  Radios radios;
  for (const RadioCapability& radio : GetCapabilities().radios) {
    radios.insert(radio.radio);
  }
  return radios;
}

std::vector<RadioPlan> Engine::Plans() const { return MakePlan(state_, GetCapabilities(), scheduledOff_); }

void Engine::Start(std::function<void()> done) {
  scheduledOff_ = ScheduledOff(state_, doors_.clock.WallNow(), doors_.calendar);
  Restart(ApplyMode::WhatDiffers, [this, done = std::move(done)](const Result<void>& started) {
    if (!started.Succeeded()) {
      doors_.log.Write(Severity::Error, "the radios are not as they were left: " + started.Why().sentence,
                       {.messageId = MessageIds::kNotRestored});
    }
    done();
  });
}

void Engine::WhenSettled(std::function<void()> action) {
  unsettled_.push_back(std::move(action));
  Settle();
}

// Whatever an action leads to at once goes behind those that wait already.
void Engine::Settle() {
  if (settling_) {
    return;
  }
  settling_ = true;
  std::exception_ptr failure;
  while (!saving_ && !unsettled_.empty()) {
    const auto next = std::move(unsettled_.front());
    unsettled_.pop_front();
    try {
      next();
    } catch (...) {
      failure = std::current_exception();
    }
  }
  settling_ = false;
  if (failure) {
    std::rethrow_exception(failure);
  }
}

void Engine::Save(const State& state, Finish finish) {
  saving_ = true;
  doors_.store.Save(state, [this, finish = std::move(finish)](const Result<void>& saved) {
    saving_ = false;
    saveOwed_ = !saved.Succeeded();
    unsettled_.push_front([finish, saved] { finish(saved); });
    Settle();
  });
}

void Engine::Commit(const Radios& radios, const State& next, Finish finish) {
  if (next == state_ && !saveOwed_) {
    // Nothing to store; but a radio that failed before may not be as the state says.
    PutInForce(radios, next, std::move(finish));
    return;
  }
  Save(next, [this, radios, next, finish = std::move(finish)](const Result<void>& saved) {
    if (!saved.Succeeded()) {
      doors_.log.Write(Severity::Error, saved.Why().sentence, {.messageId = MessageIds::kNotStored});
      finish(saved);
      return;
    }
    PutInForce(radios, next, finish);
  });
}

void Engine::PutInForce(const Radios& radios, const State& next, Finish finish) {
  const State before = std::exchange(state_, next);
  scheduledOff_ = ScheduledOff(state_, doors_.clock.WallNow(), doors_.calendar);
  Apply(radios, ApplyMode::WhatDiffers,
        [this, radios, before, next, finish = std::move(finish)](const Result<void>& applied) {
          if (!applied.Succeeded()) {
            WhenSettled([this, radios, before, next, why = applied.Why(), finish] {
              RollBack(radios, before, next, why, finish);
            });
            return;
          }
          if (before.networks != next.networks) {
            doors_.announcer.NetworksChanged();
          }
          finish({});
        });
}

void Engine::RollBack(const Radios& radios, const State& before, const State& after, const Refusal& why,
                      Finish finish) {
  doors_.log.Write(Severity::Error, why.sentence, {.messageId = MessageIds::kNotApplied});
  // Not simply `before`: changes on other radios may have come to stay meanwhile.
  state_ = Revert(state_, before, after);
  scheduledOff_ = ScheduledOff(state_, doors_.clock.WallNow(), doors_.calendar);
  Save(state_, [this, radios, why, finish = std::move(finish)](const Result<void>& saved) {
    if (!saved.Succeeded()) {
      doors_.log.Write(Severity::Critical, "a change that failed stays stored: " + saved.Why().sentence,
                       {.messageId = MessageIds::kNotUndone});
    }
    Apply(radios, ApplyMode::WhatDiffers, [this, why, finish](const Result<void>& back) {
      if (!back.Succeeded()) {
        doors_.log.Write(Severity::Critical, "the radios are not back as they were: " + back.Why().sentence,
                         {.messageId = MessageIds::kNotUndone});
      }
      finish(why);
    });
  });
}

void Engine::Apply(const Radios& radios, ApplyMode mode, Finish finish) {
  struct Progress {
    std::size_t waitingFor = 1;  // itself, until all are asked
    Result<void> outcome;
  };
  const auto progress = std::make_shared<Progress>();
  const auto answered = [progress, finish = std::move(finish)](const Result<void>& result) {
    if (!result.Succeeded() && progress->outcome.Succeeded()) {
      progress->outcome = result;
    }
    if (--progress->waitingFor == 0) {
      finish(progress->outcome);
    }
  };
  for (const RadioPlan& plan : Plans()) {
    const auto applied = applied_.find(plan.radio);
    const bool asPlanned = applied != applied_.end() && applied->second == plan;
    if (!radios.contains(plan.radio) || (asPlanned && mode == ApplyMode::WhatDiffers)) {
      continue;
    }
    ++progress->waitingFor;
    applied_.erase(plan.radio);
    doors_.driver.Apply(plan, mode, [this, plan, answered](const Result<void>& result) {
      if (result.Succeeded()) {
        applied_[plan.radio] = plan;
      }
      answered(result);
    });
  }
  answered({});
}

void Engine::Use(RadioFrequency radio, std::function<void(std::function<void()>)> use) {
  queue_.Enter({radio}, [this, use = std::move(use)](RadioQueue::Ticket ticket) {
    use([this, ticket] { queue_.Leave(ticket); });
  });
}

void Engine::Restart(ApplyMode mode, Done<void> done) {
  queue_.Enter(AllRadios(), [this, mode, done = std::move(done)](RadioQueue::Ticket ticket) {
    if (IsTooLate(ticket, done)) {
      return;
    }
    // What a radio was last brought to says nothing of how it is now: the driver finds what differs.
    applied_.clear();
    Apply(AllRadios(), mode, [this, ticket, done](const Result<void>& applied) {
      done(applied);
      queue_.Leave(ticket);
    });
  });
}

void Engine::EvaluateSchedules(Done<void> done) {
  queue_.Enter(AllRadios(), [this, done = std::move(done)](RadioQueue::Ticket ticket) {
    if (IsTooLate(ticket, done)) {
      return;
    }
    scheduledOff_ = ScheduledOff(state_, doors_.clock.WallNow(), doors_.calendar);
    Apply(AllRadios(), ApplyMode::WhatDiffers, [this, ticket, done](const Result<void>& applied) {
      done(applied);
      queue_.Leave(ticket);
    });
  });
}

void Engine::End(std::function<void()> done) {
  ending_ = true;
  queue_.WhenEmpty([this, done = std::move(done)] {
    if (!saveOwed_) {
      done();
      return;
    }
    Save(state_, [this, done](const Result<void>& saved) {
      if (!saved.Succeeded()) {
        doors_.log.Write(Severity::Critical, saved.Why().sentence);
      }
      done();
    });
  });
}

}  // namespace TALO::Wifid
