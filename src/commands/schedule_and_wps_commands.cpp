#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_tool.h"
#include "commands/commands.h"
#include "commands/output.h"
#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::WifiClientFactory;
using Wifi::WifiClientFactoryForTool;
using Wifi::Util::EnumFromName;
using Wifi::Util::EnumNameOf;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScheduleMode;
using Wifi::Util::SecurityMode;

namespace {

void updateSchedule(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: updateSchedule --mode Customized|ValidFor");
  options.add_options()("mode", enumValue<ScheduleMode>(), "mode");
  const auto arguments = parseArguments(subargs, options);
  const auto mode = EnumFromName<ScheduleMode>(arguments["mode"].as<std::string>());

  WifiClientFactoryForTool::GetInstance()->UpdateSchedule(mode);
}

void getScheduleStatus(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getScheduleStatus");
  const auto status = WifiClientFactory::GetInstance()->GetScheduleStatus();

  for (const auto& [id, entries] : status) {
    std::cout << "ID: " << id << std::endl;
    for (const auto& entry : entries) {
      std::cout << "\t" << EnumNameOf(entry.radio) << ": " << entry.secondsToSwitch << std::endl;
    }
  }
}

void rotatePassword(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: rotatePassword --id id --radio Band2_4GHz|Band5GHz|...");
  options.add_options()("id", po::value<int>(), "int")("radio", enumValue<RadioFrequency>(), "radio");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();
  const auto radio = arguments["radio"].as<std::string>();

  const auto client = WifiClientFactoryForTool::GetInstance();
  client->RotatePassword({id, EnumFromName<RadioFrequency>(radio)});
}

void wpsERConfig(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: wpsERConfig --ifName name --ssid ssid --key key --mode mode");
  options.add_options()("ifName", po::value<std::string>(), "ifName")(
      "ssid", po::value<std::string>(), "ssid")("key", po::value<std::string>(), "key")(
      "mode", enumValue<SecurityMode>(), "mode");
  const auto arguments = parseArguments(subargs, options);
  const auto ifName = arguments["ifName"].as<std::string>();
  const auto ssid = arguments["ssid"].as<std::string>();
  const auto key = arguments["key"].as<std::string>();
  const auto mode = arguments["mode"].as<std::string>();

  WifiClientFactoryForTool::GetInstance()->WPSERConfig({ifName, ssid, key, mode});
}

void getDevices(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getDevices");
  printRecords(WifiClientFactory::GetInstance()->GetDevices());
}

void isDefaultWPS_PBCAvalible(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: isDefaultWPS_PBCAvalible");
  const auto client = WifiClientFactory::GetInstance();
  const bool available = client->IsWPS_PBCAvailable(client->GetDefaultWPSTarget());
  std::cout << available << std::endl;
}

void triggerWPSConnected(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: triggerWPSConnected --ifName interface");
  options.add_options()("ifName", po::value<std::string>(), "ifName");
  const auto arguments = parseArguments(subargs, options);
  const auto ifName = arguments["ifName"].as<std::string>();

  WifiClientFactory::GetInstance()->TriggerWPSConnected(ifName);
}

void triggerDefaultWPS_PBC(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: triggerDefaultWPS_PBC");
  const auto client = WifiClientFactory::GetInstance();
  client->TriggerWPS_PBC(client->GetDefaultWPSTarget());
}

void triggerWPS_PBC(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: setWPSWithPBC --id id --radio Band2_4GHz|Band5GHz|...");
  options.add_options()("id", po::value<int>(), "id")("radio", enumValue<RadioFrequency>(), "radio");
  const auto arguments = parseArguments(subargs, options);
  const int id = arguments["id"].as<int>();
  const auto radio = arguments["radio"].as<std::string>();

  const auto client = WifiClientFactory::GetInstance();
  client->TriggerWPS_PBC({id, EnumFromName<RadioFrequency>(radio)});
}

void triggerHWButton(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: triggerHWButton");
  WifiClientFactory::GetInstance()->TriggerHWButton();
}

}  // namespace

void addScheduleAndWPSCommands(CommandTable& table) {
  addCommand(table, "updateSchedule", updateSchedule, false);
  addCommand(table, "getScheduleStatus", getScheduleStatus, false);
  addCommand(table, "rotatePassword", rotatePassword, false);
  addCommand(table, "wpsERConfig", wpsERConfig, false);
  addCommand(table, "getDevices", getDevices, false);
  // Spelled as users have typed it for years.
  addCommand(table, "isDefaultWPS_PBCAvalible", isDefaultWPS_PBCAvalible, false);
  addCommand(table, "triggerWPSConnected", triggerWPSConnected, false);
  addCommand(table, "triggerDefaultWPS_PBC", triggerDefaultWPS_PBC, false);
  addCommand(table, "triggerWPS_PBC", triggerWPS_PBC, false);
  addCommand(table, "triggerHWButton", triggerHWButton, false);
}

}  // namespace TALO::Tool
