#include "daemon/service/radio_queue.h"

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;

/// Requests by name: notes when each starts and lets it leave when told to.
class RadioQueues : public testing::Test {
 protected:
  void Enter(const std::string& name, const RadioQueue::Radios& radios) {
    queue_.Enter(radios, [this, name](RadioQueue::Ticket ticket) {
      started_.push_back(name);
      tickets_[name] = ticket;
    });
  }
  void Leave(const std::string& name) { queue_.Leave(tickets_.at(name)); }

  using Names = std::vector<std::string>;

  RadioQueue queue_;
  Names started_;
  std::map<std::string, RadioQueue::Ticket> tickets_;
};

TEST_F(RadioQueues, StartAtOnceWhatFindsItsRadiosFree) {
  Enter("a", {Band2_4GHz});
  Enter("b", {Band5GHz_1, Band5GHz_2});
  EXPECT_EQ(started_, (Names{"a", "b"}));
}

TEST_F(RadioQueues, StartOneAfterTheOtherOnOneRadioInTheirOrder) {
  Enter("a", {Band2_4GHz});
  Enter("b", {Band2_4GHz});
  Enter("c", {Band2_4GHz});
  EXPECT_EQ(started_, (Names{"a"}));
  Leave("a");
  EXPECT_EQ(started_, (Names{"a", "b"}));
  Leave("b");
  EXPECT_EQ(started_, (Names{"a", "b", "c"}));
}

TEST_F(RadioQueues, LetOthersPass) {
  Enter("a", {Band2_4GHz});
  Enter("b", {Band2_4GHz});
  Enter("c", {Band5GHz_1});
  EXPECT_EQ(started_, (Names{"a", "c"}));
  Leave("c");
  EXPECT_EQ(started_, (Names{"a", "c"}));
  Leave("a");
  EXPECT_EQ(started_, (Names{"a", "c", "b"}));
}

TEST_F(RadioQueues, WaitForEveryRadioThatOverlaps) {
  Enter("low", {Band2_4GHz});
  Enter("high", {Band5GHz_1});
  Enter("all", {Band2_4GHz, Band5GHz_1, Band5GHz_2});
  Leave("high");
  EXPECT_EQ(started_, (Names{"low", "high"}));
  Leave("low");
  EXPECT_EQ(started_, (Names{"low", "high", "all"}));
}

TEST_F(RadioQueues, LetNobodyOvertakeWhoWaitsForTheSameRadio) {
  Enter("low", {Band2_4GHz});
  Enter("all", {Band2_4GHz, Band5GHz_1, Band5GHz_2});
  // Its radio is free, but somebody waits for it already.
  Enter("high", {Band5GHz_1});
  EXPECT_EQ(started_, (Names{"low"}));
  Leave("low");
  EXPECT_EQ(started_, (Names{"low", "all"}));
  Leave("all");
  EXPECT_EQ(started_, (Names{"low", "all", "high"}));
}

TEST_F(RadioQueues, StartAllThatOneLeftFree) {
  Enter("all", {Band2_4GHz, Band5GHz_1});
  Enter("low", {Band2_4GHz});
  Enter("high", {Band5GHz_1});
  Enter("low again", {Band2_4GHz});
  Leave("all");
  EXPECT_EQ(started_, (Names{"all", "low", "high"}));
}

TEST_F(RadioQueues, StartAtOnceWhatNeedsNoRadio) {
  Enter("a", {Band2_4GHz});
  Enter("nothing", {});
  EXPECT_EQ(started_, (Names{"a", "nothing"}));
  Leave("nothing");
  Leave("a");
  Enter("b", {Band2_4GHz});
  EXPECT_EQ(started_, (Names{"a", "nothing", "b"}));
}

TEST_F(RadioQueues, TakeAStartThatLeavesAtOnce) {
  queue_.Enter({Band2_4GHz}, [this](RadioQueue::Ticket ticket) {
    started_.emplace_back("quick");
    queue_.Leave(ticket);
  });
  Enter("next", {Band2_4GHz});
  EXPECT_EQ(started_, (Names{"quick", "next"}));
}

TEST_F(RadioQueues, TakeAStartThatEntersAndStartThatAfterwards) {
  queue_.Enter({Band2_4GHz}, [this](RadioQueue::Ticket ticket) {
    Enter("other radio", {Band5GHz_1});
    Enter("same radio", {Band2_4GHz});
    started_.emplace_back("first");
    queue_.Leave(ticket);
  });
  EXPECT_EQ(started_, (Names{"first", "other radio", "same radio"}));
}

TEST_F(RadioQueues, IgnoreASecondLeaving) {
  Enter("a", {Band2_4GHz});
  Enter("b", {Band2_4GHz});
  Enter("c", {Band2_4GHz});
  Leave("a");
  Leave("a");
  EXPECT_EQ(started_, (Names{"a", "b"}));
}

TEST_F(RadioQueues, GoOnAfterAStartThatThrows) {
  Enter("a", {Band2_4GHz, Band5GHz_1});
  queue_.Enter({Band2_4GHz}, [](RadioQueue::Ticket) { throw std::runtime_error("no randomness"); });
  Enter("b", {Band2_4GHz});
  EXPECT_THROW(Leave("a"), std::runtime_error);
  EXPECT_EQ(started_, (Names{"a", "b"}));
  Leave("b");
  Enter("c", {Band2_4GHz});
  EXPECT_EQ(started_, (Names{"a", "b", "c"}));
}

TEST_F(RadioQueues, WorkOffALongQueue) {
  constexpr int kLength = 100000;
  Enter("first", {Band2_4GHz, Band5GHz_1});
  int next = 0;
  for (int i = 0; i < kLength; ++i) {
    queue_.Enter({i % 2 == 0 ? Band2_4GHz : Band5GHz_1}, [this, i, &next](RadioQueue::Ticket ticket) {
      EXPECT_EQ(i, next);
      ++next;
      queue_.Leave(ticket);
    });
  }
  EXPECT_EQ(next, 0);
  Leave("first");
  EXPECT_EQ(next, kLength);
}

}  // namespace

}  // namespace TALO::Wifid
