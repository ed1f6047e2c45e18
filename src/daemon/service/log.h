#pragma once

#include "daemon/service/journal_sink.h"
#include "values/enums.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace TALO::Wifid {

/// Syslog's levels; the lower, the graver.
enum class Severity { Emergency, Alert, Critical, Error, Warning, Notice, Information, Debug };

/// The word that LogControl1 uses for a level.
std::string_view WordOf(Severity level);

/// The level that operators know by another name; nothing for a value without one.
std::optional<Severity> SeverityOf(Wifi::Util::LogLevel level);

/// Where lines go: standard error, or the journal.
enum class LogTarget { Console, Journal };

/// What the journal keeps of a line beside its text, to find it by.
struct LogFields {
  const char* messageId = nullptr;                               ///< one of message_ids.h
  std::vector<std::pair<std::string, std::string>> values = {};  ///< names without the prefix TALOWIFI_
};

/// A line as the journal takes it.
std::vector<std::string> JournalFields(Severity level, const std::string& line, const LogFields& fields);

/// Writes what is grave enough to standard error or the journal. A line that the journal does not take goes
/// to standard error. No secret may ever be handed to it.
class Log {
 public:
  static constexpr const char* kIdentifier = "talowifid";

  explicit Log(Severity level) : level_(level) {}
  Log(Severity level, const JournalSink& journal, LogTarget target)
      : level_(level), journal_(&journal), target_(target) {}

  Severity GetLevel() const { return level_; }
  void SetLevel(Severity level) { level_ = level; }

  LogTarget GetTarget() const { return target_; }
  /// False, and nothing changed, where there is no such target.
  [[nodiscard]] bool SetTarget(LogTarget target);

  void Write(Severity level, const std::string& line, const LogFields& fields = {}) const;

 private:
  Severity level_;
  const JournalSink* journal_ = nullptr;
  LogTarget target_ = LogTarget::Console;
};

}  // namespace TALO::Wifid
