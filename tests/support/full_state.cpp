#include "support/full_state.h"

#include "daemon/store/checksum.h"
#include "daemon/store/state_codec.h"
#include "support/files.h"

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

std::string SampleOfVersion(int version) {
  return ReadFile(std::string(TALOWIFI_STATE_SAMPLES) + "/version-" + std::to_string(version) + ".json");
}

std::string FullText() { return SampleOfVersion(kStateVersion); }

std::string FullTextWithoutChecksum() {
  std::string text = FullText();
  const std::size_t at = text.find(std::string("\t\"") + kChecksumKey);
  return text.erase(at, text.find('\n', at) + 1 - at);
}

}  // namespace TALO::Wifid
