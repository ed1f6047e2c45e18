#pragma once

#include "daemon/model/capabilities.h"
#include "daemon/model/plan.h"
#include "daemon/model/result.h"

#include <set>
#include <string>

namespace TALO::Wifid {

/// RadioFailed for a plan that a radio cannot carry out: a channel or width it does not have, a channel
/// that the country does not allow a radio that is on, more networks than it carries, two BSSs on one
/// interface or BSSID, an SSID that is none, a bridge that does not exist.
Result<void> CheckPlan(const RadioPlan& plan, const RadioCapability& radio,
                       const std::set<std::string>& bridges);

}  // namespace TALO::Wifid
