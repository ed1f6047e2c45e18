#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

class Engines : public EngineTest {
 protected:
  const State two_ = MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")});
  const State three_ =
      MakeState(4, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Three")});
};

TEST_F(Engines, BringTheRadiosToTheStateAtStart) {
  Engine engine({store_, driver_, clock_, log_}, three_, "br0");
  std::vector<bool> answers;
  engine.Start([&answers](const Result<void>& started) { answers.push_back(started.Succeeded()); });
  EXPECT_EQ(answers, std::vector<bool>{true});
  EXPECT_EQ(journal_, (Journal{"apply 1 2 3"}));
  EXPECT_EQ(driver_.LastPlan(), MakePlan(three_, TriBandRadios()));
}

TEST_F(Engines, AnswerWithTheReasonWhenTheRadiosFailAtStart) {
  Engine engine({store_, driver_, clock_, log_}, three_, "br0");
  driver_.FailNext("wlan0 does not answer");
  std::vector<Refusal> answers;
  engine.Start([&answers](const Result<void>& started) { answers.push_back(started.Why()); });
  EXPECT_EQ(answers, (std::vector<Refusal>{{ErrorCode::RadioFailed, "wlan0 does not answer"}}));
}

TEST_F(Engines, LetAChangeWaitUntilTheStartIsDone) {
  driver_.Hold();
  engine_ = std::make_unique<Engine>(Engine::Doors{store_, driver_, clock_, log_}, two_, "br0");
  engine_->Start([this](const Result<void>&) { journal_.emplace_back("started"); });
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"apply 1 2"}));
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"apply 1 2", "started", "save 1 2 3", "apply 1 2 3"}));
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"apply 1 2", "started", "save 1 2 3", "apply 1 2 3", "answer 3"}));
}

TEST_F(Engines, SaveThenApplyThenAnswerACreatedNetwork) {
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3", "answer 3"}));
  EXPECT_EQ(StateNow(), three_);
  EXPECT_EQ(store_.Saved(), three_);
  EXPECT_EQ(driver_.LastPlan(), MakePlan(three_, TriBandRadios()));
  EXPECT_EQ(LiveNow(), LiveAsPlanned(MakePlan(three_, TriBandRadios())));
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Engines, SaveThenApplyThenAnswerADeletedNetwork) {
  Delete(1);
  EXPECT_EQ(journal_, (Journal{"save 2", "apply 2", "done"}));
  const State expected = MakeState(3, {MakeNetwork(2, 2, "Two")});
  EXPECT_EQ(StateNow(), expected);
  EXPECT_EQ(store_.Saved(), expected);
  EXPECT_EQ(LiveNow(), LiveAsPlanned(MakePlan(expected, TriBandRadios())));
}

TEST_F(Engines, GiveANewNetworkTheTimeAndTheBridge) {
  Engine engine({store_, driver_, clock_, log_}, two_, "br-lan");
  clock_.now = 4107542400;
  engine.CreateNetwork(InfoOf("Three"), [](const Result<int>& result) { EXPECT_TRUE(result.Succeeded()); });
  NetworkState expected = MakeNetwork(3, 3, "Three");
  expected.passphraseChangedAt = 4107542400;
  expected.bridge = "br-lan";
  const State state = engine.Ask([](const Picture& picture) { return picture.state; });
  ASSERT_EQ(state.networks.size(), 3U);
  EXPECT_EQ(state.networks[2], expected);
}

TEST_F(Engines, NeitherSaveNorApplyWhatIsRefused) {
  Create("Two");
  Create("");
  Delete(7);
  EXPECT_EQ(journal_, (Journal{"Already exists: the SSID \"Two\" is in use by network 2",
                               "Invalid argument: the SSID \"\" has 0 bytes, it must have 1 to 32",
                               "Not found: there is no network 7"}));
  EXPECT_EQ(StateNow(), two_);
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Engines, RestartWhatIsNotAsItShouldBe) {
  Restart(false);
  EXPECT_EQ(journal_, (Journal{"apply 1 2", "done"}));
  EXPECT_EQ(driver_.LastPlan(), MakePlan(two_, TriBandRadios()));
}

TEST_F(Engines, RestartEverythingWithForce) {
  Restart(true);
  EXPECT_EQ(journal_, (Journal{"apply everything 1 2", "done"}));
  EXPECT_EQ(driver_.LastPlan(), MakePlan(two_, TriBandRadios()));
}

TEST_F(Engines, AnswerARestartWhenItIsDone) {
  driver_.Hold();
  Restart(true);
  EXPECT_EQ(journal_, (Journal{"apply everything 1 2"}));
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"apply everything 1 2", "done"}));
}

TEST_F(Engines, AnswerARestartThatFailsWithTheReason) {
  driver_.FailNext("wlan2 does not come up");
  Restart(false);
  EXPECT_EQ(journal_, (Journal{"apply 1 2", "Radio failed: wlan2 does not come up"}));
  EXPECT_EQ(StateNow(), two_);
}

TEST_F(Engines, AnswerQuestionsFromTheStateInForceWhileAChangeIsUnderWay) {
  driver_.Hold();
  Create("Three");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3"}));
  EXPECT_EQ(StateNow(), two_);
  EXPECT_EQ(LiveNow(), LiveAsPlanned(MakePlan(two_, TriBandRadios())));
  driver_.Finish();
  EXPECT_EQ(StateNow(), three_);
  EXPECT_EQ(LiveNow(), LiveAsPlanned(MakePlan(three_, TriBandRadios())));
}

TEST_F(Engines, CarryChangesThroughOneAtATimeInTheirOrder) {
  driver_.Hold();
  Create("Three");
  Delete(1);
  Restart(true);
  Create("Four");
  EXPECT_EQ(journal_, (Journal{"save 1 2 3", "apply 1 2 3"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"answer 3", "save 2 3", "apply 2 3"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"done", "apply everything 2 3"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"done", "save 2 3 4", "apply 2 3 4"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"answer 4"}));
  EXPECT_FALSE(driver_.IsBusy());
  // The slot of network 1 was free by the time the last one's turn came.
  EXPECT_EQ(StateNow(),
            MakeState(5, {MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Three"), MakeNetwork(4, 1, "Four")}));
}

TEST_F(Engines, JudgeAQueuedChangeWhenItsTurnComes) {
  driver_.Hold();
  Create("Three");
  Create("Three");
  Delete(3);
  Delete(3);
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"answer 3", "Already exists: the SSID \"Three\" is in use by network 3",
                               "save 1 2", "apply 1 2"}));
  journal_.clear();
  driver_.Finish();
  EXPECT_EQ(journal_, (Journal{"done", "Not found: there is no network 3"}));
}

TEST_F(Engines, TakeAChangeThatAnAnswerAsksFor) {
  engine_->DeleteNetwork(1, [this](const Result<void>&) {
    journal_.emplace_back("first");
    Create("Three");
    journal_.emplace_back("first ends");
  });
  EXPECT_EQ(journal_,
            (Journal{"save 2", "apply 2", "first", "first ends", "save 2 3", "apply 2 3", "answer 3"}));
}

TEST_F(Engines, WorkOffALongQueue) {
  constexpr int kLength = 100000;
  driver_.Hold();
  Create("Three");
  int answers = 0;
  for (int i = 0; i < kLength; ++i) {
    engine_->DeleteNetwork(-1, [&answers](const Result<void>& result) {
      EXPECT_FALSE(result.Succeeded());
      ++answers;
    });
  }
  EXPECT_EQ(answers, 0);
  driver_.Finish();
  EXPECT_EQ(answers, kLength);
  EXPECT_EQ(StateNow(), three_);
}

}  // namespace

}  // namespace TALO::Wifid
