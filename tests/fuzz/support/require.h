#pragma once

#include <cstdlib>
#include <iostream>
#include <string_view>

namespace TALO::Fuzz {

/// What is true of every input. Where it is not, the process ends and the fuzzer keeps the input.
inline void Require(bool holds, std::string_view what) {
  if (!holds) {
    std::cerr << "Not so: " << what << std::endl;
    std::abort();
  }
}

}  // namespace TALO::Fuzz
