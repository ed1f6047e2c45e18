#pragma once

#include "bench/bench.h"

namespace TALO::Bench {

/// How long a full router's answers take while it scans, restarts its radios and stores changes, against the
/// same at rest.
void MeasureAnswersBesideWork(const Effort& effort);

}  // namespace TALO::Bench
