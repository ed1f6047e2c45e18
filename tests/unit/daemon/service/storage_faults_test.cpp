// Each call of a save fails in turn: what the engine makes of it, on a disk that shows it.

#include "daemon/store/state_file.h"
#include "support/direct_writer.h"
#include "support/engine_test.h"
#include "support/simulated_disk.h"
#include "unit/daemon/model/random_requests.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <string>

namespace TALO::Wifid {

namespace {

constexpr int kCallsOfASave = 9;
const std::string kCannotBeSaved = "Storage failed: the state cannot be saved in /state: ";

class FaultyDisks : public EngineTest {
 protected:
  void StartOnDisk(const State& state) {
    disk_ = SimulatedDisk();
    file_ = StateFile(disk_, "/state");
    ASSERT_TRUE(file_.Save(MakeState(1, {})).Succeeded());
    ASSERT_TRUE(file_.Save(state).Succeeded());
    engine_ =
        std::make_unique<Engine>(Engine::Doors{writer_, driver_, clock_, calendar_, announcer_, log_}, state);
    engine_->Start([] {});
    driver_.FinishAll();
    journal_.clear();
  }

  /// Asks for a state as a change does, lets the radios follow and returns what was noted.
  Journal Ask(const State& next) {
    engine_->Make<void>([next](const State&) { return Change<void>{next}; }, NoteResult());
    driver_.FinishAll();
    return TakeJournal();
  }

  /// What the next daemon finds there.
  static std::optional<State> Reloaded(const SimulatedDisk::Files& files) {
    SimulatedDisk disk(files);
    const auto loaded = StateFile(disk, "/state").Load();
    return loaded.Succeeded() ? loaded.Value().state : std::nullopt;
  }

  /// Expects memory, radios and disk, whenever the power goes, to hold this state.
  void ExpectEverywhere(const State& state) {
    EXPECT_EQ(engine_->GetState(), state);
    EXPECT_EQ(driver_.LastPlans(),
              MakePlan(state, TriBandRadios(), ScheduledOff(state, clock_.now, calendar_)));
    EXPECT_EQ(Reloaded(disk_.Now()), state);
    for (const SimulatedDisk::Files& files : disk_.AfterPowerCut()) {
      EXPECT_EQ(Reloaded(files), state);
    }
  }

  SimulatedDisk disk_;
  StateFile file_{disk_, "/state"};
  DirectWriter writer_{file_};
};

TEST_F(FaultyDisks, FailTheChangeOfWhateverKindAtWhateverCallAndNothingElse) {
  Random random(1);
  State state = two_;
  std::set<std::string> kinds;
  for (int request = 0; request < 6000; ++request) {
    const RequestKind kind = random.OneOf(RequestKinds());
    const auto next = kind.ask(state, TriBandRadios(), random);
    if (!next.Succeeded() || next.Value() == state) {
      continue;
    }
    if (!kinds.insert(kind.name).second) {
      state = next.Value();
      continue;
    }
    for (const int error : {EIO, ENOSPC, EROFS}) {
      for (int call = 0; call < kCallsOfASave; ++call) {
        SCOPED_TRACE(kind.name + ", call " + std::to_string(call));
        StartOnDisk(state);
        disk_.FailAfter(call, error);
        EXPECT_THAT(Ask(next.Value()), testing::ElementsAre(testing::StartsWith(kCannotBeSaved)));
        ExpectEverywhere(state);
        EXPECT_EQ(Ask(next.Value()).back(), "done");
        ExpectEverywhere(next.Value());
        ASSERT_FALSE(HasFailure());
      }
    }
    state = next.Value();
  }
  EXPECT_EQ(kinds.size(), RequestKinds().size());
}

TEST_F(FaultyDisks, AreNamedWithTheCallAndTheReason) {
  const std::vector<std::string> steps = {"removing", "opening",  "writing",
                                          "syncing",  "removing", "linking",
                                          "renaming", "renaming", "syncing the directory"};
  for (int call = 0; call < kCallsOfASave; ++call) {
    StartOnDisk(two_);
    disk_.FailAfter(call, ENOSPC);
    EXPECT_EQ(Ask(three_), (Journal{kCannotBeSaved + steps.at(static_cast<std::size_t>(call)) +
                                    ": No space left on device"}));
  }
}

TEST_F(FaultyDisks, ThatStayFaultyLeaveTheStateBeforeUnlessTheySaySo) {
  for (int call = 0; call < kCallsOfASave; ++call) {
    SCOPED_TRACE(call);
    StartOnDisk(two_);
    disk_.FailAfter(call, EIO, 1000);
    const Journal journal = Ask(three_);
    ASSERT_EQ(journal.size(), 1U);
    EXPECT_EQ(engine_->GetState(), two_);
    EXPECT_EQ(driver_.LastPlans(), MakePlan(two_, TriBandRadios(), {}));
    if (journal[0].find("; a restart may find the change all the same") == std::string::npos) {
      EXPECT_LT(call, 7);
      ExpectEverywhere(two_);
    } else {
      EXPECT_GE(call, 7);
      EXPECT_EQ(Reloaded(disk_.Now()), three_);
    }
  }
}

TEST_F(FaultyDisks, ThatMayHoldAChangeThatFailedAreMendedByTheNextRequestEvenOneThatChangesNothing) {
  StartOnDisk(two_);
  disk_.FailAfter(8, EIO, 2);
  EXPECT_EQ(Ask(three_), (Journal{kCannotBeSaved +
                                  "syncing the directory: Input/output error; a restart may find the change "
                                  "all the same, since the state before it cannot be put back: renaming: "
                                  "Input/output error"}));
  EXPECT_EQ(Reloaded(disk_.Now()), three_);
  EXPECT_EQ(Ask(two_), (Journal{"done"}));
  ExpectEverywhere(two_);
  // Mended, it costs nothing any more.
  const int calls = disk_.Calls();
  EXPECT_EQ(Ask(two_), (Journal{"done"}));
  EXPECT_EQ(disk_.Calls(), calls);
}

TEST_F(FaultyDisks, ThatMayHoldAChangeThatFailedAreMendedAtTheEnd) {
  StartOnDisk(two_);
  disk_.FailAfter(8, EIO, 2);
  Ask(three_);
  engine_->End([this] { journal_.emplace_back("ended"); });
  EXPECT_EQ(TakeJournal(), (Journal{"ended"}));
  ExpectEverywhere(two_);
}

TEST_F(FaultyDisks, OnTheFirstSaveLeaveNothing) {
  for (int call = 0; call < kCallsOfASave - 1; ++call) {
    SCOPED_TRACE(call);
    SimulatedDisk disk;
    StateFile file(disk, "/state");
    disk.FailAfter(call, EIO);
    ASSERT_FALSE(file.Save(two_).Succeeded());
    EXPECT_EQ(Reloaded(disk.Now()), std::nullopt);
    for (const SimulatedDisk::Files& files : disk.AfterPowerCut()) {
      EXPECT_EQ(Reloaded(files), std::nullopt);
    }
    ASSERT_TRUE(file.Save(two_).Succeeded());
    EXPECT_EQ(Reloaded(disk.Now()), two_);
  }
}

}  // namespace

}  // namespace TALO::Wifid
