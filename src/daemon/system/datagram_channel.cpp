#include "daemon/system/datagram_channel.h"

#include <sys/epoll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <cerrno>
#include <system_error>
#include <utility>

namespace TALO::Wifid {

namespace {

/// Many times the longest that the programs send.
constexpr std::size_t kMaximumSize = 65536;

[[noreturn]] void Throw(int error, const std::string& what) {
  throw std::system_error(error, std::generic_category(), what);
}

Descriptor Open(const std::string& path) {
  const std::string failed = "nobody listens at " + path;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  if (path.size() >= sizeof address.sun_path) {
    Throw(ENAMETOOLONG, failed);
  }
  path.copy(static_cast<char*>(address.sun_path), path.size());
  Descriptor opened(socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0));
  if (!opened.IsOpen() ||
      connect(opened.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
    Throw(errno, failed);
  }
  // A name of its own, which answers need. Only now: a socket that is connected takes nothing from others.
  const sockaddr_un own{AF_UNIX, {}};
  if (bind(opened.Get(), reinterpret_cast<const sockaddr*>(&own), sizeof own.sun_family) != 0) {
    Throw(errno, "no name for a socket can be had");
  }
  return opened;
}

}  // namespace

DatagramChannel::DatagramChannel(const Loop& loop, const std::string& path, std::function<void()> ready)
    : path_(path), socket_(Open(path)), watch_(loop, socket_.Get(), EPOLLIN, std::move(ready)) {}

bool DatagramChannel::Send(const std::string& text) {
  const bool sent = send(socket_.Get(), text.data(), text.size(), MSG_NOSIGNAL) >= 0;
  if (!sent && errno != EAGAIN) {
    const int error = errno;
    Throw(error, "the program at " + path_ + (error == EMSGSIZE ? " does not take a request" : " is gone"));
  }
  watch_.SetEvents(sent ? EPOLLIN : EPOLLIN | EPOLLOUT);
  return sent;
}

std::optional<std::string> DatagramChannel::Receive() {
  std::string text(kMaximumSize, '\0');
  const ssize_t got = recv(socket_.Get(), text.data(), text.size(), 0);
  if (got < 0) {
    return std::nullopt;
  }
  text.resize(static_cast<std::size_t>(got));
  return text;
}

}  // namespace TALO::Wifid
