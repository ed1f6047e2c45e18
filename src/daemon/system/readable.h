#pragma once

#include <chrono>

namespace TALO::Wifid {

/// Waits until a descriptor is readable; false when it is not by then.
bool WaitUntilReadable(int descriptor, std::chrono::steady_clock::time_point deadline);

}  // namespace TALO::Wifid
