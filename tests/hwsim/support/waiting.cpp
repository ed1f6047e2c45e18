#include "hwsim/support/waiting.h"

#include "support/deadline.h"

#include <poll.h>

#include <stdexcept>

namespace TALO::Hwsim {

void WaitUntil(const std::string& awaited, const std::function<bool()>& holds) {
  const EndToEnd::Deadline deadline(kPatience);
  while (!holds()) {
    if (deadline.HasPassed()) {
      throw std::runtime_error("this did not come to be: " + awaited);
    }
    // Leaves the processor to those who are waited for.
    poll(nullptr, 0, 50);
  }
}

}  // namespace TALO::Hwsim
