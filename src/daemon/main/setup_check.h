#pragma once

#include "daemon/main/options.h"

#include <set>
#include <string>

/// Whether a router can be what its options say, before anything is made from them.
namespace TALO::Wifid {

/// Throws std::invalid_argument for a country that the model may not be used in.
void CheckCountry(const Options& options);

/// Throws std::invalid_argument for a bridge that is not among those of the router.
void CheckBridge(const Options& options, const std::set<std::string>& bridges);

}  // namespace TALO::Wifid
