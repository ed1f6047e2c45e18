// The daemon is asked to end in the middle of something.

#include "support/bus_monitor.h"
#include "support/story_test.h"
#include "support/unix_listener.h"

#include <csignal>
#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class LastMoments : public StoryTest {
 protected:
  /// A daemon of which one radio takes that long for what is asked of it first after the start.
  void StartSlowly(int milliseconds) {
    StartStory(R"("faults": {"apply": [{"radio": "Band5GHz", "skip": 1, "milliseconds": )" +
               std::to_string(milliseconds) + "}]}");
  }

  /// The tool makes a network, whose state is stored and whose radio is not done when this returns.
  std::unique_ptr<Process> StartCreatingHome() {
    auto tool = std::make_unique<Process>(
        ToolProcess(Address(), {"createNetwork", "--ssid", "Home", "--password", "correct-horse"}));
    const Deadline deadline;
    while (!std::filesystem::exists(StateFile())) {
      if (deadline.HasPassed()) {
        throw std::runtime_error("the state is not stored");
      }
    }
    return tool;
  }
};

TEST_F(LastMoments, BringAChangeUnderWayToItsEnd) {
  StartSlowly(300);
  const auto tool = StartCreatingHome();
  EXPECT_FALSE(tool->HasEnded());
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  EXPECT_EQ(Finish(*tool), Success("Create Network ID: 1\n"));
  EXPECT_EQ(Daemon().GetProcess().Errors(), LogOfStart(2) + "info: talowifid ends\n");
  StartStory("");
  ExpectNow({"getNetworkInterfaces"}, "ID: 1, Interface: \n\twlan0_1\n\twlan1_1\n\n");
}

TEST_F(LastMoments, RefuseFurtherChangesAndAnswerQuestions) {
  StartSlowly(1000);
  const auto tool = StartCreatingHome();
  Daemon().GetProcess().SendSignal(SIGTERM);
  // Whichever of the two the daemon sees first, the change before is not done yet and this one waits for it.
  EXPECT_EQ(RunTool({"deleteNetwork", "--id", "1"}), Refusal("the wifi daemon is about to end: Busy"));
  EXPECT_EQ(Finish(*tool), Success("Create Network ID: 1\n"));
  EXPECT_EQ(Daemon().GetProcess().Wait(), 0);
}

TEST_F(LastMoments, AreOverWhenTheDaemonIsAskedAgain) {
  StartSlowly(60000);
  const auto tool = StartCreatingHome();
  Daemon().GetProcess().SendSignal(SIGTERM);
  Daemon().GetProcess().SendSignal(SIGINT);
  EXPECT_EQ(Daemon().GetProcess().Wait(), 0);
  EXPECT_EQ(Finish(*tool),
            Failure("Create Network ID: CreateNetwork failed on the bus: org.freedesktop.DBus.Error.Failed: "
                    "the wifi daemon failed: the call was dropped: Unexpected error\n"));
  // It was stored before the radios were asked, and nobody was told that this did not happen.
  StartStory("");
  ExpectNow({"getNetworkInterfaces"}, "ID: 1, Interface: \n\twlan0_1\n\twlan1_1\n\n");
}

TEST_F(LastMoments, DoNotWaitForABusThatStandsStill) {
  StartStory("");
  Bus().GetProcess().SendSignal(SIGSTOP);
  Daemon().GetProcess().SendSignal(SIGTERM);
  EXPECT_EQ(Daemon().GetProcess().Wait(), 0);
  EXPECT_EQ(Daemon().GetProcess().Errors(), LogOfStart(2) + "info: talowifid ends\n");
  Bus().GetProcess().SendSignal(SIGCONT);
}

TEST_F(LastMoments, DoNotWaitForABusThatNeverSaidAnything) {
  const UnixListener listener;
  DaemonSetup setup{.options = {"--state-dir", StateDirectory()},
                    .environment = {{"DBUS_SYSTEM_BUS_ADDRESS", listener.Address()}}};
  Process daemon(DaemonProcess(Bus(), Path("talowifid.conf"), setup));
  const Descriptor caller = listener.Accept();
  daemon.SendSignal(SIGTERM);
  EXPECT_EQ(daemon.Wait(), 0);
  // How many radios were up by then is up to the two processes' luck.
  EXPECT_TRUE(daemon.Errors().ends_with("info: talowifid ends\n")) << daemon.Errors();
  EXPECT_EQ(daemon.Errors().find("serves"), std::string::npos) << daemon.Errors();
}

}  // namespace

}  // namespace TALO::EndToEnd
