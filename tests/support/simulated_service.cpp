#include "support/simulated_service.h"

#include <optional>
#include <stdexcept>
#include <utility>
#include <variant>

namespace TALO::Wifid {

SimulatedService::SimulatedService(SupportedModel model, Scenario scenario, const State& state,
                                   std::int64_t now)
    : driver_(model, std::move(scenario), timers_),
      engine_({store_, record_, clock_, calendar_, announcer_, log_}, state) {
  clock_.now = now;
  driver_.SetEventSink([this](const RadioEvent& event) {
    if (const auto* finished = std::get_if<WPSFinished>(&event)) {
      wps_.Finished(*finished);
    }
    announcer_.Happened(event);
  });
  service_.Attach(pair_.Server());
  engine_.Start([this] { schedules_.Rearm(); });
}

void SimulatedService::Pass(std::chrono::seconds time) {
  clock_.now += time.count();
  timers_.Advance(time);
}

void SimulatedService::SetClock(std::int64_t now) {
  clock_.Set(now);
  Pass(std::chrono::seconds(5));
}

Result<void> SimulatedService::Restart() {
  std::optional<Result<void>> outcome;
  engine_.Restart(ApplyMode::WhatDiffers, [&outcome](const Result<void>& restarted) { outcome = restarted; });
  Pass(std::chrono::minutes(1));
  return outcome.value();
}

void SimulatedService::End() {
  bool isOver = false;
  engine_.End([&isOver] { isOver = true; });
  Pass(std::chrono::minutes(1));
  if (!isOver) {
    throw std::runtime_error("the daemon does not end");
  }
}

}  // namespace TALO::Wifid
