// What the daemon refuses to start with, and what it says then.

#include "support/end_to_end_test.h"
#include "support/files.h"

#include <csignal>
#include <filesystem>

namespace TALO::EndToEnd {

namespace {

class DaemonStart : public EndToEndTest {
 protected:
  /// Runs the daemon on the bus to its end, with an empty configuration file and a state directory of its own
  /// where the setup says nothing of either.
  ToolRun RunDaemon(const DaemonSetup& setup) {
    DaemonSetup withState = setup;
    withState.environment.emplace("STATE_DIRECTORY", Path("new-state"));
    Process daemon(DaemonProcess(Bus(), ConfigFile(), withState));
    return Finish(daemon);
  }

  std::string ConfigFile() const { return Path("talowifid.conf"); }

  static ToolRun Refused(const std::string& message) { return {1, "", "talowifid: " + message + "\n"}; }
};

struct BadOption {
  const char* option;
  const char* value;
  const char* message;
};

const std::vector<BadOption>& BadValues() {
  static const std::vector<BadOption> values = {
      {"radio-driver", "windows",
       "the option radio-driver cannot be \"windows\": it is \"simulated\" or \"linux\""},
      {"model", "Oak500", "the option model cannot be \"Oak500\": there is no such name"},
      {"model", "alder100", "the option model cannot be \"alder100\": there is no such name"},
      {"model", "Error", "the option model cannot be \"Error\": it is not a model"},
      {"country", "XX", "the option country cannot be \"XX\": there is no such name"},
      {"country", "MaxCountryCode", "the option country cannot be \"MaxCountryCode\": it is not a country"},
      {"bus", "private", "the option bus cannot be \"private\": it is \"system\" or \"session\""},
      {"log-level", "debug", "the option log-level cannot be \"debug\": there is no such name"},
  };
  return values;
}

TEST_F(DaemonStart, RefusesBadValuesOnTheCommandLine) {
  for (const BadOption& bad : BadValues()) {
    EXPECT_EQ(RunDaemon({.options = {"--" + std::string(bad.option), bad.value}}), Refused(bad.message));
  }
}

TEST_F(DaemonStart, RefusesBadValuesInTheConfigurationFile) {
  for (const BadOption& bad : BadValues()) {
    EXPECT_EQ(RunDaemon({.options = {}, .config = bad.option + std::string(" = ") + bad.value + "\n"}),
              Refused(bad.message));
  }
}

TEST_F(DaemonStart, RefusesWordsThatAreNoOption) {
  EXPECT_EQ(RunDaemon({.options = {"--colour", "blue"}}), Refused("unrecognised option '--colour'"));
  EXPECT_EQ(RunDaemon({.options = {"now"}}),
            Refused("the word \"now\" on the command line belongs to no option"));
  EXPECT_EQ(RunDaemon({.options = {"--model"}}),
            Refused("the required argument for option '--model' is missing"));
  EXPECT_EQ(RunDaemon({.options = {"--model", "Dune40", "--model", "Dune40"}}),
            Refused("option '--model' cannot be specified more than once"));
}

TEST_F(DaemonStart, RefusesAConfigurationFileWithUnknownKeysOrNoKeys) {
  const std::string cannotBeUsed = "the configuration file " + ConfigFile() + " cannot be used: ";
  EXPECT_EQ(RunDaemon({.options = {}, .config = "# comment\ncolour = blue\n"}),
            Refused(cannotBeUsed + "unrecognised option 'colour'"));
  EXPECT_EQ(RunDaemon({.options = {}, .config = "config = /dev/null\n"}),
            Refused(cannotBeUsed + "unrecognised option 'config'"));
  EXPECT_EQ(RunDaemon({.options = {}, .config = "Dune40\n"}),
            Refused(cannotBeUsed + "the options configuration file contains an invalid line 'Dune40'"));
}

TEST_F(DaemonStart, RefusesAConfigurationFileThatCannotBeRead) {
  const auto runWith = [this](const std::string& path) {
    ProcessSetup setup = DaemonProcess(Bus(), ConfigFile(), {.options = {"--state-dir", StateDirectory()}});
    setup.words.at(2) = path;
    Process daemon(setup);
    return Finish(daemon);
  };
  EXPECT_EQ(runWith(Path("none.conf")),
            Refused("the configuration file " + Path("none.conf") + " cannot be read"));
  std::filesystem::create_directory(Path("directory.conf"));
  EXPECT_EQ(runWith(Path("directory.conf")),
            Refused("the configuration file " + Path("directory.conf") + " cannot be read"));
}

TEST_F(DaemonStart, RefusesWithoutABus) {
  DaemonSetup setup{.options = {}, .environment = {{"DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + Path("none")}}};
  EXPECT_EQ(RunDaemon(setup), Refused("the system bus cannot be reached: No such file or directory"));
  setup = {.options = {"--bus", "session"},
           .environment = {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + Path("none")}}};
  EXPECT_EQ(RunDaemon(setup), Refused("the session bus cannot be reached: No such file or directory"));
}

TEST_F(DaemonStart, RefusesAStateDirectoryThatAnotherDaemonUses) {
  StartDaemon();
  CreateNetwork("Home", 1);
  const std::string state = ReadFile(StateFile());
  EXPECT_EQ(RunDaemon({.options = {"--state-dir", StateDirectory()}}),
            Refused("the state directory " + StateDirectory() +
                    " is used by another daemon: Resource temporarily unavailable"));
  EXPECT_EQ(ReadFile(StateFile()), state);
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
}

TEST_F(DaemonStart, RefusesAStateDirectoryThatCannotBeOne) {
  EXPECT_EQ(
      RunDaemon({.options = {"--state-dir", Path("none/state")}}),
      Refused("the state directory " + Path("none/state") + " cannot be made: No such file or directory"));
  WriteFile(Path("file"), "");
  EXPECT_EQ(RunDaemon({.options = {"--state-dir", Path("file")}}),
            Refused("the state directory " + Path("file") + " cannot be opened: Not a directory"));
}

TEST_F(DaemonStart, RefusesWhereItsNameIsTaken) {
  StartDaemon();
  EXPECT_EQ(RunDaemon({.options = {"--log-level", "Warning"}}),
            Refused("the name com.talo.Wifi1 cannot be taken on the bus: File exists"));
  // The first goes on.
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
}

TEST_F(DaemonStart, RefusesWhereThePolicyKeepsItsNameFromIt) {
  StartBus({.policy = "<deny own=\"com.talo.Wifi1\"/>"});
  EXPECT_EQ(RunDaemon({.options = {"--log-level", "Warning"}}),
            Refused("the name com.talo.Wifi1 cannot be taken on the bus: Permission denied"));
}

TEST_F(DaemonStart, RefusesAScenarioThatItCannotReadOrUnderstand) {
  const auto runWith = [this](const std::string& file) {
    return RunDaemon({.options = {"--scenario", file}});
  };
  EXPECT_EQ(runWith(Path("none.json")),
            Refused("the scenario " + Path("none.json") + " cannot be read: No such file or directory"));
  const std::string file = Path("scenario.json");
  WriteFile(file, R"({"devices": [{"address": "phone"}]})");
  EXPECT_EQ(runWith(file), Refused("the scenario " + file + ": devices[0].address is not a MAC address"));
}

TEST_F(DaemonStart, RefusesAStateOfANewerVersionAndLeavesItAsItIs) {
  StartDaemon();
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  std::string newer = ReadFile(StateFile());
  const std::string version = "\"version\" : 2";
  ASSERT_NE(newer.find(version), std::string::npos) << newer;
  newer.replace(newer.find(version), version.size(), "\"version\" : 3");
  WriteFile(StateFile(), newer);
  const std::string last = ReadFile(StateFile() + ".last");

  EXPECT_EQ(RunDaemon({.options = {"--state-dir", StateDirectory()}}),
            Refused("the state in " + StateFile() +
                    " cannot be read: it is of version 3, this daemon knows the versions 1 to 2"));
  EXPECT_EQ(ReadFile(StateFile()), newer);
  EXPECT_EQ(ReadFile(StateFile() + ".last"), last);
}

TEST_F(DaemonStart, RefusesAStateOfACountryThatTheModelMayNotBeUsedIn) {
  StartDaemon({.options = {"--country", "US", "--log-level", "Debug"}});
  CreateNetwork("Home", 1);
  EXPECT_EQ(Daemon().Terminate(SIGTERM), 0);
  const std::string stored = ReadFile(StateFile());
  EXPECT_EQ(RunDaemon({.options = {"--model", "Birch200", "--state-dir", StateDirectory()}}),
            Refused("the stored state is of a router in US, where the model Birch200 may not be used"));
  EXPECT_EQ(ReadFile(StateFile()), stored);
}

}  // namespace

}  // namespace TALO::EndToEnd
