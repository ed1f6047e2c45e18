#include "daemon/radio/linux/control/supplicant_files.h"

#include "client/bytes.h"
#include "daemon/radio/linux/control/config_text.h"
#include "daemon/radio/linux/control/passphrases.h"
#include "daemon/radio/security_modes.h"

#include <optional>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

struct Security {
  const char* keyManagement = "";
  const char* protocol = "";  ///< empty where there is no choice
  const char* ciphers = "";
  int protectedManagement = 0;  ///< frames: 0 not, 1 where the access point can, 2 always
};

constexpr const char* kCCMP = "CCMP";
constexpr const char* kCCMPOrTKIP = "CCMP TKIP";

/// Nothing for modes that wpa_supplicant cannot join with.
std::optional<Security> SecurityOf(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::Disabled:
      return Security{"NONE", "", "", 0};
    case SecurityMode::OWE:
      return Security{"OWE", "RSN", kCCMP, 2};
    case SecurityMode::PersonalWPA:
      return Security{"WPA-PSK", "WPA", kCCMPOrTKIP, 0};
    case SecurityMode::PersonalWPA2:
      return Security{"WPA-PSK WPA-PSK-SHA256", "RSN", kCCMP, 1};
    case SecurityMode::PersonalWPA3:
      return Security{"SAE", "RSN", kCCMP, 2};
    case SecurityMode::PersonalWPAMixed:
      return Security{"WPA-PSK WPA-PSK-SHA256", "RSN WPA", kCCMPOrTKIP, 1};
    case SecurityMode::PersonalWPA2_3Mixed:
      return Security{"SAE WPA-PSK WPA-PSK-SHA256", "RSN", kCCMP, 1};
    case SecurityMode::EnterpriseWPA:
      return Security{"WPA-EAP", "WPA", kCCMPOrTKIP, 0};
    case SecurityMode::EnterpriseWPA2:
      return Security{"WPA-EAP WPA-EAP-SHA256", "RSN", kCCMP, 1};
    case SecurityMode::EnterpriseWPA3:
      return Security{"WPA-EAP-SHA256", "RSN", kCCMP, 2};
    case SecurityMode::EnterpriseWPAMixed:
      return Security{"WPA-EAP WPA-EAP-SHA256", "RSN WPA", kCCMPOrTKIP, 1};
    case SecurityMode::WEP:
    case SecurityMode::Error:
      break;
  }
  return std::nullopt;
}

/// Quoted up to the last quote of the line, so what it holds needs no escapes. SAE takes "psk" too, but not a
/// key.
void SetPassphrase(ConfigText& network, SecurityMode mode, const std::string& passphrase) {
  const std::string quoted = "\"" + passphrase + "\"";
  if (!IsKey(passphrase)) {
    network.Set("psk", quoted);
    return;
  }
  if (Speaks(mode, Protocol::PersonalWPA) || Speaks(mode, Protocol::PersonalWPA2)) {
    network.Set("psk", passphrase);
  }
  if (Speaks(mode, Protocol::PersonalWPA3)) {
    network.Set("sae_password", quoted);
  }
}

/// Asks by name too, since the SSID may be hidden.
ConfigText NetworkOf(const StationPlan& station) {
  const std::optional<Security> security = SecurityOf(station.securityMode);
  if (!security) {
    throw std::invalid_argument("wpa_supplicant cannot join with this security mode");
  }
  ConfigText network;
  network.Set("ssid", Wifi::ToHex(station.ssid)).Set("scan_ssid", 1);
  if (station.bssid != Wifi::Util::MACAddress()) {
    network.Set("bssid", station.bssid.ToString());
  }
  network.Set("key_mgmt", security->keyManagement);
  if (*security->protocol != '\0') {
    network.Set("proto", security->protocol).Set("pairwise", security->ciphers);
  }
  if (security->protectedManagement != 0) {
    network.Set("ieee80211w", security->protectedManagement);
  }
  if (IsPersonal(station.securityMode)) {
    SetPassphrase(network, station.securityMode, station.passphrase);
  }
  if (IsEnterprise(station.securityMode)) {
    network.Set("eap", "PEAP")
        .Set("identity", Wifi::ToHex(station.user))
        .Set("password", Wifi::ToHex(station.passphrase))
        .Set("phase2", "\"auth=MSCHAPV2\"");
  }
  return network;
}

/// What every interface is told: without P2P, which would make an interface more. SAE either way, as the
/// access point likes.
std::string Common() { return ConfigText().Set("p2p_disabled", 1).Set("sae_pwe", 2).Text(); }

std::string FileOf(const ConfigText& network) { return Common() + "network={\n" + network.Text() + "}\n"; }

}  // namespace

std::string ListenerFile() { return Common(); }

std::string StationFile(const StationPlan& station) { return FileOf(NetworkOf(station)); }

std::string BackhaulStationFile(const BackhaulStationPlan& station) {
  ConfigText network =
      NetworkOf({station.interface, station.ssid, {}, station.passphrase, {}, SecurityMode::PersonalWPA2});
  if (station.scanType == ScanType::BestAP) {
    // Looks every 300 s, below -65 dBm every 30 s.
    network.Set("bgscan", "\"simple:30:-65:300\"");
  }
  if (station.scanType == ScanType::Disable) {
    network.Set("disabled", 1);
  }
  return FileOf(network);
}

bool CanJoin(SecurityMode mode) { return SecurityOf(mode).has_value(); }

std::string AddStation(const std::string& interface, const std::string& path,
                       const std::string& controlDirectory, const std::string& bridge) {
  return "INTERFACE_ADD " + interface + "\t" + path + "\tnl80211\t" + controlDirectory + "\t\t" + bridge;
}

std::string RemoveStation(const std::string& interface) { return "INTERFACE_REMOVE " + interface; }

std::string ToInterface(const std::string& interface, const std::string& command) {
  return "IFNAME=" + interface + " " + command;
}

}  // namespace TALO::Wifid
