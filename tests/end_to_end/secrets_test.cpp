// Where a passphrase must not be found after it went through the tool and the daemon.

#include "support/bus_monitor.h"
#include "support/end_to_end_test.h"
#include "support/files.h"
#include "support/story_test.h"
#include "support/test_connection.h"
#include "support/unix_listener.h"

#include <algorithm>
#include <filesystem>
#include <regex>

namespace TALO::EndToEnd {

namespace {

constexpr const char* kMarker = "zq7-marker-kw4";
constexpr const char* kMarkerInHex = "7a71372d6d61726b65722d6b7734";
/// What a careless cut would leave of it.
constexpr const char* kPartOfMarker = "zq7-mar";

/// Every command that takes a secret, with options that the daemon accepts.
std::vector<Words> AcceptedCommands() {
  return {
      {"createNetwork", "--ssid", "Home", "--password", kMarker},
      {"modifyBackhaul", "--enable", "1", "--ssid", "Mesh", "--password", kMarker},
      {"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", kMarker},
      {"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", "Up", "--user", "", "--password",
       kMarker, "--bssid", "00:00:00:00:00:00", "--securityMode", "PersonalWPA2"},
      {"modifyStation", "--enable", "1", "--radio", "Band5GHz", "--essid", "Up", "--user", "anna",
       "--password", kMarker, "--bssid", "00:00:00:00:00:00", "--securityMode", "EnterpriseWPA2"},
      {"wpsERConfig", "--ifName", "wlan0_1", "--ssid", "Home", "--key", kMarker, "--mode", "PersonalWPA2"},
  };
}

/// The same with something wrong beside the secret, or with it.
std::vector<Words> RefusedCommands() {
  const std::string invalid = std::string(kMarker) + "\x01";
  const std::string tooLong(64, 'z');
  return {
      {"createNetwork", "--ssid", "Home", "--password", kMarker},
      {"createNetwork", "--ssid", "Other", "--password", invalid},
      {"createNetwork", "--ssid", "Other", "--password", kMarker + tooLong},
      {"createNetwork", "--ssid", "Other", "--password", kMarker + std::string(2000, 'z')},
      {"modifyBackhaul", "--enable", "1", "--ssid", "", "--password", kMarker},
      {"modifyBackhaulSTA", "--enable", "1", "--ssid", "Mesh", "--password", invalid},
      {"modifyStation", "--enable", "1", "--radio", "Band2_4GHz", "--essid", "Up", "--user", "", "--password",
       kMarker, "--bssid", "00:00:00:00:00:00", "--securityMode", "Disabled"},
      {"wpsERConfig", "--ifName", "wlan0_1", "--ssid", "Home", "--key", kMarker, "--mode", "Disabled"},
      {"wpsERConfig", "--ifName", "none", "--ssid", "Home", "--key", invalid, "--mode", "PersonalWPA2"},
  };
}

void ExpectNoMarker(const std::string& text, const std::string& where) {
  for (const char* form : {kMarker, kMarkerInHex, kPartOfMarker}) {
    EXPECT_EQ(text.find(form), std::string::npos) << where << ":\n" << text;
  }
}

std::string PropertiesOf(sd_bus* bus, const char* path, const char* interface) {
  Wifi::Bus::BusError error;
  sd_bus_message* made = nullptr;
  if (sd_bus_call_method(bus, "com.talo.Wifi1", path, "org.freedesktop.DBus.Properties", "GetAll",
                         error.Get(), &made, "s", interface) < 0) {
    return "refused";
  }
  const Wifi::Bus::Message answer(made);
  std::string all;
  Wifi::Bus::EnterContainer(answer.get(), SD_BUS_TYPE_ARRAY, "{sv}");
  while (Wifi::Bus::EnterContainer(answer.get(), SD_BUS_TYPE_DICT_ENTRY, "sv")) {
    all += Wifi::Bus::Codec<std::string>::Read(answer.get()) + "=";
    Wifi::Bus::EnterContainer(answer.get(), SD_BUS_TYPE_VARIANT, "s");
    all += Wifi::Bus::Codec<std::string>::Read(answer.get()) + " ";
    Wifi::Bus::ExitContainer(answer.get());
    Wifi::Bus::ExitContainer(answer.get());
  }
  return all;
}

class Secrets : public StoryTest {
 protected:
  void StartAt(const std::string& level) {
    std::filesystem::remove_all(StateDirectory());
    StartDaemon({.options = {"--log-level", level, "--model", "Cedar300"}});
  }

  /// The operations behind the commands, as other programs call them at any log level.
  void CallOperations() {
    using Wifi::WifiClient;
    using Wifi::WifiClientForMesh;
    using Wifi::WifiClientForTool;
    using namespace Wifi::Util;
    Call<&WifiClient::CreateNetwork>(Wifi::NetworkCreateInfo{"Home", "Home", kMarker});
    Call<&WifiClientForMesh::ModifyBackhaul>(Wifi::BackhaulConfig{true, "Mesh", kMarker}, false);
    Call<&WifiClientForMesh::ModifyBackhaulSTA>(Wifi::BackhaulConfig{true, "Mesh", kMarker});
    Call<&WifiClient::ModifyStation>(Wifi::StationSetting{
        true, "Up", "", kMarker, MACAddress(), SecurityMode::PersonalWPA2, RadioFrequency::Band2_4GHz});
    Call<&WifiClientForTool::WPSERConfig>(
        Wifi::WPS_ERConfigInput{"wlan0_1", "Home", kMarker, "PersonalWPA2"});
    ExpectCallRefused<&WifiClient::CreateNetwork>("AlreadyExists", "the SSID \"Home\" is in use by network 1",
                                                  Wifi::NetworkCreateInfo{"Home", "Home", kMarker});
    ExpectCallRefused<&WifiClient::CreateNetwork>(
        "InvalidArgument", "the passphrase holds a character that is not printable ASCII",
        Wifi::NetworkCreateInfo{"Other", "Other", std::string(kMarker) + "\x01"});
    ExpectCallRefused<&WifiClient::CreateNetwork>(
        "LimitReached",
        "com.talo.Wifi1.General.CreateNetwork was given a text of 2014 bytes, it may have 1024",
        Wifi::NetworkCreateInfo{"Other", "Other", kMarker + std::string(2000, 'z')});
  }

  void RunCommands() {
    for (const Words& words : AcceptedCommands()) {
      const ToolRun run = RunTool(words);
      EXPECT_EQ(run.status, 0) << words.front() << ": " << run.output;
      ExpectNoMarker(run.output, words.front());
    }
    for (const Words& words : RefusedCommands()) {
      const ToolRun run = RunTool(words);
      EXPECT_EQ(run.status, 1) << words.front();
      ExpectNoMarker(run.output, words.front());
    }
  }

  /// What the daemon has told everybody when the run is over.
  void ExpectNoTrace(BusMonitor& monitor) {
    const Wifi::Bus::BusHandle bus = OpenBus(Address());
    TestConnection asking(Address());
    for (const char* path : {"/com/talo/Wifi1", "/org/freedesktop/LogControl1"}) {
      ExpectNoMarker(asking.Introspect(path), "introspection");
    }
    for (const char* interface : {"General", "Mesh", "Topology", "Tool"}) {
      EXPECT_EQ(
          PropertiesOf(bus.get(), "/com/talo/Wifi1", (std::string("com.talo.Wifi1.") + interface).c_str()),
          "");
    }
    const std::string log =
        PropertiesOf(bus.get(), "/org/freedesktop/LogControl1", "org.freedesktop.LogControl1");
    EXPECT_NE(log.find("SyslogIdentifier=talowifid"), std::string::npos);
    ExpectNoMarker(log, "properties");
    // The last that the monitor is told of.
    asking.SetLogLevel("err");
    const std::string signals = monitor.SignalsUntilCall("Set");
    EXPECT_NE(signals.find("NetworksChanged"), std::string::npos);
    ExpectNoMarker(signals, "signals");
    ExpectNoMarker(Daemon().GetProcess().Errors() + Daemon().GetProcess().Output(), "log");
  }
};

TEST_F(Secrets, AreInNothingThatTheDaemonTellsAtAnyLogLevel) {
  for (const char* level : {"Error", "Warning", "Information", "Debug"}) {
    SCOPED_TRACE(level);
    StartAt(level);
    BusMonitor monitor(Address());
    CallOperations();
    ExpectNoTrace(monitor);
  }
}

TEST_F(Secrets, AreInNothingThatTheToolLeavesBehind) {
  StartAt("Debug");
  BusMonitor monitor(Address());
  RunCommands();
  ExpectNoTrace(monitor);
}

TEST_F(Secrets, AreStoredForTheDaemonsUserAlone) {
  StartAt("Debug");
  RunCommands();
  std::size_t files = 0;
  for (const auto& file : std::filesystem::recursive_directory_iterator(StateDirectory())) {
    ++files;
    EXPECT_EQ(file.status().permissions(), std::filesystem::perms(0600)) << file.path();
    const std::string text = ReadFile(file.path());
    EXPECT_EQ(text.find(kMarker), std::string::npos) << file.path();
    const bool isState = file.path() == StateFile() || file.path() == StateFile() + ".last";
    EXPECT_EQ(text.find(kMarkerInHex) != std::string::npos, isState) << file.path();
  }
  EXPECT_GE(files, 1U);
  EXPECT_EQ(std::filesystem::status(StateDirectory()).permissions(), std::filesystem::perms(0700));
}

TEST_F(Secrets, AreInNoCoreFileOfTheDaemon) {
  StartDaemon();
  const std::string limits = ReadFile("/proc/" + std::to_string(Daemon().GetProcess().Id()) + "/limits");
  EXPECT_TRUE(std::regex_search(limits, std::regex("Max core file size +0 +0 +bytes"))) << limits;
}

/// A bus that takes the tool's connection and says nothing, so that the tool waits.
class SecretArguments : public testing::TestWithParam<Words> {
 protected:
  static std::string ArgumentsWhileItWaits(const Words& words) {
    const UnixListener silentBus;
    Process tool(ToolProcess(silentBus.Address(), words));
    const Descriptor caller = silentBus.Accept();
    std::string arguments = ReadFile("/proc/" + std::to_string(tool.Id()) + "/cmdline");
    return arguments;
  }
};

TEST_P(SecretArguments, AreGoneFromTheToolsArgumentsBeforeItTalksToTheBus) {
  const std::string arguments = ArgumentsWhileItWaits(GetParam());
  ASSERT_NE(arguments.find("talowifitool"), std::string::npos);
  ExpectNoMarker(arguments, "arguments");
  const Words& words = GetParam();
  const bool namesCommand = std::ranges::find(words, "createNetwork") != words.end();
  EXPECT_EQ(arguments.find("createNetwork") != std::string::npos, namesCommand);
}

INSTANTIATE_TEST_SUITE_P(OfEveryCommand, SecretArguments, testing::ValuesIn(AcceptedCommands()));

const std::string kEqual = std::string("--password=") + kMarker;
INSTANTIATE_TEST_SUITE_P(InEveryForm, SecretArguments,
                         testing::Values(Words{"createNetwork", "--ssid", "Home", kEqual},
                                         Words{"createNetwork", kEqual, "--ssid=Home"},
                                         Words{"createNetwork", "--ssid", "Home", "--pass", kMarker},
                                         Words{"createNetwork", "--ssid", "Home",
                                               std::string("--p=") + kMarker},
                                         Words{"createNetwork", "--ssid", "Home", "--passwrod", kMarker},
                                         Words{"createNetwork", "--ssid", "Home", "-p", kMarker},
                                         Words{"createNetwork", "Home", kMarker},
                                         Words{"createNetwork", std::string("--") + kMarker},
                                         Words{"--subargs", kMarker, "--command", "createNetwork"},
                                         Words{kMarker, "createNetwork"}, Words{"help", kMarker}));

}  // namespace

}  // namespace TALO::EndToEnd
