#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <optional>

namespace TALO::Wifid {

/// The door to where the state is kept.
class StateStore {
 public:
  virtual ~StateStore() = default;

  /// The state saved last, nothing where none ever was. StorageFailed when there is one that cannot be read
  /// or understood; it is left as it is.
  virtual Result<std::optional<State>> Load() = 0;

  /// Replaces the saved state. After success it survives a power cut; after StorageFailed one of
  /// the two is there, whole.
  virtual Result<void> Save(const State& state) = 0;
};

}  // namespace TALO::Wifid
