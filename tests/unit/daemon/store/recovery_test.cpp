// What becomes of a state that cannot be used.

#include "daemon/store/state_codec.h"
#include "daemon/store/state_file.h"
#include "support/full_state.h"
#include "support/print_model.h"
#include "support/routers.h"
#include "support/simulated_disk.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <random>
#include <string>

namespace TALO::Wifid {

namespace {

using Files = SimulatedDisk::Files;

const std::string kBroken = "{\"version\" : 2,\n";
const std::string kWhy = "it is not JSON (line 2, column 1)";

/// What was found and what the disk holds then.
struct Outcome {
  StoredState found;
  Files files;
};

Outcome Load(const Files& files) {
  SimulatedDisk disk(files);
  StateFile file(disk, "/state");
  const StoredState found = ValueOf(file.Load());
  // Whatever it did is there to stay.
  EXPECT_EQ(disk.AfterPowerCut(), (std::set<Files>{disk.Now()}));
  return {found, disk.Now()};
}

TEST(ABrokenState, IsKeptAsideAndTheOneBeforeTakesItsPlace) {
  const Outcome outcome = Load({{"state.json", kBroken}, {"state.json.last", FullText()}});
  EXPECT_EQ(outcome.found.state, FullState());
  EXPECT_EQ(
      outcome.found.trouble,
      "the state in /state/state.json cannot be read: " + kWhy +
          "; the last change is lost, the state before it is in force, from state.json.last; the broken "
          "file is kept as state.json.broken-1");
  EXPECT_EQ(outcome.files, (Files{{"state.json", FullText()}, {"state.json.broken-1", kBroken}}));
  // From then on all is well.
  const Outcome again = Load(outcome.files);
  EXPECT_EQ(again.found.state, FullState());
  EXPECT_EQ(again.found.trouble, "");
}

TEST(ABrokenState, IsKeptAsideAlsoWhereThereIsNoOther) {
  const Outcome outcome = Load({{"state.json", kBroken}});
  EXPECT_EQ(outcome.found.state, std::nullopt);
  EXPECT_EQ(outcome.found.trouble,
            "the state in /state/state.json cannot be read: " + kWhy +
                "; there is no state.json.last; everything is lost, the router is as one "
                "that was never set up; the broken file is kept as state.json.broken-1");
  EXPECT_EQ(outcome.files, (Files{{"state.json.broken-1", kBroken}}));
}

TEST(ABrokenState, IsKeptAsideTogetherWithABrokenOneBefore) {
  const Outcome outcome = Load({{"state.json", kBroken}, {"state.json.last", "x"}});
  EXPECT_EQ(outcome.found.state, std::nullopt);
  EXPECT_EQ(
      outcome.found.trouble,
      "the state in /state/state.json cannot be read: " + kWhy +
          "; the state in /state/state.json.last cannot be read: it is not JSON (line 1, column 1); "
          "everything is lost, the router is as one that was never set up; the broken files are kept as "
          "state.json.broken-1 and state.json.broken-2");
  EXPECT_EQ(outcome.files, (Files{{"state.json.broken-1", kBroken}, {"state.json.broken-2", "x"}}));
}

TEST(AMissingState, IsReplacedByTheOneBefore) {
  const Outcome outcome = Load({{"state.json.last", FullText()}});
  EXPECT_EQ(outcome.found.state, FullState());
  EXPECT_EQ(
      outcome.found.trouble,
      "there is no state in /state/state.json; the last change is lost, the state before it is in force, "
      "from state.json.last");
  EXPECT_EQ(outcome.files, (Files{{"state.json", FullText()}}));
}

TEST(AMissingState, IsReportedAlsoWhereTheOneBeforeIsBroken) {
  const Outcome outcome = Load({{"state.json.last", "x"}});
  EXPECT_EQ(outcome.found.state, std::nullopt);
  EXPECT_EQ(
      outcome.found.trouble,
      "there is no state in /state/state.json; the state in /state/state.json.last cannot be read: it is not "
      "JSON (line 1, column 1); everything is lost, the router is as one that was never set up; the broken "
      "file is kept as state.json.broken-1");
  EXPECT_EQ(outcome.files, (Files{{"state.json.broken-1", "x"}}));
}

TEST(ABrokenState, MovesTheOnesBeforeOnAndTheOldestOut) {
  Files files;
  for (int count = 1; count <= 6; ++count) {
    files["state.json"] = std::to_string(count);
    files["state.json.last"] = FullText();
    files = Load(files).files;
  }
  EXPECT_EQ(files, (Files{{"state.json", FullText()},
                          {"state.json.broken-1", "6"},
                          {"state.json.broken-2", "5"},
                          {"state.json.broken-3", "4"},
                          {"state.json.broken-4", "3"}}));
}

TEST(ABrokenState, IsOneThatMakesNoSenseToo) {
  State state = FullState();
  state.nextNetworkId = 3;
  const std::string senseless = EncodeState(state);
  const Outcome outcome = Load({{"state.json", senseless}, {"state.json.last", FullText()}});
  EXPECT_EQ(outcome.found.state, FullState());
  EXPECT_TRUE(outcome.found.trouble.starts_with(
      "the state in /state/state.json cannot be read: it makes no sense: the ID 3 among the networks is not "
      "below the next, which is 3; "))
      << outcome.found.trouble;
  EXPECT_EQ(outcome.files.at("state.json.broken-1"), senseless);
}

TEST(AStateThatTheDiskCannotRead, CountsAsBroken) {
  for (const int error : {EIO, EFBIG}) {
    SimulatedDisk disk({{"state.json", "unreadable"}, {"state.json.last", FullText()}});
    disk.FailAfter(0, error);
    StateFile file(disk, "/state");
    EXPECT_EQ(ValueOf(file.Load()).state, FullState());
    EXPECT_EQ(disk.Now(), (Files{{"state.json", FullText()}, {"state.json.broken-1", "unreadable"}}));
  }
}

TEST(ABrokenState, WhereverItIsCutOffIsKeptAside) {
  const std::string before = EncodeState(HomeState(TriBandRouter()));
  // Without its last line end it is another text with the same meaning, and does not fit its checksum.
  for (std::size_t length = 0; length < FullText().size(); ++length) {
    const std::string cut = FullText().substr(0, length);
    const Outcome outcome = Load({{"state.json", cut}, {"state.json.last", before}});
    ASSERT_EQ(outcome.found.state, HomeState(TriBandRouter())) << length;
    ASSERT_NE(outcome.found.trouble, "") << length;
    ASSERT_EQ(outcome.files, (Files{{"state.json", before}, {"state.json.broken-1", cut}})) << length;
  }
}

/// Expects one of: the state before is in force and the damaged one kept; it is said to be of a newer
/// version, and nothing is touched.
void ExpectNothingLostSilently(const std::string& damaged, const Files& files, const State& before) {
  SimulatedDisk disk(files);
  StateFile file(disk, "/state");
  const auto loaded = file.Load();
  if (!loaded.Succeeded()) {
    EXPECT_NE(loaded.Why().sentence.find("it is of version "), std::string::npos) << loaded.Why().sentence;
    EXPECT_EQ(disk.Now(), files);
    return;
  }
  EXPECT_EQ(loaded.Value().state, before);
  EXPECT_NE(loaded.Value().trouble, "");
  EXPECT_EQ(disk.Now().at("state.json.broken-1"), damaged);
}

TEST(ABrokenState, WithAnyFlippedBitsIsNeverTakenForASoundOne) {
  const State before = HomeState(TriBandRouter());
  const std::string last = EncodeState(before);
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::string damaged = FullText();
    for (unsigned flips = 1 + seed % 3; flips > 0; --flips) {
      char& byte = damaged[random() % damaged.size()];
      byte = static_cast<char>(byte ^ (1U << random() % 8));
    }
    if (damaged != FullText()) {
      ExpectNothingLostSilently(damaged, {{"state.json", damaged}, {"state.json.last", last}}, before);
    }
    ASSERT_FALSE(testing::Test::HasFailure());
  }
}

TEST(ARecovery, ThatThePowerCutsOffAnywhereLosesNothing) {
  const Files files = {
      {"state.json", kBroken}, {"state.json.last", FullText()}, {"state.json.broken-1", "older"}};
  int cuts = 0;
  for (bool wasCut = true; wasCut; ++cuts) {
    SimulatedDisk disk(files);
    disk.CutAfter(cuts);
    wasCut = false;
    try {
      StateFile file(disk, "/state");
      static_cast<void>(file.Load());
    } catch (const PowerCut&) {
      wasCut = true;
    }
    for (const Files& left : disk.AfterPowerCut()) {
      const Outcome outcome = Load(left);
      ASSERT_EQ(outcome.found.state, FullState()) << cuts;
      int kept = 0;
      for (const auto& [name, text] : outcome.files) {
        kept += text == kBroken || text == "older" ? 1 : 0;
      }
      ASSERT_EQ(kept, 2) << cuts;
    }
  }
  EXPECT_EQ(cuts, 11);
}

class FailingRecoveries : public testing::Test {
 protected:
  FailingRecoveries() {
    disk_.FailAfter(2, EROFS, 1000);
    found_ = ValueOf(file_.Load());
  }

  const Files files_ = {
      {"state.json", kBroken}, {"state.json.last", FullText()}, {"state.json.broken-1", "older"}};
  SimulatedDisk disk_{files_};
  StateFile file_{disk_, "/state"};
  StoredState found_;
};

TEST_F(FailingRecoveries, StillLoadTheStateBefore) {
  EXPECT_EQ(found_.state, FullState());
  EXPECT_TRUE(found_.trouble.ends_with(
      "from state.json.last; nothing can be saved until this works: renaming: Read-only file system"))
      << found_.trouble;
  EXPECT_EQ(disk_.Now(), files_);
}

TEST_F(FailingRecoveries, LetNothingBeSavedOverWhatIsNotKeptYet) {
  const State next = HomeState(TriBandRouter());
  for (int attempt = 0; attempt < 3; ++attempt) {
    EXPECT_EQ(WhyNot(file_.Save(next)),
              (Refusal{ErrorCode::StorageFailed,
                       "the state cannot be saved in /state: renaming: Read-only file system"}));
  }
  EXPECT_EQ(disk_.Now(), files_);

  disk_.FailAfter(0, 0, 0);
  ASSERT_TRUE(file_.Save(next).Succeeded());
  EXPECT_EQ(disk_.Now(), (Files{{"state.json", EncodeState(next)},
                                {"state.json.last", FullText()},
                                {"state.json.broken-1", kBroken},
                                {"state.json.broken-2", "older"}}));
}

// Each attempt gets one call further.
TEST_F(FailingRecoveries, MoveEveryFileOnOnceHoweverOftenTheyAreInterrupted) {
  const State next = HomeState(TriBandRouter());
  bool saved = false;
  for (int works = 0; works < 20 && !saved; ++works) {
    disk_.FailAfter(works, EIO, 1);
    saved = file_.Save(next).Succeeded();
  }
  ASSERT_TRUE(saved);
  const Files now = disk_.Now();
  EXPECT_EQ(now.at("state.json"), EncodeState(next));
  EXPECT_EQ(now.at("state.json.broken-1"), kBroken);
  EXPECT_EQ(now.at("state.json.broken-2"), "older");
  EXPECT_FALSE(now.contains("state.json.broken-3"));
}

}  // namespace

}  // namespace TALO::Wifid
