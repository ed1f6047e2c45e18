#pragma once

#include "daemon/model/plan.h"

#include <string>
#include <vector>

/// What hostapd is asked on its global control socket. Every command but AddBSS's and RemoveBSS's begins with
/// the interface that it is for. "OK" and "FAIL" answer them.
namespace TALO::Wifid {

using Commands = std::vector<std::string>;

/// Makes the radio with its first interface, or adds a BSS to the radio. The phy's name must be right: a
/// wrong one breaks what runs. A radio that is wider than 20 MHz listens first and is up when it tells
/// "AP-ENABLED" of its first interface; until then it takes BSSs, but they are not up. In the 5 GHz band it
/// may have changed its primary channel with the secondary one by then, in the 2.4 GHz band be 20 MHz wide.
std::string AddBSS(const std::string& phy, const std::string& path);
/// Of the radio's first interface: takes the whole radio down.
std::string RemoveBSS(const std::string& interface);
/// Of a radio, by its first interface. It answers lines as ReadFields() reads them, one of them "state".
std::string AskForStatus(const std::string& interface);

/// Whether a BSS that is up can be given another passphrase. Not WPA3's where either stands for the key
/// itself: hostapd does not forget a password that it was given for WPA3 alone. Then the BSS has to go and
/// come again.
bool CanChangePassphrase(SecurityMode mode, const std::string& before, const std::string& after);
/// Of a BSS that is up, in this order, where CanChangePassphrase() says so. Whoever used the old passphrase
/// is dropped, and no key that is still cached lets anybody back in.
Commands ChangePassphrase(const std::string& interface, SecurityMode mode, const std::string& passphrase);
/// Whether that can be told a BSS that is up. Not where it is to be shown and has WPS then: one that came up
/// hidden has none, and gets none before it goes and comes again.
bool CanChangeHidden(const BSSPlan& after);
Commands ChangeHidden(const std::string& interface, bool hidden);
/// From one access to another, dropping those whom it does not admit any more and nobody else. At no moment
/// is anybody admitted whom neither admits.
Commands ChangeAccess(const std::string& interface, const AccessPlan& before, const AccessPlan& after);

std::string StartPushButton(const std::string& interface);
std::string CancelPushButton(const std::string& interface);

}  // namespace TALO::Wifid
