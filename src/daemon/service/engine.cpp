#include "daemon/service/engine.h"

namespace TALO::Wifid {

Engine::Engine(Doors doors, State state, std::string bridge)
    : doors_(doors), state_(std::move(state)), bridge_(std::move(bridge)) {}

// In the queue like a change: a driver takes no plan before it is done with the one before.
void Engine::Start(Done<void> done) { RestartNetworks(false, std::move(done)); }

template <typename Answer>
void Engine::Enqueue(std::function<Result<Change<Answer>>()> rule, Done<Answer> done) {
  queue_.push_back([this, rule = std::move(rule), done = std::move(done)] {
    auto change = rule();
    if (!change.Succeeded()) {
      done(change.Why());
      EndStep();
      return;
    }
    Commit(std::move(change.Value().state), [change, done](const Result<void>& committed) {
      if (!committed.Succeeded()) {
        done(committed.Why());
      } else if constexpr (std::is_void_v<Answer>) {
        done({});
      } else {
        done(change.Value().answer);
      }
    });
  });
  Step();
}

void Engine::Commit(State next, Finish finish) {
  if (const auto saved = doors_.store.Save(next); !saved.Succeeded()) {
    doors_.log.Write(Severity::Error, saved.Why().sentence);
    finish(saved);
    EndStep();
    return;
  }
  const auto plan = MakePlan(next, doors_.driver.GetCapabilities());
  doors_.driver.Apply(
      plan, ApplyMode::WhatDiffers,
      [this, next = std::move(next), finish = std::move(finish)](const Result<void>& applied) {
        if (!applied.Succeeded()) {
          RollBack(applied.Why(), finish);
          return;
        }
        state_ = next;
        finish({});
        EndStep();
      });
}

void Engine::RollBack(const Refusal& why, Finish finish) {
  doors_.log.Write(Severity::Error, why.sentence);
  if (const auto saved = doors_.store.Save(state_); !saved.Succeeded()) {
    doors_.log.Write(Severity::Critical, "the refused change stays stored: " + saved.Why().sentence);
  }
  const auto plan = MakePlan(state_, doors_.driver.GetCapabilities());
  doors_.driver.Apply(plan, ApplyMode::WhatDiffers,
                      [this, why, finish = std::move(finish)](const Result<void>& back) {
                        if (!back.Succeeded()) {
                          doors_.log.Write(Severity::Critical,
                                           "the radios are not back as they were: " + back.Why().sentence);
                        }
                        finish(why);
                        EndStep();
                      });
}

// A loop, since a step that ends at once comes back here: the stack does not grow with the queue.
void Engine::Step() {
  if (stepping_) {
    return;
  }
  stepping_ = true;
  while (!busy_ && !queue_.empty()) {
    busy_ = true;
    const auto step = std::move(queue_.front());
    queue_.pop_front();
    step();
  }
  stepping_ = false;
}

void Engine::EndStep() {
  busy_ = false;
  Step();
}

void Engine::CreateNetwork(const Wifi::NetworkCreateInfo& info, Done<int> done) {
  Enqueue<int>(
      [this, info] {
        return Wifid::CreateNetwork(state_, doors_.driver.GetCapabilities(), info, bridge_,
                                    doors_.clock.WallNow());
      },
      std::move(done));
}

void Engine::DeleteNetwork(int networkId, Done<void> done) {
  Enqueue<void>([this, networkId] { return Wifid::DeleteNetwork(state_, networkId); }, std::move(done));
}

void Engine::RestartNetworks(bool force, Done<void> done) {
  queue_.push_back([this, force, done = std::move(done)] {
    doors_.driver.Apply(MakePlan(state_, doors_.driver.GetCapabilities()),
                        force ? ApplyMode::Everything : ApplyMode::WhatDiffers,
                        [this, done](const Result<void>& applied) {
                          done(applied);
                          EndStep();
                        });
  });
  Step();
}

}  // namespace TALO::Wifid
