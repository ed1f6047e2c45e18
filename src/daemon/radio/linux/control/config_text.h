#pragma once

#include <string>

namespace TALO::Wifid {

/// The text of a configuration file of "key=value" lines. A value that would begin another line cannot get
/// into it.
class ConfigText {
 public:
  /// Throws std::invalid_argument, which names the key and not the value, for a value with a line break or a
  /// zero byte, and for a line that is longer than the programs that read it take for one.
  ConfigText& Set(const std::string& key, const std::string& value);
  ConfigText& Set(const std::string& key, int value);

  const std::string& Text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace TALO::Wifid
