#pragma once

#include "daemon/model/plan.h"
#include "daemon/radio/security_modes.h"
#include "daemon/radio/simulated/scenario.h"

/// Who gets into which network.
namespace TALO::Wifid {

/// Whether a stored credential opens a BSS. Devices have none for enterprise modes and WEP.
bool DoesOpen(const Credential& credential, const BSSPlan& bss);

}  // namespace TALO::Wifid
