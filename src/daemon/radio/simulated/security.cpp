#include "daemon/radio/simulated/security.h"

namespace TALO::Wifid {

namespace {

/// The protocols that a mode speaks, as bits.
enum Protocol : unsigned {
  kNone = 0,
  kOpen = 1U << 0U,
  kOWE = 1U << 1U,
  kWEP = 1U << 2U,
  kPersonalWPA = 1U << 3U,
  kPersonalWPA2 = 1U << 4U,
  kPersonalWPA3 = 1U << 5U,
  kEnterpriseWPA = 1U << 6U,
  kEnterpriseWPA2 = 1U << 7U,
  kEnterpriseWPA3 = 1U << 8U,
};

unsigned ProtocolsOf(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::Error:
      return kNone;
    case SecurityMode::Disabled:
      return kOpen;
    case SecurityMode::OWE:
      return kOWE;
    case SecurityMode::WEP:
      return kWEP;
    case SecurityMode::PersonalWPA:
      return kPersonalWPA;
    case SecurityMode::PersonalWPA2:
      return kPersonalWPA2;
    case SecurityMode::PersonalWPA3:
      return kPersonalWPA3;
    case SecurityMode::PersonalWPAMixed:
      return kPersonalWPA | kPersonalWPA2;
    case SecurityMode::PersonalWPA2_3Mixed:
      return kPersonalWPA2 | kPersonalWPA3;
    case SecurityMode::EnterpriseWPA:
      return kEnterpriseWPA;
    case SecurityMode::EnterpriseWPA2:
      return kEnterpriseWPA2;
    case SecurityMode::EnterpriseWPA3:
      return kEnterpriseWPA3;
    case SecurityMode::EnterpriseWPAMixed:
      return kEnterpriseWPA | kEnterpriseWPA2;
  }
  return kNone;
}

bool Speaks(SecurityMode mode, unsigned protocols) { return (ProtocolsOf(mode) & protocols) != 0; }

}  // namespace

bool IsPersonal(SecurityMode mode) { return Speaks(mode, kPersonalWPA | kPersonalWPA2 | kPersonalWPA3); }

bool IsEnterprise(SecurityMode mode) {
  return Speaks(mode, kEnterpriseWPA | kEnterpriseWPA2 | kEnterpriseWPA3);
}

bool IsForWPS(SecurityMode mode) { return Speaks(mode, kPersonalWPA2); }

bool CanMeet(SecurityMode station, SecurityMode accessPoint) {
  return Speaks(station, ProtocolsOf(accessPoint));
}

bool Admits(const AccessPlan& access, const Wifi::Util::MACAddress& device) {
  switch (access.rule) {
    case AccessPlan::Rule::Everybody:
      return true;
    case AccessPlan::Rule::OnlyListed:
      return access.devices.contains(device);
    case AccessPlan::Rule::AllButListed:
      return !access.devices.contains(device);
  }
  return false;
}

bool DoesOpen(const Credential& credential, const BSSPlan& bss) {
  if (credential.ssid != bss.ssid) {
    return false;
  }
  if (IsPersonal(bss.securityMode)) {
    return credential.passphrase == bss.passphrase;
  }
  return Speaks(bss.securityMode, kOpen | kOWE) && credential.passphrase.empty();
}

}  // namespace TALO::Wifid
