#include "support/network_json.h"

#include <regex>

namespace TALO::EndToEnd {

namespace {

std::string PrintedInterface(const PrintedNetwork& network, std::size_t radio) {
  return "wlan" + std::to_string(radio) + "_" + std::to_string(network.slot);
}

std::string PrintedRadio(const PrintedNetwork& network, std::size_t radio) {
  const std::string number = std::to_string(radio);
  return "\t\t\t{\n"
         "\t\t\t\t\"bssid\" : \"02:00:00:00:0" +
         number + ":0" + std::to_string(network.slot) +
         "\",\n"
         "\t\t\t\t\"enable\" : true,\n"
         "\t\t\t\t\"interface\" : \"" +
         PrintedInterface(network, radio) +
         "\",\n"
         "\t\t\t\t\"keyManagement\" : \n"
         "\t\t\t\t[\n"
         "\t\t\t\t\t\"WPA-PSK\",\n"
         "\t\t\t\t\t\"SAE\"\n"
         "\t\t\t\t],\n"
         "\t\t\t\t\"passphrase\" : \"" +
         network.passphrase +
         "\",\n"
         "\t\t\t\t\"passphraseChangedAt\" : TIME,\n"
         "\t\t\t\t\"radio\" : \"" +
         network.radios[radio] +
         "\",\n"
         "\t\t\t\t\"radioInterface\" : \"wlan" +
         number +
         "\",\n"
         "\t\t\t\t\"ssid\" : \"" +
         network.ssid +
         "\",\n"
         "\t\t\t\t\"ssidHex\" : \"" +
         network.ssidHex +
         "\",\n"
         "\t\t\t\t\"up\" : true\n"
         "\t\t\t}";
}

std::string Print(const PrintedNetwork& network) {
  std::string interfaces;
  std::string radios;
  for (std::size_t radio = 0; radio < network.radios.size(); ++radio) {
    const char* end = radio + 1 < network.radios.size() ? ",\n" : "\n";
    interfaces += "\t\t\t\"" + PrintedInterface(network, radio) + "\"" + end;
    radios += PrintedRadio(network, radio) + end;
  }
  return "\t{\n"
         "\t\t\"activated\" : true,\n"
         "\t\t\"bridge\" : \"" +
         network.bridge +
         "\",\n"
         "\t\t\"context\" : \"router\",\n"
         "\t\t\"hidden\" : false,\n"
         "\t\t\"id\" : " +
         std::to_string(network.id) +
         ",\n"
         "\t\t\"interfaces\" : \n"
         "\t\t[\n" +
         interfaces +
         "\t\t],\n"
         "\t\t\"macFilterProfileId\" : -1,\n"
         "\t\t\"macFilterProfileName\" : \"\",\n"
         "\t\t\"networkName\" : \"" +
         network.ssid +
         "\",\n"
         "\t\t\"networkNameHex\" : \"" +
         network.ssidHex +
         "\",\n"
         "\t\t\"passphrase\" : \"" +
         network.passphrase +
         "\",\n"
         "\t\t\"passphraseChangedAt\" : TIME,\n"
         "\t\t\"radios\" : \n"
         "\t\t[\n" +
         radios +
         "\t\t],\n"
         "\t\t\"securityMode\" : \"PersonalWPA2_3Mixed\",\n"
         "\t\t\"ssid\" : \"" +
         network.ssid +
         "\",\n"
         "\t\t\"ssidHex\" : \"" +
         network.ssidHex +
         "\",\n"
         "\t\t\"up\" : true\n"
         "\t}";
}

}  // namespace

std::string PrintedNetworks(const std::vector<PrintedNetwork>& networks) {
  if (networks.empty()) {
    return "[]\n\n";
  }
  std::string text = "[\n";
  for (const PrintedNetwork& network : networks) {
    text += Print(network) + (&network != &networks.back() ? ",\n" : "\n");
  }
  return text + "]\n\n";
}

std::string WithoutTimes(const std::string& output) {
  static const std::regex kTime(
      "(\"passphraseChangedAt\" : )\"[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}Z\"");
  return std::regex_replace(output, kTime, "$1TIME");
}

}  // namespace TALO::EndToEnd
