#include "daemon/radio/linux/control/passphrases.h"

#include <cstddef>

namespace TALO::Wifid {

bool IsKey(const std::string& passphrase) {
  constexpr std::size_t kKeyDigits = 64;
  return passphrase.size() == kKeyDigits;
}

}  // namespace TALO::Wifid
