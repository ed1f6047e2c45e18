// What is killed while a change is under way leaves the change done or not done, and the air as the state has
// it.

#include "hwsim/support/furnished_router.h"
#include "hwsim/support/waiting.h"
#include "support/files.h"

#include <csignal>
#include <filesystem>
#include <functional>

namespace TALO::Hwsim {

namespace {

class Interruptions : public FurnishedRouter {
 protected:
  static constexpr const char* kParty = "Party";
  const Words kJoinOn5GHz = StationCommand("Band5GHz", "Uplink", "uplink-password");
  const Words kCreateParty = {"createNetwork", "--ssid", kParty, "--password", "party-secret"};

  static bool HasInterface(const std::string& name) {
    return std::filesystem::exists("/sys/class/net/" + name);
  }

  /// What the daemon has stored: a change is stored before a radio hears of it.
  static std::string Stored() { return ReadFile(std::string(kStateDirectory) + "/state.json"); }

  /// Runs a command, and interrupts the daemon or one of its programs once `moment` has come.
  EndToEnd::ToolRun RunInterrupted(const Words& command, const std::string& awaited,
                                   const std::function<bool()>& moment,
                                   const std::function<void()>& interrupt) {
    EndToEnd::Process tool(EndToEnd::ToolProcess(kBusAddress, command));
    WaitUntil(awaited, moment);
    interrupt();
    return EndToEnd::Finish(tool);
  }

  /// Runs a command that a program has not carried out when it is killed.
  EndToEnd::ToolRun RunAndKillBefore(const Words& command, const std::string& program) {
    const std::string before = Stored();
    const pid_t halted = SendSignal(program, SIGSTOP);
    return RunInterrupted(
        command, "the change is stored", [&] { return Stored() != before; },
        [&] { EXPECT_EQ(kill(halted, SIGKILL), 0); });
  }

  /// The networks have their interfaces on both radios, and there are no others.
  void ExpectStateAndAirAgree() {
    WaitUntil("each BSS of the state is there and no other", [&] {
      std::set<std::string> wanted;
      for (const Json::Value& network : Ask({"getNetworks"})) {
        for (const Json::Value& radio : network["radios"]) {
          wanted.insert(radio["interface"].asString());
          if (!radio["up"].asBool()) {
            return false;
          }
        }
      }
      std::set<std::string> there;
      for (const auto& entry : std::filesystem::directory_iterator("/sys/class/net")) {
        const std::string name = entry.path().filename();
        if (name.starts_with("wlan0_") || name.starts_with("wlan1_")) {
          there.insert(name);
        }
      }
      return there == wanted;
    });
  }

  /// What the caller of createNetwork was told is so, and all else as it was.
  void ExpectAsTold(const EndToEnd::ToolRun& run) {
    Stopwatch watch("the caller was told");
    ExpectStateAndAirAgree();
    if (run.status == 0) {
      ExpectParty();
      Do({"deleteNetwork", "--id", "3"});
    } else {
      EXPECT_TRUE(run.output.ends_with(": Radio failed\n")) << run.output;
      EXPECT_EQ(Ask({"getNetworks"}), networks_);
      Client visitor("visitor", 5);
      EXPECT_FALSE(visitor.Hears(kParty, k2_4GHz));
      EXPECT_FALSE(visitor.Hears(kParty, k5GHz));
    }
    ExpectAllBack(watch);
  }

  /// The same of kJoinOn5GHz.
  void ExpectStationAsTold(const EndToEnd::ToolRun& run) {
    Stopwatch watch("the caller was told");
    ExpectAllBack(watch);
    // The access point is not on 5 GHz.
    ExpectStationInTheEnd("Band5GHz", run.status == 0 ? "failed" : "disabled");
    EXPECT_EQ(HasInterface("wlan1sta"), run.status == 0);
  }

  void ExpectParty() {
    Client visitor("visitor", 5);
    visitor.Join({.ssid = kParty, .passphrase = "party-secret"});
    visitor.Join({.ssid = kParty, .passphrase = "party-secret", .frequency = k5GHz, .keyManagement = "SAE"});
  }
};

TEST_F(Interruptions, HostapdIsKilledBeforeItMakesANewNetwork) {
  const EndToEnd::ToolRun run = RunAndKillBefore(kCreateParty, "hostapd");
  EXPECT_EQ(run.status, 1);
  ExpectAsTold(run);
}

TEST_F(Interruptions, HostapdIsKilledWhileItMakesANewNetwork) {
  ExpectAsTold(RunInterrupted(
      kCreateParty, "the first BSS is there", [] { return HasInterface("wlan0_3"); },
      [&] { SendSignal("hostapd", SIGKILL); }));
}

TEST_F(Interruptions, HostapdIsKilledBeforeItTakesANetworkDown) {
  const EndToEnd::ToolRun run = RunAndKillBefore({"deleteNetwork", "--id", "2"}, "hostapd");
  ExpectStateAndAirAgree();
  if (run.status != 0) {
    Stopwatch watch("the caller was told");
    ExpectAllBack(watch);
    return;
  }
  EXPECT_EQ(Ask({"getNetworks"}).size(), 1U);
  laptop_.ExpectConnectedInTheEnd();
  phone_.Control().Do("REMOVE_NETWORK all");
  EXPECT_FALSE(phone_.Hears("Guests", k2_4GHz));
}

TEST_F(Interruptions, TheSupplicantIsKilledBeforeItTakesAStationAway) {
  const ClientsSince since = AskClients();
  const EndToEnd::ToolRun run =
      RunAndKillBefore(StationCommand("Band2_4GHz", "Uplink", "uplink-password", false), "wpa_supplicant");
  if (run.status == 0) {
    ExpectStationInTheEnd("Band2_4GHz", "disabled");
    EXPECT_FALSE(HasInterface("wlan0sta"));
    Do(StationCommand("Band2_4GHz", "Uplink", "uplink-password"));
  }
  Stopwatch watch("the caller was told");
  ExpectAllBack(watch);
  EXPECT_EQ(AskClients(), since);
}

TEST_F(Interruptions, TheSupplicantIsKilledBeforeItMakesAStation) {
  const ClientsSince since = AskClients();
  ExpectStationAsTold(RunAndKillBefore(kJoinOn5GHz, "wpa_supplicant"));
  EXPECT_EQ(AskClients(), since);
}

TEST_F(Interruptions, TheSupplicantIsKilledWhileItMakesAStation) {
  const ClientsSince since = AskClients();
  ExpectStationAsTold(RunInterrupted(
      kJoinOn5GHz, "the station is there", [] { return HasInterface("wlan1sta"); },
      [&] { SendSignal("wpa_supplicant", SIGKILL); }));
  EXPECT_EQ(AskClients(), since);
}

TEST_F(Interruptions, TheDaemonIsKilledWhileItMakesANewNetwork) {
  const EndToEnd::ToolRun run = RunInterrupted(
      kCreateParty, "the first BSS is there", [] { return HasInterface("wlan0_3"); },
      [&] { Daemon().SendSignal(SIGKILL); });
  EXPECT_EQ(Daemon().Wait(), -SIGKILL);
  StartOnRadios();
  ExpectStateAndAirAgree();
  // It was stored.
  EXPECT_EQ(Network(3)["networkName"], kParty) << run.output;
  ExpectParty();
  Do({"deleteNetwork", "--id", "3"});
  Stopwatch watch("the network was deleted");
  ExpectAllBack(watch);
}

TEST_F(Interruptions, TheDaemonIsKilledWhileItTakesANetworkDown) {
  CreateNetwork(kParty, 3, "party-secret");
  RunInterrupted(
      {"deleteNetwork", "--id", "3"}, "the first BSS is gone", [] { return !HasInterface("wlan0_3"); },
      [&] { Daemon().SendSignal(SIGKILL); });
  EXPECT_EQ(Daemon().Wait(), -SIGKILL);
  StartOnRadios();
  ExpectStateAndAirAgree();
  Stopwatch watch("another daemon serves");
  ExpectAllBack(watch);
  Client visitor("visitor", 5);
  EXPECT_FALSE(visitor.Hears(kParty, k2_4GHz));
}

}  // namespace

}  // namespace TALO::Hwsim
