#pragma once

#include "daemon/radio/radio_driver.h"
#include "daemon/service/announcer.h"
#include "daemon/service/clock.h"
#include "daemon/service/random_source.h"
#include "daemon/store/state_store.h"
#include "daemon/store/state_writer.h"
#include "support/daemon_samples.h"
#include "support/manual_timers.h"

#include <deque>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

/// Small working models of the engine's doors, but for the driver's, which has a file of its own. They write
/// what is asked of them into one journal, in the order it came, and fail when told to.
namespace TALO::Wifid {

using Journal = std::vector<std::string>;

/// The networks and the upstream access points that stations join, as in "1 4, joins Cafe".
std::string Brief(const State& state);

/// Failures to come, one after the other. An empty one stands for success.
class FailureList {
 public:
  /// The next that nothing was said of fails.
  void Fail(const std::string& sentence) { failures_.push_back(sentence); }
  /// The next that nothing was said of works.
  void Pass() { failures_.emplace_back(); }
  void Clear() { failures_.clear(); }
  /// What is to happen now.
  std::string Take();

 private:
  std::deque<std::string> failures_;
};

/// Notes "save 1 4" for a state with the networks 1 and 4.
class FakeStore final : public StateStore, public StateWriter {
 public:
  explicit FakeStore(Journal& journal) : journal_(journal) {}

  /// The next save answers this and saves nothing.
  void FailNext(const std::string& sentence) { failures_.Fail(sentence); }
  /// The next save works and those told of behind it fail.
  void PassNext() { failures_.Pass(); }
  void FailNoMore() { failures_.Clear(); }

  Result<StoredState> Load() override { return StoredState{saved_, {}}; }
  Result<void> Save(const State& state) override;
  void Save(const State& state, Saved saved) override;

  /// Saves are told of only when the test releases them.
  void Hold() { isHolding_ = true; }
  /// Tells of the save that is held, if one is.
  void Release();
  /// Whether a save is held.
  bool IsBusy() const { return held_ != nullptr; }

  const std::optional<State>& LastSaved() const { return saved_; }

 private:
  Journal& journal_;
  FailureList failures_;
  std::optional<State> saved_;
  bool isHolding_ = false;
  std::function<void()> held_;
};

/// Stands still until the test moves it.
class FakeClock final : public Clock {
 public:
  std::int64_t WallNow() const override { return now; }
  void WhenSet(std::function<void()> action) override { action_ = std::move(action); }

  /// As when somebody sets the machine's clock.
  void Set(std::int64_t time) {
    now = time;
    if (action_) {
      action_();
    }
  }

  std::int64_t now = 1000;

 private:
  std::function<void()> action_;
};

/// Notes "announce networks"; keeps what happened.
class FakeAnnouncer final : public Announcer {
 public:
  explicit FakeAnnouncer(Journal& journal) : journal_(journal) {}

  void NetworksChanged() override { journal_.emplace_back("announce networks"); }
  void Happened(const RadioEvent& event) override { happened.push_back(event); }

  std::vector<RadioEvent> happened;

 private:
  Journal& journal_;
};

/// Gives the bytes 0, 1, 2 and so on.
class FakeRandom final : public RandomSource {
 public:
  std::string Draw(std::size_t count) override;

  bool broken = false;

 private:
  unsigned char next_ = 0;
};

}  // namespace TALO::Wifid
