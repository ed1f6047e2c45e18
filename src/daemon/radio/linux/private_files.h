#pragma once

#include "daemon/model/result.h"

#include <string>

namespace TALO::Wifid {

/// The door to the directory that other programs read their configuration from. They hold passphrases: nobody
/// but the daemon's user may read them, and none outlasts the daemon's start.
class PrivateFiles {
 public:
  virtual ~PrivateFiles() = default;

  /// Writes a file whole. Fails with StorageFailed and the reason.
  virtual Result<void> Write(const std::string& name, const std::string& text) = 0;

  /// A file that is not there is removed already.
  virtual Result<void> Remove(const std::string& name) = 0;

  /// Where another program finds it, or a socket of that name.
  virtual std::string PathOf(const std::string& name) const = 0;
};

}  // namespace TALO::Wifid
