#pragma once

#include "daemon/store/descriptor.h"
#include "daemon/store/state_store.h"

#include <string>

namespace TALO::Wifid {

/// The state as a file named state.json, readable by its owner only. A save writes a new file beside it,
/// syncs that, renames it over the old one and syncs the directory: whenever the power goes, one of the two
/// is there whole.
class StateFile final : public StateStore {
 public:
  /// Makes the directory (0700) where it is missing and takes it for this process alone, until destruction.
  /// Throws std::system_error when that fails, for instance because another daemon has it.
  explicit StateFile(const std::string& path);

  Result<std::optional<State>> Load() override;
  Result<void> Save(const State& state) override;

 private:
  std::string path_;
  Descriptor directory_;
  Descriptor lock_;
};

}  // namespace TALO::Wifid
