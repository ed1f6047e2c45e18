#pragma once

#include "daemon/model/plan.h"
#include "daemon/radio/simulated/scenario.h"

/// Who gets into which network.
namespace TALO::Wifid {

/// Whether the mode has one passphrase for everybody.
bool IsPersonal(SecurityMode mode);

/// Whether the mode asks for a user and a password.
bool IsEnterprise(SecurityMode mode);

/// Whether the mode is one that WPS hands out.
bool IsForWPS(SecurityMode mode);

/// Whether a station that is set to one mode can join an access point that is set to the other.
bool CanMeet(SecurityMode station, SecurityMode accessPoint);

bool Admits(const AccessPlan& access, const Wifi::Util::MACAddress& device);

/// Whether a stored credential opens a BSS. Devices have none for enterprise modes and WEP.
bool DoesOpen(const Credential& credential, const BSSPlan& bss);

}  // namespace TALO::Wifid
