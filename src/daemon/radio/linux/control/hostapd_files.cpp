#include "daemon/radio/linux/control/hostapd_files.h"

#include "client/bytes.h"
#include "daemon/model/text.h"
#include "daemon/radio/linux/control/config_text.h"
#include "daemon/radio/linux/control/passphrases.h"
#include "daemon/radio/security_modes.h"

#include <optional>
#include <stdexcept>

namespace TALO::Wifid {

namespace {

/// In the values of "wpa", bits.
constexpr int kWPA = 1;
constexpr int kWPA2 = 2;

struct Security {
  int wpa = 0;
  const char* keyManagement = "";
  int protectedManagement = 0;  ///< frames: 0 not, 1 for stations that can, 2 for all
};

/// Nothing for an open BSS and for modes that hostapd cannot carry.
std::optional<Security> SecurityOf(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::OWE:
      return Security{kWPA2, "OWE", 2};
    case SecurityMode::PersonalWPA:
      return Security{kWPA, "WPA-PSK", 0};
    case SecurityMode::PersonalWPA2:
      return Security{kWPA2, "WPA-PSK", 0};
    case SecurityMode::PersonalWPA3:
      return Security{kWPA2, "SAE", 2};
    case SecurityMode::PersonalWPAMixed:
      return Security{kWPA | kWPA2, "WPA-PSK", 0};
    case SecurityMode::PersonalWPA2_3Mixed:
      return Security{kWPA2, "WPA-PSK SAE", 1};
    case SecurityMode::Disabled:
    case SecurityMode::WEP:
    case SecurityMode::EnterpriseWPA:
    case SecurityMode::EnterpriseWPA2:
    case SecurityMode::EnterpriseWPA3:
    case SecurityMode::EnterpriseWPAMixed:
    case SecurityMode::Error:
      break;
  }
  return std::nullopt;
}

/// The number by which a width is asked for where 20 and 40 MHz are one.
int WidthNumber(int width) { return width == 160 ? 2 : width == 80 ? 1 : 0; }

void SetWidth(ConfigText& text, const std::string& standard, const ChannelSettings& channel) {
  if (channel.centre != 0) {
    text.Set(standard + "_oper_chwidth", WidthNumber(channel.width))
        .Set(standard + "_oper_centr_freq_seg0_idx", channel.centre);
  }
}

void SetChannel(ConfigText& text, const ChannelSettings& channel) {
  text.Set("hw_mode", channel.band5GHz ? "a" : "g").Set("channel", channel.channel).Set("wmm_enabled", 1);
  if (channel.highThroughput) {
    text.Set("ieee80211n", 1);
    if (channel.secondary != 0) {
      text.Set("ht_capab", channel.secondary > 0 ? "[HT40+]" : "[HT40-]");
    }
  }
  if (channel.veryHighThroughput) {
    text.Set("ieee80211ac", 1);
    // hostapd refuses the radio where its hardware does not say so of 802.11ac.
    if (channel.veryHighThroughput160) {
      text.Set("vht_capab", "[VHT160]");
    }
    SetWidth(text, "vht", channel);
  }
  if (channel.highEfficiency) {
    text.Set("ieee80211ax", 1);
    SetWidth(text, "he", channel);
  }
}

ConfigText BeginFile(const HostapdSetup& setup, const std::string& interface) {
  ConfigText text;
  text.Set("interface", interface).Set("driver", "nl80211").Set("ctrl_interface", setup.controlDirectory);
  SetChannel(text, setup.channel);
  return text;
}

/// A passphrase is never given as sae_password, in which hostapd looks for options: without one, SAE takes
/// wpa_passphrase. Digits hold no options.
void SetPassphrase(ConfigText& text, SecurityMode mode, const std::string& passphrase) {
  if (!IsKey(passphrase)) {
    text.Set("wpa_passphrase", passphrase);
    return;
  }
  if (Speaks(mode, Protocol::PersonalWPA) || Speaks(mode, Protocol::PersonalWPA2)) {
    text.Set("wpa_psk", passphrase);
  }
  if (Speaks(mode, Protocol::PersonalWPA3)) {
    text.Set("sae_password", passphrase);
  }
}

void SetSecurity(ConfigText& text, const BSSPlan& bss) {
  const std::optional<Security> security = SecurityOf(bss.securityMode);
  if (!security) {
    return;
  }
  text.Set("wpa", security->wpa).Set("wpa_key_mgmt", security->keyManagement);
  if ((security->wpa & kWPA) != 0) {
    text.Set("wpa_pairwise", "TKIP");
  }
  if ((security->wpa & kWPA2) != 0) {
    text.Set("rsn_pairwise", "CCMP");
  }
  if (security->protectedManagement != 0) {
    text.Set("ieee80211w", security->protectedManagement);
  }
  if (bss.securityMode == SecurityMode::PersonalWPA2_3Mixed) {
    text.Set("sae_require_mfp", 1);
  }
  if (IsPersonal(bss.securityMode)) {
    SetPassphrase(text, bss.securityMode, bss.passphrase);
  }
}

void SetAccess(ConfigText& text, const AccessPlan& access, const AccessPaths& paths) {
  switch (access.rule) {
    case AccessPlan::Rule::Everybody:
      break;
    case AccessPlan::Rule::OnlyListed:
      text.Set("macaddr_acl", 1).Set("accept_mac_file", paths.accept);
      break;
    case AccessPlan::Rule::AllButListed:
      text.Set("macaddr_acl", 0).Set("deny_mac_file", paths.deny);
      break;
  }
}

/// Independent: push button opens this BSS and not every one of the process. Without a PIN nobody can set the
/// BSS up from outside.
void SetWPS(ConfigText& text) {
  text.Set("eap_server", 1)
      .Set("wps_state", 2)
      .Set("wps_independent", 1)
      .Set("config_methods", "push_button virtual_push_button")
      .Set("device_name", "Router")
      .Set("manufacturer", "Router")
      .Set("model_name", "Router")
      .Set("device_type", "6-0050F204-1");
}

std::string Lines(const std::set<Wifi::Util::MACAddress>& devices) {
  std::string lines;
  for (const Wifi::Util::MACAddress& device : devices) {
    lines += device.ToString() + "\n";
  }
  return lines;
}

}  // namespace

std::string HolderFile(const HostapdSetup& setup, const std::string& interface) {
  return BeginFile(setup, interface)
      .Set("ssid", "holder")
      .Set("ignore_broadcast_ssid", 1)
      .Set("start_disabled", 1)
      .Set("macaddr_acl", 1)
      .Text();
}

std::string BSSFile(const HostapdSetup& setup, const BSSPlan& bss, const std::string& bridge,
                    const AccessPaths& access) {
  if (!CanCarry(bss.securityMode)) {
    throw std::invalid_argument("hostapd cannot carry a BSS of this security mode");
  }
  ConfigText text = BeginFile(setup, bss.interface);
  text.Set("bssid", bss.bssid.ToString()).Set("ssid2", Wifi::ToHex(bss.ssid));
  if (bss.hidden) {
    text.Set("ignore_broadcast_ssid", 1);
  }
  if (!bridge.empty()) {
    text.Set("bridge", bridge);
  }
  if (bss.networkId == kBackhaulNetworkId) {
    text.Set("wds_sta", 1).Set("max_num_sta", kMostNodes);
  }
  SetSecurity(text, bss);
  SetAccess(text, bss.access, access);
  if (HasWPS(bss)) {
    SetWPS(text);
  }
  return text.Text();
}

std::string AcceptFile(const AccessPlan& access) {
  return access.rule == AccessPlan::Rule::OnlyListed ? Lines(access.devices) : std::string();
}

std::string DenyFile(const AccessPlan& access) {
  return access.rule == AccessPlan::Rule::AllButListed ? Lines(access.devices) : std::string();
}

bool CanCarry(SecurityMode mode) { return mode == SecurityMode::Disabled || SecurityOf(mode).has_value(); }

std::string WhyNoWPS(const BSSPlan& bss) {
  if (bss.networkId == kBackhaulNetworkId) {
    return "for the backhaul";
  }
  if (!IsForWPS(bss.securityMode)) {
    return "with the security mode " + NameOrNumber(bss.securityMode);
  }
  return bss.hidden ? "while its SSID is hidden" : "";
}

}  // namespace TALO::Wifid
