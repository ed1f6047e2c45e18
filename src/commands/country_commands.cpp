#include "cli/argument_frame.h"
#include "cli/enum_words.h"
#include "client/wifi_client.h"
#include "client/wifi_client_for_mesh.h"
#include "commands/commands.h"
#include "values/enum_names.h"

#include <boost/program_options/value_semantic.hpp>

#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

namespace TALO::Tool {

namespace po = boost::program_options;
using Wifi::CountryCode;
using Wifi::CountryCodeCapability;
using Wifi::WifiClientFactory;
using Wifi::WifiClientFactoryForMesh;
using Wifi::Util::EnumFromName;
using Wifi::Util::EnumNameOf;
using Wifi::Util::SupportedModel;

namespace {

void printCapability(const CountryCodeCapability& capability) {
  std::cout << "Immutable: " << capability.immutable << std::endl;
  for (const auto& [code, channels] : capability.codes) {
    std::cout << "Country code #" << static_cast<std::uint16_t>(code) << ": " << EnumNameOf(code) << ", "
              << channels << std::endl;
  }
}

void listCountryCode(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: listCountryCode");
  printCapability(WifiClientFactory::GetInstance()->ListCountryCode());
}

void getRemoteCountryCodeCapability(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage,
                               "Usage: getRemoteCountryCodeCapability --serial serial --model "
                               "[Alder100|Birch200|Cedar300|Dune40]");
  options.add_options()("serial", po::value<std::string>(), "serial")("model", enumValue<SupportedModel>(),
                                                                      "model");
  const auto arguments = parseArguments(subargs, options);
  const auto serial = arguments["serial"].as<std::string>();
  const auto model = EnumFromName<SupportedModel>(arguments["model"].as<std::string>());

  printCapability(WifiClientFactoryForMesh::GetInstance()->GetRemoteCountryCodeCapability(serial, model));
}

void setCountryCode(const std::vector<std::string>& subargs, Usage& usage) {
  auto& options = publishUsage(usage, "Usage: setCountryCode --country country");
  options.add_options()("country", enumValue<CountryCode>(), "country");
  const auto arguments = parseArguments(subargs, options);
  const auto country = arguments["country"].as<std::string>();

  const auto client = WifiClientFactory::GetInstance();
  client->SetCountryCode(EnumFromName<CountryCode>(country));
}

void getCountryCode(const std::vector<std::string>&, Usage& usage) {
  publishUsage(usage, "Usage: getCountryCode");
  std::cout << EnumNameOf(WifiClientFactory::GetInstance()->GetCountryCode()) << std::endl;
}

}  // namespace

void addCountryCommands(CommandTable& table) {
  addCommand(table, "listCountryCode", listCountryCode, true);
  addCommand(table, "getRemoteCountryCodeCapability", getRemoteCountryCodeCapability, true);
  addCommand(table, "setCountryCode", setCountryCode, true);
  addCommand(table, "getCountryCode", getCountryCode, true);
}

}  // namespace TALO::Tool
