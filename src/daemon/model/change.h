#pragma once

#include "daemon/model/state.h"

namespace TALO::Wifid {

/// A new state and what the request answers.
template <typename Answer>
struct Change {
  State state;
  Answer answer;
};

template <>
struct Change<void> {
  State state;
};

}  // namespace TALO::Wifid
