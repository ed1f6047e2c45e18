#pragma once

#include "daemon/radio/linux/private_files.h"

#include <map>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// A directory in memory that the fake machine's programs read.
class FakeFiles final : public PrivateFiles {
 public:
  static constexpr const char* kDirectory = "/run/radios";

  Result<void> Write(const std::string& name, const std::string& text) override {
    if (!writeFailure.empty()) {
      return Refusal{ErrorCode::StorageFailed, "cannot write " + PathOf(name) + ": " + writeFailure};
    }
    files[name] = text;
    return {};
  }
  Result<void> Remove(const std::string& name) override {
    files.erase(name);
    return {};
  }
  std::string PathOf(const std::string& name) const override {
    return name.empty() ? kDirectory : std::string(kDirectory) + "/" + name;
  }

  /// As a program reads it.
  std::optional<std::string> Read(const std::string& path) const {
    for (const auto& [name, text] : files) {
      if (PathOf(name) == path) {
        return text;
      }
    }
    return std::nullopt;
  }

  std::map<std::string, std::string> files;
  std::string writeFailure;  ///< why nothing can be written, where that is so
};

}  // namespace TALO::Wifid
