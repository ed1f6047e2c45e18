#include "daemon/store/state_directory.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

constexpr const char* kLockName = "lock";
constexpr mode_t kOwnerOnly = 0600;
constexpr std::size_t kMaximumSize = std::size_t{64}
                                     << 20U;  ///< several times the largest state there can be

[[noreturn]] void ThrowErrno(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// True after success, false where a name did not exist.
bool Succeeded(int result, const char* step) {
  if (result != 0 && errno != ENOENT) {
    throw StorageFailure(step, errno);
  }
  return result == 0;
}

class FileOnDisk final : public NewFile {
 public:
  explicit FileOnDisk(Descriptor file) : file_(std::move(file)) {}

  void Write(std::string_view text) override {
    while (!text.empty()) {
      const ssize_t written = write(file_.Get(), text.data(), text.size());
      if (written < 0 && errno != EINTR) {
        throw StorageFailure("writing", errno);
      }
      if (written > 0) {
        text.remove_prefix(static_cast<std::size_t>(written));
      }
    }
  }

  void Sync() override {
    if (fsync(file_.Get()) != 0) {
      throw StorageFailure("syncing", errno);
    }
  }

 private:
  Descriptor file_;
};

// Otherwise a power cut could take the directory away with everything in it.
void SyncParent(const std::string& path) {
  const auto parent = std::filesystem::absolute(path).lexically_normal().parent_path();
  const Descriptor directory(open(parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory.IsOpen() || fsync(directory.Get()) != 0) {
    ThrowErrno("the directory " + parent.string() + " cannot be synced");
  }
}

}  // namespace

StorageFailure::StorageFailure(const std::string& step, int error)
    : std::runtime_error(step + ": " + std::generic_category().message(error)), error_(error) {}

StateDirectory::StateDirectory(const std::string& path, const std::string& kind) {
  if (mkdir(path.c_str(), S_IRWXU) == 0) {
    SyncParent(path);
  } else if (errno != EEXIST) {
    ThrowErrno("the " + kind + " " + path + " cannot be made");
  }
  directory_ = Descriptor(open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!directory_.IsOpen()) {
    ThrowErrno("the " + kind + " " + path + " cannot be opened");
  }
  lock_ = Descriptor(openat(directory_.Get(), kLockName, O_RDWR | O_CREAT | O_CLOEXEC, kOwnerOnly));
  if (!lock_.IsOpen()) {
    ThrowErrno("the lock in the " + kind + " " + path + " cannot be opened");
  }
  if (flock(lock_.Get(), LOCK_EX | LOCK_NB) != 0) {
    ThrowErrno("the " + kind + " " + path + " is used by another daemon");
  }
}

std::optional<std::string> StateDirectory::Read(const std::string& name) {
  const Descriptor file(openat(directory_.Get(), name.c_str(), O_RDONLY | O_CLOEXEC));
  if (!Succeeded(file.IsOpen() ? 0 : -1, "opening")) {
    return std::nullopt;
  }
  std::string text;
  std::array<char, 65536> chunk{};
  for (;;) {
    const ssize_t got = read(file.Get(), chunk.data(), chunk.size());
    if (got == 0) {
      return text;
    }
    if (got < 0 && errno != EINTR) {
      throw StorageFailure("reading", errno);
    }
    if (got > 0) {
      text.append(chunk.data(), static_cast<std::size_t>(got));
    }
    if (text.size() > kMaximumSize) {
      throw StorageFailure("reading", EFBIG);
    }
  }
}

std::unique_ptr<NewFile> StateDirectory::Create(const std::string& name) {
  Descriptor file(
      openat(directory_.Get(), name.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kOwnerOnly));
  if (!file.IsOpen()) {
    throw StorageFailure("opening", errno);
  }
  return std::make_unique<FileOnDisk>(std::move(file));
}

bool StateDirectory::Link(const std::string& from, const std::string& to) {
  return Succeeded(linkat(directory_.Get(), from.c_str(), directory_.Get(), to.c_str(), 0), "linking");
}

bool StateDirectory::Rename(const std::string& from, const std::string& to) {
  return Succeeded(renameat(directory_.Get(), from.c_str(), directory_.Get(), to.c_str()), "renaming");
}

bool StateDirectory::Unlink(const std::string& name) {
  return Succeeded(unlinkat(directory_.Get(), name.c_str(), 0), "removing");
}

void StateDirectory::SyncDirectory() {
  if (fsync(directory_.Get()) != 0) {
    throw StorageFailure("syncing the directory", errno);
  }
}

}  // namespace TALO::Wifid
