#include "daemon/store/state_file.h"

#include "support/files.h"
#include "support/full_state.h"
#include "support/print_model.h"
#include "support/temporary_directory.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <system_error>

namespace TALO::Wifid {

namespace {

namespace fs = std::filesystem;

/// The permission bits of a file or directory.
mode_t ModeOf(const std::string& path) {
  struct stat status {};
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777U;
}

std::set<std::string> NamesIn(const std::string& directory) {
  std::set<std::string> names;
  for (const auto& entry : fs::directory_iterator(directory)) {
    names.insert(entry.path().filename().string());
  }
  return names;
}

/// What the constructor throws, empty when it does not.
std::string FailureOf(const std::string& directory) {
  try {
    const StateFile file(directory);
  } catch (const std::system_error& failure) {
    return failure.what();
  }
  return "";
}

void ExpectLoads(StateFile& file, const State& state) {
  const auto loaded = file.Load();
  ASSERT_TRUE(loaded.Succeeded()) << loaded.Why().sentence;
  ASSERT_TRUE(loaded.Value().has_value());
  EXPECT_EQ(*loaded.Value(), state);
}

/// A state with these many networks.
State StateWithNetworks(int count) {
  State state;
  state.nextNetworkId = count + 1;
  state.radios = {{RadioFrequency::Band2_4GHz, true, 6, 20, 100, 6}};
  for (int id = 1; id <= count; ++id) {
    NetworkState network;
    network.id = id;
    network.networkName = network.ssid = "Network " + std::to_string(id);
    network.slot = id;
    state.networks.push_back(network);
  }
  return state;
}

class StateFiles : public testing::Test {
 protected:
  TemporaryDirectory top_;
  const std::string directory_ = top_ / "state";
  const std::string path_ = directory_ + "/state.json";
  const std::string newPath_ = directory_ + "/state.json.new";
  const State before_ = StateWithNetworks(1);
};

TEST_F(StateFiles, LoadNothingWhereNothingWasSaved) {
  StateFile file(directory_);
  const auto loaded = file.Load();
  ASSERT_TRUE(loaded.Succeeded());
  EXPECT_FALSE(loaded.Value().has_value());
  EXPECT_EQ(NamesIn(directory_), (std::set<std::string>{"lock"}));
}

TEST_F(StateFiles, LoadWhatWasSavedLast) {
  {
    StateFile file(directory_);
    ASSERT_TRUE(file.Save(before_).Succeeded());
    ExpectLoads(file, before_);
    ASSERT_TRUE(file.Save(FullState()).Succeeded());
    ExpectLoads(file, FullState());
  }
  StateFile again(directory_);
  ExpectLoads(again, FullState());
}

TEST_F(StateFiles, HoldTheTextOfTheState) {
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(ReadFile(path_), FullText());
}

TEST_F(StateFiles, LoadAStateThatIsLargerThanOneRead) {
  const State state = StateWithNetworks(2000);
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(state).Succeeded());
  EXPECT_GT(fs::file_size(path_), 65536U);
  ExpectLoads(file, state);
}

TEST_F(StateFiles, AreForTheirOwnerOnly) {
  const mode_t mask = umask(0);
  {
    StateFile file(directory_);
    EXPECT_TRUE(file.Save(before_).Succeeded());
  }
  umask(mask);
  EXPECT_EQ(ModeOf(directory_), 0700U);
  EXPECT_EQ(ModeOf(path_), 0600U);
  EXPECT_EQ(ModeOf(directory_ + "/lock"), 0600U);
}

TEST_F(StateFiles, LeaveNothingBesideTheStateAndTheLock) {
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(before_).Succeeded());
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(NamesIn(directory_), (std::set<std::string>{"lock", "state.json"}));
}

TEST_F(StateFiles, ReplaceTheFileInsteadOfWritingIntoIt) {
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(before_).Succeeded());
  fs::create_hard_link(path_, top_ / "kept");
  const std::string kept = ReadFile(path_);
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(ReadFile(top_ / "kept"), kept);
  EXPECT_EQ(ReadFile(path_), FullText());
}

TEST_F(StateFiles, GoOverWhatAnInterruptedSaveLeftBehind) {
  StateFile file(directory_);
  WriteFile(newPath_, std::string(100000, 'x'));
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(ReadFile(path_), FullText());
  EXPECT_EQ(NamesIn(directory_), (std::set<std::string>{"lock", "state.json"}));
}

TEST_F(StateFiles, AreForTheirOwnerOnlyWhateverWasLeftBehind) {
  StateFile file(directory_);
  WriteFile(newPath_, "left behind");
  fs::permissions(newPath_, fs::perms(0666));
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(ModeOf(path_), 0600U);
}

TEST_F(StateFiles, DoNotFollowALinkThatWasLeftBehind) {
  StateFile file(directory_);
  WriteFile(top_ / "other", "not ours");
  fs::create_symlink(top_ / "other", newPath_);
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  EXPECT_EQ(ReadFile(top_ / "other"), "not ours");
  EXPECT_FALSE(fs::is_symlink(path_));
  EXPECT_EQ(ReadFile(path_), FullText());
}

TEST_F(StateFiles, StayAsTheyWereWhenTheNewOneCannotBeOpened) {
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(before_).Succeeded());
  const std::string kept = ReadFile(path_);
  fs::create_directory(newPath_);

  const auto saved = file.Save(FullState());

  ASSERT_FALSE(saved.Succeeded());
  EXPECT_EQ(saved.Why().code, ErrorCode::StorageFailed);
  EXPECT_TRUE(saved.Why().sentence.starts_with("the state cannot be saved in " + directory_ + ": opening: "))
      << saved.Why().sentence;
  EXPECT_EQ(ReadFile(path_), kept);
  ExpectLoads(file, before_);

  fs::remove(newPath_);
  ASSERT_TRUE(file.Save(FullState()).Succeeded());
  ExpectLoads(file, FullState());
}

TEST_F(StateFiles, LeaveNothingBehindWhenTheNewOneCannotTakeItsPlace) {
  StateFile file(directory_);
  fs::create_directory(path_);

  const auto saved = file.Save(FullState());

  ASSERT_FALSE(saved.Succeeded());
  EXPECT_EQ(saved.Why(), (Refusal{ErrorCode::StorageFailed, "the state cannot be saved in " + directory_ +
                                                                ": renaming: Is a directory"}));
  EXPECT_EQ(NamesIn(directory_), (std::set<std::string>{"lock", "state.json"}));
}

TEST_F(StateFiles, CannotBeSavedIntoADirectoryThatIsGone) {
  StateFile file(directory_);
  fs::remove_all(directory_);
  const auto saved = file.Save(FullState());
  ASSERT_FALSE(saved.Succeeded());
  EXPECT_EQ(saved.Why(), (Refusal{ErrorCode::StorageFailed, "the state cannot be saved in " + directory_ +
                                                                ": opening: No such file or directory"}));
}

TEST_F(StateFiles, ThatCannotBeUnderstoodAreRefusedAndLeftAsTheyAre) {
  StateFile file(directory_);
  const std::string start = "the state in " + path_ + " cannot be read: ";
  const std::pair<std::string, std::string> rows[] = {
      {"", "it is not JSON (line 1, column 1)"},
      {FullText().substr(0, 32), "it is not JSON (line 4, column 13)"},
      {"{\"version\" : 2}\n", "it is of version 2, this daemon knows version 1"},
      {"{\"version\" : 1}\n", "nextNetworkId is missing"},
  };
  for (const auto& [text, why] : rows) {
    WriteFile(path_, text);
    const auto loaded = file.Load();
    ASSERT_FALSE(loaded.Succeeded()) << text;
    EXPECT_EQ(loaded.Why(), (Refusal{ErrorCode::StorageFailed, start + why}));
    EXPECT_EQ(ReadFile(path_), text);
  }
}

TEST_F(StateFiles, ThatCannotBeReadAreRefused) {
  StateFile file(directory_);
  fs::create_directory(path_);
  const auto loaded = file.Load();
  ASSERT_FALSE(loaded.Succeeded());
  EXPECT_EQ(loaded.Why(),
            (Refusal{ErrorCode::StorageFailed, "the state in " + path_ + " cannot be read: Is a directory"}));
  fs::remove(path_);
  fs::create_symlink(path_, path_);
  const auto again = file.Load();
  ASSERT_FALSE(again.Succeeded());
  EXPECT_EQ(again.Why(), (Refusal{ErrorCode::StorageFailed, "the state in " + path_ +
                                                                " cannot be read: Too many levels of "
                                                                "symbolic links"}));
}

TEST_F(StateFiles, BelongToOneDaemonAtATime) {
  auto first = std::make_unique<StateFile>(directory_);
  EXPECT_EQ(FailureOf(directory_), "the state directory " + directory_ +
                                       " is used by another daemon: Resource temporarily unavailable");
  // The one that has it is not disturbed.
  EXPECT_TRUE(first->Save(before_).Succeeded());
  first.reset();
  EXPECT_EQ(FailureOf(directory_), "");
  StateFile second(directory_);
  ExpectLoads(second, before_);
}

TEST_F(StateFiles, TakeADirectoryThatIsThere) {
  fs::create_directory(directory_);
  StateFile file(directory_);
  ASSERT_TRUE(file.Save(before_).Succeeded());
  ExpectLoads(file, before_);
}

TEST_F(StateFiles, NeedADirectory) {
  WriteFile(directory_, "a file");
  EXPECT_EQ(FailureOf(directory_),
            "the state directory " + directory_ + " cannot be opened: Not a directory");
  EXPECT_EQ(FailureOf(directory_ + "/below"),
            "the state directory " + directory_ + "/below cannot be made: Not a directory");
  EXPECT_EQ(FailureOf(top_ / "missing/state"),
            "the state directory " + (top_ / "missing/state") + " cannot be made: No such file or directory");
}

TEST_F(StateFiles, NeedALock) {
  fs::create_directory(directory_);
  fs::create_directory(directory_ + "/lock");
  EXPECT_EQ(FailureOf(directory_),
            "the lock in the state directory " + directory_ + " cannot be opened: Is a directory");
}

}  // namespace

}  // namespace TALO::Wifid
