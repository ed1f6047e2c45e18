#include "daemon/store/state_directory.h"

#include "support/directories.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <system_error>

namespace TALO::Wifid {

namespace {

namespace fs = std::filesystem;

class StateDirectories : public testing::Test {
 protected:
  /// What a call throws, with its number.
  static std::string ThrownBy(const std::function<void()>& call) {
    try {
      call();
    } catch (const StorageFailure& failure) {
      return std::to_string(failure.Error()) + " " + failure.what();
    }
    return "";
  }

  TemporaryDirectory top_;
  const std::string directory_ = top_ / "state";
};

TEST_F(StateDirectories, KeepWhatIsWritten) {
  StateDirectory directory(directory_);
  EXPECT_EQ(directory.Read("a"), std::nullopt);
  {
    const auto file = directory.Create("a");
    file->Write("some ");
    file->Write(std::string("text\0", 5));
    file->Sync();
  }
  directory.SyncDirectory();
  EXPECT_EQ(directory.Read("a"), std::string("some text\0", 10));
  EXPECT_EQ(ReadFile(directory_ + "/a"), std::string("some text\0", 10));
  const std::string large(1000000, 'x');
  directory.Create("large")->Write(large);
  EXPECT_EQ(directory.Read("large"), large);
}

TEST_F(StateDirectories, LinkRenameAndRemove) {
  StateDirectory directory(directory_);
  directory.Create("a")->Write("first");
  directory.Create("b")->Write("second");
  EXPECT_TRUE(directory.Link("a", "c"));
  EXPECT_TRUE(directory.Rename("b", "a"));
  EXPECT_EQ(directory.Read("a"), "second");
  EXPECT_EQ(directory.Read("b"), std::nullopt);
  EXPECT_EQ(directory.Read("c"), "first");
  EXPECT_TRUE(directory.Unlink("c"));
  EXPECT_EQ(directory.Read("c"), std::nullopt);
}

TEST_F(StateDirectories, SayWhenThereIsNothingToLinkRenameOrRemove) {
  StateDirectory directory(directory_);
  EXPECT_FALSE(directory.Link("a", "b"));
  EXPECT_FALSE(directory.Rename("a", "b"));
  EXPECT_FALSE(directory.Unlink("a"));
}

TEST_F(StateDirectories, SayWhichCallFailsAndWhy) {
  StateDirectory directory(directory_);
  directory.Create("a");
  fs::create_directory(directory_ + "/d");
  EXPECT_EQ(ThrownBy([&] { directory.Create("a"); }), std::to_string(EEXIST) + " opening: File exists");
  EXPECT_EQ(ThrownBy([&] { directory.Link("a", "d"); }), std::to_string(EEXIST) + " linking: File exists");
  EXPECT_EQ(ThrownBy([&] { directory.Rename("a", "d"); }),
            std::to_string(EISDIR) + " renaming: Is a directory");
  EXPECT_EQ(ThrownBy([&] { directory.Unlink("d"); }), std::to_string(EISDIR) + " removing: Is a directory");
  EXPECT_EQ(ThrownBy([&] { directory.Read("d"); }), std::to_string(EISDIR) + " reading: Is a directory");
  fs::create_symlink("loop", directory_ + "/loop");
  EXPECT_EQ(ThrownBy([&] { directory.Read("loop"); }),
            std::to_string(ELOOP) + " opening: Too many levels of symbolic links");
}

TEST_F(StateDirectories, ReadNoFileThatIsFarTooLarge) {
  StateDirectory directory(directory_);
  directory.Create("a");
  fs::resize_file(directory_ + "/a", std::uintmax_t{1} << 40U);
  EXPECT_EQ(ThrownBy([&] { directory.Read("a"); }), std::to_string(EFBIG) + " reading: File too large");
}

TEST_F(StateDirectories, AreForTheirOwnerOnly) {
  const mode_t mask = umask(0);
  {
    StateDirectory directory(directory_);
    directory.Create("a");
  }
  umask(mask);
  EXPECT_EQ(ModeOf(directory_), 0700U);
  EXPECT_EQ(ModeOf(directory_ + "/a"), 0600U);
  EXPECT_EQ(ModeOf(directory_ + "/lock"), 0600U);
}

TEST_F(StateDirectories, DoNotFollowALinkThatWasLeftBehind) {
  StateDirectory directory(directory_);
  WriteFile(top_ / "other", "not ours");
  fs::create_symlink(top_ / "other", directory_ + "/a");
  EXPECT_EQ(ThrownBy([&] { directory.Create("a"); }), std::to_string(EEXIST) + " opening: File exists");
  EXPECT_TRUE(directory.Unlink("a"));
  EXPECT_EQ(ReadFile(top_ / "other"), "not ours");
}

TEST_F(StateDirectories, BelongToOneDaemonAtATime) {
  auto first = std::make_unique<StateDirectory>(directory_);
  EXPECT_EQ(
      FailureOf<StateDirectory>(directory_),
      "the state directory " + directory_ + " is used by another daemon: Resource temporarily unavailable");
  // The one that has it is not disturbed.
  first->Create("a");
  first.reset();
  EXPECT_EQ(FailureOf<StateDirectory>(directory_), "");
}

TEST_F(StateDirectories, AreTakenWhereTheyAreThere) {
  fs::create_directory(directory_);
  WriteFile(directory_ + "/a", "text");
  StateDirectory directory(directory_);
  EXPECT_EQ(directory.Read("a"), "text");
}

TEST_F(StateDirectories, NeedADirectory) {
  WriteFile(directory_, "a file");
  EXPECT_EQ(FailureOf<StateDirectory>(directory_),
            "the state directory " + directory_ + " cannot be opened: Not a directory");
  EXPECT_EQ(FailureOf<StateDirectory>(directory_ + "/below"),
            "the state directory " + directory_ + "/below cannot be made: Not a directory");
  EXPECT_EQ(FailureOf<StateDirectory>(top_ / "missing/state"),
            "the state directory " + (top_ / "missing/state") + " cannot be made: No such file or directory");
}

TEST_F(StateDirectories, NeedALock) {
  fs::create_directory(directory_);
  fs::create_directory(directory_ + "/lock");
  EXPECT_EQ(FailureOf<StateDirectory>(directory_),
            "the lock in the state directory " + directory_ + " cannot be opened: Is a directory");
}

}  // namespace

}  // namespace TALO::Wifid
