#pragma once

#include "daemon/radio/radio_driver.h"
#include "daemon/service/clock.h"
#include "daemon/store/state_store.h"
#include "support/daemon_samples.h"

#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Small working models of the engine's doors. They write what is asked of them into one journal, in the
/// order it came, and fail when told to.
namespace TALO::Wifid {

using Journal = std::vector<std::string>;

/// The IDs of the networks, as in "1 4".
std::string IDsOf(const State& state);

/// Notes "save 1 4" for a state with the networks 1 and 4.
class FakeStore final : public StateStore {
 public:
  explicit FakeStore(Journal& journal) : journal_(journal) {}

  /// The next save answers this and saves nothing.
  void FailNext(const std::string& sentence) { failures_.push_back(sentence); }
  /// The next save works and those told of behind it fail.
  void PassNext() { failures_.emplace_back(); }

  Result<std::optional<State>> Load() override { return saved_; }
  Result<void> Save(const State& state) override;

  const std::optional<State>& Saved() const { return saved_; }

 private:
  Journal& journal_;
  std::deque<std::string> failures_;
  std::optional<State> saved_;
};

/// Notes "apply 1 4" for a plan with the networks 1 and 4, with "everything" before the numbers in that mode.
/// A test fails when it is asked for more before it is done.
class FakeDriver final : public RadioDriver {
 public:
  FakeDriver(Journal& journal, Capabilities capabilities)
      : journal_(journal), capabilities_(std::move(capabilities)) {
    TakeDown();
  }

  /// The next plan fails, after the radios have been taken down.
  void FailNext(const std::string& sentence) { failures_.push_back(sentence); }
  /// The next plan works and those told of behind it fail.
  void PassNext() { failures_.emplace_back(); }
  /// From now on plans are done when Finish is called.
  void Hold() { hold_ = true; }
  bool IsBusy() const { return pending_.has_value(); }
  void Finish();

  const std::vector<RadioPlan>& LastPlan() const { return plan_; }

  const Capabilities& GetCapabilities() const override { return capabilities_; }
  void Apply(const std::vector<RadioPlan>& plan, ApplyMode mode, Done done) override;
  std::vector<LiveRadio> GetLive() const override { return live_; }

 private:
  void TakeDown();

  Journal& journal_;
  Capabilities capabilities_;
  std::deque<std::string> failures_;
  bool hold_ = false;
  std::vector<RadioPlan> plan_;
  std::vector<LiveRadio> live_;
  std::optional<Done> pending_;
};

class FakeClock final : public Clock {
 public:
  std::int64_t WallNow() const override { return now; }

  std::int64_t now = 1000;
};

}  // namespace TALO::Wifid
