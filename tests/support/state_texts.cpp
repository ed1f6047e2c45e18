#include "support/state_texts.h"

namespace TALO::Wifid {

State FullState() {
  State state;
  state.nextNetworkId = 12;
  state.context = "caf\xc3\xa9 \"1\"";
  state.country = CountryCode::US;
  state.radios = {{RadioFrequency::Band2_4GHz, false, 11, 40, 50, 4},
                  {RadioFrequency::Band5GHz_1, true, 0, 160, 25, 5}};
  NetworkState network;
  network.id = 11;
  network.networkName = "Home";
  network.ssid = std::string("\x00\xff\n\"", 4);
  network.hidden = true;
  network.securityMode = SecurityMode::PersonalWPA3;
  network.passphrase = "battery-staple";
  network.passphraseChangedAt = 4107542400;
  network.activated = true;
  network.context = "bridge";
  network.bridge = "br-lan";
  network.slot = 3;
  state.networks = {network};
  return state;
}

std::string FullText() {
  return "{\n"
         "\t\"context\" : \"caf\\u00e9 \\\"1\\\"\",\n"
         "\t\"country\" : \"US\",\n"
         "\t\"networks\" : \n"
         "\t[\n"
         "\t\t{\n"
         "\t\t\t\"activated\" : true,\n"
         "\t\t\t\"bridge\" : \"br-lan\",\n"
         "\t\t\t\"context\" : \"bridge\",\n"
         "\t\t\t\"hidden\" : true,\n"
         "\t\t\t\"id\" : 11,\n"
         "\t\t\t\"networkNameHex\" : \"486f6d65\",\n"
         "\t\t\t\"passphraseChangedAt\" : 4107542400,\n"
         "\t\t\t\"passphraseHex\" : \"626174746572792d737461706c65\",\n"
         "\t\t\t\"securityMode\" : \"PersonalWPA3\",\n"
         "\t\t\t\"slot\" : 3,\n"
         "\t\t\t\"ssidHex\" : \"00ff0a22\"\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"nextNetworkId\" : 12,\n"
         "\t\"radios\" : \n"
         "\t[\n"
         "\t\t{\n"
         "\t\t\t\"channel\" : 11,\n"
         "\t\t\t\"channelWidth\" : 40,\n"
         "\t\t\t\"enable\" : false,\n"
         "\t\t\t\"radio\" : \"Band2_4GHz\",\n"
         "\t\t\t\"transmitPower\" : 50,\n"
         "\t\t\t\"wifiGeneration\" : 4\n"
         "\t\t},\n"
         "\t\t{\n"
         "\t\t\t\"channel\" : 0,\n"
         "\t\t\t\"channelWidth\" : 160,\n"
         "\t\t\t\"enable\" : true,\n"
         "\t\t\t\"radio\" : \"Band5GHz_1\",\n"
         "\t\t\t\"transmitPower\" : 25,\n"
         "\t\t\t\"wifiGeneration\" : 5\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"version\" : 1\n"
         "}\n";
}

}  // namespace TALO::Wifid
