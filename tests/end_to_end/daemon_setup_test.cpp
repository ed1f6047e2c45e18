// How the daemon is set up, from where, and what it keeps where.

#include "support/command_rows.h"
#include "support/end_to_end_test.h"
#include "support/files.h"
#include "support/network_json.h"

#include <sys/stat.h>

#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class DaemonOptions : public EndToEndTest {
 protected:
  static unsigned ModeOf(const std::string& path) {
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777U;
  }

  /// Starts a daemon whose state directory the setup alone decides on.
  std::unique_ptr<DaemonOnBus> StartWith(const DaemonSetup& setup) {
    return std::make_unique<DaemonOnBus>(Bus(), setup);
  }

  std::string Country() {
    const std::string settings = RunTool({"getRadios"}).output;
    const std::string key = "\"country\" : \"";
    const std::size_t at = settings.find(key);
    return at == std::string::npos ? settings : settings.substr(at + key.size(), 2);
  }
};

const char* kDualBand =
    "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
    "Band2_4GHz          wlan0               \n"
    "Band5GHz            wlan1               \n";
const char* kTriBand =
    "Frequency           Radio Interface     Enabled Wifi Interfaces\n"
    "Band2_4GHz          wlan0               \n"
    "Band5GHz_1          wlan1               \n"
    "Band5GHz_2          wlan2               \n";

TEST_F(DaemonOptions, AreThoseOfATriBandRouterInGermanyOutOfTheBox) {
  StartDaemon({.options = {}});
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}), Success(kTriBand));
  EXPECT_EQ(RunTool({"help"}), Success(Tool::helpListing(false)));
  Do({"modifyLogLevel", "--level", "Debug"});
  EXPECT_EQ(Country(), "DE");
  CreateNetwork("Home", 1);
  EXPECT_EQ(WithoutTimes(RunTool({"getNetworks"}).output), PrintedNetworks({{}}));
}

TEST_F(DaemonOptions, AreReadFromTheConfigurationFile) {
  WriteFile(Path("scenario.json"), R"({"bridges": ["br7"]})");
  StartDaemon({.options = {},
               .config = "# the living room's\n"
                         "radio-driver = simulated\n"
                         "model = Cedar300\n"
                         "country = FR\n"
                         "bus = system\n"
                         "bridge = br7\n"
                         "log-level = Debug\n"
                         "scenario = " +
                         Path("scenario.json") + "\n"});
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}), Success(kDualBand));
  EXPECT_EQ(Country(), "FR");
  CreateNetwork("Home", 1);
  EXPECT_EQ(WithoutTimes(RunTool({"getNetworks"}).output),
            PrintedNetworks({{.bridge = "br7", .radios = {"Band2_4GHz", "Band5GHz"}}}));
}

TEST_F(DaemonOptions, OfTheCommandLineGoBeforeTheConfigurationFile) {
  WriteFile(Path("scenario.json"), R"({"bridges": ["br1"]})");
  StartDaemon({.options = {"--model", "Alder100", "--country", "GB", "--bridge", "br1", "--log-level",
                           "Debug", "--scenario", Path("scenario.json")},
               .config = "model = Cedar300\n"
                         "country = FR\n"
                         "bridge = br7\n"
                         "log-level = Error\n"
                         "scenario = /none\n"
                         "state-dir = " +
                         Path("configured") + "\n"});
  EXPECT_EQ(RunTool({"getRadioIfStatuses"}), Success(kTriBand));
  EXPECT_EQ(Country(), "GB");
  CreateNetwork("Home", 1);
  EXPECT_EQ(WithoutTimes(RunTool({"getNetworks"}).output), PrintedNetworks({{.bridge = "br1"}}));
  EXPECT_FALSE(std::filesystem::exists(Path("configured")));
}

TEST_F(DaemonOptions, ServeTheSessionBusWhereTheySaySo) {
  const PrivateBus other;
  StartDaemon({.options = {"--bus", "session"},
               .environment = {{"DBUS_SESSION_BUS_ADDRESS", Address()},
                               {"DBUS_SYSTEM_BUS_ADDRESS", other.Address()}}});
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
  Process elsewhere(ToolProcess(other.Address(), {"getNetworks"}));
  EXPECT_EQ(Finish(elsewhere),
            Failure("the wifi daemon is not running (com.talo.Wifi1 has no owner): Daemon not running\n"));
}

TEST_F(DaemonOptions, AreOnlyPrintedByHelp) {
  Process daemon({.words = {DaemonProgram(), "--help"}});
  EXPECT_EQ(Finish(daemon),
            Success("Usage: talowifid [OPTION...]:\n"
                    "  --help                                print this help\n"
                    "  --config FILE (=/etc/talowifi/talowifid.conf)\n"
                    "                                        configuration file; this one need not \n"
                    "                                        exist\n"
                    "\n"
                    "Options, on the command line or as key = value in the configuration file:\n"
                    "  --radio-driver simulated|linux (=simulated)\n"
                    "                                        which radios to run on\n"
                    "  --model MODEL (=Alder100)             router model: Alder100, Birch200, \n"
                    "                                        Cedar300 or Dune40\n"
                    "  --country CODE (=DE)                  country code of a router that was never\n"
                    "                                        set up\n"
                    "  --bus system|session (=system)        which bus to serve\n"
                    "  --state-dir DIR (=/var/lib/talowifi)  where the state is kept\n"
                    "  --scenario FILE                       what the simulated radios hear; silence\n"
                    "                                        without one\n"
                    "  --radios MAP                          phys of the radios, as in phy0=Band5GHz\n"
                    "  --hostapd PROGRAM (=/usr/sbin/hostapd)\n"
                    "                                        program for access points\n"
                    "  --wpa-supplicant PROGRAM (=/usr/sbin/wpa_supplicant)\n"
                    "                                        program for stations\n"
                    "  --runtime-dir DIR (=/run/talowifi)    where those find their files\n"
                    "  --bridge NAME (=br0)                  bridge of new networks\n"
                    "  --access-group GROUP (=netdev)        whose members may use the wifi daemon\n"
                    "  --log-level LEVEL (=Information)      Error, Warning, Information or Debug\n"));
}

TEST_F(DaemonOptions, LeaveTheStateDirectoryToTheServiceManagerWhereTheyNameNone) {
  const auto daemon = StartWith({.environment = {{"STATE_DIRECTORY", Path("managed")}}});
  CreateNetwork("Home", 1);
  EXPECT_TRUE(std::filesystem::exists(Path("managed/state.json")));
}

TEST_F(DaemonOptions, GoBeforeTheServiceManagersStateDirectory) {
  auto daemon = StartWith({.config = "state-dir = " + Path("configured") + "\nlog-level = Debug\n",
                           .environment = {{"STATE_DIRECTORY", Path("managed")}}});
  CreateNetwork("Home", 1);
  EXPECT_TRUE(std::filesystem::exists(Path("configured/state.json")));
  EXPECT_EQ(daemon->Terminate(SIGTERM), 0);
  StartDaemon({.environment = {{"STATE_DIRECTORY", Path("managed")}}});
  CreateNetwork("Home", 1);
  EXPECT_TRUE(std::filesystem::exists(StateFile()));
  EXPECT_FALSE(std::filesystem::exists(Path("managed")));
}

TEST_F(DaemonOptions, CountryIsThatOfARouterThatWasNeverSetUp) {
  StartDaemon({.options = {"--log-level", "Debug", "--country", "FR"}});
  EXPECT_EQ(Country(), "FR");
  CreateNetwork("Home", 1);
  RestartDaemon({.options = {"--log-level", "Debug", "--country", "GB"}});
  EXPECT_EQ(Country(), "FR");
}

TEST_F(DaemonOptions, ModelMayChangeUnderTheNetworks) {
  StartDaemon();
  CreateNetwork("Home", 1);
  RestartDaemon({.options = {"--log-level", "Debug", "--model", "Dune40"}});
  EXPECT_EQ(WithoutTimes(RunTool({"getNetworks"}).output),
            PrintedNetworks({{.radios = {"Band2_4GHz", "Band5GHz"}}}));
}

TEST_F(DaemonOptions, KeepTheStateForItsOwnerWhateverTheMaskOfNewFiles) {
  const mode_t before = umask(0);
  StartDaemon();
  umask(before);
  CreateNetwork("Home", 1);
  EXPECT_EQ(ModeOf(StateDirectory()), 0700U);
  EXPECT_EQ(ModeOf(StateFile()), 0600U);
  EXPECT_EQ(ModeOf(StateDirectory() + "/lock"), 0600U);
}

}  // namespace

}  // namespace TALO::EndToEnd
