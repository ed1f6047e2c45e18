#include "daemon/system/event_watch.h"

#include "support/descriptors.h"
#include "support/loop_run.h"

#include <sys/epoll.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace TALO::Wifid {

namespace {

class EventWatchTest : public testing::Test {
 protected:
  EventWatchTest() { EXPECT_EQ(write(pipe_.writer.Get(), "ab", 2), 2); }

  LoopRun run_;
  EndToEnd::Pipe pipe_ = EndToEnd::OpenPipe();
  int calls_ = 0;
};

TEST_F(EventWatchTest, CallsWhileThereIsSomethingAndNeverFromInsideItsMaking) {
  const EventWatch watch(run_.Get(), pipe_.reader.Get(), EPOLLIN, [this] {
    char letter = 0;
    EXPECT_EQ(read(pipe_.reader.Get(), &letter, 1), 1);
    ++calls_;
  });
  EXPECT_EQ(calls_, 0);
  run_.TurnWhileReady();
  EXPECT_EQ(calls_, 2);
}

TEST_F(EventWatchTest, CallsNoMoreAfterItsEnd) {
  {
    const EventWatch watch(run_.Get(), pipe_.reader.Get(), EPOLLIN, [this] { ++calls_; });
  }
  run_.TurnWhileReady();
  EXPECT_EQ(calls_, 0);
}

TEST_F(EventWatchTest, MayEndInsideItsAction) {
  std::unique_ptr<EventWatch> watch;
  std::string heard;
  watch = std::make_unique<EventWatch>(run_.Get(), pipe_.reader.Get(), EPOLLIN,
                                       [&, kept = std::string("what the action keeps")] {
                                         watch.reset();
                                         heard += kept;
                                       });
  run_.TurnWhileReady();
  EXPECT_EQ(heard, "what the action keeps");
}

TEST_F(EventWatchTest, TellsTheLoopWhatItsActionThrows) {
  const EventWatch watch(run_.Get(), pipe_.reader.Get(), EPOLLIN,
                         [] { throw std::out_of_range("the reason"); });
  try {
    run_.TurnWhileReady();
    FAIL() << "nothing is told";
  } catch (const std::out_of_range& failure) {
    EXPECT_STREQ(failure.what(), "the reason");
  }
}

}  // namespace

}  // namespace TALO::Wifid
