#pragma once

#include "bench/bench.h"

namespace TALO::Bench {

/// Whether the daemon's memory grows with what it is asked, and with what is changed.
void MeasureGrowth(const Effort& effort);

}  // namespace TALO::Bench
