#include "cli/argument_frame.h"
#include "client/wifi_client.h"
#include "commands/commands.h"
#include "commands/output.h"
#include "values/enum_names.h"

#include <iomanip>
#include <iostream>
#include <string>
#include <vector>

namespace TALO::Tool {

using Wifi::WifiClientFactory;
using Wifi::Util::EnumNameOf;

namespace {

/// Writes `text` padded to the width of a table's column; a longer one comes out whole.
void printColumn(const std::string& text) {
  constexpr int kColumnWidth = 20;
  std::cout << std::left << std::setw(kColumnWidth) << text;
}

void getRadios(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getRadioSettings");
  printRecords(WifiClientFactory::GetInstance()->GetRadioSettings());
}

void getRadioStatuses(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getRadioStatuses");
  printRecords(WifiClientFactory::GetInstance()->GetRadioStatuses());
}

void getRadioStatusesSimple(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getRadioStatusesSimple");
  printRecords(WifiClientFactory::GetInstance()->GetRadioStatusesSimple());
}

void getRadioIfStatuses(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getRadioIfStatuses");
  const auto statuses = WifiClientFactory::GetInstance()->GetRadioIfStatuses();

  printColumn("Frequency");
  printColumn("Radio Interface");
  printColumn("Enabled Wifi Interfaces");
  std::cout << std::endl;
  for (const auto& status : statuses) {
    printColumn(EnumNameOf(status.radio));
    printColumn(status.radioInterface);
    for (const std::string& name : status.enabledInterfaces) {
      std::cout << name << " ";
    }
    std::cout << std::endl;
  }
}

void getInterfaceRadioMap(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getNetworkInterfaceRadioMap");
  const auto radios = WifiClientFactory::GetInstance()->GetNetworkInterfaceRadioMap();

  printColumn("Wifi Interface");
  printColumn("Radio Frequency");
  std::cout << std::endl;
  for (const auto& [name, radio] : radios) {
    printColumn(name);
    printColumn(EnumNameOf(radio));
    std::cout << std::endl;
  }
  std::cout << std::endl;
}

void getRadioConversionInfo(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getRadioConversionInfo");
  const auto info = WifiClientFactory::GetInstance()->GetRadioConversionInfo();

  std::cout << "Radio conversion map:" << std::endl;
  for (const auto& [asked, serving] : info.conversionMap) {
    std::cout << "\t" << EnumNameOf(asked) << " => " << EnumNameOf(serving) << std::endl;
  }
  std::cout << "Backhaul swapped: " << info.backhaulSwapped << std::endl;
}

}  // namespace

void addRadioCommands(CommandTable& table) {
  addCommand(table, "getRadios", getRadios, true);
  addCommand(table, "getRadioStatuses", getRadioStatuses, true);
  addCommand(table, "getRadioStatusesSimple", getRadioStatusesSimple, true);
  addCommand(table, "getRadioIfStatuses", getRadioIfStatuses, false);
  addCommand(table, "getInterfaceRadioMap", getInterfaceRadioMap, true);
}

void addRadioConversionCommands(CommandTable& table) {
  addCommand(table, "getRadioConversionInfo", getRadioConversionInfo, false);
}

}  // namespace TALO::Tool
