#pragma once

#include "support/files.h"

#include <string>

namespace TALO::Wifid {

/// What a program answered, see fixtures/README.md.
inline std::string Recorded(const std::string& name) {
  return ReadFile(std::string(TALOWIFI_RECORDED) + "/" + name);
}

}  // namespace TALO::Wifid
