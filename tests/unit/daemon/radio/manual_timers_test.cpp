#include "support/manual_timers.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Milliseconds = Timers::Duration;

class ManualTimersTest : public testing::Test {
 protected:
  std::function<void()> Note(const std::string& word) {
    return [this, word] { notes_.push_back(std::to_string(timers_.Now().count()) + " " + word); };
  }

  ManualTimers timers_;
  std::vector<std::string> notes_;
};

using Notes = std::vector<std::string>;

}  // namespace

TEST_F(ManualTimersTest, CallsInTheOrderOfTimeAndThenOfMaking) {
  timers_.After(Milliseconds(20), Note("late"));
  timers_.After(Milliseconds(10), Note("first"));
  timers_.After(Milliseconds(10), Note("second"));
  timers_.Advance(Milliseconds(30));
  EXPECT_EQ((Notes{"10 first", "10 second", "20 late"}), notes_);
  EXPECT_EQ(Milliseconds(30), timers_.Now());
}

TEST_F(ManualTimersTest, NothingIsCalledBeforeItsTimeNorFromInsideAfter) {
  timers_.After(Milliseconds(0), Note("now"));
  timers_.After(Milliseconds(10), Note("then"));
  EXPECT_EQ(Notes(), notes_);
  timers_.Advance(Milliseconds(9));
  EXPECT_EQ((Notes{"0 now"}), notes_);
  timers_.Advance(Milliseconds(1));
  EXPECT_EQ((Notes{"0 now", "10 then"}), notes_);
}

TEST_F(ManualTimersTest, AdvancingByNothingCallsWhatIsDue) {
  timers_.After(Milliseconds(0), [this] { timers_.After(Milliseconds(0), Note("after that")); });
  timers_.Advance(Milliseconds(0));
  EXPECT_EQ((Notes{"0 after that"}), notes_);
}

TEST_F(ManualTimersTest, WhatIsCancelledIsNotCalled) {
  const auto id = timers_.After(Milliseconds(10), Note("cancelled"));
  timers_.After(Milliseconds(10), Note("kept"));
  timers_.Cancel(id);
  timers_.Cancel(id);
  EXPECT_EQ(1U, timers_.CountWaiting());
  timers_.RunUntilIdle();
  EXPECT_EQ((Notes{"10 kept"}), notes_);
}

TEST_F(ManualTimersTest, TellsHowLongItIsUntilTheNextCall) {
  EXPECT_EQ(std::nullopt, timers_.UntilNext());
  timers_.After(Milliseconds(20), Note("late"));
  timers_.After(Milliseconds(10), Note("early"));
  timers_.Advance(Milliseconds(5));
  EXPECT_EQ(Milliseconds(5), timers_.UntilNext());
  timers_.Advance(Milliseconds(7));
  EXPECT_EQ(Milliseconds(8), timers_.UntilNext());
}

TEST_F(ManualTimersTest, RunsUntilNothingWaits) {
  timers_.After(Milliseconds(5), [this] { timers_.After(Milliseconds(3600000), Note("an hour later")); });
  timers_.RunUntilIdle();
  EXPECT_EQ((Notes{"3600005 an hour later"}), notes_);
  EXPECT_EQ(0U, timers_.CountWaiting());
  EXPECT_FALSE(timers_.RunNext());
}

TEST_F(ManualTimersTest, TimersThatNeverRestAreAnError) {
  std::function<void()> again = [&] { timers_.After(Milliseconds(1), again); };
  again();
  EXPECT_THROW(timers_.RunUntilIdle(), std::logic_error);
}

}  // namespace TALO::Wifid
