#include "daemon/main/memory.h"

#include <malloc.h>

namespace TALO::Wifid {

void ReturnFreedMemory() {
  constexpr int kLarge = 64 * 1024;
  mallopt(M_MMAP_THRESHOLD, kLarge);
  mallopt(M_TRIM_THRESHOLD, kLarge);
  // The thread that saves gets no heap of its own, which would stay after it.
  mallopt(M_ARENA_MAX, 1);
}

}  // namespace TALO::Wifid
