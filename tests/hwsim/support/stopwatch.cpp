#include "hwsim/support/stopwatch.h"

#include <iomanip>
#include <iostream>

namespace TALO::Hwsim {

void Stopwatch::Tell(const std::string& what) const {
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - began_;
  std::cout << "measured: " << since_ << ", after " << std::fixed << std::setprecision(1) << took.count()
            << " s: " << what << std::endl;
}

}  // namespace TALO::Hwsim
