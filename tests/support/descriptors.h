#pragma once

#include "daemon/store/descriptor.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

namespace TALO::EndToEnd {

using Wifid::Descriptor;

/// Throws what errno says about `what`.
[[noreturn]] inline void ThrowErrno(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

/// Takes over the descriptor that a system call gave; throws about `what` where it gave none.
inline Descriptor Opened(int number, const std::string& what) {
  if (number < 0) {
    ThrowErrno(what);
  }
  return Descriptor(number);
}

/// The two ends of a pipe.
struct Pipe {
  Descriptor reader;
  Descriptor writer;
};

inline Pipe OpenPipe() {
  std::array<int, 2> ends{};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) {
    ThrowErrno("no pipe can be made");
  }
  return {Descriptor(ends[0]), Descriptor(ends[1])};
}

}  // namespace TALO::EndToEnd
