#include "daemon/service/log.h"

#include "support/captured_stream.h"
#include "support/environment.h"

#include <gtest/gtest.h>

#include <iostream>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::Util::LogLevel;

struct LevelRow {
  Severity severity;
  std::string word;
  std::string journalMark;
};

const std::vector<LevelRow> kLevels = {
    {Severity::Emergency, "emerg", "<0>"},  {Severity::Alert, "alert", "<1>"},
    {Severity::Critical, "crit", "<2>"},    {Severity::Error, "err", "<3>"},
    {Severity::Warning, "warning", "<4>"},  {Severity::Notice, "notice", "<5>"},
    {Severity::Information, "info", "<6>"}, {Severity::Debug, "debug", "<7>"},
};

TEST(Log, NamesTheLevelBeforeEveryLine) {
  const EnvironmentVariable noJournal("JOURNAL_STREAM", std::nullopt);
  const Log log(Severity::Debug);
  for (const LevelRow& row : kLevels) {
    const CapturedStream errors(std::cerr);
    log.Write(row.severity, "wlan0 is up");
    EXPECT_EQ(errors.Text(), row.word + ": wlan0 is up\n");
  }
}

TEST(Log, PutsTheLevelsNumberBeforeEveryLineForTheJournal) {
  const EnvironmentVariable journal("JOURNAL_STREAM", "8:1234");
  const Log log(Severity::Debug);
  for (const LevelRow& row : kLevels) {
    const CapturedStream errors(std::cerr);
    log.Write(row.severity, "wlan0 is up");
    EXPECT_EQ(errors.Text(), row.journalMark + "wlan0 is up\n");
  }
}

TEST(Log, WritesWhatIsGraveEnough) {
  const EnvironmentVariable noJournal("JOURNAL_STREAM", std::nullopt);
  for (const LevelRow& level : kLevels) {
    const Log log(level.severity);
    EXPECT_EQ(log.GetLevel(), level.severity);
    for (const LevelRow& row : kLevels) {
      const CapturedStream errors(std::cerr);
      log.Write(row.severity, "line");
      EXPECT_EQ(errors.Text(), row.severity <= level.severity ? row.word + ": line\n" : "")
          << "at level " << level.word;
    }
  }
}

TEST(Log, ChangesItsLevelAtOnce) {
  const EnvironmentVariable noJournal("JOURNAL_STREAM", std::nullopt);
  const CapturedStream errors(std::cerr);
  Log log(Severity::Error);
  log.Write(Severity::Debug, "first");
  log.SetLevel(Severity::Debug);
  EXPECT_EQ(log.GetLevel(), Severity::Debug);
  log.Write(Severity::Debug, "second");
  log.SetLevel(Severity::Warning);
  log.Write(Severity::Notice, "third");
  log.Write(Severity::Warning, "fourth");
  EXPECT_EQ(errors.Text(), "debug: second\nwarning: fourth\n");
}

TEST(WordOf, IsTheWordOfSyslog) {
  for (const LevelRow& row : kLevels) {
    EXPECT_EQ(WordOf(row.severity), row.word);
  }
}

TEST(SeverityOf, KnowsEveryLevelOfTheOperators) {
  EXPECT_EQ(SeverityOf(LogLevel::Error), Severity::Error);
  EXPECT_EQ(SeverityOf(LogLevel::Warning), Severity::Warning);
  EXPECT_EQ(SeverityOf(LogLevel::Information), Severity::Information);
  EXPECT_EQ(SeverityOf(LogLevel::Debug), Severity::Debug);
  EXPECT_EQ(SeverityOf(static_cast<LogLevel>(-1)), std::nullopt);
  EXPECT_EQ(SeverityOf(static_cast<LogLevel>(4)), std::nullopt);
}

}  // namespace

}  // namespace TALO::Wifid
