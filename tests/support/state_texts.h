#pragma once

#include "support/daemon_samples.h"

#include <string>

namespace TALO::Wifid {

/// A state in which every member differs from its default.
State FullState();

/// Its text, as EncodeState is to write it.
std::string FullText();

}  // namespace TALO::Wifid
