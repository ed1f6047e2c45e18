#pragma once

#include "reference/page_source.h"

#include <string>

namespace TALO::Reference {

/// What is wrong with the source that `call` reads, "nothing" where it is read to its end.
template <typename Call>
std::string SourceFailureOf(Call call) {
  try {
    call();
  } catch (const SourceError& error) {
    return error.what();
  }
  return "nothing";
}

}  // namespace TALO::Reference
