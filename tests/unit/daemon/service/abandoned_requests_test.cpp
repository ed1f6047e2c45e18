#include "daemon/service/scanner.h"
#include "daemon/service/wps_sessions.h"
#include "support/engine_test.h"

#include <functional>
#include <optional>
#include <utility>

namespace TALO::Wifid {

namespace {

/// Notes "answer" as long as it is there to be answered.
struct Asker {
  Journal& journal;
  const bool& isHere;

  bool IsAwaited() const { return isHere; }
  template <typename Answer>
  void operator()(const Answer&) const {
    journal.emplace_back("answer");
  }
};

class AbandonedRequests : public EngineTest {
 protected:
  /// What a request asks of the radios that waits for a change while its caller leaves, and what one does
  /// whose caller stays.
  std::pair<Journal, Journal> Compare(const std::function<void()>& request) {
    return {RunBehindAChange(request, false), RunBehindAChange(request, true)};
  }

  Journal RunBehindAChange(const std::function<void()>& request, bool stays) {
    StartWith(two_);
    wps_.emplace(*engine_);
    isHere_ = true;
    Create("Three");
    request();
    TakeJournal();
    isHere_ = stays;
    driver_.FinishAll();
    Journal journal = TakeJournal();
    // The radios are free for the next one either way.
    isHere_ = true;
    Delete(1);
    driver_.FinishAll();
    EXPECT_EQ(TakeJournal().back(), "done");
    return journal;
  }

  void ExpectDropped(const std::function<void()>& request) {
    const auto [left, stayed] = Compare(request);
    EXPECT_EQ(left, (Journal{"announce networks", "answer 3"}));
    EXPECT_GT(stayed.size(), left.size());
    EXPECT_EQ(stayed.back(), "answer");
  }

  bool isHere_ = true;
  const Asker asker_{journal_, isHere_};
  std::optional<WPSSessions> wps_;  ///< of the newest engine
};

TEST_F(AbandonedRequests, ToChangeTheStateAreDropped) {
  ExpectDropped(
      [this] { engine_->Make<void>([](const State& state) { return DeleteNetwork(state, 2); }, asker_); });
}

TEST_F(AbandonedRequests, ToRestartAreDropped) {
  ExpectDropped([this] { engine_->Restart(ApplyMode::Everything, asker_); });
}

TEST_F(AbandonedRequests, ToListenAreDropped) {
  ExpectDropped([this] { Scan(*engine_, Band5GHz_1, asker_); });
}

TEST_F(AbandonedRequests, ToReconnectAreDropped) {
  ExpectDropped([this] { ReconnectAll(*engine_, asker_); });
}

TEST_F(AbandonedRequests, ToOpenWPSAreDropped) {
  ExpectDropped([this] { wps_->Open({1, Band2_4GHz}, asker_); });
}

TEST_F(AbandonedRequests, ThatHaveBegunAreCarriedThrough) {
  engine_->Make<void>([](const State& state) { return DeleteNetwork(state, 2); }, asker_);
  isHere_ = false;
  driver_.FinishAll();
  EXPECT_EQ(engine_->GetState().networks.size(), 1U);
}

}  // namespace

}  // namespace TALO::Wifid
