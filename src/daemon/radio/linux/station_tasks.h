#pragma once

#include "daemon/radio/linux/present.h"
#include "daemon/radio/linux/reconcile.h"

#include <vector>

namespace TALO::Wifid {

/// What brings a radio's station and backhaul station to its plan. A radio that is off has none. Another scan
/// type alone keeps the backhaul station's connection.
std::vector<Task> FindStationTasks(const RadioSetting& setting, const RadioPlan& plan,
                                   const Present& present);

/// Makes an interface of this name that only listens, and takes it away.
Task MakeListener(const RadioSetting& setting, const std::string& interface);
Task DropListener(const std::string& interface);

/// The plans of the same parent, whatever the scan types.
bool IsSameButForScanType(BackhaulStationPlan a, const BackhaulStationPlan& b);

}  // namespace TALO::Wifid
