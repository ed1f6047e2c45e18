#include "daemon/radio/simulated/security.h"

namespace TALO::Wifid {

bool DoesOpen(const Credential& credential, const BSSPlan& bss) {
  if (credential.ssid != bss.ssid) {
    return false;
  }
  if (IsPersonal(bss.securityMode)) {
    return credential.passphrase == bss.passphrase;
  }
  const bool isFree = Speaks(bss.securityMode, Protocol::Open) || Speaks(bss.securityMode, Protocol::OWE);
  return isFree && credential.passphrase.empty();
}

}  // namespace TALO::Wifid
