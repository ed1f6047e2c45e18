#include "daemon/main/ending.h"

#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

class Endings : public EngineTest {
 protected:
  void Begin() {
    ending_.Begin([this] { journal_.emplace_back("end"); });
  }

  ManualTimers timers_;
  Ending ending_{*engine_, timers_};
};

TEST_F(Endings, ComeAtOnceWhereNothingIsUnderWay) {
  Begin();
  EXPECT_EQ(TakeJournal(), (Journal{"end"}));
}

TEST_F(Endings, ComeOnceTheChangeUnderWayIsStoredAppliedAndAnswered) {
  Create("Three");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3")));
  Begin();
  EXPECT_EQ(TakeJournal(), Journal());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"announce networks", "answer 3", "end"}));
}

TEST_F(Endings, RefuseWhatHasNotHadItsTurn) {
  Create("Three");
  Create("Four");
  JoinUpstream(Band2_4GHz, "Cafe");
  Restart(ApplyMode::Everything);
  engine_->EvaluateSchedules(NoteResult());
  TakeJournal();
  Begin();
  driver_.FinishAll();
  const std::string refused = "Busy: the wifi daemon is about to end";
  EXPECT_EQ(TakeJournal(),
            (Journal{"announce networks", "answer 3", refused, refused, refused, refused, "end"}));
  EXPECT_EQ(engine_->GetState(), three_);
  EXPECT_EQ(store_.LastSaved(), three_);
}

TEST_F(Endings, RefuseWhatComesWhileTheyLast) {
  Create("Three");
  Begin();
  Delete(1);
  TakeJournal();
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(),
            (Journal{"announce networks", "answer 3", "Busy: the wifi daemon is about to end", "end"}));
  Delete(1);
  EXPECT_EQ(TakeJournal(), (Journal{"Busy: the wifi daemon is about to end"}));
}

TEST_F(Endings, TakeAChangeBackWhenItsRadioFailsMeanwhile) {
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Create("Three");
  Begin();
  TakeJournal();
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2"}, AppliedOnAll("1 2"),
                                Journal{"Radio failed: wlan1 does not come up", "end"}));
}

TEST_F(Endings, WaitNoLongerThanTheirPatience) {
  Create("Three");
  TakeJournal();
  Begin();
  timers_.Advance(Ending::kPatience - Timers::Duration(1));
  EXPECT_EQ(TakeJournal(), Journal());
  timers_.Advance(Timers::Duration(1));
  EXPECT_EQ(TakeJournal(), (Journal{"end"}));
  EXPECT_EQ(errors_.Text(), "warning: talowifid does not wait any longer for what is under way\n");
  driver_.FinishAll();
}

TEST_F(Endings, ComeAtOnceWhenAskedForAgain) {
  Create("Three");
  TakeJournal();
  Begin();
  Begin();
  EXPECT_EQ(TakeJournal(), (Journal{"end"}));
  driver_.FinishAll();
}

TEST_F(Endings, WaitUntilTheRadiosAreNoLongerUsed) {
  std::function<void()> leave;
  engine_->Use(Band2_4GHz, [&](std::function<void()> given) { leave = std::move(given); });
  Begin();
  EXPECT_EQ(TakeJournal(), Journal());
  leave();
  EXPECT_EQ(TakeJournal(), (Journal{"end"}));
}

}  // namespace

}  // namespace TALO::Wifid
