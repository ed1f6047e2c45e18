#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

class FailingEngines : public EngineTest {
 protected:
  /// Expects that state and radios are as they were before the change that failed.
  void ExpectAsBefore() const {
    EXPECT_EQ(StateNow(), two_);
    EXPECT_EQ(LiveNow(), LiveAsPlanned(MakePlan(two_, TriBandRadios())));
  }

  const State two_ = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
};

TEST_F(FailingEngines, LeaveTheRadiosAloneWhenTheStateCannotBeSaved) {
  store_.FailNext("the disk is full");
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "Storage failed: the disk is full"}));
  ExpectAsBefore();
  EXPECT_EQ(errors_.Text(), "err: the disk is full\n");
}

TEST_F(FailingEngines, AnswerADeletionThatCannotBeSaved) {
  store_.FailNext("the disk is full");
  Delete(2);
  EXPECT_EQ(journal_, (Journal{"save 1", "Storage failed: the disk is full"}));
  ExpectAsBefore();
}

TEST_F(FailingEngines, GoOnWithTheNextChangeAfterOneThatCouldNotBeSaved) {
  store_.FailNext("the disk is full");
  driver_.Hold();
  Restart(false);
  Create("Three");
  Create("Other");
  journal_.clear();
  driver_.Finish();
  driver_.Finish();
  // The ID was not given away by the change that failed.
  EXPECT_EQ(journal_, (Journal{"done", "save 1 2 3", "Storage failed: the disk is full", "save 1 2 3",
                               "apply 1 2 3", "answer 3"}));
  EXPECT_EQ(StateNow(),
            MakeState(4, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Other")}));
}

TEST_F(FailingEngines, TakeStoreAndRadiosBackWhenThePlanFails) {
  driver_.FailNext("wlan1 does not come up");
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "save 1 2", "apply 1 2",
                               "Radio failed: wlan1 does not come up"}));
  ExpectAsBefore();
  EXPECT_EQ(store_.Saved(), two_);
  EXPECT_EQ(driver_.LastPlan(), MakePlan(two_, TriBandRadios()));
  EXPECT_EQ(errors_.Text(), "err: wlan1 does not come up\n");
}

TEST_F(FailingEngines, AnswerOnlyWhenTheRadiosAreBack) {
  driver_.Hold();
  driver_.FailNext("wlan1 does not come up");
  Delete(1);
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"save 2", "apply 2", "save 1 2", "apply 1 2"}));
  EXPECT_EQ(StateNow(), two_);
  driver_.Finish();
  EXPECT_EQ(journal_,
            (Journal{"save 2", "apply 2", "save 1 2", "apply 1 2", "Radio failed: wlan1 does not come up"}));
  ExpectAsBefore();
}

TEST_F(FailingEngines, LetTheNextChangeWaitUntilTheRadiosAreBack) {
  driver_.Hold();
  driver_.FailNext("wlan1 does not come up");
  Create("Three");
  Delete(1);
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "save 1 2", "apply 1 2"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"Radio failed: wlan1 does not come up", "save 2", "apply 2"}));
  driver_.Finish();
  EXPECT_EQ(StateNow(), MakeState(3, {MakeNetwork(2, 2, "Two")}));
}

TEST_F(FailingEngines, SayThatTheRadiosAreNotBackAndStillAnswer) {
  driver_.FailNext("wlan1 does not come up");
  driver_.FailNext("wlan1 is gone");
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "save 1 2", "apply 1 2",
                               "Radio failed: wlan1 does not come up"}));
  EXPECT_EQ(StateNow(), two_);
  EXPECT_EQ(store_.Saved(), two_);
  EXPECT_EQ(errors_.Text(),
            "err: wlan1 does not come up\n"
            "crit: the radios are not back as they were: wlan1 is gone\n");
}

TEST_F(FailingEngines, SayThatARefusedChangeStaysStoredAndStillTakeTheRadiosBack) {
  store_.PassNext();
  store_.FailNext("the disk is full");
  driver_.FailNext("wlan1 does not come up");
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "save 1 2", "apply 1 2",
                               "Radio failed: wlan1 does not come up"}));
  ExpectAsBefore();
  EXPECT_EQ(errors_.Text(),
            "err: wlan1 does not come up\n"
            "crit: the refused change stays stored: the disk is full\n");
}

TEST_F(FailingEngines, SayBothWhenNothingCanBeTakenBack) {
  store_.PassNext();
  store_.FailNext("the disk is full");
  driver_.FailNext("wlan1 does not come up");
  driver_.FailNext("wlan1 is gone");
  Delete(2);
  EXPECT_EQ(journal_,
            (Journal{"save 1", "apply 1", "save 1 2", "apply 1 2", "Radio failed: wlan1 does not come up"}));
  EXPECT_EQ(StateNow(), two_);
  EXPECT_EQ(errors_.Text(),
            "err: wlan1 does not come up\n"
            "crit: the refused change stays stored: the disk is full\n"
            "crit: the radios are not back as they were: wlan1 is gone\n");
}

TEST_F(FailingEngines, TakeTheNextChangeEvenWhenNothingCouldBeTakenBack) {
  driver_.FailNext("wlan1 does not come up");
  driver_.FailNext("wlan1 is gone");
  Create("Three");
  journal_.clear();
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "answer 3"}));
}

}  // namespace

}  // namespace TALO::Wifid
