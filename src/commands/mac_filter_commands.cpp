#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client.h"
#include "commands/commands.h"
#include "commands/output.h"
#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <iostream>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::MACFilterAction;
using Wifi::MACFilterGlobal;
using Wifi::MACFilterProfile;
using Wifi::WifiClientFactory;
using Wifi::Util::EnumFromName;

namespace {

using Words = std::vector<std::string>;

/// A list of device names and addresses; the option given alone means an empty list.
po::typed_value<Words>* deviceWords() {
  return po::value<Words>()->multitoken()->implicit_value(Words{}, "");
}

void getMACFilterGlobal(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getMACFilterGlobal");
  printRecord(WifiClientFactory::GetInstance()->GetMACFilterGlobal());
}

void getMACFilterProfiles(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getMACFilterGlobal");
  printRecords(WifiClientFactory::GetInstance()->GetMACFilterProfiles());
}

void setMACFilterGlobal(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options =
      publishUsage(usage,
                   "Usage: SetMACFilterGlobal --enablePreventBroadcast 0/1 --maximumBroadcast 100 "
                   "--devices DeviceName MACAddress");
  options.add_options()("enablePreventBroadcast", po::value<bool>(), "enablePreventBroadcast")(
      "maximumBroadcast", po::value<int>(), "maximumBroadcast")("devices", deviceWords(), "devices");
  const auto arguments = parseArguments(subargs, options);
  const bool enablePreventBroadcast = arguments["enablePreventBroadcast"].as<bool>();
  const int maximumBroadcast = arguments["maximumBroadcast"].as<int>();
  const auto devices = arguments["devices"].as<Words>();

  const auto client = WifiClientFactory::GetInstance();
  client->SetMACFilterGlobal(
      MACFilterGlobal{parseDevicesList(devices), enablePreventBroadcast, maximumBroadcast});
}

void createMACFilterProfile(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options =
      publishUsage(usage,
                   "Usage: createMACFilterProfile --name name --action Deny|Allow --devices DeviceName "
                   "MACAddress --applyToAll 0/1");
  options.add_options()("name", po::value<std::string>(), "name")(
      "action", enumValue<MACFilterAction>(), "action")("devices", deviceWords(), "devices")(
      "applyToAll", po::value<bool>(), "applyToAll");
  const auto arguments = parseArguments(subargs, options);
  const auto name = arguments["name"].as<std::string>();
  const auto action = arguments["action"].as<std::string>();
  const auto devices = arguments["devices"].as<Words>();
  const bool applyToAll = arguments["applyToAll"].as<bool>();

  const auto client = WifiClientFactory::GetInstance();
  const MACFilterProfile profile{-1, name, EnumFromName<MACFilterAction>(action), parseDevicesList(devices)};
  const int id = client->CreateMACFilterProfile(profile, applyToAll);
  std::cout << "ID: " << id << std::endl;
}

void modifyMACFilterProfile(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage,
                               "Usage: modifyMACFilterProfile --id id --name name --action Deny|Allow "
                               "--devices DeviceName MACAddress");
  options.add_options()("id", po::value<int>(), "id")("name", po::value<std::string>(), "name")(
      "action", enumValue<MACFilterAction>(), "action")("devices", deviceWords(), "devices");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();
  const auto name = arguments["name"].as<std::string>();
  const auto action = arguments["action"].as<std::string>();
  const auto devices = arguments["devices"].as<Words>();

  const auto client = WifiClientFactory::GetInstance();
  client->ModifyMACFilterProfile(
      {id, name, EnumFromName<MACFilterAction>(action), parseDevicesList(devices)});
}

void deleteMACFilterProfile(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: deleteMACFilterProfile --id id");
  options.add_options()("id", po::value<int>(), "id");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();

  WifiClientFactory::GetInstance()->DeleteMACFilterProfiles({id});
}

}  // namespace

void addMACFilterCommands(CommandTable& table) {
  addCommand(table, "getMACFilterGlobal", getMACFilterGlobal, true);
  addCommand(table, "getMACFilterProfiles", getMACFilterProfiles, true);
  addCommand(table, "setMACFilterGlobal", setMACFilterGlobal, true);
  addCommand(table, "createMACFilterProfile", createMACFilterProfile, true);
  addCommand(table, "modifyMACFilterProfile", modifyMACFilterProfile, true);
  addCommand(table, "deleteMACFilterProfile", deleteMACFilterProfile, true);
}

}  // namespace TALO::Tool
