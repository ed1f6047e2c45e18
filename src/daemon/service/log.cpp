#include "daemon/service/log.h"

#include <array>
#include <cstddef>
#include <iostream>

namespace TALO::Wifid {

std::string_view WordOf(Severity level) {
  constexpr std::array<std::string_view, 8> kWords = {"emerg",   "alert",  "crit", "err",
                                                      "warning", "notice", "info", "debug"};
  return kWords.at(static_cast<std::size_t>(level));
}

std::optional<Severity> SeverityOf(Wifi::Util::LogLevel level) {
  using Wifi::Util::LogLevel;
  switch (level) {
    case LogLevel::Error:
      return Severity::Error;
    case LogLevel::Warning:
      return Severity::Warning;
    case LogLevel::Information:
      return Severity::Information;
    case LogLevel::Debug:
      return Severity::Debug;
  }
  return std::nullopt;
}

std::vector<std::string> JournalFields(Severity level, const std::string& line, const LogFields& fields) {
  std::vector<std::string> texts = {"MESSAGE=" + line, "PRIORITY=" + std::to_string(static_cast<int>(level)),
                                    std::string("SYSLOG_IDENTIFIER=") + Log::kIdentifier};
  if (fields.messageId != nullptr) {
    texts.push_back(std::string("MESSAGE_ID=") + fields.messageId);
  }
  for (const auto& [name, value] : fields.values) {
    texts.push_back(std::string("TALOWIFI_").append(name).append("=").append(value));
  }
  return texts;
}

bool Log::SetTarget(LogTarget target) {
  if (target == LogTarget::Journal && (journal_ == nullptr || !journal_->IsThere())) {
    return false;
  }
  target_ = target;
  return true;
}

void Log::Write(Severity level, const std::string& line, const LogFields& fields) const {
  if (level > level_) {
    return;
  }
  if (target_ == LogTarget::Journal && journal_->Send(JournalFields(level, line, fields))) {
    return;
  }
  // A line that could not be written must not silence those after it.
  std::cerr.clear();
  std::cerr << std::string(WordOf(level)) + ": " + line + "\n" << std::flush;
}

}  // namespace TALO::Wifid
