#pragma once

#include <cstdlib>
#include <optional>
#include <string>

namespace TALO {

/// Sets a variable of the environment, or removes it, until its end.
class EnvironmentVariable {
 public:
  EnvironmentVariable(const char* name, const std::optional<std::string>& value) : name_(name) {
    if (const char* before = std::getenv(name); before != nullptr) {
      before_ = before;
    }
    Set(value);
  }
  EnvironmentVariable(const EnvironmentVariable&) = delete;
  EnvironmentVariable& operator=(const EnvironmentVariable&) = delete;
  ~EnvironmentVariable() { Set(before_); }

 private:
  void Set(const std::optional<std::string>& value) const {
    if (value) {
      setenv(name_, value->c_str(), 1);
    } else {
      unsetenv(name_);
    }
  }

  const char* name_;
  std::optional<std::string> before_;
};

}  // namespace TALO
