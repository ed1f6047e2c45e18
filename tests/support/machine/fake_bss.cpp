#include "support/machine/fake_bss.h"

#include <sstream>
#include <stdexcept>
#include <utility>
#include <vector>

namespace TALO::Wifid {

namespace {

using Wifi::Util::MACAddress;

constexpr const char* kOk = "OK\n";
constexpr const char* kFail = "FAIL\n";
constexpr const char* kEverybody = "ff:ff:ff:ff:ff:ff";

const std::set<std::string>& KnownKeys() {
  static const std::set<std::string> kKnown = {"interface",
                                               "driver",
                                               "ctrl_interface",
                                               "hw_mode",
                                               "channel",
                                               "wmm_enabled",
                                               "ieee80211n",
                                               "ht_capab",
                                               "ieee80211ac",
                                               "vht_capab",
                                               "vht_oper_chwidth",
                                               "vht_oper_centr_freq_seg0_idx",
                                               "ieee80211ax",
                                               "he_oper_chwidth",
                                               "he_oper_centr_freq_seg0_idx",
                                               "ssid",
                                               "ssid2",
                                               "bssid",
                                               "bridge",
                                               "ignore_broadcast_ssid",
                                               "start_disabled",
                                               "wds_sta",
                                               "max_num_sta",
                                               "wpa",
                                               "wpa_key_mgmt",
                                               "wpa_pairwise",
                                               "rsn_pairwise",
                                               "ieee80211w",
                                               "sae_require_mfp",
                                               "wpa_passphrase",
                                               "wpa_psk",
                                               "sae_password",
                                               "macaddr_acl",
                                               "accept_mac_file",
                                               "deny_mac_file",
                                               "eap_server",
                                               "wps_state",
                                               "wps_independent",
                                               "config_methods",
                                               "device_name",
                                               "manufacturer",
                                               "model_name",
                                               "device_type",
                                               "sae_pwe"};
  return kKnown;
}

bool IsPassphrase(const std::string& text) { return text.size() >= 8 && text.size() <= 63; }

std::string BytesOf(const std::string& hex) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < hex.size(); i += 2) {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

}  // namespace

std::string FakeBSSFile::Get(const std::string& key) const {
  const auto value = values.find(key);
  return value != values.end() ? value->second : std::string();
}

FakeBSSFile ReadBSSFile(const std::string& text) {
  FakeBSSFile file;
  std::istringstream lines(text);
  int number = 0;
  for (std::string line; std::getline(lines, line);) {
    const std::string where = "Line " + std::to_string(++number) + ": ";
    const std::size_t equals = line.find('=');
    const std::string key = line.substr(0, equals);
    const std::string value = equals != std::string::npos ? line.substr(equals + 1) : std::string();
    if (!KnownKeys().contains(key)) {
      file.complaint = where + "unknown configuration item '" + key + "'";
      break;
    }
    if (key == "wpa_passphrase" && !IsPassphrase(value)) {
      file.complaint =
          where + "invalid WPA passphrase length " + std::to_string(value.size()) + " (expected 8..63)";
      break;
    }
    file.values[key] = value;
  }
  return file;
}

FakeBSS::FakeBSS(const FakeBSSFile& file, std::set<MACAddress> accepted, std::set<MACAddress> denied,
                 Sinks sinks)
    : ssid_(file.Get("ssid2").empty() ? file.Get("ssid") : BytesOf(file.Get("ssid2"))),
      open_(file.Get("wpa").empty()),
      psk_(file.Get("wpa_key_mgmt").find("WPA-PSK") != std::string::npos),
      sae_(file.Get("wpa_key_mgmt").find("SAE") != std::string::npos),
      passphrase_(file.Get("wpa_passphrase")),
      key_(file.Get("wpa_psk").empty() ? passphrase_ : file.Get("wpa_psk")),
      saePassword_(file.Get("sae_password")),
      sends_(file.Get("start_disabled") != "1"),
      hides_(file.Get("ignore_broadcast_ssid") == "1"),
      beaconHides_(hides_),
      wps_(file.Get("wps_state") == "2" && !hides_),
      onlyAccepted_(file.Get("macaddr_acl") == "1"),
      accepted_(std::move(accepted)),
      denied_(std::move(denied)),
      sinks_(std::move(sinks)) {}

bool FakeBSS::Admits(const MACAddress& device) const {
  return accepted_.contains(device) || (!onlyAccepted_ && !denied_.contains(device));
}

bool FakeBSS::LetsIn(const FakeDevice& device) {
  const auto known = device.knows.find(ssid_);
  if (known == device.knows.end() || !Admits(device.address)) {
    return false;
  }
  if (open_ || (psk_ && !device.speaksWPA3 && known->second == key_)) {
    stations[device.address] = false;
    return true;
  }
  const std::string& password = saePassword_.empty() ? passphrase_ : saePassword_;
  if (sae_ && device.speaksWPA3 && (known->second == password || cached_.contains(device.address))) {
    cached_.insert(device.address);
    stations[device.address] = true;
    return true;
  }
  return false;
}

void FakeBSS::DropBy(const std::function<bool(const MACAddress&, bool)>& concerns) {
  for (const auto& [station, isWPA3] : std::map<MACAddress, bool>(stations)) {
    if (concerns(station, isWPA3)) {
      sinks_.drop(station);
    }
  }
}

void FakeBSS::DropNotAdmitted() {
  DropBy([this](const MACAddress& station, bool) { return !Admits(station); });
}

std::string FakeBSS::Set(const std::string& key, const std::string& value) {
  if (key == "wpa_passphrase" && IsPassphrase(value)) {
    passphrase_ = value;
  } else if (key == "wpa_psk" && value.size() == 64) {
    key_ = value;
  } else if (key == "sae_password") {
    saePassword_ = value == "clear" ? std::string() : value;
  } else if (key == "ignore_broadcast_ssid" && (value == "0" || value == "1")) {
    hides_ = value == "1";
  } else if (key == "macaddr_acl" && (value == "0" || value == "1")) {
    // Who is connected stays, until the list itself changes.
    onlyAccepted_ = value == "1";
  } else {
    return kFail;
  }
  return kOk;
}

std::string FakeBSS::ChangeList(std::set<MACAddress>& list, const std::string& change) {
  const std::size_t space = change.find(' ');
  const std::string verb = change.substr(0, space);
  try {
    if (verb == "ADD_MAC") {
      list.insert(MACAddress(change.substr(space + 1)));
    } else if (verb == "DEL_MAC") {
      list.erase(MACAddress(change.substr(space + 1)));
    } else if (verb == "CLEAR") {
      list.clear();
    } else {
      return kFail;
    }
  } catch (const std::invalid_argument&) {
    return kFail;
  }
  // Adding to the accept list and taking off the deny list drop nobody.
  const bool drops = &list == &denied_ ? verb == "ADD_MAC" : verb != "ADD_MAC" && onlyAccepted_;
  if (drops) {
    DropNotAdmitted();
  }
  return kOk;
}

std::string FakeBSS::Obey(const std::string& command) {
  const std::size_t space = command.find(' ');
  const std::string verb = command.substr(0, space);
  const std::string rest = space != std::string::npos ? command.substr(space + 1) : std::string();
  if (verb == "SET") {
    const std::size_t gap = rest.find(' ');
    return gap != std::string::npos ? Set(rest.substr(0, gap), rest.substr(gap + 1)) : kFail;
  }
  if (verb == "ACCEPT_ACL" || verb == "DENY_ACL") {
    return ChangeList(verb == "ACCEPT_ACL" ? accepted_ : denied_, rest);
  }
  if (verb == "RELOAD_WPA_PSK") {
    key_ = passphrase_;
    DropBy([](const MACAddress&, bool isWPA3) { return !isWPA3; });
  } else if (verb == "PMKSA_FLUSH") {
    cached_.clear();
  } else if (verb == "DEAUTHENTICATE") {
    DropBy([&rest](const MACAddress& station, bool) {
      return rest == kEverybody || rest == station.ToString();
    });
  } else if (verb == "UPDATE_BEACON") {
    beaconHides_ = hides_;
  } else if (verb == "WPS_PBC" && wps_) {
    pushButton_ = true;
    sinks_.tell("WPS-PBC-ACTIVE ");
  } else if (verb == "WPS_CANCEL" && wps_) {
    if (pushButton_) {
      sinks_.tell("WPS-TIMEOUT ");
      sinks_.tell("WPS-CANCEL ");
    }
    pushButton_ = false;
  } else {
    return verb.starts_with("WPS_") ? kFail : "UNKNOWN COMMAND\n";
  }
  return kOk;
}

}  // namespace TALO::Wifid
