// What a daemon finds again that the one before left.

#include "support/story_test.h"

#include <csignal>
#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class StoredState : public EndToEndTest {
 protected:
  StoredState() { StartDaemon(); }

  /// Everything that can be asked.
  std::string Picture() {
    std::string picture;
    for (const char* word :
         {"getNetworks", "getNetworkInterfaces", "isAllNetworkAPDisabled", "getRadios", "getRadioStatuses",
          "getRadioIfStatuses", "getInterfaceRadioMap", "getRadioConversionInfo"}) {
      const ToolRun run = RunTool({word});
      EXPECT_EQ(run.status, 0) << word;
      EXPECT_EQ(run.errors, "") << word;
      picture += word + ("\n" + run.output);
    }
    return picture;
  }
};

TEST_F(StoredState, SurvivesARestartOfTheDaemon) {
  CreateNetwork("Home", 1);
  CreateNetwork("A\n\xff\xc3\xa9\"", 2);
  CreateNetwork("Attic", 3);
  Do({"deleteNetwork", "--id", "1"});
  const std::string before = Picture();
  RestartDaemon();
  EXPECT_EQ(Picture(), before);
}

TEST_F(StoredState, SurvivesADaemonThatIsKilled) {
  CreateNetwork("Home", 1);
  const std::string before = Picture();
  EXPECT_EQ(Daemon().Terminate(SIGKILL), -SIGKILL);
  StartDaemon();
  EXPECT_EQ(Picture(), before);
}

TEST_F(StoredState, KeepsTheIDsOfDeletedNetworksFromNewOnes) {
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  Do({"deleteNetwork", "--id", "2"});
  RestartDaemon();
  CreateNetwork("Guests", 3);
  Do({"deleteNetwork", "--id", "3"});
  Do({"deleteNetwork", "--id", "1"});
  RestartDaemon();
  CreateNetwork("Home", 4);
}

TEST_F(StoredState, DoesNotHoldTheLogLevel) {
  RestartDaemon({.options = {}});
  Do({"modifyLogLevel", "--level", "Debug"});
  EXPECT_EQ(RunTool({"getNetworkInterfaces"}), Success("\n"));
  RestartDaemon({.options = {}});
  EXPECT_EQ(RunTool({"getNetworkInterfaces"}),
            Failure("getNetworkInterfaces is supported only on debug mode.\n"));
}

TEST_F(StoredState, IsNotWrittenBeforeAnythingIsChanged) {
  RunTool({"getNetworks"});
  RunTool({"deleteNetwork", "--id", "1"});
  EXPECT_FALSE(std::filesystem::exists(StateFile()));
}

class StoredStateOnTheRadios : public StoryTest {};

// A radio that is asked for more than its plan at the start fails here, and the daemon says so.
TEST_F(StoredStateOnTheRadios, IsBroughtToEachOfThemOnce) {
  StartStory("");
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  StartStory(
      R"("faults": {"apply": [{"radio": "Band2_4GHz", "skip": 1, "times": 2, "reason": "once was enough"},
                                     {"radio": "Band5GHz", "skip": 1, "times": 2, "reason": "once was enough"}]})");
  EXPECT_EQ(Daemon().GetProcess().Errors(), LogOfStart(2));
  ExpectNow({"getRadioIfStatuses"},
            "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
            "Band2_4GHz          wlan0               wlan0_1 wlan0_2 \n"
            "Band5GHz            wlan1               wlan1_1 wlan1_2 \n");
  for (int radio = 0; radio < 2; ++radio) {
    const ToolRun restart = RunTool({"restartNetworks", "--force", "1"});
    EXPECT_EQ(restart.status, 1);
    EXPECT_NE(restart.output.find("once was enough: Radio failed\n"), std::string::npos) << restart.output;
  }
}

}  // namespace

}  // namespace TALO::EndToEnd
