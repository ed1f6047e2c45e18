#include "daemon/system/runtime_directory.h"

#include "support/directories.h"
#include "support/files.h"
#include "support/temporary_directory.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>
#include <system_error>

namespace TALO::Wifid {

namespace {

namespace fs = std::filesystem;

class RuntimeDirectoryTest : public testing::Test {
 protected:
  std::set<std::string> Names() const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(path_)) {
      names.insert(entry.path().filename());
    }
    return names;
  }

  TemporaryDirectory top_;
  const std::string path_ = top_ / "run";
};

TEST_F(RuntimeDirectoryTest, KeepsFilesForItsOwnerAlone) {
  const mode_t mask = umask(0);
  RuntimeDirectory directory(path_);
  EXPECT_TRUE(directory.Write("wlan0.conf", "wpa_passphrase=correct-horse\n").Succeeded());
  umask(mask);
  EXPECT_EQ(ModeOf(path_), 0700U);
  EXPECT_EQ(ModeOf(path_ + "/wlan0.conf"), 0600U);
  EXPECT_EQ(directory.PathOf("wlan0.conf"), path_ + "/wlan0.conf");
  EXPECT_EQ(ReadFile(directory.PathOf("wlan0.conf")), "wpa_passphrase=correct-horse\n");
}

TEST_F(RuntimeDirectoryTest, ReplacesAFileWhole) {
  RuntimeDirectory directory(path_);
  EXPECT_TRUE(directory.Write("a", "the first, and longer").Succeeded());
  // Who has it open goes on with what it opened.
  fs::create_hard_link(path_ + "/a", top_ / "opened");
  EXPECT_TRUE(directory.Write("a", "the second").Succeeded());
  EXPECT_EQ(ReadFile(path_ + "/a"), "the second");
  EXPECT_EQ(ReadFile(top_ / "opened"), "the first, and longer");
  EXPECT_EQ(Names(), (std::set<std::string>{"a", "lock"}));
}

TEST_F(RuntimeDirectoryTest, RemovesFiles) {
  RuntimeDirectory directory(path_);
  EXPECT_TRUE(directory.Write("a", "text").Succeeded());
  EXPECT_TRUE(directory.Remove("a").Succeeded());
  EXPECT_TRUE(directory.Remove("a").Succeeded());
  EXPECT_EQ(Names(), std::set<std::string>{"lock"});
}

TEST_F(RuntimeDirectoryTest, RemovesWhatAnEarlierRunLeft) {
  fs::create_directories(path_ + "/sockets/below");
  WriteFile(path_ + "/sockets/below/a", "text");
  WriteFile(path_ + "/a", "text");
  WriteFile(top_ / "other", "not ours");
  fs::create_symlink(top_ / "other", path_ + "/link");
  const RuntimeDirectory directory(path_);
  EXPECT_EQ(Names(), std::set<std::string>{"lock"});
  EXPECT_EQ(ReadFile(top_ / "other"), "not ours");
}

TEST_F(RuntimeDirectoryTest, ShutsADirectoryThatWasOpen) {
  fs::create_directory(path_);
  ASSERT_EQ(chmod(path_.c_str(), 0755), 0);
  const RuntimeDirectory directory(path_);
  EXPECT_EQ(ModeOf(path_), 0700U);
}

TEST_F(RuntimeDirectoryTest, RefusesALinkAndAFile) {
  fs::create_directory(top_ / "elsewhere");
  WriteFile(top_ / "elsewhere/a", "text");
  fs::create_directory_symlink(top_ / "elsewhere", path_);
  EXPECT_EQ(FailureOf<RuntimeDirectory>(path_),
            "the runtime directory " + path_ + " cannot be used: Too many levels of symbolic links");
  EXPECT_EQ(ReadFile(top_ / "elsewhere/a"), "text");
  fs::remove(path_);
  WriteFile(path_, "a file");
  EXPECT_EQ(FailureOf<RuntimeDirectory>(path_),
            "the runtime directory " + path_ + " cannot be used: Not a directory");
  EXPECT_EQ(FailureOf<RuntimeDirectory>(top_ / "missing/run"),
            "the runtime directory " + (top_ / "missing/run") + " cannot be made: No such file or directory");
}

TEST_F(RuntimeDirectoryTest, RefusesADirectoryOfAnotherUser) {
  if (geteuid() != 0) {
    GTEST_SKIP() << "only root gives a directory away";
  }
  fs::create_directory(path_);
  WriteFile(path_ + "/a", "text");
  ASSERT_EQ(chown(path_.c_str(), 65534, 65534), 0);
  EXPECT_EQ(FailureOf<RuntimeDirectory>(path_),
            "the runtime directory " + path_ + " belongs to another user: Operation not permitted");
  EXPECT_EQ(ReadFile(path_ + "/a"), "text");
}

TEST_F(RuntimeDirectoryTest, BelongsToOneDaemonAtATime) {
  RuntimeDirectory first(path_);
  EXPECT_TRUE(first.Write("a", "text").Succeeded());
  EXPECT_EQ(
      FailureOf<RuntimeDirectory>(path_),
      "the runtime directory " + path_ + " is used by another daemon: Resource temporarily unavailable");
  EXPECT_EQ(ReadFile(path_ + "/a"), "text");
}

TEST_F(RuntimeDirectoryTest, SaysWhyAFileCannotBeWritten) {
  RuntimeDirectory directory(path_);
  fs::create_directory(path_ + "/a");
  const auto written = directory.Write("a", "text");
  ASSERT_FALSE(written.Succeeded());
  EXPECT_EQ(written.Why(), (Refusal{ErrorCode::StorageFailed, "the file " + path_ +
                                                                  "/a cannot be written: renaming: Is a "
                                                                  "directory"}));
  // What went wrong once does not stay in the way.
  fs::remove(path_ + "/a");
  EXPECT_TRUE(directory.Write("a", "text").Succeeded());
}

}  // namespace

}  // namespace TALO::Wifid
