// What the radios refuse is told with their reason, and leaves everything as it was.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"

#include <filesystem>

namespace TALO::Hwsim {

namespace {

class Refusals : public Scenario {};

TEST_F(Refusals, ANetworkThatOneRadioCannotCarryIsOnNone) {
  StartOnRadios();
  CreateNetwork("Home", 1);
  Client phone("phone", 2);
  phone.Join({});
  const std::string since = phone.ConnectedSince();
  const Json::Value networks = Ask({"getNetworks"});
  const EndToEnd::ToolRun interfaces = RunTool({"getRadioIfStatuses"});

  // The next BSS at 2.4 GHz finds its name taken.
  const NetworkNamespace elsewhere("elsewhere");
  Connect(NetworkNamespace(), "wlan0_2", elsewhere, "cable");
  const EndToEnd::ToolRun run = RunTool({"createNetwork", "--ssid", "Guests", "--password", "welcome-guest"});
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(run.output.starts_with("Create Network ID: Failed to execute command: ")) << run.output;
  EXPECT_NE(run.output.find("Failed to create interface wlan0_2"), std::string::npos) << run.output;
  EXPECT_TRUE(run.output.ends_with(": Radio failed\n")) << run.output;

  EXPECT_EQ(Ask({"getNetworks"}), networks);
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}), interfaces);
  EXPECT_FALSE(std::filesystem::exists("/sys/class/net/wlan1_2"));
  Client visitor("visitor", 3);
  EXPECT_FALSE(visitor.Hears("Guests", k5GHz));
  EXPECT_EQ(phone.ConnectedSince(), since);

  OutputOf({"ip", "link", "delete", "wlan0_2"});
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Guests", "--password", "welcome-guest"}).status, 0);
  visitor.Join({.ssid = "Guests", .passphrase = "welcome-guest"});
  EXPECT_EQ(phone.ConnectedSince(), since);
}

TEST_F(Refusals, ARefusedNetworkIsNotThereAfterTheDaemonIsStartedAgain) {
  StartOnRadios();
  const NetworkNamespace elsewhere("elsewhere");
  Connect(NetworkNamespace(), "wlan0_1", elsewhere, "cable");
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"}).status, 1);
  OutputOf({"ip", "link", "delete", "wlan0_1"});
  StartOnRadios();
  EXPECT_TRUE(Ask({"getNetworks"}).empty());
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), EndToEnd::Success("1\n"));
}

}  // namespace

}  // namespace TALO::Hwsim
