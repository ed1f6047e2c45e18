// How the daemon's loop ends beside a disk that does not answer.

#include "daemon/main/state_saving.h"

#include "daemon/main/event_timers.h"
#include "support/loop_test.h"

#include <gtest/gtest.h>

#include <chrono>
#include <exception>
#include <functional>
#include <future>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

class HangingStore final : public StateStore {
 public:
  Result<StoredState> Load() override { return StoredState{}; }
  Result<void> Save(const State&) override {
    never_.get_future().wait();
    return {};
  }

 private:
  std::promise<void> never_;
};

class StateSavingDeathTest : public LoopTest {
 protected:
  // The loop does not go on in a process that was only forked.
  StateSavingDeathTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }

  /// Until `end` is called from inside the loop.
  void ServeWhileSaving(const std::function<void()>& end) {
    Log log(Severity::Error);
    HangingStore store;
    EventTimers timers(loop_);
    StateSaving saving(loop_, store, timers, log);
    saving.GetWriter().Save(State{}, [](const Result<void>&) {});
    timers.After(std::chrono::milliseconds(0), end);
    saving.RunLoop();
  }
};

TEST_F(StateSavingDeathTest, EndsWithoutADiskThatHangs) {
  EXPECT_EXIT(ServeWhileSaving([this] { loop_.End(); }), testing::ExitedWithCode(0),
              "talowifid ends while the state is being saved");
}

TEST_F(StateSavingDeathTest, SaysWhatEndedTheLoopWithoutADiskThatHangs) {
  const auto lost = std::make_exception_ptr(std::runtime_error("the bus is lost"));
  EXPECT_EXIT(ServeWhileSaving([this, &lost] { loop_.Stop(lost); }), testing::ExitedWithCode(1),
              "talowifid ends while the state is being saved(.|\n)*the bus is lost");
}

}  // namespace

}  // namespace TALO::Wifid
