#pragma once

#include <string>
#include <vector>

namespace TALO::Wifid {

/// The system's journal, which keeps log lines with their fields.
class JournalSink {
 public:
  virtual ~JournalSink() = default;

  /// True where there is a journal to take lines.
  virtual bool IsThere() const = 0;

  /// Takes a line, as NAME=value texts. False when it did not take it.
  virtual bool Send(const std::vector<std::string>& fields) const = 0;
};

}  // namespace TALO::Wifid
