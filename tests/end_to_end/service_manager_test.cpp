// What the daemon tells the service manager that started it.

#include "support/end_to_end_test.h"
#include "support/files.h"
#include "support/notify_socket.h"
#include "support/test_connection.h"

#include <csignal>

namespace TALO::EndToEnd {

namespace {

class ManagedDaemon : public EndToEndTest {
 protected:
  /// Not DaemonOnBus: that waits for the name, and what comes before it counts here.
  std::unique_ptr<Process> Start(const std::vector<std::string>& options = {}, Environment environment = {}) {
    environment.emplace("NOTIFY_SOCKET", manager_.Path());
    environment.emplace("STATE_DIRECTORY", StateDirectory());
    return std::make_unique<Process>(
        DaemonProcess(Bus(), Path("talowifid.conf"),
                      {.options = options, .config = "log-level = Debug\n", .environment = environment}));
  }

  NotifySocket manager_;
};

TEST_F(ManagedDaemon, IsReadyOnceItHasItsNameAndTheRadiosAreUp) {
  StartDaemon();
  CreateNetwork("Home", 1);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  // Radios that take their time.
  WriteFile(Path("scenario.json"), R"({"timings": {"applyMilliseconds": 300, "bssMilliseconds": 300}})");
  const auto daemon = Start({"--scenario", Path("scenario.json")});
  EXPECT_EQ(manager_.Receive(), "READY=1\nSTATUS=1 network on 3 radios");
  EXPECT_TRUE(TestConnection(Address()).HasOwner());
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}),
            Success("Frequency           Radio Interface     Enabled Wifi Interfaces\n"
                    "Band2_4GHz          wlan0               wlan0_1 \n"
                    "Band5GHz_1          wlan1               wlan1_1 \n"
                    "Band5GHz_2          wlan2               wlan2_1 \n"));
}

TEST_F(ManagedDaemon, TellsHowManyNetworksThereAre) {
  const auto daemon = Start({"--model", "Dune40"});
  EXPECT_EQ(manager_.Receive(), "READY=1\nSTATUS=0 networks on 2 radios");
  CreateNetwork("Home", 1);
  EXPECT_EQ(manager_.Receive(), "STATUS=1 network on 2 radios");
  CreateNetwork("Guests", 2);
  EXPECT_EQ(manager_.Receive(), "STATUS=2 networks on 2 radios");
  Do({"deleteNetwork", "--id", "1"});
  EXPECT_EQ(manager_.Receive(), "STATUS=1 network on 2 radios");
}

TEST_F(ManagedDaemon, TellsThatItEnds) {
  for (const int signal : {SIGTERM, SIGINT}) {
    const auto daemon = Start();
    EXPECT_EQ(manager_.Receive(), "READY=1\nSTATUS=0 networks on 3 radios");
    daemon->SendSignal(signal);
    EXPECT_EQ(manager_.Receive(), "STOPPING=1");
    EXPECT_EQ(daemon->Wait(), 0);
  }
}

TEST_F(ManagedDaemon, ShowsAgainAndAgainThatItIsAliveWhereItIsWatched) {
  const auto daemon = Start({}, {{"WATCHDOG_USEC", "200000"}});
  int alive = 0;
  bool ready = false;
  while (!ready || alive < 4) {
    const std::string message = manager_.Receive();
    ready = ready || message == "READY=1\nSTATUS=0 networks on 3 radios";
    alive += message == "WATCHDOG=1" ? 1 : 0;
  }
}

TEST_F(ManagedDaemon, IsNotReadyWhereItsNameIsTaken) {
  StartDaemon();
  const auto second = Start({}, {{"STATE_DIRECTORY", Path("other-state")}});
  EXPECT_EQ(second->Wait(), 1);
  EXPECT_FALSE(manager_.HasMessage());
}

}  // namespace

}  // namespace TALO::EndToEnd
