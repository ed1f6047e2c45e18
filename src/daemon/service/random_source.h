#pragma once

#include <cstddef>
#include <string>

namespace TALO::Wifid {

/// The door to randomness.
class RandomSource {
 public:
  virtual ~RandomSource() = default;

  /// That many bytes that nobody can guess.
  virtual std::string Draw(std::size_t count) = 0;
};

}  // namespace TALO::Wifid
