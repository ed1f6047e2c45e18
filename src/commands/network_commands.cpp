#include "cli/argument_frame.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_tool.h"
#include "commands/commands.h"
#include "commands/output.h"

#include <boost/program_options/value_semantic.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::WifiClientFactory;
using Wifi::WifiClientFactoryForTool;

namespace {

void getNetworks(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getNetworks");
  printRecords(WifiClientFactory::GetInstance()->GetNetworkSettings());
}

void getNetworkInterfaces(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getNetworkInterfaces");
  printNetworkInterfaces(WifiClientFactory::GetInstance()->GetNetworkInterfaces());
}

void createNetwork(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: createNetwork --ssid SSID --password Password");
  options.add_options()("ssid", po::value<std::string>(), "network ssid")(
      "password", po::value<std::string>(), "ap password");
  const auto arguments = parseArguments(subargs, options);
  const auto ssid = arguments["ssid"].as<std::string>();
  const auto password = arguments["password"].as<std::string>();

  const auto client = WifiClientFactory::GetInstance();
  // The label comes before the call: it stays in front of the message when the daemon refuses.
  std::cout << "Create Network ID: ";
  std::cout << client->CreateNetwork({ssid, ssid, password}) << std::endl;
}

void deleteNetwork(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: deleteNetwork --id ID");
  options.add_options()("id", po::value<int>(), "network id");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();

  WifiClientFactory::GetInstance()->DeleteNetwork(id);
}

void restartNetworks(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: restartNetworks --force 0/1");
  options.add_options()("force", po::value<bool>(), "force");
  const auto arguments = parseArguments(subargs, options);
  const bool force = arguments["force"].as<bool>();

  WifiClientFactoryForTool::GetInstance()->RestartNetworks(force);
}

void isAllNetworkAPDisabled(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: isAllNetworkAPDisabled");
  const bool disabled = WifiClientFactory::GetInstance()->IsAllNetworkAPDisabled();
  std::cout << disabled << std::endl;
}

}  // namespace

void addNetworkCommands(CommandTable& table) {
  addCommand(table, "getNetworks", getNetworks, false);
  addCommand(table, "getNetworkInterfaces", getNetworkInterfaces, true);
  addCommand(table, "createNetwork", createNetwork, true);
  addCommand(table, "deleteNetwork", deleteNetwork, true);
  addCommand(table, "restartNetworks", restartNetworks, true);
  addCommand(table, "isAllNetworkAPDisabled", isAllNetworkAPDisabled, false);
}

}  // namespace TALO::Tool
