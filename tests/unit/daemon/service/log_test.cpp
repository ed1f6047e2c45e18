#include "daemon/service/log.h"

#include "support/captured_stream.h"
#include "support/fake_journal.h"

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
  std::string priority;
};

using Fields = std::vector<std::string>;

const std::vector<LevelRow> kLevels = {
    {Severity::Emergency, "emerg", "PRIORITY=0"},  {Severity::Alert, "alert", "PRIORITY=1"},
    {Severity::Critical, "crit", "PRIORITY=2"},    {Severity::Error, "err", "PRIORITY=3"},
    {Severity::Warning, "warning", "PRIORITY=4"},  {Severity::Notice, "notice", "PRIORITY=5"},
    {Severity::Information, "info", "PRIORITY=6"}, {Severity::Debug, "debug", "PRIORITY=7"},
};

TEST(Log, NamesTheLevelBeforeEveryLine) {
  const Log log(Severity::Debug);
  for (const LevelRow& row : kLevels) {
    const CapturedStream errors(std::cerr);
    log.Write(row.severity, "wlan0 is up");
    EXPECT_EQ(errors.Text(), row.word + ": wlan0 is up\n");
  }
}

TEST(Log, GoesOnAfterALineThatCouldNotBeWritten) {
  const Log log(Severity::Debug);
  const CapturedStream errors(std::cerr);
  std::cerr.setstate(std::ios::badbit);
  log.Write(Severity::Error, "the disk has room again");
  EXPECT_EQ(errors.Text(), "err: the disk has room again\n");
}

TEST(Log, GivesTheJournalTextLevelAndIdentifier) {
  const FakeJournal journal;
  const Log log(Severity::Debug, journal, LogTarget::Journal);
  const CapturedStream errors(std::cerr);
  for (const LevelRow& row : kLevels) {
    log.Write(row.severity, "wlan0 is up");
    EXPECT_EQ(journal.TakeLast(),
              (Fields{"MESSAGE=wlan0 is up", row.priority, "SYSLOG_IDENTIFIER=talowifid"}));
  }
  EXPECT_EQ(errors.Text(), "");
}

TEST(Log, GivesTheJournalWhatALineIsAbout) {
  const FakeJournal journal;
  const Log log(Severity::Debug, journal, LogTarget::Journal);
  log.Write(Severity::Notice, "wlan0_1 is down",
            {.messageId = "0123456789abcdef0123456789abcdef",
             .values = {{"NETWORK", "7"}, {"REASON", "line one\nPRIORITY=0"}}});
  EXPECT_EQ(journal.TakeLast(),
            (Fields{"MESSAGE=wlan0_1 is down", "PRIORITY=5", "SYSLOG_IDENTIFIER=talowifid",
                    "MESSAGE_ID=0123456789abcdef0123456789abcdef", "TALOWIFI_NETWORK=7",
                    "TALOWIFI_REASON=line one\nPRIORITY=0"}));
}

TEST(Log, WritesToStandardErrorWhatTheJournalDoesNotTake) {
  FakeJournal journal;
  journal.takesLines = false;
  const Log log(Severity::Warning, journal, LogTarget::Journal);
  const CapturedStream errors(std::cerr);
  log.Write(Severity::Error, "first");
  log.Write(Severity::Notice, "second");
  EXPECT_EQ(errors.Text(), "err: first\n");
}

TEST(Log, GoesWhereItIsSent) {
  const FakeJournal journal;
  Log log(Severity::Debug, journal, LogTarget::Console);
  const CapturedStream errors(std::cerr);
  EXPECT_TRUE(log.SetTarget(LogTarget::Journal));
  EXPECT_EQ(log.GetTarget(), LogTarget::Journal);
  log.Write(Severity::Debug, "first");
  EXPECT_TRUE(log.SetTarget(LogTarget::Console));
  EXPECT_EQ(log.GetTarget(), LogTarget::Console);
  log.Write(Severity::Debug, "second");
  EXPECT_EQ(journal.TakeLast().at(0), "MESSAGE=first");
  EXPECT_EQ(errors.Text(), "debug: second\n");
}

TEST(Log, StaysWhereItIsWithoutAJournal) {
  FakeJournal journal;
  journal.isThere = false;
  Log log(Severity::Debug, journal, LogTarget::Console);
  EXPECT_FALSE(log.SetTarget(LogTarget::Journal));
  EXPECT_EQ(log.GetTarget(), LogTarget::Console);
  EXPECT_FALSE(Log(Severity::Debug).SetTarget(LogTarget::Journal));
}

TEST(Log, WritesWhatIsGraveEnough) {
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
