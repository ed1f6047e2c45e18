#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

class FailingEngines : public EngineTest {
 protected:
  /// Expects that state, store and radios are as they were; only the ID that was given out stays used.
  void ExpectAsBefore() const {
    EXPECT_EQ(engine_->GetState(), MakeState(4, two_.networks));
    EXPECT_EQ(store_.LastSaved(), engine_->GetState());
    EXPECT_EQ(LiveNow(), LiveOf(two_));
  }
};

TEST_F(FailingEngines, LeaveStateAndRadiosAloneWhenTheStateCannotBeSaved) {
  store_.FailNext("the disk is full");
  Create("Three");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2 3", "Storage failed: the disk is full"}));
  EXPECT_EQ(engine_->GetState(), two_);
  EXPECT_EQ(LiveNow(), LiveOf(two_));
  EXPECT_FALSE(driver_.IsBusy());
  EXPECT_EQ(errors_.Text(), "err: the disk is full\n");
}

TEST_F(FailingEngines, GoOnWithTheNextChangeAfterOneThatCouldNotBeSaved) {
  store_.FailNext("the disk is full");
  Restart(ApplyMode::WhatDiffers);
  Create("Three");
  Create("Other");
  TakeJournal();
  driver_.FinishAll();
  // The ID was not given away by the change that failed.
  EXPECT_EQ(TakeJournal(),
            Join(Journal{"done", "save 1 2 3", "Storage failed: the disk is full", "save 1 2 3"},
                 AppliedOnAll("1 2 3"), Journal{"announce networks", "answer 3"}));
  EXPECT_EQ(engine_->GetState(),
            MakeState(4, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Other")}));
}

TEST_F(FailingEngines, TakeStoreAndEveryTouchedRadioBackWhenOneFailsAndAnnounceNothing) {
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Create("Three");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3"), Journal{"save 1 2"},
                                AppliedOnAll("1 2"), Journal{"Radio failed: wlan1 does not come up"}));
  ExpectAsBefore();
  EXPECT_EQ(driver_.LastPlans(), MakePlan(two_, TriBandRadios(), {}));
  EXPECT_EQ(errors_.Text(), "err: wlan1 does not come up\n");
}

TEST_F(FailingEngines, TakeNothingBackBeforeEveryRadioHasAnswered) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Create("Three");
  driver_.Finish(Band5GHz_1);
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3")));
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2"}, AppliedOnAll("1 2")));
  driver_.FinishAll();
  // The one that failed first.
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan1 does not come up"}));
  ExpectAsBefore();
}

TEST_F(FailingEngines, LeaveARadioAloneThatTheChangeDidNotTouch) {
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  JoinUpstream(Band5GHz_1, "Cafe");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band5GHz_1: 1 2, joins Cafe", "save 1 2",
                                    "apply Band5GHz_1: 1 2", "Radio failed: wlan1 does not come up"}));
  EXPECT_EQ(engine_->GetState(), two_);
  EXPECT_EQ(store_.LastSaved(), two_);
  EXPECT_EQ(LiveNow(), LiveOf(two_));
}

TEST_F(FailingEngines, AnswerOnlyWhenTheRadiosAreBack) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  JoinUpstream(Band2_4GHz, "Cafe");
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe", "save 1 2",
                                    "apply Band2_4GHz: 1 2"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan0 does not come up"}));
}

TEST_F(FailingEngines, LetTheNextChangeWaitUntilTheRadiosAreBack) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band2_4GHz, "Hotel");
  TakeJournal();
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "apply Band2_4GHz: 1 2"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan0 does not come up", "save 1 2, joins Hotel",
                                    "apply Band2_4GHz: 1 2, joins Hotel"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
}

TEST_F(FailingEngines, KeepWhatWasChangedOnAnotherRadioMeanwhile) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band5GHz_1, "Hotel");
  driver_.Finish(Band5GHz_1);
  TakeJournal();
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Hotel", "apply Band2_4GHz: 1 2"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan0 does not come up"}));
  const State expected = WithJoined(two_, Band5GHz_1, "Hotel");
  EXPECT_EQ(engine_->GetState(), expected);
  EXPECT_EQ(store_.LastSaved(), expected);
  EXPECT_EQ(driver_.LastPlans(), MakePlan(expected, TriBandRadios(), {}));
}

TEST_F(FailingEngines, KeepWhatIsStillUnderWayOnAnotherRadio) {
  driver_.FailNext(Band2_4GHz, "wlan0 does not come up");
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band5GHz_1, "Hotel");
  TakeJournal();
  driver_.Finish(Band2_4GHz);
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Hotel", "apply Band2_4GHz: 1 2",
                                    "Radio failed: wlan0 does not come up"}));
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
  EXPECT_EQ(engine_->GetState(), WithJoined(two_, Band5GHz_1, "Hotel"));
}

TEST_F(FailingEngines, SayThatTheRadiosAreNotBackAndStillAnswer) {
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  driver_.FailNext(Band5GHz_1, "wlan1 is gone");
  Create("Three");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3"), Journal{"save 1 2"},
                                AppliedOnAll("1 2"), Journal{"Radio failed: wlan1 does not come up"}));
  EXPECT_EQ(engine_->GetState(), MakeState(4, two_.networks));
  EXPECT_EQ(store_.LastSaved(), engine_->GetState());
  EXPECT_EQ(errors_.Text(),
            "err: wlan1 does not come up\n"
            "crit: the radios are not back as they were: wlan1 is gone\n");
}

TEST_F(FailingEngines, SayThatAFailedChangeStaysStoredAndStillTakeTheRadiosBack) {
  store_.PassNext();
  store_.FailNext("the disk is full");
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Create("Three");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3"), Journal{"save 1 2"},
                                AppliedOnAll("1 2"), Journal{"Radio failed: wlan1 does not come up"}));
  EXPECT_EQ(LiveNow(), LiveOf(two_));
  EXPECT_EQ(errors_.Text(),
            "err: wlan1 does not come up\n"
            "crit: a change that failed stays stored: the disk is full\n");
}

TEST_F(FailingEngines, TakeTheNextChangeEvenWhenNothingCouldBeTakenBack) {
  store_.PassNext();
  store_.FailNext("the disk is full");
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  driver_.FailNext(Band5GHz_1, "wlan1 is gone");
  JoinUpstream(Band5GHz_1, "Cafe");
  driver_.FinishAll();
  TakeJournal();
  JoinUpstream(Band5GHz_1, "Hotel");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Hotel", "apply Band5GHz_1: 1 2, joins Hotel", "done"}));
  EXPECT_EQ(store_.LastSaved(), WithJoined(two_, Band5GHz_1, "Hotel"));
}

}  // namespace

}  // namespace TALO::Wifid
