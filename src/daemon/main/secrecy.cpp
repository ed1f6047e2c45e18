#include "daemon/main/secrecy.h"

#include <sys/prctl.h>
#include <sys/resource.h>

#include <cerrno>
#include <system_error>

namespace TALO::Wifid {

// Both: the limit does not stop a core that is piped to a program, and the other ends with a child's exec.
void KeepMemorySecret() {
  constexpr rlimit kNone{0, 0};
  if (setrlimit(RLIMIT_CORE, &kNone) != 0 || prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0) {
    throw std::system_error(errno, std::generic_category(), "core files cannot be switched off");
  }
}

}  // namespace TALO::Wifid
