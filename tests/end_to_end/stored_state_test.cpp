// What a daemon finds again that the one before left.

#include "support/end_to_end_test.h"

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

}  // namespace

}  // namespace TALO::EndToEnd
