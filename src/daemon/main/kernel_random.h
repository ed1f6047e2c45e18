#pragma once

#include "daemon/service/random_source.h"

namespace TALO::Wifid {

/// The kernel's random numbers.
class KernelRandom final : public RandomSource {
 public:
  /// Throws std::system_error when the kernel gives none.
  std::string Draw(std::size_t count) override;
};

}  // namespace TALO::Wifid
