#include "support/fake_doors.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

/// The failure that is told of next, empty where it is to work.
std::string TakeNext(std::deque<std::string>& failures) {
  if (failures.empty()) {
    return {};
  }
  std::string failure = std::move(failures.front());
  failures.pop_front();
  return failure;
}

}  // namespace

std::string IDsOf(const State& state) {
  std::string ids;
  for (const NetworkState& network : state.networks) {
    ids += (ids.empty() ? "" : " ") + std::to_string(network.id);
  }
  return ids;
}

Result<void> FakeStore::Save(const State& state) {
  journal_.push_back("save " + IDsOf(state));
  if (const std::string failure = TakeNext(failures_); !failure.empty()) {
    return Refusal{ErrorCode::StorageFailed, failure};
  }
  saved_ = state;
  return {};
}

void FakeDriver::TakeDown() {
  live_.clear();
  for (const RadioCapability& radio : capabilities_.radios) {
    live_.push_back({radio.radio, false, 0, 0, 0, {}});
  }
}

void FakeDriver::Apply(const std::vector<RadioPlan>& plan, ApplyMode mode, Done done) {
  EXPECT_FALSE(IsBusy()) << "a plan came before the one before was done";
  std::string ids;
  if (!plan.empty()) {
    for (const BSSPlan& bss : plan.front().bsss) {
      ids += " " + std::to_string(bss.networkId);
    }
  }
  journal_.push_back(std::string(mode == ApplyMode::Everything ? "apply everything" : "apply") +
                     (ids.empty() ? " " : ids));
  plan_ = plan;
  pending_ = std::move(done);
  if (!hold_) {
    Finish();
  }
}

void FakeDriver::Finish() {
  ASSERT_TRUE(IsBusy()) << "there is no plan to be done with";
  const Done done = std::move(*pending_);
  pending_.reset();
  if (const std::string failure = TakeNext(failures_); !failure.empty()) {
    TakeDown();
    done(Refusal{ErrorCode::RadioFailed, failure});
    return;
  }
  live_ = LiveAsPlanned(plan_);
  done({});
}

}  // namespace TALO::Wifid
