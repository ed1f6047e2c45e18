#include "hwsim/support/scenario.h"

#include "hwsim/support/waiting.h"
#include "support/files.h"

#include <json/reader.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>

namespace TALO::Hwsim {

namespace {

/// What the machine was told when it was made.
std::string Told(const char* name) {
  const char* value = std::getenv(name);
  if (value == nullptr) {
    throw std::runtime_error(std::string(name) + " is not set: scenarios run by ./test --hwsim");
  }
  return value;
}

/// What the service manager does for the daemon: its user, its capabilities, its directories.
Words AsTheUnitDoes(const Words& daemon) {
  const std::string ambient = Told("TALOWIFI_AMBIENT_CAPABILITIES");
  return Words{"setpriv",
               "--reuid=talowifi",
               "--regid=talowifi",
               "--clear-groups",
               "--inh-caps=" + ambient,
               "--ambient-caps=" + ambient,
               "--bounding-set=" + Told("TALOWIFI_BOUNDING_CAPABILITIES"),
               "--no-new-privs"} +
         daemon;
}

}  // namespace

Scenario::Scenario() {
  // Outside the machine this is the host, which stays as it is.
  LogFile("");
  for (const char* directory : {kStateDirectory, kRuntimeDirectory}) {
    std::filesystem::remove_all(directory);
    OutputOf({"install", "-d", "-m", "0700", "-o", "talowifi", "-g", "talowifi", directory});
  }
  MakeBridge("br0", kRouterAddress);
}

void Scenario::MakeBridge(const std::string& name, const std::string& address) {
  NetworkNamespace().MakeBridge(name);
  NetworkNamespace().SetAddress(name, address);
}

void Scenario::StartDaemon(const Words& options) {
  EndDaemon();
  const Words words =
      AsTheUnitDoes({EndToEnd::DaemonProgram(), "--config", "/dev/null", "--log-level", "Debug"});
  EndToEnd::ProcessSetup setup = Logged("talowifid", words + options);
  setup.environment = {{"STATE_DIRECTORY", kStateDirectory}, {"RUNTIME_DIRECTORY", kRuntimeDirectory}};
  daemon_ = std::make_unique<EndToEnd::Process>(setup);
  EndToEnd::TestConnection connection(kBusAddress);
  try {
    connection.WaitForOwner(*daemon_);
  } catch (const std::exception& error) {
    throw std::runtime_error(std::string(error.what()) + "\n" + ReadFile(LogFile("talowifid")));
  }
  connection.GetLogLevel();
}

void Scenario::EndDaemon() {
  if (daemon_) {
    if (!daemon_->HasEnded()) {
      daemon_->SendSignal(SIGTERM);
    }
    daemon_->Wait();
    daemon_.reset();
    EndToEnd::TestConnection(kBusAddress).WaitForNoOwner();
  }
}

void Scenario::StartOnRadios(const Words& options) {
  StartDaemon(Words{"--radio-driver", "linux", "--bridge", "br0"} + options);
}

EndToEnd::ToolRun Scenario::RunTool(const Words& words) {
  EndToEnd::Process tool(EndToEnd::ToolProcess(kBusAddress, words));
  return EndToEnd::Finish(tool);
}

Json::Value Scenario::Ask(const Words& words) {
  const EndToEnd::ToolRun run = RunTool(words);
  EXPECT_EQ(run.status, 0) << words.at(0) << ": " << run.output;
  std::istringstream text(run.output);
  Json::Value value;
  text >> value;
  return value;
}

void Scenario::CreateNetwork(const std::string& ssid, int id, const std::string& password) {
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", ssid, "--password", password}),
            EndToEnd::Success("Create Network ID: " + std::to_string(id) + "\n"));
}

Json::Value Scenario::Record(const std::string& command, const std::string& key, const Json::Value& value) {
  const Json::Value records = Ask({command});
  for (const Json::Value& record : records) {
    if (record[key] == value) {
      return record;
    }
  }
  throw std::runtime_error(command + " has no record of " + value.asString());
}

std::set<std::string> Scenario::Devices() {
  std::set<std::string> addresses;
  for (const Json::Value& device : Ask({"getDevices"})) {
    addresses.insert(device["address"].asString());
  }
  return addresses;
}

void Scenario::ExpectUpInTheEnd(int id) {
  WaitUntil("the network " + std::to_string(id) + " is up on all radios", [&] {
    const Json::Value network = Network(id);
    bool up = !network["radios"].empty();
    for (const Json::Value& radio : network["radios"]) {
      up = up && radio["up"].asBool();
    }
    return up;
  });
}

Words Scenario::StationCommand(const std::string& radio, const std::string& ssid, const std::string& password,
                               bool enable) {
  return {"modifyStation",
          "--enable",
          enable ? "1" : "0",
          "--radio",
          radio,
          "--essid",
          ssid,
          "--user",
          "",
          "--password",
          password,
          "--bssid",
          "00:00:00:00:00:00",
          "--securityMode",
          "PersonalWPA2"};
}

void Scenario::ExpectStationInTheEnd(const std::string& radio, const std::string& state) {
  WaitUntil("the station of " + radio + " is " + state,
            [&] { return Record("getStationStatuses", "radio", radio)["state"] == state; });
}

void Scenario::ExpectDevicesInTheEnd(const std::set<std::string>& addresses) {
  WaitUntil("the daemon tells of " + std::to_string(addresses.size()) + " devices",
            [&] { return Devices() == addresses; });
}

}  // namespace TALO::Hwsim
