// What happens while a state is on its way to a disk that takes its time.

#include "support/engine_test.h"

#include <algorithm>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

class SlowSaves : public EngineTest {
 protected:
  SlowSaves() { store_.Hold(); }
};

TEST_F(SlowSaves, LeaveTheStateInForceUntilTheyAreDone) {
  Create("Three");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2 3"}));
  EXPECT_EQ(engine_->GetState(), two_);
  EXPECT_EQ(LiveNow(), LiveOf(two_));
  store_.Release();
  EXPECT_EQ(TakeJournal(), AppliedOnAll("1 2 3"));
  EXPECT_EQ(engine_->GetState(), three_);
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"announce networks", "answer 3"}));
}

TEST_F(SlowSaves, ThatFailChangeNothing) {
  store_.FailNext("the disk is full");
  Create("Three");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2 3"}));
  store_.Release();
  EXPECT_EQ(TakeJournal(), (Journal{"Storage failed: the disk is full"}));
  EXPECT_EQ(engine_->GetState(), two_);
}

TEST_F(SlowSaves, AreWaitedForByTheNextChangeWhichIsMadeFromThem) {
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band5GHz_1, "Hotel");
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2, joins Cafe"}));
  store_.Release();
  driver_.FinishAll();
  const State both = WithJoined(WithJoined(two_, Band2_4GHz, "Cafe"), Band5GHz_1, "Hotel");
  EXPECT_EQ(engine_->GetState(), both);
  EXPECT_EQ(store_.LastSaved(), both);
}

TEST_F(SlowSaves, AreWaitedForInTheOrderAskedForWhicheverRadioItIs) {
  const auto rename = [this](RadioFrequency radio, const std::string& essid) {
    Wifi::StationSetting setting = Joined(radio, essid);
    setting.enable = false;  // no plan differs, so the radio's next change comes at once
    engine_->Make<void>(
        Engine::Radios{radio},
        [setting](const State& state) { return ModifyStation(state, TriBandRadios(), setting); },
        NoteResult(essid));
  };
  rename(Band2_4GHz, "first");
  rename(Band2_4GHz, "third");
  rename(Band5GHz_1, "second");
  store_.Release();
  driver_.FinishAll();
  Journal answers = TakeJournal();
  std::erase_if(answers, [](const std::string& line) { return line.starts_with("save "); });
  EXPECT_EQ(answers, (Journal{"first", "second", "third"}));
}

TEST_F(SlowSaves, AreWaitedForByAChangeThatIsTakenBack) {
  store_.Release();
  driver_.FailNext(Band2_4GHz, "wlan0 does not answer");
  JoinUpstream(Band2_4GHz, "Cafe");
  store_.Hold();
  JoinUpstream(Band5GHz_1, "Hotel");
  TakeJournal();
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), Journal{});
  store_.Release();
  driver_.FinishAll();
  const State hotel = WithJoined(two_, Band5GHz_1, "Hotel");
  EXPECT_EQ(engine_->GetState(), hotel);
  EXPECT_EQ(store_.LastSaved(), hotel);
  EXPECT_EQ(LiveNow(), LiveOf(hotel));
}

TEST_F(SlowSaves, ThatTakeAChangeBackComeBeforeTheRadiosAndTheAnswer) {
  store_.Release();
  driver_.FailNext(Band2_4GHz, "wlan0 does not answer");
  JoinUpstream(Band2_4GHz, "Cafe");
  store_.Hold();
  TakeJournal();
  driver_.Finish(Band2_4GHz);
  EXPECT_EQ(TakeJournal(), (Journal{"save 1 2"}));
  EXPECT_EQ(engine_->GetState(), two_);
  JoinUpstream(Band5GHz_1, "Hotel");
  EXPECT_EQ(TakeJournal(), Journal{});
  store_.Release();
  EXPECT_EQ(TakeJournal(), (Journal{"apply Band2_4GHz: 1 2", "save 1 2, joins Hotel",
                                    "apply Band5GHz_1: 1 2, joins Hotel"}));
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal(), (Journal{"Radio failed: wlan0 does not answer", "done"}));
  EXPECT_EQ(engine_->GetState(), WithJoined(two_, Band5GHz_1, "Hotel"));
  EXPECT_EQ(store_.LastSaved(), engine_->GetState());
}

TEST_F(SlowSaves, LeaveTheRadiosFreeBehindARuleThatThrows) {
  JoinUpstream(Band5GHz_1, "Hotel");
  engine_->Make<void>(
      Engine::Radios{Band2_4GHz},
      [](const State&) -> Result<Change<void>> { throw std::runtime_error("no memory"); }, NoteResult());
  EXPECT_THROW(store_.Release(), std::runtime_error);
  driver_.FinishAll();
  TakeJournal();
  JoinUpstream(Band2_4GHz, "Cafe");
  driver_.FinishAll();
  EXPECT_EQ(TakeJournal().back(), "done");
}

TEST_F(SlowSaves, AreCarriedThroughAtTheEndAndWhatWaitsForThemIsRefused) {
  JoinUpstream(Band2_4GHz, "Cafe");
  JoinUpstream(Band5GHz_1, "Hotel");
  bool isOver = false;
  engine_->End([&isOver] { isOver = true; });
  EXPECT_FALSE(isOver);
  store_.Release();
  driver_.FinishAll();
  EXPECT_TRUE(isOver);
  EXPECT_EQ(engine_->GetState(), WithJoined(two_, Band2_4GHz, "Cafe"));
  const Journal journal = TakeJournal();
  EXPECT_EQ(std::ranges::count(journal, "Busy: the wifi daemon is about to end"), 1);
  EXPECT_EQ(std::ranges::count(journal, "done"), 1);
}

}  // namespace

}  // namespace TALO::Wifid
