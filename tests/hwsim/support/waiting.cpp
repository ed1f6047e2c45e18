#include "hwsim/support/waiting.h"

#include "support/deadline.h"

#include <poll.h>

#include <algorithm>
#include <stdexcept>

namespace TALO::Hwsim {

void WaitUntil(const std::string& awaited, const std::function<bool()>& holds,
               std::chrono::seconds patience) {
  constexpr int kLongestPause = 400;  // milliseconds
  int pause = 5;
  const EndToEnd::Deadline deadline(patience);
  while (!holds()) {
    if (deadline.HasPassed()) {
      throw std::runtime_error("this did not come to be: " + awaited);
    }
    // Leaves the processor to those who are waited for, the more so the longer it takes.
    poll(nullptr, 0, pause);
    pause = std::min(2 * pause, kLongestPause);
  }
}

}  // namespace TALO::Hwsim
