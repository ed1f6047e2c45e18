#include "bench/figures.h"

#include <algorithm>
#include <cstddef>
#include <stdexcept>

namespace TALO::Bench {

double Quantile(std::vector<double> figures, double share) {
  if (figures.empty()) {
    throw std::logic_error("no figures");
  }
  const auto at = static_cast<std::ptrdiff_t>(static_cast<double>(figures.size() - 1) * share);
  std::nth_element(figures.begin(), figures.begin() + at, figures.end());
  return figures[static_cast<std::size_t>(at)];
}

}  // namespace TALO::Bench
