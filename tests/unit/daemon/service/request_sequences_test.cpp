// Long sequences of random requests, good and bad ones: what must hold after each.

#include "daemon/model/first_state.h"
#include "daemon/radio/simulated/simulated_driver.h"
#include "daemon/service/engine.h"
#include "support/fake_doors.h"

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

/// Draws requests: SSIDs and IDs of a small choice, so that many are in use, and now and then a bad value.
class RandomRequests {
 public:
  explicit RandomRequests(unsigned seed) : random_(seed) {}

  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }

  Wifi::NetworkCreateInfo Info() {
    const std::vector<std::string> bad = {"", std::string(33, 's')};
    Wifi::NetworkCreateInfo info = InfoOf("Net " + std::to_string(Below(24)));
    switch (Below(12)) {
      case 0:
        info.ssid = bad[static_cast<std::size_t>(Below(2))];
        break;
      case 1:
        info.networkName = bad[static_cast<std::size_t>(Below(2))];
        break;
      case 2:
        info.passphrase = "short";
        break;
      case 3:
        info.ssid = std::string(static_cast<std::size_t>(1 + Below(32)), static_cast<char>(Below(256)));
        break;
      default:
        break;
    }
    return info;
  }

 private:
  std::mt19937 random_;
};

class RequestSequences : public testing::Test {
 protected:
  /// What holds of every state, whatever was asked.
  static void ExpectSound(const State& state, int idsGivenAway) {
    std::set<std::string> ssids;
    std::set<int> slots;
    int lastId = 0;
    for (const NetworkState& network : state.networks) {
      EXPECT_TRUE(ssids.insert(network.ssid).second);
      EXPECT_TRUE(slots.insert(network.slot).second);
      EXPECT_GE(network.slot, 1);
      EXPECT_LE(network.slot, 16);
      EXPECT_GT(network.id, lastId);
      lastId = network.id;
    }
    EXPECT_LE(lastId, idsGivenAway);
    EXPECT_EQ(state.nextNetworkId, idsGivenAway + 1);
    EXPECT_LE(state.networks.size(), 16U);
  }
};

TEST_F(RequestSequences, KeepTheStateSoundAndTheRadiosAsItWants) {
  int succeeded = 0;
  int refused = 0;
  bool wasFull = false;
  for (unsigned seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomRequests requests(seed);
    Journal journal;
    FakeStore store(journal);
    SimulatedDriver driver(static_cast<SupportedModel>(seed % 4));
    const FakeClock clock;
    Log log(Severity::Critical);
    Engine engine({store, driver, clock, log}, MakeFirstState(driver.GetCapabilities(), CountryCode::DE),
                  "br0");
    engine.Start([](const Result<void>& started) { EXPECT_TRUE(started.Succeeded()); });
    const auto now = [&engine] { return engine.Ask([](const Picture& picture) { return picture.state; }); };

    State before = now();
    int idsGivenAway = 0;
    std::set<int> deleted;
    // Even seeds ask for more new networks, so that the radios get full.
    const int creations = seed % 2 == 0 ? 9 : 5;
    for (int request = 0; request < 200; ++request) {
      bool success = false;
      int answers = 0;
      if (requests.Below(10) < creations) {
        engine.CreateNetwork(requests.Info(), [&](const Result<int>& result) {
          ++answers;
          success = result.Succeeded();
          if (success) {
            EXPECT_EQ(result.Value(), ++idsGivenAway);
          }
        });
      } else {
        const int id = requests.Below(idsGivenAway + 3) - 1;
        engine.DeleteNetwork(id, [&](const Result<void>& result) {
          ++answers;
          success = result.Succeeded();
          if (success) {
            EXPECT_TRUE(deleted.insert(id).second) << id << " was deleted twice";
          }
        });
      }
      ASSERT_EQ(answers, 1);
      const State after = now();
      ExpectSound(after, idsGivenAway);
      if (success) {
        ++succeeded;
        EXPECT_NE(after, before);
        ASSERT_TRUE(store.Saved().has_value());
        EXPECT_EQ(*store.Saved(), after);
      } else {
        ++refused;
        EXPECT_EQ(after, before);
      }
      EXPECT_EQ(WithoutUtilisation(driver.GetLive()),
                LiveAsPlanned(MakePlan(after, driver.GetCapabilities())));
      wasFull = wasFull || after.networks.size() == 16;
      before = after;
      ASSERT_FALSE(HasFailure());
    }
  }
  // The choice of requests is such that all of this comes up.
  EXPECT_GT(succeeded, 1000);
  EXPECT_GT(refused, 1000);
  EXPECT_TRUE(wasFull);
}

TEST_F(RequestSequences, ChangeNothingWhereStoreOrRadiosFail) {
  int failed = 0;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    RandomRequests requests(seed);
    Journal journal;
    FakeStore store(journal);
    FakeDriver driver(journal, TriBandRadios());
    const FakeClock clock;
    Log log(Severity::Emergency);
    Engine engine({store, driver, clock, log}, MakeState(1, {}), "br0");
    engine.Start([](const Result<void>& started) { EXPECT_TRUE(started.Succeeded()); });
    ASSERT_TRUE(store.Save(MakeState(1, {})).Succeeded());

    State expected = MakeState(1, {});
    for (int request = 0; request < 200; ++request) {
      const std::string ssid = "Request " + std::to_string(request);
      const bool create = expected.networks.size() < 16 && requests.Below(2) == 0;
      const int id = expected.networks.empty() ? -1 : expected.networks.back().id;
      const int fault = create || id > 0 ? requests.Below(3) : 0;
      if (fault == 1) {
        store.FailNext("the disk is full");
      } else if (fault == 2) {
        driver.FailNext("wlan1 does not come up");
      }
      ErrorCode code{};
      const auto note = [&code](const auto& result) {
        code = result.Succeeded() ? ErrorCode{} : result.Why().code;
      };
      if (create) {
        engine.CreateNetwork(InfoOf(ssid), note);
      } else {
        engine.DeleteNetwork(id, note);
      }
      if (fault != 0) {
        EXPECT_EQ(code, fault == 1 ? ErrorCode::StorageFailed : ErrorCode::RadioFailed);
        ++failed;
      } else if (create || id > 0) {
        EXPECT_EQ(code, ErrorCode{});
        auto changed = create
                           ? CreateNetwork(expected, TriBandRadios(), InfoOf(ssid), "br0", 1000).Value().state
                           : DeleteNetwork(expected, id).Value().state;
        expected = std::move(changed);
      }
      EXPECT_EQ(engine.Ask([](const Picture& picture) { return picture.state; }), expected);
      EXPECT_EQ(*store.Saved(), expected);
      EXPECT_EQ(driver.GetLive(), LiveAsPlanned(MakePlan(expected, TriBandRadios())));
      ASSERT_FALSE(HasFailure());
    }
  }
  EXPECT_GT(failed, 1000);
}

}  // namespace

}  // namespace TALO::Wifid
