#include "support/notify_socket.h"

#include "support/unix_listener.h"

#include <poll.h>
#include <sys/socket.h>

namespace TALO::EndToEnd {

NotifySocket::NotifySocket() : path_(directory_ / "notify"), socket_(BindUnixSocket(SOCK_DGRAM, path_)) {}

std::string NotifySocket::Receive() const {
  WaitUntilReadable(socket_.Get(), "a message to the service manager");
  std::string message(4096, '\0');
  const ssize_t size = recv(socket_.Get(), message.data(), message.size(), 0);
  if (size < 0) {
    ThrowErrno("a message to the service manager cannot be read");
  }
  message.resize(static_cast<std::size_t>(size));
  return message;
}

bool NotifySocket::HasMessage() const {
  pollfd ready{socket_.Get(), POLLIN, 0};
  return poll(&ready, 1, 0) > 0;
}

}  // namespace TALO::EndToEnd
