#pragma once

#include "daemon/store/state_store.h"
#include "daemon/store/state_writer.h"

namespace TALO::Wifid {

/// Saves while its caller waits.
class DirectWriter final : public StateWriter {
 public:
  explicit DirectWriter(StateStore& store) : store_(store) {}

  void Save(const State& state, Saved saved) override { saved(store_.Save(state)); }

 private:
  StateStore& store_;
};

}  // namespace TALO::Wifid
