#include "support/engine_test.h"

namespace TALO::Wifid {

namespace {

class Engines : public EngineTest {};

TEST_F(Engines, BringTheRadiosToTheStateAtStart) {
  MakeEngine(three_);
  engine_->Start([this] { journal_.emplace_back("started"); });
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2 3"));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"started"}));
  EXPECT_EQ(driver_.LastPlans(), MakePlan(three_, TriBandRadios(), {}));
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Engines, StartAlthoughARadioFailsAndSaySo) {
  MakeEngine(three_);
  driver_.FailNext(Band5GHz_1, "wlan1 does not answer");
  engine_->Start([this] { journal_.emplace_back("started"); });
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(AppliedOnAll("1 2 3"), Journal{"started"}));
  EXPECT_EQ(errors_.Text(), "err: the radios are not as they were left: wlan1 does not answer\n");
  EXPECT_EQ(engine_->GetState(), three_);
  // What differs is only that radio, but how the others are now is for the driver to find out.
  Restart(ApplyMode::WhatDiffers);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(AppliedOnAll("1 2 3"), Journal{"done"}));
  EXPECT_EQ(LiveNow(), LiveOf(three_));
}

TEST_F(Engines, StartOnceEveryRadioHasAnswered) {
  MakeEngine(two_);
  driver_.FailNext(Band2_4GHz, "wlan0 does not answer");
  engine_->Start([this] { journal_.emplace_back("started"); });
  driver_.Finish(Band2_4GHz);
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2"));
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"started"}));
}

TEST_F(Engines, LetAChangeWaitUntilTheStartIsDone) {
  MakeEngine(two_);
  engine_->Start([this] { journal_.emplace_back("started"); });
  Create("Three");
  JoinUpstream(Band2_4GHz, "Cafe");
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2"));
  driver_.Finish(Band2_4GHz);
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), Join(Journal{"started", "save 1 2 3"}, AppliedOnAll("1 2 3")));
}

TEST_F(Engines, SaveThenApplyThenAnnounceThenAnswerACreatedNetwork) {
  Create("Three");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3")));
  driver_.Finish(Band5GHz_1);
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), (Journal{"announce networks", "answer 3"}));
  EXPECT_EQ(engine_->GetState(), three_);
  EXPECT_EQ(store_.LastSaved(), three_);
  EXPECT_EQ(driver_.LastPlans(), MakePlan(three_, TriBandRadios(), {}));
  EXPECT_EQ(LiveNow(), LiveOf(three_));
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Engines, SaveThenApplyThenAnnounceThenAnswerADeletedNetwork) {
  Delete(1);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 2"}, AppliedOnAll("2"), Journal{"announce networks", "done"}));
  const State expected = MakeState(3, {MakeNetwork(2, 2, "Two")});
  EXPECT_EQ(engine_->GetState(), expected);
  EXPECT_EQ(store_.LastSaved(), expected);
  EXPECT_EQ(LiveNow(), LiveOf(expected));
}

TEST_F(Engines, ApplyOnlyTheRadioWhosePlanDiffersAndAnnounceNothingWhereNetworksStay) {
  engine_->Make<void>(
      [](const State& state) {
        return Result<Change<void>>(Change<void>{WithJoined(state, Band5GHz_1, "Cafe")});
      },
      NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band5GHz_1: 1 2, joins Cafe", "done"}));
}

TEST_F(Engines, SaveAndAnnounceAChangeThatNoRadioNoticesAndAnswerAtOnce) {
  State expected = two_;
  expected.networks[0].networkName = "Renamed";
  engine_->Make<void>([expected](const State&) { return Result<Change<void>>(Change<void>{expected}); },
                      NoteResult());
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "announce networks", "done"}));
  EXPECT_EQ(store_.LastSaved(), expected);
}

TEST_F(Engines, NeitherSaveNorApplyWhatChangesNothing) {
  engine_->Make<void>([](const State& state) { return Result<Change<void>>(Change<void>{state}); },
                      NoteResult());
  engine_->Make<int>(
      [](const State& state) {
        return Result<Change<int>>(Change<int>{state, 7});
      },
      [this](const Result<int>& result) { journal_.push_back("answer " + std::to_string(result.Value())); });
  EXPECT_EQ(TakeJournal(), (Journal{"done", "answer 7"}));
  EXPECT_FALSE(store_.LastSaved());
}

TEST_F(Engines, NeitherSaveNorApplyWhatIsRefused) {
  Create("Two");
  Create("");
  Delete(7);
  JoinUpstream(Error, "Cafe");
  EXPECT_EQ(TakeJournal(), (Journal{"Already exists: the SSID \"Two\" is in use by network 2",
                                    "Invalid argument: the SSID \"\" has 0 bytes, it must have 1 to 32",
                                    "Not found: there is no network 7",
                                    "Invalid argument: this router has no radio Error for a station"}));
  EXPECT_EQ(engine_->GetState(), two_);
  EXPECT_EQ(errors_.Text(), "");
}

TEST_F(Engines, LeaveOutWhatAScheduleKeepsOffFromTheStartOn) {
  State state = two_;
  state.networks[1].schedules = {{Band2_4GHz, ScheduleMode::ValidFor, 1000, {}},
                                 {Band5GHz_1, ScheduleMode::ValidFor, 1001, {}}};
  MakeEngine(state);
  engine_->Start([] {});
  EXPECT_EQ(TakeJournal(),
            (Journal{"apply Band2_4GHz: 1", "apply Band5GHz_1: 1 2", "apply Band5GHz_2: 1 2"}));
}

TEST_F(Engines, EvaluateSchedulesWithoutSavingOrAnnouncing) {
  State state = two_;
  state.networks[1].schedules = {{Band5GHz_1, ScheduleMode::ValidFor, 1001, {}}};
  StartWith(state);
  engine_->EvaluateSchedules(NoteResult());
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
  clock_.now = 1001;
  engine_->EvaluateSchedules(NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1", "done"}));
  clock_.now = 1000;
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  engine_->EvaluateSchedules(NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band5GHz_1: 1 2", "Radio failed: wlan1 does not come up"}));
  EXPECT_FALSE(store_.LastSaved());
}

TEST_F(Engines, RestartWhatIsNotAsItShouldBe) {
  Restart(ApplyMode::WhatDiffers);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(AppliedOnAll("1 2"), Journal{"done"}));
  EXPECT_EQ(driver_.LastPlans(), MakePlan(two_, TriBandRadios(), {}));
  EXPECT_FALSE(store_.LastSaved());
}

TEST_F(Engines, RestartEverythingAndAnswerWhenAllRadiosAreDone) {
  Restart(ApplyMode::Everything);
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2", "apply everything"));
  driver_.Finish(Band2_4GHz);
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), Journal{});
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
}

TEST_F(Engines, AnswerARestartThatFailsWithTheFirstReason) {
  driver_.FailNext(Band5GHz_2, "wlan2 does not come up");
  driver_.FailNext(Band5GHz_1, "wlan1 does not come up");
  Restart(ApplyMode::WhatDiffers);
  driver_.Finish(Band5GHz_2);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(AppliedOnAll("1 2"), Journal{"Radio failed: wlan2 does not come up"}));
  EXPECT_EQ(engine_->GetState(), two_);
}

TEST_F(Engines, BringARadioThatFailedToItsPlanWithTheNextChangeOfIt) {
  driver_.FailNext(Band5GHz_2, "wlan2 does not come up");
  Restart(ApplyMode::WhatDiffers);
  driver_.FinishAll();
  TakeJournal();
  State renamed = two_;
  renamed.networks[0].networkName = "Renamed";
  engine_->Make<void>([renamed](const State&) { return Result<Change<void>>(Change<void>{renamed}); },
                      NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2", "apply Band5GHz_2: 1 2", "announce networks", "done"}));
  EXPECT_EQ(LiveNow(), LiveOf(two_));
}

TEST_F(Engines, BringARadioThatFailedToItsPlanBeforeTheyCallWhatIsWantedDone) {
  driver_.FailNext(Band5GHz_2, "wlan2 does not come up");
  Restart(ApplyMode::WhatDiffers);
  driver_.FinishAll();
  TakeJournal();
  const auto stay = [](const State& state) { return Result<Change<void>>(Change<void>{state}); };
  driver_.FailNext(Band5GHz_2, "wlan2 does not come up yet");
  engine_->Make<void>(stay, NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "Radio failed: wlan2 does not come up yet");
  engine_->Make<void>(stay, NoteResult());
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "done");
  EXPECT_EQ(LiveNow(), LiveOf(two_));
}

TEST_F(Engines, AnswerQuestionsWhileAChangeIsUnderWay) {
  Create("Three");
  // The state tells what is wanted, which is stored by now; what is in the air follows.
  EXPECT_EQ(engine_->GetState(), three_);
  EXPECT_EQ(LiveNow(), LiveOf(two_));
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(LiveNow()[0], LiveOf(two_)[0]);
  EXPECT_EQ(LiveNow()[1], LiveOf(three_)[1]);
  EXPECT_EQ(LiveNow()[2], LiveOf(two_)[2]);
  driver_.FinishAll();
  EXPECT_EQ(LiveNow(), LiveOf(three_));
}

TEST_F(Engines, CarryChangesOfTheSameRadiosThroughInTheirOrder) {
  Create("Three");
  Delete(1);
  Restart(ApplyMode::Everything);
  Create("Four");
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3")));
  const auto finishOne = [this] {
    driver_.Finish(Band2_4GHz);
    driver_.Finish(Band5GHz_1);
    driver_.Finish(Band5GHz_2);
    return TakeJournal();
  };
  EXPECT_EQ(finishOne(), Join(Journal{"announce networks", "answer 3", "save 2 3"}, AppliedOnAll("2 3")));
  EXPECT_EQ(finishOne(), Join(Journal{"announce networks", "done"}, AppliedOnAll("2 3", "apply everything")));
  EXPECT_EQ(finishOne(), Join(Journal{"done", "save 2 3 4"}, AppliedOnAll("2 3 4")));
  EXPECT_EQ(finishOne(), (Journal{"announce networks", "answer 4"}));
  EXPECT_FALSE(driver_.IsBusy());
  // The slot of network 1 was free by the time the last one's turn came.
  EXPECT_EQ(engine_->GetState(),
            MakeState(5, {MakeNetwork(2, 2, "Two"), MakeNetwork(3, 3, "Three"), MakeNetwork(4, 1, "Four")}));
}

TEST_F(Engines, LetChangesOfDifferentRadiosPass) {
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band2_4GHz, "Kiosk");
  JoinUpstream(Band5GHz_1, "Hotel");
  EXPECT_EQ(TakeJournal(),
            (Journal{"save 1 2, joins Cafe", "apply Band2_4GHz: 1 2, joins Cafe",
                     "save 1 2, joins Cafe, joins Hotel", "apply Band5GHz_1: 1 2, joins Hotel"}));
  driver_.Finish(Band5GHz_1);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(),
            (Journal{"done", "save 1 2, joins Kiosk, joins Hotel", "apply Band2_4GHz: 1 2, joins Kiosk"}));
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"done"}));
  EXPECT_EQ(engine_->GetState(), WithJoined(WithJoined(two_, Band2_4GHz, "Kiosk"), Band5GHz_1, "Hotel"));
}

TEST_F(Engines, LetAChangeOfAllRadiosWaitForThoseOfSingleOnes) {
  JoinUpstream(Band5GHz_2, "Cafe");
  Create("Three");
  JoinUpstream(Band2_4GHz, "Hotel");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe", "apply Band5GHz_2: 1 2, joins Cafe"}));
  driver_.Finish(Band5GHz_2);
  EXPECT_EQ(TakeJournal(), (Journal{"done", "save 1 2 3, joins Cafe", "apply Band2_4GHz: 1 2 3",
                                    "apply Band5GHz_1: 1 2 3", "apply Band5GHz_2: 1 2 3, joins Cafe"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"announce networks", "answer 3", "save 1 2 3, joins Hotel, joins Cafe",
                                    "apply Band2_4GHz: 1 2 3, joins Hotel", "done"}));
}

TEST_F(Engines, JudgeAQueuedChangeWhenItsTurnComes) {
  Create("Three");
  Create("Three");
  Delete(3);
  Delete(3);
  driver_.FinishAll();
  EXPECT_EQ(
      TakeJournal(),
      Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3"),
           Journal{"announce networks", "answer 3",
                   "Already exists: the SSID \"Three\" is in use by network 3", "save 1 2"},
           AppliedOnAll("1 2"), Journal{"announce networks", "done", "Not found: there is no network 3"}));
}

TEST_F(Engines, TakeAChangeThatAnAnswerAsksFor) {
  engine_->Make<void>([](const State& state) { return DeleteNetwork(state, 1); },
                      [this](const Result<void>&) {
                        journal_.emplace_back("first");
                        Create("Three");
                        journal_.emplace_back("first ends");
                      });
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 2"}, AppliedOnAll("2"),
                                Journal{"announce networks", "first", "first ends", "save 2 3"},
                                AppliedOnAll("2 3"), Journal{"announce networks", "answer 3"}));
}

TEST_F(Engines, LetAChangeWaitForWhoUsesTheRadio) {
  std::function<void()> leave;
  engine_->Use(Band5GHz_1, [&leave](std::function<void()> given) { leave = std::move(given); });
  Create("Three");
  EXPECT_EQ(TakeJournal(), Journal{});
  leave();
  EXPECT_EQ(TakeJournal(), Join(Journal{"save 1 2 3"}, AppliedOnAll("1 2 3")));
}

TEST_F(Engines, WorkOffALongQueue) {
  constexpr int kLength = 100000;
  Create("Three");
  int answers = 0;
  for (int i = 0; i < kLength; ++i) {
    engine_->Make<void>([](const State& state) { return DeleteNetwork(state, -1); },
                        [&answers](const Result<void>& result) {
                          EXPECT_FALSE(result.Succeeded());
                          ++answers;
                        });
  }
  EXPECT_EQ(answers, 0);
  driver_.FinishAll();
  EXPECT_EQ(answers, kLength);
  EXPECT_EQ(engine_->GetState(), three_);
}

}  // namespace

}  // namespace TALO::Wifid
