#include "daemon/main/system_journal.h"

#include "support/captured_stream.h"
#include "support/environment.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <iostream>

namespace TALO::Wifid {

namespace {

/// What the service manager names a stream by.
std::string NameOfStream(int descriptor) {
  struct stat stream {};
  EXPECT_EQ(fstat(descriptor, &stream), 0);
  return std::to_string(stream.st_dev) + ":" + std::to_string(stream.st_ino);
}

TEST(ErrorsGoToJournal, WhereTheServiceManagerSaysThatOfThisStream) {
  const EnvironmentVariable journal("JOURNAL_STREAM", NameOfStream(STDERR_FILENO));
  EXPECT_TRUE(ErrorsGoToJournal());
}

TEST(ErrorsGoToJournal, NotWhereItSaysThatOfAnotherStreamOrNothing) {
  for (const std::optional<std::string>& value :
       {std::optional<std::string>(), std::optional<std::string>("8:1"), std::optional<std::string>(""),
        std::optional<std::string>(NameOfStream(STDERR_FILENO) + "0")}) {
    const EnvironmentVariable journal("JOURNAL_STREAM", value);
    EXPECT_FALSE(ErrorsGoToJournal()) << value.value_or("unset");
  }
}

TEST(SayWhyNot, MarksTheSentenceAsAnErrorForTheJournalOnly) {
  const CapturedStream errors(std::cerr);
  {
    const EnvironmentVariable journal("JOURNAL_STREAM", NameOfStream(STDERR_FILENO));
    SayWhyNot("the bus is lost");
  }
  const EnvironmentVariable noJournal("JOURNAL_STREAM", std::nullopt);
  SayWhyNot("the bus is lost");
  EXPECT_EQ(errors.Text(), "<3>talowifid: the bus is lost\ntalowifid: the bus is lost\n");
}

TEST(SystemJournal, TakesALineExactlyWhereItIsThere) {
  const SystemJournal journal;
  EXPECT_EQ(journal.Send({"MESSAGE=a line of a test", "PRIORITY=7"}), journal.IsThere());
}

}  // namespace

}  // namespace TALO::Wifid
