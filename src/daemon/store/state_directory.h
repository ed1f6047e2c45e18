#pragma once

#include "daemon/store/descriptor.h"
#include "daemon/store/storage_calls.h"

#include <memory>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// A directory on a real disk that is the daemon's, such as the one that the state is kept in.
class StateDirectory final : public StorageCalls {
 public:
  /// Makes the directory (0700) where it is missing and takes it for this process alone, until destruction.
  /// Throws std::system_error when that fails, for instance because another daemon has it.
  /// `kind` is what it is called then.
  explicit StateDirectory(const std::string& path, const std::string& kind = "state directory");

  std::optional<std::string> Read(const std::string& name) override;
  std::unique_ptr<NewFile> Create(const std::string& name) override;
  bool Link(const std::string& from, const std::string& to) override;
  bool Rename(const std::string& from, const std::string& to) override;
  bool Unlink(const std::string& name) override;
  void SyncDirectory() override;

 private:
  Descriptor directory_;
  Descriptor lock_;
};

}  // namespace TALO::Wifid
