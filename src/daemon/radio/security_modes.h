#pragma once

#include "values/enums.h"

/// What the security modes have in common.
namespace TALO::Wifid {

using Wifi::Util::SecurityMode;

/// What an access point and a station can have in common.
enum class Protocol : unsigned {
  Open = 1U << 0U,
  OWE = 1U << 1U,
  WEP = 1U << 2U,
  PersonalWPA = 1U << 3U,
  PersonalWPA2 = 1U << 4U,
  PersonalWPA3 = 1U << 5U,
  EnterpriseWPA = 1U << 6U,
  EnterpriseWPA2 = 1U << 7U,
  EnterpriseWPA3 = 1U << 8U,
};

bool Speaks(SecurityMode mode, Protocol protocol);

/// Whether the mode has one passphrase for everybody.
bool IsPersonal(SecurityMode mode);

/// Whether the mode asks for a user and a password.
bool IsEnterprise(SecurityMode mode);

/// Whether the mode is one that WPS hands out.
bool IsForWPS(SecurityMode mode);

/// Whether a station that is set to one mode can join an access point that is set to the other.
bool CanMeet(SecurityMode station, SecurityMode accessPoint);

}  // namespace TALO::Wifid
