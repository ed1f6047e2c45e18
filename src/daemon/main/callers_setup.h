#pragma once

#include "daemon/service/callers.h"

#include <string>

namespace TALO::Wifid {

/// Lets in whom the bus knows as root, as this process's user or as a member of `group`. A group that does
/// not exist is logged, and has no members.
Callers MakeCallers(sd_bus* bus, const std::string& group, const Log& log);

}  // namespace TALO::Wifid
