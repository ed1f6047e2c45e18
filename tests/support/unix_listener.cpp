#include "support/unix_listener.h"

#include "support/deadline.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <stdexcept>

namespace TALO::EndToEnd {

Descriptor BindUnixSocket(int type, const std::string& path) {
  Descriptor bound = Opened(socket(AF_UNIX, type | SOCK_CLOEXEC, 0), "no socket can be made");
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(static_cast<char*>(address.sun_path), sizeof address.sun_path - 1);
  if (bind(bound.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    ThrowErrno("no socket can be at " + path);
  }
  return bound;
}

void WaitUntilReadable(int descriptor, const char* awaited) {
  pollfd ready{descriptor, POLLIN, 0};
  if (poll(&ready, 1, Deadline().ForPoll()) <= 0) {
    throw std::runtime_error(std::string(awaited) + " does not come");
  }
}

UnixListener::UnixListener() : path_(directory_ / "bus"), socket_(BindUnixSocket(SOCK_STREAM, path_)) {
  if (listen(socket_.Get(), 8) != 0) {
    ThrowErrno("nobody can listen on " + path_);
  }
}

Descriptor UnixListener::Accept() const {
  WaitUntilReadable(socket_.Get(), "a caller");
  return Opened(accept4(socket_.Get(), nullptr, nullptr, SOCK_CLOEXEC), "a caller cannot be accepted");
}

void ReadGreeting(int descriptor) {
  WaitUntilReadable(descriptor, "a greeting");
  std::array<char, 4096> greeting{};
  if (read(descriptor, greeting.data(), greeting.size()) <= 0) {
    throw std::runtime_error("the caller says nothing");
  }
}

}  // namespace TALO::EndToEnd
