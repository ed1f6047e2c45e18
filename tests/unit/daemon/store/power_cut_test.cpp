// The power goes at each call of a save, whatever the save is for.

#include "daemon/store/state_file.h"
#include "support/print_model.h"
#include "support/routers.h"
#include "support/simulated_disk.h"
#include "unit/daemon/model/random_requests.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Files = SimulatedDisk::Files;

constexpr std::size_t kChangesOfAKind = 3;

struct MadeChange {
  State before;
  State after;
};

/// Some changes of every kind that there is, each of a state that others have led to.
std::map<std::string, std::vector<MadeChange>> MakeChanges() {
  const Capabilities capabilities = TriBandRouter();
  Random random(1);
  State state = HomeState(capabilities);
  std::map<std::string, std::vector<MadeChange>> changes;
  for (int request = 0; request < 6000; ++request) {
    const RequestKind kind = random.OneOf(RequestKinds());
    const auto after = kind.ask(state, capabilities, random);
    if (after.Succeeded() && after.Value() != state) {
      if (changes[kind.name].size() < kChangesOfAKind) {
        changes[kind.name].push_back({state, after.Value()});
      }
      state = after.Value();
    }
  }
  return changes;
}

/// What is on the disk after these saves.
Files Saved(const std::vector<State>& states) {
  SimulatedDisk disk;
  StateFile file(disk, "/state");
  for (const State& state : states) {
    EXPECT_TRUE(file.Save(state).Succeeded());
  }
  return disk.Now();
}

/// What a daemon that starts there loads; a failure of the test where it has anything to complain of.
std::optional<State> LoadFrom(const Files& files) {
  SimulatedDisk disk(files);
  StateFile file(disk, "/state");
  const StoredState loaded = ValueOf(file.Load());
  EXPECT_EQ(loaded.trouble, "");
  return loaded.state;
}

/// Saves `after` on a disk with these files once for each call of a save, with the power going before it, and
/// expects `before` or `after` in everything that this can leave; `after` once the save has succeeded.
void CutEverywhere(const Files& files, const std::optional<State>& before, const State& after) {
  std::set<bool> foundAfter;
  bool saved = false;
  int cuts = 0;
  for (; !saved; ++cuts) {
    SCOPED_TRACE("cut before call " + std::to_string(cuts));
    SimulatedDisk disk(files);
    StateFile file(disk, "/state");
    disk.CutAfter(cuts);
    try {
      saved = file.Save(after).Succeeded();
      ASSERT_TRUE(saved);
    } catch (const PowerCut&) {
    }
    for (const Files& left : disk.AfterPowerCut()) {
      const std::optional<State> found = LoadFrom(left);
      foundAfter.insert(found == after);
      ASSERT_TRUE(found == after || (!saved && found == before));
    }
  }
  EXPECT_EQ(foundAfter, (std::set<bool>{false, true}));
  EXPECT_GE(cuts, 9);
}

TEST(APowerCut, LeavesTheOldOrTheNewStateWhateverWasChanged) {
  const auto changes = MakeChanges();
  EXPECT_EQ(changes.size(), RequestKinds().size());
  for (const auto& [kind, made] : changes) {
    SCOPED_TRACE(kind);
    EXPECT_EQ(made.size(), kChangesOfAKind);
    for (const MadeChange& change : made) {
      CutEverywhere(Saved({HomeState(TriBandRouter()), change.before}), change.before, change.after);
      ASSERT_FALSE(HasFailure());
    }
  }
}

TEST(APowerCut, LeavesNothingOrTheFirstStateThatIsSaved) {
  CutEverywhere({}, std::nullopt, HomeState(TriBandRouter()));
}

TEST(APowerCut, LeavesTheOldOrTheNewStateAlsoBehindASaveThatWasCutOff) {
  const State before = HomeState(TriBandRouter());
  const State between = StateWithNetworks(TriBandRouter(), 3);
  const State after = StateWithNetworks(TriBandRouter(), 4);
  for (int cut = 0; cut < 9; ++cut) {
    SCOPED_TRACE(cut);
    SimulatedDisk disk(Saved({StateWithNetworks(TriBandRouter(), 1), before}));
    StateFile file(disk, "/state");
    disk.CutAfter(cut);
    EXPECT_THROW(static_cast<void>(file.Save(between)), PowerCut);
    for (const Files& left : disk.AfterPowerCut()) {
      CutEverywhere(left, LoadFrom(left), after);
      ASSERT_FALSE(HasFailure());
    }
  }
}

// Not the power alone, the disk too: what a cut left of state.json cannot be read.
TEST(APowerCut, LeavesAStateThatWasSavedEvenWhereTheLastOneIsDamaged) {
  const State first = StateWithNetworks(TriBandRouter(), 1);
  const State before = HomeState(TriBandRouter());
  const State after = StateWithNetworks(TriBandRouter(), 3);
  for (int cut = 0; cut < 9; ++cut) {
    SCOPED_TRACE(cut);
    SimulatedDisk disk(Saved({first, before}));
    StateFile file(disk, "/state");
    disk.CutAfter(cut);
    EXPECT_THROW(static_cast<void>(file.Save(after)), PowerCut);
    for (Files left : disk.AfterPowerCut()) {
      left.at("state.json").resize(100);
      SimulatedDisk damaged(left);
      const StoredState found = ValueOf(StateFile(damaged, "/state").Load());
      EXPECT_NE(found.trouble, "");
      EXPECT_TRUE(found.state == first || found.state == before);
    }
  }
}

}  // namespace

}  // namespace TALO::Wifid
