#pragma once

#include "daemon/model/state.h"

#include <string>

namespace TALO::Wifid {

/// A state in which every member of every struct differs from its default. It is no state of a real router:
/// what matters is that each member can be told from one that was not read.
State FullState();

/// Its text, as EncodeState is to write it.
std::string FullText();

}  // namespace TALO::Wifid
