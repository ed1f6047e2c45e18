// Long sequences of random requests, good and bad ones, many under way at once: what must hold after each.

#include "support/engine_test.h"

#include <random>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

/// Asks for changes of a small choice, so that many collide, and keeps beside the engine what the state must
/// be by those that were answered.
class RequestSequences : public EngineTest {
 protected:
  void Seed(unsigned seed) {
    random_.seed(seed);
    StartWith(MakeState(1, {}));
    expected_ = MakeState(1, {});
    asked_ = answered_ = 0;
  }

  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  RadioFrequency AnyRadio() {
    const std::vector<RadioFrequency> radios = {Band2_4GHz, Band5GHz_1, Band5GHz_2};
    return radios[static_cast<std::size_t>(Below(3))];
  }

  void Ask() {
    ++asked_;
    askedDuringSaves_ += store_.IsBusy() ? 1 : 0;
    switch (Below(8)) {
      case 0:
      case 1:
        AskForNetwork(Below(10) == 0 ? "" : "Net " + std::to_string(Below(24)));
        break;
      case 2:
        AskForDeletion(Below(expected_.nextNetworkId + 2) - 1);
        break;
      case 3:
        engine_->Restart(Below(2) == 0 ? ApplyMode::WhatDiffers : ApplyMode::Everything,
                         [this](const Result<void>&) { ++answered_; });
        break;
      default:
        AskForStation(AnyRadio(), Below(10) == 0 ? "" : "Upstream " + std::to_string(Below(5)));
        break;
    }
  }

  /// Answers count in the order in which they come: those of the same radios come in the order of the
  /// changes.
  void AskForNetwork(const std::string& ssid) {
    const auto rule = [ssid](const State& state) {
      return CreateNetwork(state, TriBandRadios(), InfoOf(ssid), "br0", 1000);
    };
    engine_->Make<int>(rule, [this, rule](const Result<int>& result) {
      ++answered_;
      const auto change = rule(expected_);
      if (result.Succeeded()) {
        ++succeeded_;
        ASSERT_TRUE(change.Succeeded());
        EXPECT_EQ(result.Value(), change.Value().answer);
        expected_ = change.Value().state;
      } else if (result.Why().code == ErrorCode::RadioFailed) {
        // The ID stays used.
        ++expected_.nextNetworkId;
      } else if (result.Why().code != ErrorCode::StorageFailed) {
        ++refused_;
        ASSERT_FALSE(change.Succeeded());
        EXPECT_EQ(result.Why(), change.Why());
      }
    });
  }
  void AskForDeletion(int id) {
    Follow(engine_->AllRadios(), [id](const State& state) { return DeleteNetwork(state, id); });
  }
  void AskForStation(RadioFrequency radio, const std::string& essid) {
    Follow({radio}, [setting = Joined(radio, essid)](const State& state) {
      return ModifyStation(state, TriBandRadios(), setting);
    });
  }
  void Follow(const Engine::Radios& radios, const Engine::Rule<void>& rule) {
    engine_->Make<void>(radios, rule, [this, rule](const Result<void>& result) {
      ++answered_;
      const auto change = rule(expected_);
      if (result.Succeeded()) {
        ++succeeded_;
        ASSERT_TRUE(change.Succeeded());
        expected_ = change.Value().state;
      } else if (result.Why().code == ErrorCode::RadioFailed ||
                 result.Why().code == ErrorCode::StorageFailed) {
        ++failed_;
      } else {
        ++refused_;
        ASSERT_FALSE(change.Succeeded());
        EXPECT_EQ(result.Why(), change.Why());
      }
    });
  }

  /// Lets some radios be done, and now and then has the disk take its time until a later request.
  void FinishSome() {
    if (Below(3) == 0) {
      store_.Release();
    }
    if (Below(6) == 0) {
      store_.Hold();
    }
    for (int i = Below(6); i > 0 && driver_.IsBusy(); --i) {
      const auto busy = driver_.BusyRadios();
      driver_.Finish(*std::next(busy.begin(), Below(static_cast<int>(busy.size()))));
    }
  }

  void ExpectSettled() {
    store_.Release();
    driver_.FinishAll();
    EXPECT_EQ(answered_, asked_);
    EXPECT_EQ(engine_->GetState(), expected_);
  }

  std::mt19937 random_;
  State expected_;
  int asked_ = 0;
  int answered_ = 0;
  int succeeded_ = 0;
  int refused_ = 0;
  int failed_ = 0;
  int askedDuringSaves_ = 0;
};

TEST_F(RequestSequences, AnswerEachOnceAndEndWhereTheAnswersSay) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Seed(seed);
    for (int request = 0; request < 200; ++request) {
      Ask();
      FinishSome();
      ASSERT_FALSE(HasFailure());
    }
    ExpectSettled();
    EXPECT_EQ(store_.LastSaved(), expected_);
    EXPECT_EQ(LiveNow(), LiveOf(expected_));
    ASSERT_FALSE(HasFailure());
  }
  // The choice of requests is such that all of this comes up.
  EXPECT_GT(succeeded_, 1000);
  EXPECT_GT(refused_, 200);
  EXPECT_GT(askedDuringSaves_, 200);
  EXPECT_EQ(failed_, 0);
}

TEST_F(RequestSequences, KeepNothingOfWhatStoreOrRadiosFailed) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Seed(seed);
    for (int request = 0; request < 200; ++request) {
      switch (Below(10)) {
        case 0:
          // A save that takes a change back must not fail here: then store and state are at odds.
          if (!driver_.IsBusy()) {
            store_.FailNext("the disk is full");
          }
          break;
        case 1:
          driver_.FailNext(AnyRadio(), "the radio is gone");
          break;
        default:
          break;
      }
      Ask();
      store_.FailNoMore();
      FinishSome();
      ASSERT_FALSE(HasFailure());
    }
    ExpectSettled();
    driver_.FailNoMore();
    ++asked_;
    engine_->Restart(ApplyMode::WhatDiffers, [this](const Result<void>& restarted) {
      ++answered_;
      EXPECT_TRUE(restarted.Succeeded());
    });
    ExpectSettled();
    EXPECT_EQ(LiveNow(), LiveOf(expected_));
    ASSERT_FALSE(HasFailure());
  }
  EXPECT_GT(succeeded_, 1000);
  EXPECT_GT(refused_, 200);
  EXPECT_GT(askedDuringSaves_, 200);
  EXPECT_GT(failed_, 50);
}

}  // namespace

}  // namespace TALO::Wifid
