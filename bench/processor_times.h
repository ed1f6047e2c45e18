#pragma once

#include <vector>

namespace TALO::Bench {

/// What the kernel says of the processor's time that runs took outside it and in it; in milliseconds, one
/// element a run.
struct ProcessorTimes {
  std::vector<double> user, kernel;
};

/// How much of all of it was spent in the kernel. Most kernels do not measure that: at each tick of their
/// clock they look where the process is, and share out its time by what they saw. Where no tick came, all of
/// it counts as outside. So for runs shorter than a tick it is counted anew: one tick for each run that was
/// seen in the kernel.
double KernelShare(const ProcessorTimes& times);

}  // namespace TALO::Bench
