#include "daemon/service/log.h"

#include <array>
#include <cstddef>
#include <cstdlib>
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

// systemd sets JOURNAL_STREAM for a service whose output goes to the journal; there a line's level stands in
// front.
Log::Log(Severity level) : level_(level), forJournal_(std::getenv("JOURNAL_STREAM") != nullptr) {}

void Log::Write(Severity level, const std::string& line) const {
  if (level > level_) {
    return;
  }
  const std::string mark =
      forJournal_ ? "<" + std::to_string(static_cast<int>(level)) + ">" : std::string(WordOf(level)) + ": ";
  std::cerr << mark + line + "\n" << std::flush;
}

}  // namespace TALO::Wifid
