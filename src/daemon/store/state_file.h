#pragma once

#include "daemon/store/state_store.h"
#include "daemon/store/storage_calls.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// The state in files of one directory: state.json, and state.json.last as it was before the last change. A
/// save writes and syncs a new file beside them, links the one in force to another name, renames the new one
/// over it, the link over state.json.last, and syncs the directory. So at every instant state.json is whole,
/// the old or the new one, and so is state.json.last once there was a change. The names state.json.new and
/// state.json.old are left only by a save that was interrupted, and mean nothing.
///
/// A file that cannot be understood becomes state.json.broken-1, those of before 2 and so on; the oldest of
/// more than kKeptBroken goes.
class StateFile final : public StateStore {
 public:
  static constexpr int kKeptBroken = 4;

  /// `path` names the directory for sentences.
  StateFile(StorageCalls& calls, const std::string& path) : calls_(&calls), path_(path) {}

  Result<StoredState> Load() override;
  Result<void> Save(const State& state) override;

 private:
  /// What a file is; `why` where it is of no use.
  struct Reading {
    enum class Kind { Missing, Sound, Broken, Unreadable };
    Kind kind;
    State state;
    std::string why;
  };

  Reading Read(const std::string& name);
  Result<StoredState> LoadLast(const Reading& current);
  std::string Recovered();
  void Recover();
  void WriteNew(const std::string& text);
  void Replace();
  [[noreturn]] void PutBack(const char* before, const StorageFailure& why);
  void Discard(const char* name);

  StorageCalls* calls_;
  std::string path_;
  // What Load() found and could not be mended yet; saving goes on only after it.
  std::vector<std::string> broken_;  ///< to be put aside, the newest last
  int roomMadeFrom_ = kKeptBroken;   ///< files of this number and above have moved on for the next
  bool lastInForce_ = false;         ///< state.json.last has to take the place of state.json
};

}  // namespace TALO::Wifid
