#include "daemon/store/state_file.h"

#include "daemon/model/state_check.h"
#include "daemon/store/state_codec.h"

#include <cerrno>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr const char* kCurrent = "state.json";
constexpr const char* kLast = "state.json.last";
constexpr const char* kNew = "state.json.new";
constexpr const char* kOld = "state.json.old";

std::string BrokenName(int number) { return "state.json.broken-" + std::to_string(number); }

}  // namespace

StateFile::Reading StateFile::Read(const std::string& name) {
  using enum Reading::Kind;
  std::optional<std::string> text;
  try {
    text = calls_->Read(name);
  } catch (const StorageFailure& failure) {
    // Of these the file itself is the cause; of others the daemon's own situation may be.
    const bool broken = failure.Error() == EIO || failure.Error() == EFBIG;
    return {broken ? Broken : Unreadable, {}, failure.what()};
  }
  if (!text) {
    return {Missing, {}, {}};
  }
  auto state = DecodeState(*text);
  if (!state.Succeeded()) {
    const bool newer = state.Why().code == ErrorCode::NotSupported;
    return {newer ? Unreadable : Broken, {}, state.Why().sentence};
  }
  if (const auto check = CheckState(state.Value()); !check.Succeeded()) {
    return {Broken, {}, "it makes no sense: " + check.Why().sentence};
  }
  return {Sound, std::move(state.Value()), {}};
}

Result<StoredState> StateFile::Load() {
  const Reading current = Read(kCurrent);
  if (current.kind != Reading::Kind::Sound) {
    return LoadLast(current);
  }
  StoredState found{current.state, {}};
  try {
    // A daemon that was killed may have left names that are not on the disk yet.
    calls_->SyncDirectory();
  } catch (const StorageFailure& failure) {
    found.trouble = "the state in " + path_ + " may not outlast a power cut: " + failure.what();
  }
  return found;
}

Result<StoredState> StateFile::LoadLast(const Reading& current) {
  using enum Reading::Kind;
  const auto sentence = [this](const char* name, const Reading& reading) {
    return "the state in " + path_ + "/" + name + " cannot be read: " + reading.why;
  };
  if (current.kind == Unreadable) {
    return Refusal{ErrorCode::StorageFailed, sentence(kCurrent, current)};
  }
  const Reading last = Read(kLast);
  if (last.kind == Unreadable) {
    return Refusal{ErrorCode::StorageFailed, sentence(kLast, last)};
  }
  if (current.kind == Missing && last.kind == Missing) {
    return StoredState{};
  }

  StoredState found;
  found.trouble =
      current.kind == Broken ? sentence(kCurrent, current) : "there is no state in " + path_ + "/" + kCurrent;
  if (last.kind == Sound) {
    found.state = last.state;
    found.trouble += "; the last change is lost, the state before it is in force, from " + std::string(kLast);
    lastInForce_ = true;
  } else {
    found.trouble +=
        last.kind == Broken ? "; " + sentence(kLast, last) : "; there is no " + std::string(kLast);
    found.trouble += "; everything is lost, the router is as one that was never set up";
  }
  if (last.kind == Broken) {
    broken_.emplace_back(kLast);
  }
  if (current.kind == Broken) {
    broken_.emplace_back(kCurrent);
  }
  found.trouble += Recovered();
  return found;
}

/// Says where the broken files are then.
std::string StateFile::Recovered() {
  const std::size_t count = broken_.size();
  try {
    Recover();
  } catch (const StorageFailure& failure) {
    return std::string("; nothing can be saved until this works: ") + failure.what();
  }
  switch (count) {
    case 0:
      return "";
    case 1:
      return "; the broken file is kept as " + BrokenName(1);
    default:
      return "; the broken files are kept as " + BrokenName(1) + " and " + BrokenName(2);
  }
}

// A file is safe under its new name before another takes its place.
void StateFile::Recover() {
  while (!broken_.empty()) {
    for (; roomMadeFrom_ > 1; --roomMadeFrom_) {
      calls_->Rename(BrokenName(roomMadeFrom_ - 1), BrokenName(roomMadeFrom_));
    }
    calls_->SyncDirectory();
    calls_->Rename(broken_.front(), BrokenName(1));
    broken_.erase(broken_.begin());
    roomMadeFrom_ = kKeptBroken;
    calls_->SyncDirectory();
  }
  if (lastInForce_) {
    calls_->Rename(kLast, kCurrent);
    calls_->SyncDirectory();
    lastInForce_ = false;
  }
}

Result<void> StateFile::Save(const State& state) {
  const std::string failed = "the state cannot be saved in " + path_ + ": ";
  // What is written must be read again.
  if (const auto check = CheckState(state); !check.Succeeded()) {
    return Refusal{ErrorCode::StorageFailed, failed + "it makes no sense: " + check.Why().sentence};
  }
  try {
    Recover();
    WriteNew(EncodeState(state));
    Replace();
    return {};
  } catch (const StorageFailure& failure) {
    return Refusal{ErrorCode::StorageFailed, failed + failure.what()};
  }
}

void StateFile::WriteNew(const std::string& text) {
  // What an interrupted save left has a mode that is not known, or is a link.
  calls_->Unlink(kNew);
  try {
    const auto file = calls_->Create(kNew);
    file->Write(text);
    file->Sync();
  } catch (const StorageFailure& failure) {
    // A full disk gets its room back.
    Discard(kNew);
    throw;
  }
}

void StateFile::Replace() {
  const char* before = nullptr;  // the other name of the state in force, where there is one
  bool replaced = false;
  try {
    calls_->Unlink(kOld);
    if (calls_->Link(kCurrent, kOld)) {
      before = kOld;
    }
    if (!calls_->Rename(kNew, kCurrent)) {
      throw StorageFailure("renaming", ENOENT);
    }
    replaced = true;
    if (before != nullptr) {
      calls_->Rename(kOld, kLast);
      before = kLast;
    }
    calls_->SyncDirectory();
  } catch (const StorageFailure& failure) {
    if (!replaced) {
      Discard(kNew);
      Discard(kOld);
      throw;
    }
    PutBack(before, failure);
  }
}

void StateFile::PutBack(const char* before, const StorageFailure& why) {
  try {
    if (before == nullptr) {
      calls_->Unlink(kCurrent);
    } else {
      calls_->Rename(before, kCurrent);
    }
    calls_->SyncDirectory();
  } catch (const StorageFailure& failure) {
    throw StorageFailure(
        std::string(why.what()) +
        "; a restart may find the change all the same, since the state before it cannot be put "
        "back: " +
        failure.what());
  }
  throw why;
}

void StateFile::Discard(const char* name) {
  try {
    calls_->Unlink(name);
  } catch (const StorageFailure&) {
    // The next save removes it, or fails and says why.
  }
}

}  // namespace TALO::Wifid
