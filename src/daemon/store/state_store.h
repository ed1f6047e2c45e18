#pragma once

#include "daemon/model/result.h"
#include "daemon/model/state.h"

#include <optional>
#include <string>

namespace TALO::Wifid {

/// What was found where the state is kept.
struct StoredState {
  std::optional<State> state;  ///< nothing where none was ever saved, or all of it is lost
  std::string trouble;         ///< a sentence of what is lost and where it was put; empty when all is well
};

/// The door to where the state is kept.
class StateStore {
 public:
  virtual ~StateStore() = default;

  /// The state saved last. Where that one is damaged it is put aside and the one before it takes its place.
  /// StorageFailed when the store cannot be read, or is of a newer version; it is left as it is then.
  virtual Result<StoredState> Load() = 0;

  /// Replaces the saved state. After success it survives a power cut. After StorageFailed the one before is
  /// there, whole; only where the sentence says that it could not be put back, the new one may be found after
  /// a restart, until another save succeeds.
  virtual Result<void> Save(const State& state) = 0;
};

}  // namespace TALO::Wifid
