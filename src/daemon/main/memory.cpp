#include "daemon/main/memory.h"

#include <malloc.h>

namespace TALO::Wifid {

void ReturnFreedMemory() {
  constexpr int kLarge = 64 * 1024;
  mallopt(M_MMAP_THRESHOLD, kLarge);
  mallopt(M_TRIM_THRESHOLD, kLarge);
}

}  // namespace TALO::Wifid
