#include "daemon/main/kernel_random.h"

#include <sys/random.h>

#include <cerrno>
#include <system_error>

namespace TALO::Wifid {

std::string KernelRandom::Draw(std::size_t count) {
  std::string bytes(count, '\0');
  std::size_t drawn = 0;
  while (drawn < count) {
    const ssize_t got = getrandom(bytes.data() + drawn, count - drawn, 0);
    if (got < 0 && errno != EINTR) {
      throw std::system_error(errno, std::generic_category(), "the kernel gives no random numbers");
    }
    if (got > 0) {
      drawn += static_cast<std::size_t>(got);
    }
  }
  return bytes;
}

}  // namespace TALO::Wifid
