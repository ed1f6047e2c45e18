#include "daemon/radio/linux/program.h"

#include "support/machine/fake_machine.h"
#include "support/machine/linux_router.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Weight = DriverNote::Weight;

class ProgramTest : public testing::Test {
 protected:
  ProgramTest()
      : program_({"hostapd", {"/usr/sbin/hostapd", {"-g", "/run/hostapd"}}, "/run/hostapd"}, machine_.Doors(),
                 {.ready = [this] { Note("ready"); },
                  .gone = [this] { Note("gone"); },
                  .message = [this](const ControlMessage& message) { Note(message.name); },
                  .lookAgain = [this] { Note("look again"); },
                  .hideSecrets = [](const std::string& line) { return line == "secret" ? "***" : line; }}) {}

  void Note(const std::string& line) {
    EXPECT_FALSE(inside_) << line;
    lines_.push_back(line);
  }
  std::function<void(const Result<void>&)> NoteResult(const std::string& what) {
    return [this, what](const Result<void>& result) { lines_.push_back(what + ": " + Describe(result)); };
  }
  /// Nobody is called back from inside.
  void Ask(const std::string& command) {
    inside_ = true;
    program_.Ask(command, [this, command](const Result<std::string>& answer) {
      Note(command + ": " + (answer.Succeeded() ? answer.Value() : Describe(Result<void>(answer.Why()))));
    });
    inside_ = false;
  }
  void Start() {
    inside_ = true;
    program_.Start();
    inside_ = false;
  }
  void StartAndWait() {
    Start();
    ASSERT_TRUE(machine_.WaitUntil([this] { return program_.IsReady(); }));
    lines_.clear();
  }
  std::vector<std::string> Take() { return std::exchange(lines_, {}); }

  using Lines = std::vector<std::string>;

  FakeMachine machine_;
  Program program_;
  Lines lines_;
  bool inside_ = false;
};

TEST_F(ProgramTest, IsReadyOnceItAnswers) {
  machine_.hostapd.startsAfter = std::chrono::milliseconds(500);
  Start();
  program_.WhenReady(NoteResult("waited"));
  machine_.Advance(500);
  EXPECT_FALSE(program_.IsReady());
  EXPECT_EQ(Lines(), Take());
  machine_.Advance(100);
  EXPECT_EQ((Lines{"ready", "waited: done"}), Take());
  program_.WhenReady(NoteResult("at once"));
  EXPECT_EQ((Lines{"at once: done"}), Take());
}

TEST_F(ProgramTest, AnswersAndTellsWhatItIsAsked) {
  StartAndWait();
  Ask("REMOVE wlan9");
  machine_.hostapd.Tell("IFNAME=wlan0 <3>AP-ENABLED ");
  machine_.hostapd.Tell("no message");
  machine_.Advance(10);
  EXPECT_EQ((Lines{"AP-ENABLED", "REMOVE wlan9: FAIL\n"}), Take());
}

TEST_F(ProgramTest, WhatItIsAskedBeforeItIsReadyFails) {
  Ask("REMOVE wlan9");
  machine_.Advance(0);
  EXPECT_EQ((Lines{"REMOVE wlan9: RadioFailed hostapd does not run: it was not started"}), Take());
}

TEST_F(ProgramTest, FailsWhatItWasAskedWhenItEnds) {
  StartAndWait();
  machine_.hostapd.diesOf = "REMOVE wlan9";
  Ask("REMOVE wlan9");
  Ask("REMOVE wlan8");
  machine_.Advance(10);
  const std::string why = ": RadioFailed hostapd does not run: it ended: killed by signal 11";
  EXPECT_EQ((Lines{"gone", "REMOVE wlan9" + why, "REMOVE wlan8" + why}), Take());
  EXPECT_TRUE(machine_.HasNote(Weight::Failure, "hostapd is started again: it ended: killed by signal 11"));
  machine_.Advance(1000);
  EXPECT_EQ((Lines{"ready"}), Take());
}

TEST_F(ProgramTest, FailsWhatItWasAskedWhenItHangs) {
  StartAndWait();
  machine_.hostapd.hangs = true;
  Ask("REMOVE wlan9");
  machine_.Advance(10'010);
  EXPECT_EQ((Lines{"REMOVE wlan9: RadioFailed no answer within ten seconds", "gone"}), Take());
}

TEST_F(ProgramTest, IsAskedNowAndThenWhetherItStillAnswers) {
  StartAndWait();
  machine_.Advance(121'000);
  EXPECT_EQ(1, machine_.hostapd.CountStarts());
  EXPECT_EQ(4U, Take().size());
  machine_.hostapd.hangs = true;
  machine_.Advance(41'000);
  EXPECT_EQ((Lines{"gone"}), Take());
  EXPECT_LT(1, machine_.hostapd.CountStarts());
}

TEST_F(ProgramTest, IsListenedToAgainWhenItHasStoppedTelling) {
  StartAndWait();
  machine_.hostapd.DetachAll();
  machine_.hostapd.Tell("IFNAME=wlan0 <3>AP-DISABLED ");
  machine_.Advance(29'000);
  EXPECT_EQ(Lines(), Take());
  machine_.Advance(2000);
  EXPECT_EQ((Lines{"look again"}), Take());
  machine_.hostapd.Tell("IFNAME=wlan0 <3>AP-ENABLED ");
  machine_.Advance(1);
  EXPECT_EQ((Lines{"AP-ENABLED"}), Take());
  // However often it was asked to tell.
  machine_.Advance(60'000);
  EXPECT_EQ((Lines{"look again", "look again"}), Take());
  machine_.hostapd.Tell("IFNAME=wlan0 <3>AP-ENABLED ");
  machine_.Advance(1);
  EXPECT_EQ((Lines{"AP-ENABLED"}), Take());
}

TEST_F(ProgramTest, ThatDoesNotLetItselfBeListenedToAnyMoreIsStartedAgain) {
  StartAndWait();
  machine_.hostapd.oddAnswers["ATTACH"] = "FAIL\n";
  machine_.Advance(31'000);
  EXPECT_EQ((Lines{"gone", "ready"}), Take());
  EXPECT_TRUE(
      machine_.HasNote(Weight::Failure, "hostapd is started again: it does not let itself be listened to"));
}

TEST_F(ProgramTest, OneThatNeverAnswersIsStartedAgain) {
  machine_.hostapd.hangs = true;
  Start();
  program_.WhenReady(NoteResult("waited"));
  machine_.Advance(10'000);
  EXPECT_EQ((Lines{"waited: RadioFailed hostapd does not run: it does not answer"}), Take());
  machine_.Advance(11'000);
  EXPECT_LT(1, machine_.hostapd.CountStarts());
}

TEST_F(ProgramTest, IsStartedAgainAfterALongerWhileEachTime) {
  machine_.hostapd.startFailure = "Permission denied";
  Start();
  std::vector<std::int64_t> waits;
  while (waits.size() < 7) {
    const std::int64_t wait = machine_.timers.UntilNext().value_or(Timers::Duration(-1)).count();
    ASSERT_TRUE(machine_.timers.RunNext());
    if (wait != 0) {
      waits.push_back(wait);
    }
  }
  EXPECT_EQ((std::vector<std::int64_t>{200, 600, 1800, 5400, 16'200, 30'000, 30'000}), waits);
  machine_.Advance(300'000);
  EXPECT_EQ(0, machine_.hostapd.CountStarts());
  machine_.hostapd.startFailure.clear();
  machine_.Advance(31'000);
  EXPECT_EQ((Lines{"ready"}), Take());
}

TEST_F(ProgramTest, IsTrustedAgainAfterAMinute) {
  StartAndWait();
  const auto timeToStart = [this] {
    machine_.hostapd.Die("killed by signal 9");
    machine_.Advance(1);
    const Timers::Duration before = machine_.timers.Now();
    EXPECT_TRUE(machine_.WaitUntil([this] { return machine_.hostapd.IsRunning(); }));
    const Timers::Duration took = machine_.timers.Now() - before;
    EXPECT_TRUE(machine_.WaitUntil([this] { return program_.IsReady(); }));
    return took.count();
  };
  EXPECT_EQ(200, timeToStart());
  EXPECT_EQ(600, timeToStart());
  machine_.Advance(61'000);
  EXPECT_EQ(200, timeToStart());
}

TEST_F(ProgramTest, AnAnswerThatComesAfterItsEndIsPassedOver) {
  // At every moment of its start.
  for (int milliseconds = 25; milliseconds < 45; ++milliseconds) {
    FakeMachine machine;
    Program program({"hostapd", {"/usr/sbin/hostapd", {"-g", "/run/hostapd"}}, "/run/hostapd"},
                    machine.Doors(),
                    {.ready = [] {},
                     .gone = [] {},
                     .message = [](const ControlMessage&) {},
                     .lookAgain = [] {},
                     .hideSecrets = [](const std::string& line) { return line; }});
    program.Start();
    machine.Advance(milliseconds);
    machine.hostapd.Die("killed by signal 9");
    EXPECT_TRUE(machine.WaitUntil([&] { return machine.hostapd.CountStarts() == 2 && program.IsReady(); }));
  }
}

TEST_F(ProgramTest, KeepsTheLastOfWhatItPrints) {
  StartAndWait();
  const std::uint64_t mark = program_.Mark();
  EXPECT_EQ("", program_.PrintedSince(mark));
  for (const char* line : {"one", "secret", "three"}) {
    machine_.hostapd.Print(line);
  }
  machine_.Advance(10);
  EXPECT_EQ("one; ***; three", program_.PrintedSince(mark));
  EXPECT_EQ("three", program_.PrintedSince(mark + 2));
  EXPECT_TRUE(machine_.HasNote(Weight::Detail, "hostapd: ***"));
  EXPECT_FALSE(machine_.HasNote(Weight::Detail, "hostapd: secret"));
  for (int i = 0; i < 60; ++i) {
    machine_.hostapd.Print("a line of twenty char");
  }
  machine_.Advance(10);
  const std::string much = program_.PrintedSince(mark);
  EXPECT_EQ(403U, much.size());
  EXPECT_TRUE(much.starts_with("...") && much.ends_with("; a line of twenty char"));
}

}  // namespace

}  // namespace TALO::Wifid
