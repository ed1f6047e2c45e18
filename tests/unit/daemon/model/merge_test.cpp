#include "daemon/model/merge.h"

#include "support/print_model.h"
#include "support/routers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <iterator>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {
namespace {

using enum RadioFrequency;
using Wifi::MACFilterAction;

const Wifi::Util::MACAddress kPhone("02:00:00:00:aa:01");

/// Networks 1 to 3 and profiles 1 to 3, with something in every list.
State FullState() {
  State state = HomeState(TriBandRouter());
  state.networks.push_back(MakeNetwork(3, "Things"));
  state.nextNetworkId = 4;
  state.networks[0].macFilterProfileId = 1;
  state.networks[0].radioPassphrases = {{Band2_4GHz, "one for this radio", 2'000}};
  state.networks[0].schedules = {{Band2_4GHz, ScheduleMode::ValidFor, 5'000, {}},
                                 {Band5GHz_2, ScheduleMode::Customized, 0, {{0, 60}}}};
  state.macFilterProfiles = {{1, "kids", MACFilterAction::Deny, {{"phone", kPhone}}},
                             {2, "guests", MACFilterAction::Allow, {}},
                             {3, "things", MACFilterAction::Allow, {}}};
  state.nextMACFilterProfileId = 4;
  state.macFilterGlobal = {{{"phone", kPhone}}, true, 100};
  state.backhaul = {true, "mesh", "mesh passphrase"};
  state.backhaulSTA = {false, "parent", "parent passphrase"};
  state.mesh = {{SupportedModel::Alder100}, false};
  return state;
}

struct Kind {
  std::string name;
  std::set<std::string> touches;  ///< two changes that touch the same thing are not told apart
  std::function<void(State&)> make;
};

std::vector<Kind> Kinds() {
  return {
      {"a network is created",
       {"new network"},
       [](State& s) { s.networks.push_back(MakeNetwork(s.nextNetworkId++, "New")); }},
      {"a network is deleted",
       {"network 2", "filter of 2"},
       [](State& s) { std::erase_if(s.networks, [](const NetworkState& n) { return n.id == 2; }); }},
      {"a network is deactivated", {"activated"}, [](State& s) { s.networks[0].activated = false; }},
      {"a network moves to another bridge", {"bridge"}, [](State& s) { s.networks[0].bridge = "br-guest"; }},
      {"a passphrase is rotated on one radio",
       {"passphrase on Band5GHz_1"},
       [](State& s) {
         s.networks[0].radioPassphrases.push_back({Band5GHz_1, "rotated", 3'000});
       }},
      {"a passphrase of a radio is rotated",
       {"passphrase on Band2_4GHz"},
       [](State& s) {
         s.networks[0].radioPassphrases[0] = {Band2_4GHz, "rotated", 3'000};
       }},
      {"a passphrase is rotated on all radios",
       {"passphrase", "passphrase on Band2_4GHz", "passphrase on Band5GHz_1"},
       [](State& s) {
         s.networks[0].passphrase = "rotated";
         s.networks[0].passphraseChangedAt = 3'000;
         s.networks[0].radioPassphrases.clear();
       }},
      {"a schedule is added",
       {"schedule on Band5GHz_1"},
       [](State& s) {
         auto& schedules = s.networks[0].schedules;
         schedules.insert(schedules.begin() + 1, {Band5GHz_1, ScheduleMode::ValidFor, 9'000, {}});
       }},
      {"a schedule is changed",
       {"schedule on Band2_4GHz"},
       [](State& s) {
         s.networks[0].schedules[0] = {Band2_4GHz, ScheduleMode::Customized, 0, {{5, 6}}};
       }},
      {"a schedule is taken away",
       {"schedule on Band5GHz_2"},
       [](State& s) {
         std::erase_if(s.networks[0].schedules,
                       [](const ScheduleState& schedule) { return schedule.radio == Band5GHz_2; });
       }},
      {"a network gets another profile",
       {"filter of 1"},
       [](State& s) { s.networks[0].macFilterProfileId = 3; }},
      {"a profile is created",
       {"new profile"},
       [](State& s) {
         s.macFilterProfiles.push_back({s.nextMACFilterProfileId++, "new", MACFilterAction::Deny, {}});
       }},
      {"a profile is created for all networks",
       {"new profile", "filter of 1", "filter of 2", "filter of 3", "new network"},
       [](State& s) {
         for (NetworkState& network : s.networks) {
           network.macFilterProfileId = s.nextMACFilterProfileId;
         }
         s.macFilterProfiles.push_back({s.nextMACFilterProfileId++, "all", MACFilterAction::Deny, {}});
       }},
      {"a profile is changed",
       {"profile 3"},
       [](State& s) {
         std::ranges::find(s.macFilterProfiles, 3, &Wifi::MACFilterProfile::id)->name = "renamed";
       }},
      {"a profile in use is deleted",
       {"profile 1", "filter of 1"},
       [](State& s) {
         std::erase_if(s.macFilterProfiles, [](const Wifi::MACFilterProfile& p) { return p.id == 1; });
         s.networks[0].macFilterProfileId = -1;
       }},
      {"a profile is deleted",
       {"profile 2"},
       [](State& s) {
         std::erase_if(s.macFilterProfiles, [](const Wifi::MACFilterProfile& p) { return p.id == 2; });
       }},
      {"the broadcast limit changes", {"limit"}, [](State& s) { s.macFilterGlobal.maximumBroadcast = 7; }},
      {"a radio changes channel", {"radio 2.4"}, [](State& s) { s.radios[0].channel = 11; }},
      {"another radio is switched off", {"radio 5"}, [](State& s) { s.radios[2].enable = false; }},
      {"the country changes",
       {"country", "radio 2.4", "radio 5"},
       [](State& s) {
         s.country = CountryCode::US;
         s.radios[0].channel = 1;
         s.radios[2].channel = 149;
       }},
      {"a station is set", {"station 2.4"}, [](State& s) { s.stations[0].essid = "up"; }},
      {"another station is set",
       {"station 5"},
       [](State& s) {
         s.stations[1] = {true, "up", "", "upstream key", {}, SecurityMode::PersonalWPA2, Band5GHz_1};
       }},
      {"the backhaul changes",
       {"backhaul"},
       [](State& s) {
         s.backhaul = {true, "mesh 2", "mesh key 2"};
       }},
      {"the backhaul station changes", {"backhaul station"}, [](State& s) { s.backhaulSTA.enable = true; }},
      {"the scan type changes", {"scan"}, [](State& s) { s.scanType = ScanType::BestAP; }},
      {"the mesh changes",
       {"mesh"},
       [](State& s) {
         s.mesh = {{SupportedModel::Dune40}, true};
       }},
      {"the backhaul is swapped", {"swap"}, [](State& s) { s.backhaulSwapped = true; }},
      {"the context changes", {"context"}, [](State& s) { s.context = "repeater"; }},
  };
}

State After(const State& state, const Kind& kind) {
  State after = state;
  kind.make(after);
  return after;
}

State WithCountersOf(State state, const State& other) {
  state.nextNetworkId = other.nextNetworkId;
  state.nextMACFilterProfileId = other.nextMACFilterProfileId;
  return state;
}

bool AreApart(const Kind& a, const Kind& b) {
  std::vector<std::string> both;
  std::ranges::set_intersection(a.touches, b.touches, std::back_inserter(both));
  return both.empty();
}

TEST(Revert, GivesTheStateBeforeWhereNothingElseChanged) {
  const State before = FullState();
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const State after = After(before, kind);
    ASSERT_NE(after, before);
    EXPECT_EQ(Revert(after, before, after), WithCountersOf(before, after));
  }
}

TEST(Revert, LeavesExactlyTheOtherChangeThatWasMadeSince) {
  const State before = FullState();
  int pairs = 0;
  for (const Kind& undone : Kinds()) {
    for (const Kind& other : Kinds()) {
      if (!AreApart(undone, other)) {
        continue;
      }
      SCOPED_TRACE(undone.name + ", then " + other.name);
      const State after = After(before, undone);
      const State both = After(after, other);
      ASSERT_NE(both, after);
      EXPECT_EQ(Revert(both, before, after), WithCountersOf(After(before, other), both));
      ++pairs;
    }
  }
  EXPECT_GE(pairs, 600);
}

TEST(Revert, KeepsTheStateWhereTheChangeChangedNothing) {
  const State before = FullState();
  for (const Kind& kind : Kinds()) {
    SCOPED_TRACE(kind.name);
    const State current = After(before, kind);
    EXPECT_EQ(Revert(current, before, before), current);
  }
}

TEST(Revert, NeverGivesAnIdAgain) {
  const State before = FullState();
  State after = before;
  after.networks.push_back(MakeNetwork(4, "New"));
  after.nextNetworkId = 5;
  after.macFilterProfiles.push_back({4, "new", MACFilterAction::Deny, {}});
  after.nextMACFilterProfileId = 5;
  State current = after;
  current.networks.push_back(MakeNetwork(5, "Newer"));
  current.nextNetworkId = 6;

  State expected = before;
  expected.networks.push_back(MakeNetwork(5, "Newer"));
  expected.nextNetworkId = 6;
  expected.nextMACFilterProfileId = 5;
  EXPECT_EQ(Revert(current, before, after), expected);
}

TEST(Revert, PutsWhatWasDeletedBackInItsPlace) {
  const State before = FullState();
  struct Row {
    std::vector<std::size_t> deleted;  ///< by the change
    std::vector<std::size_t> since;    ///< by another, counted in what is left
    std::vector<int> ids;              ///< after the change is undone
  };
  const std::vector<Row> rows = {
      {{0}, {}, {1, 2, 3}},       {{1}, {}, {1, 2, 3}}, {{2}, {}, {1, 2, 3}},
      {{0, 0, 0}, {}, {1, 2, 3}}, {{0}, {0}, {1, 3}},   {{1}, {0}, {2, 3}},
      {{1}, {1}, {1, 2}},         {{2}, {0, 0}, {3}},   {{0, 1}, {0}, {1, 3}},
  };
  const auto deleteAt = [](State& state, std::size_t i) {
    state.networks.erase(state.networks.begin() + static_cast<std::ptrdiff_t>(i));
    state.macFilterProfiles.erase(state.macFilterProfiles.begin() + static_cast<std::ptrdiff_t>(i));
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(testing::PrintToString(row.deleted) + testing::PrintToString(row.since));
    State after = before;
    for (const std::size_t i : row.deleted) {
      deleteAt(after, i);
    }
    State current = after;
    for (const std::size_t i : row.since) {
      deleteAt(current, i);
    }
    State expected = before;
    std::erase_if(expected.networks, [&](const NetworkState& network) {
      return std::ranges::find(row.ids, network.id) == row.ids.end();
    });
    std::erase_if(expected.macFilterProfiles, [&](const Wifi::MACFilterProfile& profile) {
      return std::ranges::find(row.ids, profile.id) == row.ids.end();
    });
    EXPECT_EQ(Revert(current, before, after), expected);
  }
}

TEST(Revert, PutsASchedulesRadioBackBetweenTheOthers) {
  State before = FullState();
  const ScheduleState low{Band2_4GHz, ScheduleMode::ValidFor, 1, {}};
  const ScheduleState middle{Band5GHz_1, ScheduleMode::ValidFor, 2, {}};
  const ScheduleState high{Band5GHz_2, ScheduleMode::ValidFor, 3, {}};
  before.networks[0].schedules = {middle};
  State after = before;
  after.networks[0].schedules = {};
  State current = after;
  current.networks[0].schedules = {low, high};
  State expected = before;
  expected.networks[0].schedules = {low, middle, high};
  EXPECT_EQ(Revert(current, before, after), expected);
}

TEST(Revert, TakesAwayWhatTheChangeMadeWhateverWasDoneToItSince) {
  const State before = FullState();
  State after = before;
  after.networks.push_back(MakeNetwork(4, "New"));
  after.nextNetworkId = 5;
  after.networks[1].schedules = {{Band2_4GHz, ScheduleMode::ValidFor, 1, {}}};
  State current = after;
  current.networks[3].hidden = true;
  current.networks[1].schedules[0].validUntil = 2;
  EXPECT_EQ(Revert(current, before, after), WithCountersOf(before, after));
}

TEST(Revert, LeavesAwayWhatAnotherChangeTookAway) {
  const State before = FullState();
  State after = before;
  after.networks[1].activated = false;
  after.networks[0].schedules[0].validUntil = 1;
  after.macFilterProfiles[2].name = "renamed";
  State current = after;
  current.networks.erase(current.networks.begin() + 1);
  current.networks[0].schedules.erase(current.networks[0].schedules.begin());
  current.macFilterProfiles.pop_back();

  State expected = before;
  expected.networks.erase(expected.networks.begin() + 1);
  expected.networks[0].schedules.erase(expected.networks[0].schedules.begin());
  expected.macFilterProfiles.pop_back();
  EXPECT_EQ(Revert(current, before, after), expected);
}

TEST(Revert, BringsBackWhatBothTouched) {
  const State before = FullState();
  State after = before;
  after.country = CountryCode::US;
  after.networks[0].passphrase = "first";
  after.networks[0].schedules.pop_back();
  after.radios[0].channel = 1;
  State current = after;
  current.country = CountryCode::FR;
  current.networks[0].passphrase = "second";
  current.networks[0].schedules.push_back({Band5GHz_2, ScheduleMode::ValidFor, 1, {}});
  current.radios[0].channel = 11;
  EXPECT_EQ(Revert(current, before, after), before);
}

TEST(Revert, TellsTheMembersOfANetworkApart) {
  const State before = FullState();
  State after = before;
  after.networks[0].passphrase = "rotated";
  after.networks[0].passphraseChangedAt = 3'000;
  State current = after;
  current.networks[0].activated = false;
  current.networks[0].bridge = "br-guest";
  State expected = before;
  expected.networks[0].activated = false;
  expected.networks[0].bridge = "br-guest";
  EXPECT_EQ(Revert(current, before, after), expected);
}

TEST(Revert, TakesARadioAsAWhole) {
  const State before = FullState();
  State after = before;
  after.radios[0].channel = 1;
  State current = after;
  current.radios[0].transmitPower = 50;
  current.radios[1].transmitPower = 50;
  State expected = before;
  expected.radios[1].transmitPower = 50;
  EXPECT_EQ(Revert(current, before, after), expected);
}

}  // namespace
}  // namespace TALO::Wifid
