#include "daemon/radio/linux/control/hostapd_commands.h"

#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/control/passphrases.h"
#include "daemon/radio/linux/control/supplicant_files.h"
#include "daemon/radio/security_modes.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <stdexcept>
#include <utility>

namespace TALO::Wifid {

namespace {

using Devices = std::set<Wifi::Util::MACAddress>;
using Rule = AccessPlan::Rule;

constexpr const char* kDropAll = "DEAUTHENTICATE ff:ff:ff:ff:ff:ff";

Commands AllToInterface(const std::string& interface, Commands commands) {
  for (std::string& command : commands) {
    command = ToInterface(interface, command);
  }
  return commands;
}

/// What one list has to become. A device on the accept list is admitted whatever else is said.
struct ListChange {
  Devices before;
  Devices after;

  Devices Coming() const { return Difference(after, before); }
  Devices Going() const { return Difference(before, after); }

  static Devices Difference(const Devices& from, const Devices& less) {
    Devices rest;
    std::ranges::set_difference(from, less, std::inserter(rest, rest.end()));
    return rest;
  }
};

ListChange ChangeOf(Rule rule, const AccessPlan& before, const AccessPlan& after) {
  return {before.rule == rule ? before.devices : Devices(), after.rule == rule ? after.devices : Devices()};
}

void Append(Commands& commands, const std::string& verb, const Devices& devices) {
  for (const Wifi::Util::MACAddress& device : devices) {
    commands.push_back(verb + " " + device.ToString());
  }
}

void LeaveOnlyListed(Commands& commands, const Devices& accepted, const Devices& denied) {
  Devices dropped;
  std::ranges::set_intersection(accepted, denied, std::inserter(dropped, dropped.end()));
  // Before the list ceases to hold: only as long as it does are those dropped who leave it.
  Append(commands, "ACCEPT_ACL DEL_MAC", dropped);
  commands.emplace_back("SET macaddr_acl 0");
  commands.emplace_back("ACCEPT_ACL CLEAR");
}

void EnterOnlyListed(Commands& commands) {
  commands.emplace_back("SET macaddr_acl 1");
  // That drops nobody by itself. Taking somebody off the list drops all who are not on it; this one is no
  // station's address.
  commands.emplace_back("ACCEPT_ACL DEL_MAC ff:ff:ff:ff:ff:ff");
}

}  // namespace

std::string AddBSS(const std::string& phy, const std::string& path) {
  return "ADD bss_config=" + phy + ":" + path;
}

std::string RemoveBSS(const std::string& interface) { return "REMOVE " + interface; }

std::string AskForStatus(const std::string& interface) { return ToInterface(interface, "STATUS"); }

bool CanChangePassphrase(SecurityMode mode, const std::string& before, const std::string& after) {
  return IsPersonal(mode) && (!Speaks(mode, Protocol::PersonalWPA3) || (!IsKey(before) && !IsKey(after)));
}

Commands ChangePassphrase(const std::string& interface, SecurityMode mode, const std::string& passphrase) {
  if (!CanChangePassphrase(mode, {}, passphrase)) {
    throw std::invalid_argument("a BSS of this security mode cannot be given this passphrase");
  }
  Commands commands;
  if (IsKey(passphrase)) {
    // It holds as it is. RELOAD_WPA_PSK would throw it away and make another of a passphrase.
    commands.push_back("SET wpa_psk " + passphrase);
  } else {
    commands.push_back("SET wpa_passphrase " + passphrase);
    commands.emplace_back("RELOAD_WPA_PSK");
  }
  // The first time ends what still goes on with the old passphrase, and would leave another cached key. The
  // second time drops who came back meanwhile by a key that is not cached any more.
  commands.emplace_back(kDropAll);
  commands.emplace_back("PMKSA_FLUSH");
  commands.emplace_back(kDropAll);
  return AllToInterface(interface, std::move(commands));
}

bool CanChangeHidden(const BSSPlan& after) { return after.hidden || !HasWPS(after); }

Commands ChangeHidden(const std::string& interface, bool hidden) {
  return AllToInterface(interface, {std::string("SET ignore_broadcast_ssid ") + (hidden ? "1" : "0"),
                                    std::string("UPDATE_BEACON")});
}

Commands ChangeAccess(const std::string& interface, const AccessPlan& before, const AccessPlan& after) {
  const ListChange accepted = ChangeOf(Rule::OnlyListed, before, after);
  const ListChange denied = ChangeOf(Rule::AllButListed, before, after);
  Commands commands;
  Append(commands, "ACCEPT_ACL ADD_MAC", accepted.Coming());
  Append(commands, "DENY_ACL ADD_MAC", denied.Coming());
  if (before.rule == Rule::OnlyListed && after.rule == Rule::OnlyListed) {
    Append(commands, "ACCEPT_ACL DEL_MAC", accepted.Going());
  } else if (before.rule == Rule::OnlyListed) {
    LeaveOnlyListed(commands, accepted.before, denied.after);
  } else if (after.rule == Rule::OnlyListed) {
    EnterOnlyListed(commands);
  }
  Append(commands, "DENY_ACL DEL_MAC", denied.Going());
  return AllToInterface(interface, std::move(commands));
}

std::string StartPushButton(const std::string& interface) { return ToInterface(interface, "WPS_PBC"); }

std::string CancelPushButton(const std::string& interface) { return ToInterface(interface, "WPS_CANCEL"); }

}  // namespace TALO::Wifid
