#include "daemon/store/state_file.h"

#include "support/full_state.h"
#include "support/print_model.h"
#include "support/routers.h"
#include "support/simulated_disk.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <set>
#include <string>

namespace TALO::Wifid {

namespace {

/// A state file on a simulated disk, in the directory "/state".
class StateFiles : public testing::Test {
 protected:
  void StartWith(const SimulatedDisk::Files& files) {
    disk_ = SimulatedDisk(files);
    file_ = StateFile(disk_, "/state");
  }
  void Save(const State& state) {
    const auto saved = file_.Save(state);
    ASSERT_TRUE(saved.Succeeded()) << saved.Why().sentence;
  }
  /// Loads into a new state file, as the next daemon does.
  StoredState LoadAgain() {
    file_ = StateFile(disk_, "/state");
    return ValueOf(file_.Load());
  }
  void ExpectLoads(const State& state) {
    const StoredState loaded = LoadAgain();
    EXPECT_EQ(loaded.state, state);
    EXPECT_EQ(loaded.trouble, "");
  }
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& [name, text] : disk_.Now()) {
      names.insert(name);
    }
    return names;
  }
  std::string SentenceOfSave(const State& state) { return WhyNot(file_.Save(state)).sentence; }

  const State before_ = HomeState(TriBandRouter());
  const State other_ = StateWithNetworks(TriBandRouter(), 3);
  SimulatedDisk disk_;
  StateFile file_{disk_, "/state"};
};

TEST_F(StateFiles, LoadNothingWhereNothingWasSaved) {
  const StoredState loaded = LoadAgain();
  EXPECT_EQ(loaded.state, std::nullopt);
  EXPECT_EQ(loaded.trouble, "");
  EXPECT_EQ(Names(), std::set<std::string>());
}

TEST_F(StateFiles, LoadWhatWasSavedLast) {
  Save(before_);
  ExpectLoads(before_);
  Save(FullState());
  ExpectLoads(FullState());
  EXPECT_EQ(disk_.Now().at("state.json"), FullText());
}

TEST_F(StateFiles, KeepTheStateBeforeTheLastChange) {
  Save(before_);
  EXPECT_EQ(Names(), (std::set<std::string>{"state.json"}));
  const std::string first = disk_.Now().at("state.json");
  Save(other_);
  const std::string second = disk_.Now().at("state.json");
  EXPECT_EQ(disk_.Now().at("state.json.last"), first);
  Save(FullState());
  EXPECT_EQ(disk_.Now(), (SimulatedDisk::Files{{"state.json", FullText()}, {"state.json.last", second}}));
}

TEST_F(StateFiles, AreOnTheDiskOnceTheyAreSaved) {
  Save(before_);
  Save(FullState());
  EXPECT_EQ(disk_.AfterPowerCut(), (std::set<SimulatedDisk::Files>{disk_.Now()}));
}

TEST_F(StateFiles, GoOverWhatAnInterruptedSaveLeftBehind) {
  StartWith(
      {{"state.json.new", std::string(100000, 'x')}, {"state.json.old", "y"}, {"state.json", FullText()}});
  ExpectLoads(FullState());
  Save(before_);
  EXPECT_EQ(Names(), (std::set<std::string>{"state.json", "state.json.last"}));
  ExpectLoads(before_);
}

// A daemon that was killed may have renamed without syncing.
TEST_F(StateFiles, AreOnTheDiskOnceTheyAreLoaded) {
  Save(before_);
  disk_.CutAfter(8);
  EXPECT_THROW(static_cast<void>(file_.Save(other_)), PowerCut);
  disk_.CutAfter(1000);
  EXPECT_GT(disk_.AfterPowerCut().size(), 1U);
  ExpectLoads(other_);
  EXPECT_EQ(disk_.AfterPowerCut().size(), 1U);
}

TEST_F(StateFiles, SayWhenWhatIsLoadedMayNotOutlastAPowerCut) {
  Save(before_);
  disk_.FailAfter(1, EIO);
  const StoredState loaded = LoadAgain();
  EXPECT_EQ(loaded.state, before_);
  EXPECT_EQ(loaded.trouble,
            "the state in /state may not outlast a power cut: syncing the directory: Input/output error");
}

TEST_F(StateFiles, RefuseAStateThatMakesNoSense) {
  Save(before_);
  State state = before_;
  state.networks[1].ssid = state.networks[0].ssid;
  EXPECT_EQ(SentenceOfSave(state),
            "the state cannot be saved in /state: it makes no sense: the network 2 has the SSID \"Home\" of "
            "another");
  ExpectLoads(before_);
}

TEST_F(StateFiles, OfANewerVersionAreRefusedAndLeftAlone) {
  const SimulatedDisk::Files files = {{"state.json", "{\"version\" : 3}\n"}, {"state.json.last", FullText()}};
  StartWith(files);
  EXPECT_EQ(WhyNot(file_.Load()), (Refusal{ErrorCode::StorageFailed,
                                           "the state in /state/state.json cannot be read: it is of version "
                                           "3, this daemon knows the versions 1 to 2"}));
  EXPECT_EQ(disk_.Now(), files);
}

TEST_F(StateFiles, OfANewerVersionAreRefusedAsTheStateBeforeTheLastChangeToo) {
  for (const bool hasCurrent : {false, true}) {
    SimulatedDisk::Files files = {{"state.json.last", "{\"version\" : 3}\n"}};
    if (hasCurrent) {
      files["state.json"] = "{";
    }
    StartWith(files);
    EXPECT_EQ(WhyNot(file_.Load()).sentence,
              "the state in /state/state.json.last cannot be read: it is of version 3, this daemon knows the "
              "versions 1 to 2");
    EXPECT_EQ(disk_.Now(), files);
  }
}

// The file may be as good as ever.
TEST_F(StateFiles, ThatCannotBeOpenedAreRefusedAndLeftAlone) {
  Save(before_);
  Save(other_);
  const SimulatedDisk::Files files = disk_.Now();
  disk_.FailAfter(0, EMFILE);
  EXPECT_EQ(WhyNot(file_.Load()),
            (Refusal{ErrorCode::StorageFailed,
                     "the state in /state/state.json cannot be read: reading: Too many open files"}));
  EXPECT_EQ(disk_.Now(), files);
}

TEST_F(StateFiles, OfVersion1AreSavedInTheVersionOfToday) {
  StartWith({{"state.json", SampleOfVersion(1)}});
  ExpectLoads(FullState());
  Save(FullState());
  EXPECT_EQ(disk_.Now(),
            (SimulatedDisk::Files{{"state.json", FullText()}, {"state.json.last", SampleOfVersion(1)}}));
}

}  // namespace

}  // namespace TALO::Wifid
