#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client_for_mesh.h"
#include "commands/commands.h"
#include "commands/output.h"
#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <iostream>
#include <set>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::BackhaulConfig;
using Wifi::WifiClientFactoryForMesh;
using Wifi::Util::EnumFromName;
using Wifi::Util::ScanType;
using Wifi::Util::SupportedModel;

namespace {

void getBackhaul(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getBackhaul");
  printRecord(WifiClientFactoryForMesh::GetInstance()->GetBackhaulSetting());
}

void getBackhaulInterfaces(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getBackhaulInterfaces");
  printRadioInterfaces(WifiClientFactoryForMesh::GetInstance()->GetBackhaulInterfaces());
}

/// Declares and reads what both backhaul commands take.
BackhaulConfig readBackhaulConfig(const std::vector<std::string>& subargs, po::options_description& options) {
  options.add_options()("enable", po::value<bool>(), "enable")("ssid", po::value<std::string>(), "ssid")(
      "password", po::value<std::string>(), "password");
  const auto arguments = parseArguments(subargs, options);
  return {arguments["enable"].as<bool>(), arguments["ssid"].as<std::string>(),
          arguments["password"].as<std::string>()};
}

void modifyBackhaul(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: modifyBackhaul --enable 1/0 --ssid ssid --password password");
  const BackhaulConfig config = readBackhaulConfig(subargs, options);

  WifiClientFactoryForMesh::GetInstance()->ModifyBackhaul(config, false);
}

void getBackhaulSTA(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getBackhaulSTA");
  printRecord(WifiClientFactoryForMesh::GetInstance()->GetBackhaulSTASetting());
}

void getBackhaulSTAInterfaces(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getBackhaulSTAInterfaces");
  printRadioInterfaces(WifiClientFactoryForMesh::GetInstance()->GetBackhaulSTAInterfaces());
}

void getBackhaulSTAStatuses(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getBackhaulSTAStatuses");
  printRecords(WifiClientFactoryForMesh::GetInstance()->GetBackhaulSTAStatuses());
}

void modifyBackhaulSTA(const std::vector<std::string>& subargs, Usage& usage) {
  // This caption ends in a blank, unlike its sibling's; users compare it byte by byte.
  auto& options =
      publishUsage(usage, "Usage: modifyBackhaulSTA --enable 1/0 --ssid ssid --password password ");
  const BackhaulConfig config = readBackhaulConfig(subargs, options);

  WifiClientFactoryForMesh::GetInstance()->ModifyBackhaulSTA(config);
}

void enableScan(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: enableScan --type Disable|Default|BestAP");
  options.add_options()("type", enumValue<ScanType>(), "type");
  const auto arguments = parseArguments(subargs, options);
  const auto type = arguments["type"].as<std::string>();

  const auto client = WifiClientFactoryForMesh::GetInstance();
  client->EnableScan(EnumFromName<ScanType>(type));
}

void modifyMeshInfo(const std::vector<std::string>& subargs, Usage& usage) {
  using Words = std::vector<std::string>;
  auto& options = publishUsage(
      usage, "Usage: modifyMeshInfo --models Alder100|Birch200|Cedar300|Dune40 --isRepeater 0/1");
  options.add_options()("models",
                        enumValue<SupportedModel, Words>()->multitoken()->default_value(Words{}, ""),
                        "models")("isRepeater", po::value<bool>(), "isRepeater");
  const auto arguments = parseArguments(subargs, options);
  const auto words = arguments["models"].as<Words>();
  const bool isRepeater = arguments["isRepeater"].as<bool>();
  std::set<SupportedModel> models;
  for (const std::string& word : words) {
    models.insert(EnumFromName<SupportedModel>(word));
  }

  WifiClientFactoryForMesh::GetInstance()->ModifyMeshInfo({models, isRepeater});
}

void swapBackhaulBand(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: swapBackhaulBand --enable 1/0");
  options.add_options()("enable", po::value<bool>(), "enable");
  const auto arguments = parseArguments(subargs, options);
  const bool enable = arguments["enable"].as<bool>();

  WifiClientFactoryForMesh::GetInstance()->SwapBackhaulBand(enable);
}

void printAnswer(bool yes) { std::cout << (yes ? "yes" : "no") << std::endl; }

void isBackhaulBandSwapped(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: isBackhaulBandSwapped");
  printAnswer(WifiClientFactoryForMesh::GetInstance()->IsBackhaulBandSwapped());
}

void isWifiAdjustNeeded(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: isWifiAdjustNeeded");
  printAnswer(WifiClientFactoryForMesh::GetInstance()->IsWifiAdjustNeeded());
}

}  // namespace

void addMeshCommands(CommandTable& table) {
  addCommand(table, "getBackhaul", getBackhaul, true);
  addCommand(table, "getBackhaulInterfaces", getBackhaulInterfaces, true);
  addCommand(table, "modifyBackhaul", modifyBackhaul, true);
  addCommand(table, "getBackhaulSTA", getBackhaulSTA, true);
  addCommand(table, "getBackhaulSTAInterfaces", getBackhaulSTAInterfaces, true);
  addCommand(table, "getBackhaulSTAStatuses", getBackhaulSTAStatuses, true);
  addCommand(table, "modifyBackhaulSTA", modifyBackhaulSTA, true);
  addCommand(table, "enableScan", enableScan, true);
  addCommand(table, "modifyMeshInfo", modifyMeshInfo, true);
  addCommand(table, "swapBackhaulBand", swapBackhaulBand, true);
  addCommand(table, "isBackhaulBandSwapped", isBackhaulBandSwapped, true);
  addCommand(table, "isWifiAdjustNeeded", isWifiAdjustNeeded, true);
}

}  // namespace TALO::Tool
