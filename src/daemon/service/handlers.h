#pragma once

#include "daemon/service/engine.h"

#include <utility>

/// The two forms that most handlers have.
namespace TALO::Wifid {

/// Answers at once with a view of the state and the air.
template <typename View>
auto AnswerWith(Engine& engine, View view) {
  return [&engine, view](auto respond) { respond(engine.Ask(view)); };
}

/// Answers at once with what is remembered.
template <typename Member>
auto AnswerWithState(Engine& engine, Member State::*member) {
  return [&engine, member](auto respond) { respond(engine.GetState().*member); };
}

/// Carries a change that answers nothing through. `rule` takes the state and the arguments of the call.
template <typename RuleOfArguments>
auto MakeWith(Engine& engine, RuleOfArguments rule) {
  return [&engine, rule](const auto& argument, auto respond) {
    engine.Make<void>([rule, argument](const State& state) { return rule(state, argument); }, respond);
  };
}

}  // namespace TALO::Wifid
