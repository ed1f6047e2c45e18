#include "bench/processor_times.h"

#include <algorithm>
#include <cstddef>
#include <ctime>
#include <stdexcept>

namespace TALO::Bench {

namespace {

/// Milliseconds between two looks of the kernel's at who is running.
double Tick() {
  timespec resolution{};
  if (clock_getres(CLOCK_MONOTONIC_COARSE, &resolution) != 0) {
    throw std::runtime_error("the kernel does not tell how often its clock ticks");
  }
  return static_cast<double>(resolution.tv_sec) * 1e3 + static_cast<double>(resolution.tv_nsec) / 1e6;
}

}  // namespace

double KernelShare(const ProcessorTimes& times) {
  const double tick = Tick();
  double all = 0;
  double kernel = 0;
  double seen = 0;
  std::size_t unshared = 0;
  for (std::size_t i = 0; i < times.user.size(); ++i) {
    all += times.user[i] + times.kernel[i];
    kernel += times.kernel[i];
    seen += times.kernel[i] > 0 ? std::max(tick, times.kernel[i]) : 0;
    unshared += times.user[i] == 0 || times.kernel[i] == 0 ? 1 : 0;
  }
  const bool isMeasured = unshared * 2 < times.user.size();
  return std::min((isMeasured ? kernel : seen) / all, 1.0);
}

}  // namespace TALO::Bench
