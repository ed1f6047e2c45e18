#include "daemon/radio/linux/abilities.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/control/hostapd_files.h"
#include "daemon/radio/linux/control/supplicant_files.h"

#include <iterator>

namespace TALO::Wifid {

Result<void> CheckAbilities(const RadioHardware& hardware, const RadioPlan& plan) {
  const std::string radio = "the radio " + NameOrNumber(plan.radio);
  const auto lacks = [&radio](const std::string& what) {
    return Refusal{ErrorCode::NotSupported, radio + " " + what};
  };
  if (plan.broadcastLimit.enablePreventBroadcast) {
    return lacks("cannot limit broadcasts");
  }
  const int most = hardware.maximumAccessPoints - (hardware.HasHolder() ? 1 : 0);
  if (std::ssize(plan.bsss) > most) {
    return lacks("cannot bring up " + std::to_string(plan.bsss.size()) + " access points: its hardware has " +
                 std::to_string(hardware.maximumAccessPoints) + " at once" +
                 (hardware.HasHolder() ? ", one of which holds the radio" : ""));
  }
  for (const BSSPlan& bss : plan.bsss) {
    if (!CanCarry(bss.securityMode)) {
      return lacks("cannot bring up " + bss.interface + " with the security mode " +
                   NameOrNumber(bss.securityMode));
    }
  }
  if (plan.station && !CanJoin(plan.station->securityMode)) {
    return lacks("cannot join an access point with the security mode " +
                 NameOrNumber(plan.station->securityMode));
  }
  if ((plan.station || plan.backhaulStation) && hardware.maximumStations < 1) {
    return lacks("cannot join an access point: its hardware is an access point or a station, not both");
  }
  if (plan.station && plan.backhaulStation && hardware.maximumStations < 2) {
    return lacks("cannot join an access point and a parent: its hardware can be one station at once");
  }
  if (plan.backhaulStation && !hardware.fourAddress) {
    return lacks("cannot join a parent: its hardware has no 4-address mode");
  }
  return {};
}

}  // namespace TALO::Wifid
