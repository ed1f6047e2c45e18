#include "daemon/main/event_timers.h"

#include "support/loop_test.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>

namespace TALO::Wifid {

namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

class EventTimersTest : public LoopTest {
 protected:
  /// An action that adds a letter to what was called.
  std::function<void()> Call(char letter) {
    return [this, letter] { called_ += letter; };
  }

  /// Calls at a moment of the test, however long it took to get here.
  void CallAt(milliseconds moment, char letter) {
    timers_.After(start_ + moment - timers_.Now(), Call(letter));
  }

  /// Runs the loop, which runs once only, until the timers before `delay` were called.
  void RunFor(milliseconds delay) {
    timers_.After(delay, [this] { EndLoop(); });
    loop_.Run();
  }

  static void LetPass(milliseconds time) {
    const auto end = steady_clock::now() + time;
    while (steady_clock::now() < end) {
    }
  }

  EventTimers timers_{loop_};
  const Timers::Duration start_ = timers_.Now();
  std::string called_;
};

TEST_F(EventTimersTest, AreCalledInTheOrderOfTheirTimes) {
  CallAt(milliseconds(80), 'd');
  CallAt(milliseconds(40), 'b');
  CallAt(milliseconds(60), 'c');
  CallAt(milliseconds(20), 'a');
  RunFor(milliseconds(100));
  EXPECT_EQ(called_, "abcd");
}

TEST_F(EventTimersTest, AreCalledInTheOrderOfTheirTimesWhenTheLoopWasBusyUntilAllWereDue) {
  CallAt(milliseconds(80), 'd');
  CallAt(milliseconds(40), 'b');
  CallAt(milliseconds(100), 'e');
  CallAt(milliseconds(60), 'c');
  CallAt(milliseconds(20), 'a');
  LetPass(milliseconds(120));
  RunFor(milliseconds(0));
  EXPECT_EQ(called_, "abcde");
}

TEST_F(EventTimersTest, OfTheSameTimeAreCalledInTheOrderOfTheirMaking) {
  for (const char letter : std::string("abcdefghij")) {
    timers_.After(milliseconds(0), Call(letter));
  }
  RunFor(milliseconds(1));
  EXPECT_EQ(called_, "abcdefghij");
}

TEST_F(EventTimersTest, AreCalledNoSoonerThanAsked) {
  const auto start = steady_clock::now();
  const auto startNow = timers_.Now();
  RunFor(milliseconds(25));
  EXPECT_GE(steady_clock::now() - start, milliseconds(25));
  EXPECT_GE(timers_.Now() - startNow, milliseconds(25));
}

TEST_F(EventTimersTest, AreNeverCalledFromInsideTheirMaking) {
  timers_.After(milliseconds(0), Call('a'));
  timers_.After(milliseconds(-1000), Call('b'));
  EXPECT_EQ(called_, "");
  RunFor(milliseconds(1));
  EXPECT_EQ(called_, "ab");
}

TEST_F(EventTimersTest, AreCalledOnce) {
  timers_.After(milliseconds(0), Call('a'));
  RunFor(milliseconds(10));
  EXPECT_EQ(called_, "a");
}

TEST_F(EventTimersTest, AreNotCalledOnceCancelled) {
  timers_.After(milliseconds(1), Call('a'));
  const auto cancelled = timers_.After(milliseconds(1), Call('b'));
  timers_.After(milliseconds(1), Call('c'));
  const auto first = timers_.After(milliseconds(0), Call('d'));
  timers_.Cancel(cancelled);
  timers_.Cancel(first);
  RunFor(milliseconds(5));
  EXPECT_EQ(called_, "ac");
}

TEST_F(EventTimersTest, AreNotCalledOnceCancelledThoughTheyAreDue) {
  Timers::Id second = 0;
  timers_.After(milliseconds(0), [&] {
    called_ += 'a';
    timers_.Cancel(second);
  });
  second = timers_.After(milliseconds(0), Call('b'));
  LetPass(milliseconds(3));
  RunFor(milliseconds(0));
  EXPECT_EQ(called_, "a");
}

TEST_F(EventTimersTest, IgnoreAnIdThatIsOver) {
  const auto over = timers_.After(milliseconds(0), Call('a'));
  timers_.After(milliseconds(1), [&] {
    timers_.Cancel(over);
    timers_.Cancel(over);
    timers_.Cancel(12345);
    timers_.After(milliseconds(0), [this] {
      called_ += 'b';
      EndLoop();
    });
  });
  loop_.Run();
  EXPECT_EQ(called_, "ab");
}

TEST_F(EventTimersTest, AreCancelledAfterTheLoopTooWithoutAWord) {
  const auto first = timers_.After(milliseconds(100), Call('a'));
  const auto second = timers_.After(milliseconds(200), Call('b'));
  RunFor(milliseconds(0));
  timers_.Cancel(first);
  timers_.Cancel(second);
  EXPECT_EQ(called_, "");
}

TEST_F(EventTimersTest, AreSetAndCancelledFromActions) {
  const auto late = timers_.After(milliseconds(20), Call('x'));
  Timers::Id self = 0;
  self = timers_.After(milliseconds(0), [&] {
    called_ += 'a';
    timers_.Cancel(self);
    timers_.Cancel(late);
    timers_.After(milliseconds(5), [&] {
      called_ += 'c';
      timers_.After(milliseconds(30), [this] { EndLoop(); });
    });
    timers_.After(milliseconds(0), Call('b'));
  });
  loop_.Run();
  EXPECT_EQ(called_, "abc");
}

TEST_F(EventTimersTest, ThatSetThemselvesAgainLeaveRoomForOthers) {
  std::function<void()> again = [&] { timers_.After(milliseconds(0), again); };
  again();
  timers_.After(milliseconds(2), Call('a'));
  RunFor(milliseconds(5));
  EXPECT_EQ(called_, "a");
}

TEST_F(EventTimersTest, EndTheLoopWithWhatAnActionThrows) {
  timers_.After(milliseconds(0), Call('a'));
  timers_.After(milliseconds(0), [] { throw std::out_of_range("the reason"); });
  timers_.After(milliseconds(1), Call('b'));
  try {
    loop_.Run();
    FAIL() << "it ended without a word";
  } catch (const std::out_of_range& failure) {
    EXPECT_STREQ(failure.what(), "the reason");
  }
  EXPECT_EQ(called_, "a");
}

TEST_F(EventTimersTest, OfDaysDoNotHoldTheLoopUp) {
  timers_.After(hours(24 * 365), Call('x'));
  RunFor(milliseconds(1));
  EXPECT_EQ(called_, "");
}

TEST_F(EventTimersTest, AreForgottenWithTheirOwner) {
  {
    EventTimers others(loop_);
    others.After(milliseconds(0), Call('x'));
  }
  RunFor(milliseconds(5));
  EXPECT_EQ(called_, "");
}

}  // namespace

}  // namespace TALO::Wifid
