#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client.h"
#include "commands/commands.h"
#include "commands/output.h"
#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::StationSetting;
using Wifi::WifiClientFactory;
using Wifi::Util::EnumFromName;
using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;
using Wifi::Util::SecurityMode;

namespace {

void getScanResults(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: getScanResults --radio Band2_4GHz|...");
  options.add_options()("radio", enumValue<RadioFrequency>(), "radio");
  const auto arguments = parseArguments(subargs, options);
  const auto radio = EnumFromName<RadioFrequency>(arguments["radio"].as<std::string>());

  printRecords(WifiClientFactory::GetInstance()->GetScanResults(radio));
}

void getStations(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getStationSettings");
  printRecords(WifiClientFactory::GetInstance()->GetStationSettings());
}

void getStationStatuses(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: GetStationStatuses");
  printRecords(WifiClientFactory::GetInstance()->GetStationStatuses());
}

void getStationInterfaces(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: GetStationInterfaces");
  printRadioInterfaces(WifiClientFactory::GetInstance()->GetStationInterfaces());
}

void modifyStation(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options =
      publishUsage(usage,
                   "Usage: modifyStation --enable 0|1 --radio Band2_4GHz|... --essid essid --bssid bssid "
                   "--user user --password password --securityMode PersonalWPA2|...");
  options.add_options()("enable", po::value<bool>(), "enable")("radio", enumValue<RadioFrequency>(), "radio")(
      "essid", po::value<std::string>(), "essid")("user", po::value<std::string>(), "user")(
      "password", po::value<std::string>(), "password")("bssid", po::value<std::string>(), "bssid")(
      "securityMode", enumValue<SecurityMode>(), "securityMode");
  const auto arguments = parseArguments(subargs, options);
  const bool enable = arguments["enable"].as<bool>();
  const auto radio = arguments["radio"].as<std::string>();
  const auto essid = arguments["essid"].as<std::string>();
  const auto user = arguments["user"].as<std::string>();
  const auto password = arguments["password"].as<std::string>();
  const auto bssid = arguments["bssid"].as<std::string>();
  const auto securityMode = arguments["securityMode"].as<std::string>();

  const auto client = WifiClientFactory::GetInstance();
  // A braced list converts in the order written: a bad BSSID is reported first.
  const StationSetting setting{enable,
                               essid,
                               user,
                               password,
                               MACAddress(bssid),
                               EnumFromName<SecurityMode>(securityMode),
                               EnumFromName<RadioFrequency>(radio)};
  client->ModifyStation(setting);
}

void reconnectAllSTA(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: reconnectAllSTA");
  WifiClientFactory::GetInstance()->ReconnectAllSTA();
}

}  // namespace

void addStationCommands(CommandTable& table) {
  addCommand(table, "getScanResults", getScanResults, true);
  addCommand(table, "getStations", getStations, true);
  addCommand(table, "getStationStatuses", getStationStatuses, true);
  addCommand(table, "getStationInterfaces", getStationInterfaces, true);
  addCommand(table, "modifyStation", modifyStation, true);
  addCommand(table, "reconnectAllSTA", reconnectAllSTA, true);
}

}  // namespace TALO::Tool
