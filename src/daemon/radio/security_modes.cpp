#include "daemon/radio/security_modes.h"

namespace TALO::Wifid {

namespace {

constexpr unsigned operator|(Protocol one, Protocol other) {
  return static_cast<unsigned>(one) | static_cast<unsigned>(other);
}

unsigned ProtocolsOf(SecurityMode mode) {
  switch (mode) {
    case SecurityMode::Error:
      return 0;
    case SecurityMode::Disabled:
      return static_cast<unsigned>(Protocol::Open);
    case SecurityMode::OWE:
      return static_cast<unsigned>(Protocol::OWE);
    case SecurityMode::WEP:
      return static_cast<unsigned>(Protocol::WEP);
    case SecurityMode::PersonalWPA:
      return static_cast<unsigned>(Protocol::PersonalWPA);
    case SecurityMode::PersonalWPA2:
      return static_cast<unsigned>(Protocol::PersonalWPA2);
    case SecurityMode::PersonalWPA3:
      return static_cast<unsigned>(Protocol::PersonalWPA3);
    case SecurityMode::PersonalWPAMixed:
      return Protocol::PersonalWPA | Protocol::PersonalWPA2;
    case SecurityMode::PersonalWPA2_3Mixed:
      return Protocol::PersonalWPA2 | Protocol::PersonalWPA3;
    case SecurityMode::EnterpriseWPA:
      return static_cast<unsigned>(Protocol::EnterpriseWPA);
    case SecurityMode::EnterpriseWPA2:
      return static_cast<unsigned>(Protocol::EnterpriseWPA2);
    case SecurityMode::EnterpriseWPA3:
      return static_cast<unsigned>(Protocol::EnterpriseWPA3);
    case SecurityMode::EnterpriseWPAMixed:
      return Protocol::EnterpriseWPA | Protocol::EnterpriseWPA2;
  }
  return 0;
}

}  // namespace

bool Speaks(SecurityMode mode, Protocol protocol) {
  return (ProtocolsOf(mode) & static_cast<unsigned>(protocol)) != 0;
}

bool IsPersonal(SecurityMode mode) {
  return Speaks(mode, Protocol::PersonalWPA) || Speaks(mode, Protocol::PersonalWPA2) ||
         Speaks(mode, Protocol::PersonalWPA3);
}

bool IsEnterprise(SecurityMode mode) {
  return Speaks(mode, Protocol::EnterpriseWPA) || Speaks(mode, Protocol::EnterpriseWPA2) ||
         Speaks(mode, Protocol::EnterpriseWPA3);
}

bool IsForWPS(SecurityMode mode) { return Speaks(mode, Protocol::PersonalWPA2); }

bool CanMeet(SecurityMode station, SecurityMode accessPoint) {
  return (ProtocolsOf(station) & ProtocolsOf(accessPoint)) != 0;
}

}  // namespace TALO::Wifid
