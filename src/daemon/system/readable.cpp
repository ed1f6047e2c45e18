#include "daemon/system/readable.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>

namespace TALO::Wifid {

bool WaitUntilReadable(int descriptor, std::chrono::steady_clock::time_point deadline) {
  pollfd awaited{descriptor, POLLIN, 0};
  int ready = -1;
  do {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    ready = poll(&awaited, 1, static_cast<int>(std::max(left.count(), decltype(left)::rep{0})));
  } while (ready < 0 && errno == EINTR);
  return ready > 0;
}

}  // namespace TALO::Wifid
