#include "cli/argument_frame.h"
#include "client/wifi_client_for_topo.h"
#include "commands/commands.h"
#include "commands/output.h"

#include <boost/program_options/value_semantic.hpp>

#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::WifiClientFactoryForTopo;

namespace {

void printIds(const std::set<int>& ids) {
  std::cout << "IDs: ";
  for (const int id : ids) {
    std::cout << id << " ";
  }
  std::cout << std::endl;
}

void getIdsForTopo(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: getIDsForTopo --context context");
  options.add_options()("context", po::value<std::string>(), "context");
  const auto arguments = parseArguments(subargs, options);
  const auto context = arguments["context"].as<std::string>();

  printIds(WifiClientFactoryForTopo::GetInstance()->GetIdsForTopo(context));
}

void getActivateIdsForTopo(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getActivatedIDsForTopo");
  printIds(WifiClientFactoryForTopo::GetInstance()->GetActivatedIdsForTopo());
}

void getInterfacesForTopo(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getInterfacesForTopo");
  printNetworkInterfaces(WifiClientFactoryForTopo::GetInstance()->GetInterfacesForTopo());
}

void setContext(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: setContext --context Context");
  options.add_options()("context", po::value<std::string>(), "context");
  const auto arguments = parseArguments(subargs, options);
  const auto context = arguments["context"].as<std::string>();

  WifiClientFactoryForTopo::GetInstance()->SetContext(context);
}

void getContext(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getContext");
  const auto client = WifiClientFactoryForTopo::GetInstance();
  // The label comes before the call: it stays in front of the message when the daemon cannot answer.
  std::cout << "Context: ";
  std::cout << client->GetContext() << std::endl;
}

void activate(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: activate --id NetworkID --bridge BridgeName");
  options.add_options()("id", po::value<int>(), "network id")("bridge", po::value<std::string>(),
                                                              "bridge name");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();
  const auto bridge = arguments["bridge"].as<std::string>();

  WifiClientFactoryForTopo::GetInstance()->Activate({id, bridge});
}

void deactivate(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: deactivate --id NetworkID");
  options.add_options()("id", po::value<int>(), "network id");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();

  WifiClientFactoryForTopo::GetInstance()->Deactivate(id);
}

}  // namespace

void addTopologyCommands(CommandTable& table) {
  addCommand(table, "getIdsForTopo", getIdsForTopo, true);
  addCommand(table, "getActivateIdsForTopo", getActivateIdsForTopo, true);
  addCommand(table, "getInterfacesForTopo", getInterfacesForTopo, true);
  addCommand(table, "setContext", setContext, true);
  addCommand(table, "getContext", getContext, true);
  addCommand(table, "activate", activate, true);
  addCommand(table, "deactivate", deactivate, true);
}

}  // namespace TALO::Tool
