#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace TALO::Wifid {

/// A call failed; the text says which and why, as in "writing: No space left on device".
class StorageFailure : public std::runtime_error {
 public:
  StorageFailure(const std::string& step, int error);
  explicit StorageFailure(const std::string& text) : std::runtime_error(text) {}

  /// Why, as errno; 0 where it was not one call.
  int Error() const { return error_; }

 private:
  int error_ = 0;
};

/// A file that is being written; closed at its end.
class NewFile {
 public:
  virtual ~NewFile() = default;

  virtual void Write(std::string_view text) = 0;
  /// What was written survives a power cut from here on, once a name leads to it.
  virtual void Sync() = 0;
};

/// The system calls that keep files in one directory, each by itself, so that a test can fail it or cut the
/// power before it. All throw StorageFailure. Changes of names are atomic each, and survive a power cut once
/// the directory is synced; before that each may or may not.
class StorageCalls {
 public:
  virtual ~StorageCalls() = default;

  /// All of a file; nothing where there is none.
  virtual std::optional<std::string> Read(const std::string& name) = 0;
  /// Makes a file for its owner only, which must not be there yet.
  virtual std::unique_ptr<NewFile> Create(const std::string& name) = 0;
  /// These do nothing and answer false where there is no file of the first name. Link wants no file of the
  /// second name, Rename replaces it.
  virtual bool Link(const std::string& from, const std::string& to) = 0;
  virtual bool Rename(const std::string& from, const std::string& to) = 0;
  virtual bool Unlink(const std::string& name) = 0;
  virtual void SyncDirectory() = 0;
};

}  // namespace TALO::Wifid
