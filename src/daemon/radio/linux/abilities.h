#pragma once

#include "daemon/model/plan.h"
#include "daemon/model/result.h"
#include "daemon/radio/linux/hardware.h"

namespace TALO::Wifid {

/// NotSupported for what this hardware, hostapd or wpa_supplicant cannot do, with what is missing.
Result<void> CheckAbilities(const RadioHardware& hardware, const RadioPlan& plan);

}  // namespace TALO::Wifid
