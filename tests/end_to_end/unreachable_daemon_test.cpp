// What the tool says where there is a bus but no daemon behind it that answers.

#include "support/bus_monitor.h"
#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/fake_service.h"
#include "support/test_connection.h"

#include <chrono>
#include <csignal>

namespace TALO::EndToEnd {

namespace {

class UnreachableDaemon : public EndToEndTest {
 protected:
  /// One message for each command, whatever it asks first.
  void ExpectAll(const std::string& message) { ExpectEach(message, message); }

  /// `asked` for a command that asks for its operation first, `gated` for one that asks for the log level.
  void ExpectEach(const std::string& asked, const std::string& gated) {
    EXPECT_EQ(RunTool(kPlain), Failure(asked));
    EXPECT_EQ(RunTool(kDebugOnly), Failure(gated + Tool::helpListing(false)));
    EXPECT_EQ(RunTool(kHelp), Success(Tool::helpListing(false)));
  }

  /// Starts the tool, and does `strike` once the bus has passed on its call of `member` to a daemon that is
  /// stopped and so has not answered.
  template <typename Strike>
  ToolRun RunToolAndStrike(const Words& words, const std::string& member, Strike strike) {
    StartDaemon();
    Daemon().GetProcess().SendSignal(SIGSTOP);
    BusMonitor monitor(Address());
    Process tool(ToolProcess(Address(), words));
    monitor.WaitForCall(member);
    strike();
    return Finish(tool);
  }

  ToolRun RunToolAndKillDaemon(const Words& words, const std::string& member) {
    return RunToolAndStrike(words, member, [this] { Daemon().Terminate(SIGKILL); });
  }
  ToolRun RunToolAndKillBus(const Words& words, const std::string& member) {
    StartBus({});
    return RunToolAndStrike(words, member, [this] {
      Bus().GetProcess().SendSignal(SIGKILL);
      Bus().GetProcess().Wait();
    });
  }
};

TEST_F(UnreachableDaemon, IsNotRunningWhereItsNameHasNoOwner) {
  ExpectAll("the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n");
}

TEST_F(UnreachableDaemon, IsNotRunningOnceItHasEnded) {
  StartDaemon();
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  ExpectAll("the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n");
}

// The reason is the bus's own. A program that ends well may have left a daemon behind: the bus waits for it.
TEST_F(UnreachableDaemon, IsNotStartedWhereTheBusCannotStartIt) {
  for (const char* command : {"/bin/false", "/bin/true", "/nowhere/talowifid"}) {
    SCOPED_TRACE(command);
    StartBus({.startTimeout = 200, .activation = command});
    std::string reason;
    try {
      TestConnection(Address()).Activate();
    } catch (const CallError& error) {
      reason = error.Message();
    }
    ASSERT_NE(reason, "");
    ExpectAll("the bus could not start the wifi daemon (" + reason + "): Daemon not started\n");
  }
}

TEST_F(UnreachableDaemon, IsStartedByTheBusWhereThatKnowsHow) {
  // To what it starts, a bus calls itself the session's.
  StartBus({.activation = std::string(DaemonProgram()) +
                          " --config /dev/null --bus session --log-level Debug --state-dir " +
                          StateDirectory()});
  CreateNetwork("Home", 1);
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
}

TEST_F(UnreachableDaemon, IsOutOfReachWhereThePolicyDeniesIt) {
  StartBus({.policy = "<deny send_destination=\"com.talo.Wifi1\"/>"});
  StartDaemon();
  const std::string denied = "the bus does not let this user talk to the wifi daemon (";
  ExpectEach(denied + "GetNetworkSettings): Access denied\n", denied + "LogLevel): Access denied\n");
}

TEST_F(UnreachableDaemon, RefusesNothingThatThePolicyAllows) {
  StartBus({.policy = "<deny send_destination=\"com.talo.Wifi1\" send_interface=\"com.talo.Wifi1.Tool\"/>"});
  StartDaemon();
  CreateNetwork("Home", 1);
  EXPECT_EQ(
      RunTool({"restartNetworks", "--force", "0"}),
      Failure("the bus does not let this user talk to the wifi daemon (RestartNetworks): Access denied\n"));
}

TEST_F(UnreachableDaemon, GoesAwayWhenItIsKilledDuringTheCall) {
  const std::string gone = "the wifi daemon went away before it answered (";
  EXPECT_EQ(RunToolAndKillDaemon(kPlain, "GetNetworkSettings"),
            Failure(gone + "GetNetworkSettings): Daemon gone\n"));
  EXPECT_EQ(RunToolAndKillDaemon(kDebugOnly, "Get"),
            Failure(gone + "LogLevel): Daemon gone\n" + Tool::helpListing(false)));
  EXPECT_EQ(RunToolAndKillDaemon(kHelp, "Get"), Success(Tool::helpListing(false)));
}

TEST_F(UnreachableDaemon, GoesAwayWithTheBus) {
  const std::string gone = "the bus went away before the wifi daemon answered (";
  EXPECT_EQ(RunToolAndKillBus(kPlain, "GetNetworkSettings"),
            Failure(gone + "GetNetworkSettings): Daemon gone\n"));
  EXPECT_EQ(RunToolAndKillBus(kDebugOnly, "Get"),
            Failure(gone + "LogLevel): Daemon gone\n" + Tool::helpListing(false)));
  EXPECT_EQ(RunToolAndKillBus(kHelp, "Get"), Success(Tool::helpListing(false)));
}

TEST_F(UnreachableDaemon, GoesAwayBetweenTheLogLevelAndTheOperation) {
  FakeService service(Address(), [](sd_bus_message* call) {
    if (!AsksForLogLevel(call)) {
      return FakeService::Then::Vanish;
    }
    AnswerLogLevel(call, "debug");
    return FakeService::Then::ServeOn;
  });
  Process tool(ToolProcess(Address(), {"createNetwork", "--ssid", "Home", "--password", "correct-horse"}));
  service.ServeUntilEndOf(tool);
  EXPECT_EQ(Finish(tool), Failure("Create Network ID: the wifi daemon went away before it answered "
                                  "(CreateNetwork): Daemon gone\n"));
}

TEST_F(UnreachableDaemon, IsGivenUpAfter30SecondsWithoutAnAnswer) {
  StartDaemon();
  Daemon().GetProcess().SendSignal(SIGSTOP);
  const auto start = std::chrono::steady_clock::now();
  Process plain(ToolProcess(Address(), kPlain));
  Process help(ToolProcess(Address(), kHelp));
  EXPECT_EQ(Finish(plain),
            Failure("the wifi daemon did not answer in time (GetNetworkSettings): No answer\n"));
  EXPECT_EQ(Finish(help), Success(Tool::helpListing(false)));
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

TEST_F(UnreachableDaemon, IsReachedAgainOnceItIsBack) {
  StartDaemon();
  CreateNetwork("Home", 1);
  EXPECT_EQ(Daemon().Terminate(SIGKILL), -SIGKILL);
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}),
            Failure("the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n"));
  StartDaemon();
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
}

}  // namespace

}  // namespace TALO::EndToEnd
