#include "unit/daemon/model/random_requests.h"

#include "daemon/model/country.h"
#include "daemon/model/plan.h"
#include "daemon/model/state_check.h"
#include "support/routers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace TALO::Wifid {

namespace {

constexpr unsigned kSequences = 100;
constexpr int kRequests = 200;

Capabilities RouterOf(unsigned seed) {
  switch (seed % 4) {
    case 0:
      return TriBandRouter(SupportedModel::Alder100);
    case 1:
      return DualBandRouter(SupportedModel::Cedar300);
    case 2:
      return TriBandRouter(SupportedModel::Birch200);
    default:
      return LowBandRouter();
  }
}

/// Radios that find their own channel and radios that are off, here and there.
State StateOf(const Capabilities& capabilities, unsigned seed) {
  State state = MakeFirstState(capabilities, CountryCode::DE);
  state.radios.front().channel = 13;
  if (seed % 3 == 0) {
    state.radios[seed % state.radios.size()].channel = kAutomaticChannel;
  }
  state.radios.back().enable = seed % 5 != 0;
  return state;
}

template <typename T, typename Member>
auto All(const std::vector<T>& records, Member member) {
  std::vector<std::decay_t<decltype(records.front().*member)>> values;
  for (const T& record : records) {
    values.push_back(record.*member);
  }
  return values;
}

template <typename T>
bool IsAscending(const std::vector<T>& values) {
  return std::ranges::adjacent_find(values, std::greater_equal<>()) == values.end();
}

template <typename T>
bool AreAllDifferent(std::vector<T> values) {
  std::ranges::sort(values);
  return IsAscending(values);
}

void ExpectSoundNetworks(const State& state, const Capabilities& capabilities) {
  const std::vector<RadioFrequency> radios = All(capabilities.radios, &RadioCapability::radio);
  for (const NetworkState& network : state.networks) {
    EXPECT_LE(network.slot, 16);
    const std::vector<RadioFrequency> own = All(network.radioPassphrases, &RadioPassphrase::radio);
    EXPECT_TRUE(std::ranges::includes(radios, own));
  }
}

void ExpectSoundIDs(const State& before, const State& after) {
  for (const auto& [had, has, nextThen, nextNow] :
       {std::tuple{All(before.networks, &NetworkState::id), All(after.networks, &NetworkState::id),
                   before.nextNetworkId, after.nextNetworkId},
        std::tuple{All(before.macFilterProfiles, &Wifi::MACFilterProfile::id),
                   All(after.macFilterProfiles, &Wifi::MACFilterProfile::id), before.nextMACFilterProfileId,
                   after.nextMACFilterProfileId}}) {
    EXPECT_GE(nextNow, nextThen);
    for (const int id : has) {
      EXPECT_TRUE(std::ranges::binary_search(had, id) || id >= nextThen) << "used again: " << id;
    }
  }
}

void ExpectSoundRadios(const State& state, const Capabilities& capabilities) {
  ASSERT_EQ(AdaptToRadios(state, capabilities), state);
  for (std::size_t i = 0; i < state.radios.size(); ++i) {
    const RadioState& radio = state.radios[i];
    if (radio.channel != kAutomaticChannel) {
      EXPECT_THAT(UsableChannels(state.country, capabilities.radios[i]), testing::Contains(radio.channel));
    }
  }
}

void ExpectSoundPlan(const State& state, const Capabilities& capabilities) {
  std::vector<std::string> interfaces;
  std::vector<Wifi::Util::MACAddress> bssids;
  for (const RadioPlan& radio : MakePlan(state, capabilities, {})) {
    for (const BSSPlan& bss : radio.bsss) {
      interfaces.push_back(bss.interface);
      bssids.push_back(bss.bssid);
    }
    if (radio.station) {
      interfaces.push_back(radio.station->interface);
    }
    if (radio.backhaulStation) {
      interfaces.push_back(radio.backhaulStation->interface);
    }
  }
  EXPECT_TRUE(AreAllDifferent(interfaces));
  EXPECT_TRUE(AreAllDifferent(bssids));
}

void ExpectSoundSentence(const std::string& sentence) {
  ASSERT_FALSE(sentence.empty());
  EXPECT_TRUE(sentence.front() >= 'a' && sentence.front() <= 'z') << sentence;
  EXPECT_NE(sentence.back(), '.') << sentence;
  EXPECT_TRUE(std::ranges::all_of(sentence, [](char c) { return c >= ' ' && c <= '~'; })) << sentence;
  EXPECT_EQ(sentence.find(kSecret), std::string::npos) << sentence;
}

/// How often each kind succeeded and was refused.
using Tally = std::map<std::string, std::pair<int, int>>;

void RunSequence(unsigned seed, Tally& tally) {
  const Capabilities capabilities = RouterOf(seed);
  State state = StateOf(capabilities, seed);
  Random random(seed);
  for (int i = 0; i < kRequests; ++i) {
    const RequestKind kind = random.OneOf(RequestKinds());
    SCOPED_TRACE(testing::Message() << "seed " << seed << ", request " << i << ": " << kind.name);
    const State before = state;
    const Result<State> answer = kind.ask(state, capabilities, random);
    ASSERT_EQ(state, before);
    if (!answer.Succeeded()) {
      ++tally[kind.name].second;
      ExpectSoundSentence(answer.Why().sentence);
    } else {
      ++tally[kind.name].first;
      state = answer.Value();
      const auto check = CheckState(state);
      EXPECT_TRUE(check.Succeeded()) << check.Why().sentence;
      ExpectSoundNetworks(state, capabilities);
      ExpectSoundIDs(before, state);
      ExpectSoundRadios(state, capabilities);
      ExpectSoundPlan(state, capabilities);
    }
    if (testing::Test::HasFailure()) {
      return;
    }
  }
}

TEST(RandomRequests, KeepTheStateSoundWhateverTheirOrder) {
  Tally tally;
  for (unsigned seed = 1; seed <= kSequences; ++seed) {
    RunSequence(seed, tally);
    ASSERT_FALSE(HasFailure());
  }
  // Otherwise the sequences would prove less than they seem to.
  for (const RequestKind& kind : RequestKinds()) {
    EXPECT_GT(tally[kind.name].first, 20) << kind.name;
    EXPECT_GT(tally[kind.name].second, 20) << kind.name;
  }
}

}  // namespace

}  // namespace TALO::Wifid
