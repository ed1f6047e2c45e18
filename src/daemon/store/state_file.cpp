#include "daemon/store/state_file.h"

#include "daemon/store/state_codec.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <string_view>
#include <system_error>

namespace TALO::Wifid {

namespace {

constexpr const char* kFileName = "state.json";
constexpr const char* kNewFileName = "state.json.new";
constexpr const char* kLockName = "lock";
constexpr mode_t kOwnerOnly = 0600;

[[noreturn]] void ThrowErrno(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno != EINTR) {
      return false;
    }
    if (written > 0) {
      text.remove_prefix(static_cast<std::size_t>(written));
    }
  }
  return true;
}

}  // namespace

StateFile::StateFile(const std::string& path) : path_(path) {
  if (mkdir(path.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
    ThrowErrno("the state directory " + path + " cannot be made");
  }
  directory_ = Descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory_.IsOpen()) {
    ThrowErrno("the state directory " + path + " cannot be opened");
  }
  lock_ = Descriptor(openat(directory_.Get(), kLockName, O_RDWR | O_CREAT | O_CLOEXEC, kOwnerOnly));
  if (!lock_.IsOpen()) {
    ThrowErrno("the lock in the state directory " + path + " cannot be opened");
  }
  if (flock(lock_.Get(), LOCK_EX | LOCK_NB) != 0) {
    ThrowErrno("the state directory " + path + " is used by another daemon");
  }
}

Result<std::optional<State>> StateFile::Load() {
  const std::string path = path_ + "/" + kFileName;
  const auto failed = [&path](const std::string& why) {
    return Refusal{ErrorCode::StorageFailed, "the state in " + path + " cannot be read: " + why};
  };
  const Descriptor file(openat(directory_.Get(), kFileName, O_RDONLY | O_CLOEXEC));
  if (!file.IsOpen()) {
    if (errno == ENOENT) {
      return std::optional<State>();
    }
    return failed(std::generic_category().message(errno));
  }
  std::string text;
  std::array<char, 65536> chunk{};
  for (;;) {
    const ssize_t got = read(file.Get(), chunk.data(), chunk.size());
    if (got < 0 && errno != EINTR) {
      return failed(std::generic_category().message(errno));
    }
    if (got == 0) {
      break;
    }
    if (got > 0) {
      text.append(chunk.data(), static_cast<std::size_t>(got));
    }
  }
  auto state = DecodeState(text);
  if (!state.Succeeded()) {
    return failed(state.Why().sentence);
  }
  return std::optional<State>(std::move(state.Value()));
}

Result<void> StateFile::Save(const State& state) {
  const std::string text = EncodeState(state);
  const auto failed = [this](const char* step) {
    const int error = errno;
    unlinkat(directory_.Get(), kNewFileName, 0);
    return Refusal{ErrorCode::StorageFailed, "the state cannot be saved in " + path_ + ": " + step + ": " +
                                                 std::generic_category().message(error)};
  };
  // What an interrupted save left has a mode that is not known, or is a link.
  unlinkat(directory_.Get(), kNewFileName, 0);
  {
    const Descriptor file(
        openat(directory_.Get(), kNewFileName, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
    if (!file.IsOpen()) {
      return failed("opening");
    }
    if (!WriteAll(file.Get(), text)) {
      return failed("writing");
    }
    if (fsync(file.Get()) != 0) {
      return failed("syncing");
    }
  }
  if (renameat(directory_.Get(), kNewFileName, directory_.Get(), kFileName) != 0) {
    return failed("renaming");
  }
  // The new name is on the disk only once the directory is.
  if (fsync(directory_.Get()) != 0) {
    return failed("syncing the directory");
  }
  return {};
}

}  // namespace TALO::Wifid
