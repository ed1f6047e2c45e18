#pragma once

#include "daemon/radio/linux/private_files.h"
#include "daemon/store/state_directory.h"

#include <string>

namespace TALO::Wifid {

/// Private files in a directory of this machine.
class RuntimeDirectory final : public PrivateFiles {
 public:
  /// Makes the directory where it is missing, takes it for this process alone until destruction, shuts it to
  /// others and removes everything in it. Throws std::system_error when that fails, and where it is another
  /// user's or a symbolic link.
  explicit RuntimeDirectory(const std::string& path);

  /// No reader ever sees half a file. It need not survive a power cut.
  Result<void> Write(const std::string& name, const std::string& text) override;
  Result<void> Remove(const std::string& name) override;
  std::string PathOf(const std::string& name) const override;

 private:
  std::string path_;
  StateDirectory directory_;
};

}  // namespace TALO::Wifid
