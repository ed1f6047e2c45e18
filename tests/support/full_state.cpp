#include "support/full_state.h"

namespace TALO::Wifid {

using Wifi::MACFilterAction;
using Wifi::Util::MACAddress;

State FullState() {
  State state;
  state.nextNetworkId = 12;
  state.nextMACFilterProfileId = 7;
  state.context = "caf\xc3\xa9 \"1\"";
  state.country = CountryCode::US;
  state.radios = {{RadioFrequency::Band2_4GHz, false, 11, 40, 50, 4},
                  {RadioFrequency::Band5GHz_1, false, 36, 160, 25, 5}};
  NetworkState network;
  network.id = 3;
  network.networkName = "Home";
  network.ssid = std::string("\x00\xff\n\"", 4);
  network.hidden = true;
  network.securityMode = SecurityMode::PersonalWPA3;
  network.passphrase = "battery-staple";
  network.passphraseChangedAt = 4107542400;
  network.activated = true;
  network.context = "bridge";
  network.bridge = "br7";
  network.slot = 5;
  network.macFilterProfileId = 2;
  network.radioPassphrases = {{RadioFrequency::Band5GHz_1, "swordfish", 1769860801}};
  network.schedules = {
      {RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 1769860802, {{60, 120}, {1440, 10080}}}};
  state.networks = {network};
  state.stations = {{true, "Uplink", "me", "secret", MACAddress("02:00:00:00:00:01"),
                     SecurityMode::EnterpriseWPA2, RadioFrequency::Band2_4GHz}};
  state.macFilterProfiles = {
      {2, "G\xc3\xa4ste", MACFilterAction::Deny, {{"Tablet", MACAddress("02:00:00:00:00:02")}}},
      {6,
       "Office",
       MACFilterAction::Allow,
       {{"Phone", MACAddress("02:00:00:00:00:04")}, {"Printer", MACAddress("02:00:00:00:00:05")}}}};
  state.macFilterGlobal = {{{"Camera", MACAddress("02:00:00:00:00:03")}}, true, 100};
  state.backhaul = {true, "Mesh", "mesh-backhaul"};
  state.backhaulSTA = {true, "Parent", "join-parent"};
  state.scanType = ScanType::BestAP;
  state.mesh = {{SupportedModel::Alder100, SupportedModel::Dune40}, true};
  state.backhaulSwapped = true;
  return state;
}

std::string FullText() {
  return "{\n"
         "\t\"backhaul\" : \n"
         "\t{\n"
         "\t\t\"enable\" : true,\n"
         "\t\t\"passwordHex\" : \"6d6573682d6261636b6861756c\",\n"
         "\t\t\"ssidHex\" : \"4d657368\"\n"
         "\t},\n"
         "\t\"backhaulSTA\" : \n"
         "\t{\n"
         "\t\t\"enable\" : true,\n"
         "\t\t\"passwordHex\" : \"6a6f696e2d706172656e74\",\n"
         "\t\t\"ssidHex\" : \"506172656e74\"\n"
         "\t},\n"
         "\t\"backhaulSwapped\" : true,\n"
         "\t\"context\" : \"caf\\u00e9 \\\"1\\\"\",\n"
         "\t\"country\" : \"US\",\n"
         "\t\"macFilterGlobal\" : \n"
         "\t{\n"
         "\t\t\"devices\" : \n"
         "\t\t[\n"
         "\t\t\t{\n"
         "\t\t\t\t\"address\" : \"02:00:00:00:00:03\",\n"
         "\t\t\t\t\"name\" : \"Camera\"\n"
         "\t\t\t}\n"
         "\t\t],\n"
         "\t\t\"enablePreventBroadcast\" : true,\n"
         "\t\t\"maximumBroadcast\" : 100\n"
         "\t},\n"
         "\t\"macFilterProfiles\" : \n"
         "\t[\n"
         "\t\t{\n"
         "\t\t\t\"action\" : \"Deny\",\n"
         "\t\t\t\"devices\" : \n"
         "\t\t\t[\n"
         "\t\t\t\t{\n"
         "\t\t\t\t\t\"address\" : \"02:00:00:00:00:02\",\n"
         "\t\t\t\t\t\"name\" : \"Tablet\"\n"
         "\t\t\t\t}\n"
         "\t\t\t],\n"
         "\t\t\t\"id\" : 2,\n"
         "\t\t\t\"name\" : \"G\\u00e4ste\"\n"
         "\t\t},\n"
         "\t\t{\n"
         "\t\t\t\"action\" : \"Allow\",\n"
         "\t\t\t\"devices\" : \n"
         "\t\t\t[\n"
         "\t\t\t\t{\n"
         "\t\t\t\t\t\"address\" : \"02:00:00:00:00:04\",\n"
         "\t\t\t\t\t\"name\" : \"Phone\"\n"
         "\t\t\t\t},\n"
         "\t\t\t\t{\n"
         "\t\t\t\t\t\"address\" : \"02:00:00:00:00:05\",\n"
         "\t\t\t\t\t\"name\" : \"Printer\"\n"
         "\t\t\t\t}\n"
         "\t\t\t],\n"
         "\t\t\t\"id\" : 6,\n"
         "\t\t\t\"name\" : \"Office\"\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"mesh\" : \n"
         "\t{\n"
         "\t\t\"isRepeater\" : true,\n"
         "\t\t\"models\" : \n"
         "\t\t[\n"
         "\t\t\t\"Alder100\",\n"
         "\t\t\t\"Dune40\"\n"
         "\t\t]\n"
         "\t},\n"
         "\t\"networks\" : \n"
         "\t[\n"
         "\t\t{\n"
         "\t\t\t\"activated\" : true,\n"
         "\t\t\t\"bridge\" : \"br7\",\n"
         "\t\t\t\"context\" : \"bridge\",\n"
         "\t\t\t\"hidden\" : true,\n"
         "\t\t\t\"id\" : 3,\n"
         "\t\t\t\"macFilterProfileId\" : 2,\n"
         "\t\t\t\"networkNameHex\" : \"486f6d65\",\n"
         "\t\t\t\"passphraseChangedAt\" : 4107542400,\n"
         "\t\t\t\"passphraseHex\" : \"626174746572792d737461706c65\",\n"
         "\t\t\t\"radioPassphrases\" : \n"
         "\t\t\t[\n"
         "\t\t\t\t{\n"
         "\t\t\t\t\t\"passphraseChangedAt\" : 1769860801,\n"
         "\t\t\t\t\t\"passphraseHex\" : \"73776f726466697368\",\n"
         "\t\t\t\t\t\"radio\" : \"Band5GHz_1\"\n"
         "\t\t\t\t}\n"
         "\t\t\t],\n"
         "\t\t\t\"schedules\" : \n"
         "\t\t\t[\n"
         "\t\t\t\t{\n"
         "\t\t\t\t\t\"mode\" : \"Customized\",\n"
         "\t\t\t\t\t\"radio\" : \"Band2_4GHz\",\n"
         "\t\t\t\t\t\"validUntil\" : 1769860802,\n"
         "\t\t\t\t\t\"windows\" : \n"
         "\t\t\t\t\t[\n"
         "\t\t\t\t\t\t{\n"
         "\t\t\t\t\t\t\t\"end\" : 120,\n"
         "\t\t\t\t\t\t\t\"start\" : 60\n"
         "\t\t\t\t\t\t},\n"
         "\t\t\t\t\t\t{\n"
         "\t\t\t\t\t\t\t\"end\" : 10080,\n"
         "\t\t\t\t\t\t\t\"start\" : 1440\n"
         "\t\t\t\t\t\t}\n"
         "\t\t\t\t\t]\n"
         "\t\t\t\t}\n"
         "\t\t\t],\n"
         "\t\t\t\"securityMode\" : \"PersonalWPA3\",\n"
         "\t\t\t\"slot\" : 5,\n"
         "\t\t\t\"ssidHex\" : \"00ff0a22\"\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"nextMACFilterProfileId\" : 7,\n"
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
         "\t\t\t\"channel\" : 36,\n"
         "\t\t\t\"channelWidth\" : 160,\n"
         "\t\t\t\"enable\" : false,\n"
         "\t\t\t\"radio\" : \"Band5GHz_1\",\n"
         "\t\t\t\"transmitPower\" : 25,\n"
         "\t\t\t\"wifiGeneration\" : 5\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"scanType\" : \"BestAP\",\n"
         "\t\"stations\" : \n"
         "\t[\n"
         "\t\t{\n"
         "\t\t\t\"bssid\" : \"02:00:00:00:00:01\",\n"
         "\t\t\t\"enable\" : true,\n"
         "\t\t\t\"essidHex\" : \"55706c696e6b\",\n"
         "\t\t\t\"passwordHex\" : \"736563726574\",\n"
         "\t\t\t\"radio\" : \"Band2_4GHz\",\n"
         "\t\t\t\"securityMode\" : \"EnterpriseWPA2\",\n"
         "\t\t\t\"userHex\" : \"6d65\"\n"
         "\t\t}\n"
         "\t],\n"
         "\t\"version\" : 1\n"
         "}\n";
}

}  // namespace TALO::Wifid
