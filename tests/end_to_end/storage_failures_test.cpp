// What the daemon does when its state is broken or its disk takes nothing more.

#include "support/end_to_end_test.h"
#include "support/files.h"

#include <sys/resource.h>

#include <csignal>
#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class StorageFailures : public EndToEndTest {
 protected:
  StorageFailures() { StartDaemon(); }

  /// Makes two changes and ends the daemon, which leaves the state before the second beside that behind it.
  void LeaveHomeThenGuests() {
    CreateNetwork("Home", 1);
    CreateNetwork("Guests", 2);
    EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  }

  /// Of the daemon's files none may become larger than that; -1 for no limit.
  void LimitFiles(std::int64_t bytes) {
    const rlimit limit = {bytes < 0 ? RLIM_INFINITY : static_cast<rlim_t>(bytes), RLIM_INFINITY};
    ASSERT_EQ(prlimit(Daemon().GetProcess().Id(), RLIMIT_FSIZE, &limit, nullptr), 0);
  }

  std::string Log() { return Daemon().GetProcess().Errors(); }
  std::string CannotBeRead(const std::string& file, const std::string& why) const {
    return "the state in " + StateDirectory() + "/" + file + " cannot be read: " + why;
  }
};

TEST_F(StorageFailures, LeaveAStateThatIsBrokenAsideAndTheOneBeforeInForce) {
  LeaveHomeThenGuests();
  WriteFile(StateFile(), "{\"version\" : 2");
  StartDaemon();
  EXPECT_EQ(Log(),
            "err: " + CannotBeRead("state.json", "it is not JSON (line 1, column 15)") +
                "; the last change is lost, the state before it is in force, from state.json.last; the "
                "broken file is kept as state.json.broken-1\n" +
                LogOfStart());
  EXPECT_EQ(RunTool({"getNetworkInterfaces"}),
            Success("ID: 1, Interface: \n\twlan0_1\n\twlan1_1\n\twlan2_1\n\n"));
  EXPECT_EQ(ReadFile(StateFile() + ".broken-1"), "{\"version\" : 2");
  // As after the first network: its ID is the next once more.
  CreateNetwork("Guests", 2);
  RestartDaemon();
  EXPECT_EQ(Log(), LogOfStart());
}

TEST_F(StorageFailures, LeaveARouterThatWasNeverSetUpWhereNothingCanBeUsed) {
  LeaveHomeThenGuests();
  WriteFile(StateFile(), "");
  WriteFile(StateFile() + ".last", "[]");
  StartDaemon();
  EXPECT_EQ(Log(),
            "err: " + CannotBeRead("state.json", "it is not JSON (line 1, column 1)") + "; " +
                CannotBeRead("state.json.last", "it has no version") +
                "; everything is lost, the router is as one that was never set up; the broken files are "
                "kept as state.json.broken-1 and state.json.broken-2\n" +
                LogOfStart());
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
  EXPECT_EQ(ReadFile(StateFile() + ".broken-1"), "");
  EXPECT_EQ(ReadFile(StateFile() + ".broken-2"), "[]");
  CreateNetwork("Home", 1);
}

TEST_F(StorageFailures, NoticeAChangedByte) {
  LeaveHomeThenGuests();
  std::string text = ReadFile(StateFile());
  const std::string home = "486f6d65";
  ASSERT_NE(text.find(home), std::string::npos) << text;
  text.replace(text.find(home), home.size(), "486f6d66");
  WriteFile(StateFile(), text);
  StartDaemon();
  EXPECT_TRUE(Log().starts_with("err: " + CannotBeRead("state.json", "it does not fit its checksum") + "; "))
      << Log();
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "router"}), Success("IDs: 1 \n"));
}

TEST_F(StorageFailures, FailAChangeThatTheDiskHasNoRoomForAndServeOn) {
  CreateNetwork("Home", 1);
  const std::string before = RunTool({"getNetworks"}).output;
  const std::string stored = ReadFile(StateFile());
  // The log is a file too, and small.
  LimitFiles(1000);
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Guests", "--password", "correct-horse"}),
            Failure("Create Network ID: Failed to execute command: the state cannot be saved in " +
                    StateDirectory() + ": writing: File too large: Storage failed\n"));
  EXPECT_EQ(RunTool({"deleteNetwork", "--id", "1"}),
            Refusal("the state cannot be saved in " + StateDirectory() +
                    ": writing: File too large: Storage failed"));
  EXPECT_EQ(RunTool({"getNetworks"}), Success(before));
  EXPECT_EQ(ReadFile(StateFile()), stored);
  EXPECT_FALSE(std::filesystem::exists(StateFile() + ".new"));

  LimitFiles(-1);
  CreateNetwork("Guests", 2);
  Do({"deleteNetwork", "--id", "1"});
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "router"}), Success("IDs: 2 \n"));
  const std::string full =
      "err: the state cannot be saved in " + StateDirectory() + ": writing: File too large\n";
  EXPECT_EQ(Log(), LogOfStart() + full + full);
  RestartDaemon();
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "router"}), Success("IDs: 2 \n"));
}

TEST_F(StorageFailures, FailAChangeInADirectoryThatIsGone) {
  CreateNetwork("Home", 1);
  std::filesystem::remove_all(StateDirectory());
  EXPECT_EQ(RunTool({"deleteNetwork", "--id", "1"}),
            Refusal("the state cannot be saved in " + StateDirectory() +
                    ": opening: No such file or directory: Storage failed"));
  EXPECT_EQ(RunTool({"getIdsForTopo", "--context", "router"}), Success("IDs: 1 \n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
