#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <functional>

namespace TALO::Wifid {

/// Saves states as StateStore does, and keeps nobody waiting for the disk.
class StateWriter {
 public:
  using Saved = std::function<void(const Result<void>&)>;

  virtual ~StateWriter() = default;

  /// Calls `saved` once, perhaps at once, with what StateStore says of this state. The next may be saved from
  /// then on, not before.
  virtual void Save(const State& state, Saved saved) = 0;
};

}  // namespace TALO::Wifid
