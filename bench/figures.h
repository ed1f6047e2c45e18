#pragma once

#include <vector>

namespace TALO::Bench {

/// The value below which this share of the figures lies, 0.5 for the median; none may be missing.
double Quantile(std::vector<double> figures, double share);

inline double Median(const std::vector<double>& figures) { return Quantile(figures, 0.5); }

}  // namespace TALO::Bench
