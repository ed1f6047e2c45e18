// How the daemon ends, and what it logs.

#include "support/end_to_end_test.h"

#include <csignal>

namespace TALO::EndToEnd {

namespace {

class DaemonEnd : public EndToEndTest {};

TEST_F(DaemonEnd, IsASuccessWhenItIsAskedForBySignal) {
  for (const int signal : {SIGTERM, SIGINT}) {
    SCOPED_TRACE(signal);
    StartDaemon();
    EXPECT_EQ(Daemon().Terminate(signal), 0);
    EXPECT_EQ(Daemon().GetProcess().Output(), "");
    EXPECT_EQ(Daemon().GetProcess().Errors(), LogOfStart() + "info: talowifid ends\n");
  }
}

TEST_F(DaemonEnd, IsAFailureWhenTheBusIsLost) {
  StartDaemon();
  Bus().GetProcess().SendSignal(SIGKILL);
  Bus().GetProcess().Wait();
  EXPECT_EQ(Daemon().GetProcess().Wait(), 1);
  EXPECT_EQ(Daemon().GetProcess().Errors(),
            LogOfStart() + "talowifid: the bus is lost: Connection reset by peer\n");
}

TEST_F(DaemonEnd, IsLoggedAtItsLevelOnly) {
  StartDaemon({.options = {"--log-level", "Warning"}});
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  EXPECT_EQ(Daemon().GetProcess().Errors(), "");
}

TEST_F(DaemonEnd, LeavesNoPassphraseInTheLog) {
  StartDaemon();
  CreateNetwork("Home", 1, "a-passphrase-of-mine");
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Home", "--password", "another-of-mine"}).status, 1);
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Guests", "--password", "of-mine"}).status, 1);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  EXPECT_EQ(Daemon().GetProcess().Errors().find("of-mine"), std::string::npos);
}

}  // namespace

}  // namespace TALO::EndToEnd
