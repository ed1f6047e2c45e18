#pragma once

#include "hwsim/support/network_namespace.h"
#include "support/end_to_end_test.h"
#include "support/operation_call.h"
#include "support/process.h"
#include "values/enums.h"

#include <gtest/gtest.h>
#include <json/value.h>

#include <memory>
#include <set>
#include <string>

namespace TALO::Hwsim {

/// The router's address in the network of its bridge br0.
inline constexpr const char* kRouterAddress = "10.0.0.1";

/// The router: a system bus with the policy that is shipped, the bridge br0, the radios phy0 for 2.4 GHz and
/// phy1 for 5 GHz, and where asked for the daemon with the user and the rights that its unit gives it. The
/// radios from phy2 on are those of the others in the air. Each scenario has a machine's radios to itself.
class Scenario : public testing::Test {
 protected:
  static constexpr const char* kBusAddress = "unix:path=/run/dbus/system_bus_socket";
  static constexpr const char* kStateDirectory = "/run/talowifi-state";
  static constexpr const char* kRuntimeDirectory = "/run/talowifi";

  Scenario();

  /// Makes a bridge of the router with this address.
  static void MakeBridge(const std::string& name, const std::string& address);

  /// Starts the daemon on the state that is there, with more options, in place of the one before; it serves
  /// once this returns.
  void StartDaemon(const Words& options);
  /// The daemon on the real radios.
  void StartOnRadios(const Words& options = {"--model", "Dune40", "--country", "DE"});
  void EndDaemon();
  EndToEnd::Process& Daemon() { return *daemon_; }

  EndToEnd::ToolRun RunTool(const Words& words);
  /// Runs the tool and expects it to print nothing and succeed.
  void Do(const Words& words) { EXPECT_EQ(RunTool(words), EndToEnd::Success()) << words.at(0); }
  /// Runs it and returns the records that it prints.
  Json::Value Ask(const Words& words);
  /// Makes a network, which must get this ID.
  void CreateNetwork(const std::string& ssid, int id, const std::string& password = "correct-horse");

  /// The one of the records that a command prints in which this key has this value. Throws std::runtime_error
  /// where there is none.
  Json::Value Record(const std::string& command, const std::string& key, const Json::Value& value);
  Json::Value Network(int id) { return Record("getNetworks", "id", id); }
  /// Waits until a network is up on all its radios.
  void ExpectUpInTheEnd(int id);
  /// The words that set a radio's station, which joins any access point of the SSID.
  static Words StationCommand(const std::string& radio, const std::string& ssid, const std::string& password,
                              bool enable = true);
  /// Waits until the upstream connection of a radio is so.
  void ExpectStationInTheEnd(const std::string& radio, const std::string& state);
  /// The addresses of the stations that the daemon tells of.
  std::set<std::string> Devices();
  void ExpectDevicesInTheEnd(const std::set<std::string>& addresses);

  /// Calls an operation that no command reaches.
  template <auto Method, typename... Arguments>
  auto Call(const Arguments&... arguments) {
    return EndToEnd::CallOperation<Method>(kBusAddress, arguments...);
  }

 private:
  std::unique_ptr<EndToEnd::Process> daemon_;
};

}  // namespace TALO::Hwsim
