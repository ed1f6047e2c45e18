#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace TALO {

/// A new empty directory, gone with everything in it at the end.
class TemporaryDirectory {
 public:
  TemporaryDirectory() : path_((std::filesystem::temp_directory_path() / "talowifi-test.XXXXXX").string()) {
    if (mkdtemp(path_.data()) == nullptr) {
      throw std::runtime_error("no temporary directory can be made at " + path_);
    }
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;
  ~TemporaryDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }

  /// The path of `name` in it.
  std::string operator/(const std::string& name) const { return path_ + "/" + name; }

 private:
  std::string path_;
};

}  // namespace TALO
