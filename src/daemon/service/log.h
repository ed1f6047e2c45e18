#pragma once

#include "values/enums.h"

#include <optional>
#include <string>
#include <string_view>

namespace TALO::Wifid {

/// Syslog's levels; the lower, the graver.
enum class Severity { Emergency, Alert, Critical, Error, Warning, Notice, Information, Debug };

/// The word that LogControl1 uses for a level.
std::string_view WordOf(Severity level);

/// The level that operators know by another name; nothing for a value without one.
std::optional<Severity> SeverityOf(Wifi::Util::LogLevel level);

/// Writes to standard error what is grave enough. Under systemd each line carries its level for the journal.
/// No secret may ever be handed to it.
class Log {
 public:
  explicit Log(Severity level);

  Severity GetLevel() const { return level_; }
  void SetLevel(Severity level) { level_ = level; }

  void Write(Severity level, const std::string& line) const;

 private:
  Severity level_;
  bool forJournal_;
};

}  // namespace TALO::Wifid
