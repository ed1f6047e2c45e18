#include "daemon/system/background_writer.h"

#include "support/daemon_samples.h"
#include "support/loop_run.h"
#include "support/manual_timers.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <thread>

namespace TALO::Wifid {

namespace {

/// Saves when it may, and notes on which thread.
class SlowStore final : public StateStore {
 public:
  Result<StoredState> Load() override { return StoredState{}; }

  Result<void> Save(const State& state) override {
    std::unique_lock lock(mutex_);
    isSaving = true;
    allowed_.wait(lock, [this] { return isAllowed_; });
    thread = std::this_thread::get_id();
    if (breaks) {
      throw std::runtime_error("out of everything");
    }
    saved = state;
    return fails ? Result<void>(Refusal{ErrorCode::StorageFailed, "the disk is full"}) : Result<void>();
  }

  void Allow() {
    const std::lock_guard lock(mutex_);
    isAllowed_ = true;
    allowed_.notify_all();
  }

  std::atomic<bool> isSaving = false;
  bool fails = false;
  bool breaks = false;
  std::thread::id thread;
  std::optional<State> saved;

 private:
  std::mutex mutex_;
  std::condition_variable allowed_;
  bool isAllowed_ = false;
};

class BackgroundWriters : public testing::Test {
 protected:
  // A writer waits for its disk at its end.
  void TearDown() override { store_.Allow(); }

  void Save(const State& state) {
    writer_->Save(state, [this](const Result<void>& result) {
      answer_ = result.Succeeded() ? "saved" : result.Why().sentence;
    });
  }

  std::string Answer() {
    loop_.Until("the answer", [this] { return answer_.has_value(); });
    return *std::exchange(answer_, std::nullopt);
  }

  const State state_ = MakeState(3, {MakeNetwork(1, 1, "One")});
  LoopRun loop_;
  SlowStore store_;
  ManualTimers timers_;
  int late_ = 0;
  std::optional<BackgroundWriter> writer_{std::in_place, loop_.Get(), store_, timers_, [this] { ++late_; }};
  std::optional<std::string> answer_;
};

TEST_F(BackgroundWriters, LetTheLoopTurnWhileTheDiskIsBusy) {
  Save(state_);
  loop_.Until("the save", [this] { return store_.isSaving.load(); });
  loop_.TurnWhileReady();
  EXPECT_EQ(answer_, std::nullopt);
  EXPECT_FALSE(writer_->IsDoneWithin(std::chrono::milliseconds(1)));
  store_.Allow();
  EXPECT_TRUE(writer_->IsDoneWithin(std::chrono::minutes(1)));
  EXPECT_EQ(Answer(), "saved");
  EXPECT_TRUE(writer_->IsDoneWithin(std::chrono::milliseconds(0)));
  EXPECT_EQ(store_.saved, state_);
  EXPECT_NE(store_.thread, std::this_thread::get_id());
}

TEST_F(BackgroundWriters, TellOnceWhereTheDiskTakesTooLong) {
  store_.Allow();
  Save(state_);
  EXPECT_EQ(Answer(), "saved");
  timers_.Advance(BackgroundWriter::kPatience);
  EXPECT_EQ(late_, 0);
  Save(state_);
  timers_.Advance(BackgroundWriter::kPatience * 2);
  EXPECT_EQ(late_, 1);
  EXPECT_EQ(Answer(), "saved");
}

TEST_F(BackgroundWriters, TellWhatTheStoreSays) {
  store_.fails = true;
  store_.Allow();
  Save(state_);
  EXPECT_EQ(Answer(), "the disk is full");
  store_.breaks = true;
  Save(state_);
  EXPECT_EQ(Answer(), "the state cannot be saved: out of everything");
}

TEST_F(BackgroundWriters, SaveTheNextOneFromTheAnswerOn) {
  store_.Allow();
  const State next = MakeState(4, {});
  writer_->Save(state_, [&](const Result<void>&) { Save(next); });
  EXPECT_EQ(Answer(), "saved");
  EXPECT_EQ(store_.saved, next);
}

TEST_F(BackgroundWriters, CarryASaveThroughAtTheirEndAndTellNobody) {
  Save(state_);
  store_.Allow();
  writer_.reset();
  EXPECT_EQ(store_.saved, state_);
  EXPECT_EQ(answer_, std::nullopt);
}

TEST_F(BackgroundWriters, TakeOneStateAfterTheOther) {
  Save(state_);
  EXPECT_THROW(Save(state_), std::logic_error);
  store_.Allow();
  EXPECT_EQ(Answer(), "saved");
}

}  // namespace

}  // namespace TALO::Wifid
