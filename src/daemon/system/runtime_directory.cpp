#include "daemon/system/runtime_directory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

namespace TALO::Wifid {

namespace {

namespace fs = std::filesystem;

constexpr const char* kKind = "runtime directory";
constexpr const char* kNewName = ".new";
constexpr const char* kLockName = "lock";  ///< StateDirectory's

[[noreturn]] void Refuse(const std::string& path, const std::string& why, int error) {
  throw std::system_error(error, std::generic_category(), "the runtime directory " + path + why);
}

/// Nobody else's directory is taken, nor one that somebody else leads to. One that is not there is made.
const std::string& Checked(const std::string& path) {
  struct stat status {};
  if (lstat(path.c_str(), &status) != 0) {
    return path;
  }
  if (!S_ISDIR(status.st_mode)) {
    Refuse(path, " cannot be used", S_ISLNK(status.st_mode) ? ELOOP : ENOTDIR);
  }
  if (status.st_uid != geteuid()) {
    Refuse(path, " belongs to another user", EPERM);
  }
  return path;
}

}  // namespace

RuntimeDirectory::RuntimeDirectory(const std::string& path)
    : path_(fs::absolute(path)), directory_(Checked(path_), kKind) {
  if (chmod(path_.c_str(), S_IRWXU) != 0) {
    Refuse(path_, " cannot be shut to others", errno);
  }
  for (const auto& entry : fs::directory_iterator(path_)) {
    if (entry.path().filename() != kLockName) {
      fs::remove_all(entry.path());
    }
  }
}

Result<void> RuntimeDirectory::Write(const std::string& name, const std::string& text) {
  try {
    directory_.Unlink(kNewName);
    directory_.Create(kNewName)->Write(text);
    directory_.Rename(kNewName, name);
    return {};
  } catch (const StorageFailure& failure) {
    return Refusal{ErrorCode::StorageFailed,
                   "the file " + PathOf(name) + " cannot be written: " + failure.what()};
  }
}

Result<void> RuntimeDirectory::Remove(const std::string& name) {
  try {
    directory_.Unlink(name);
    return {};
  } catch (const StorageFailure& failure) {
    return Refusal{ErrorCode::StorageFailed,
                   "the file " + PathOf(name) + " cannot be removed: " + failure.what()};
  }
}

std::string RuntimeDirectory::PathOf(const std::string& name) const { return path_ + "/" + name; }

}  // namespace TALO::Wifid
