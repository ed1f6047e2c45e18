#include "hwsim/support/control_socket.h"

#include "hwsim/support/waiting.h"
#include "support/deadline.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <stdexcept>

namespace TALO::Hwsim {

using EndToEnd::Deadline;
using EndToEnd::ThrowErrno;

namespace {

sockaddr_un AddressOf(const std::string& path) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  path.copy(address.sun_path, sizeof(address.sun_path) - 1);
  return address;
}

}  // namespace

ControlSocket::ControlSocket(const std::string& path)
    : socket_(EndToEnd::Opened(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0), "no socket can be made")) {
  // Answers come to a name.
  const sockaddr_un own = AddressOf(directory_ / "socket");
  if (bind(socket_.Get(), reinterpret_cast<const sockaddr*>(&own), sizeof(own)) != 0) {
    ThrowErrno("a socket cannot be named");
  }
  const sockaddr_un peer = AddressOf(path);
  WaitUntil("somebody listens at " + path, [&] {
    return connect(socket_.Get(), reinterpret_cast<const sockaddr*>(&peer), sizeof(peer)) == 0;
  });
  Do("ATTACH");
}

std::string ControlSocket::Receive(int milliseconds) {
  pollfd ready{socket_.Get(), POLLIN, 0};
  if (poll(&ready, 1, milliseconds) <= 0) {
    return "";
  }
  std::array<char, 65536> buffer{};
  const ssize_t size = recv(socket_.Get(), buffer.data(), buffer.size(), 0);
  if (size < 0) {
    ThrowErrno("nothing can be received");
  }
  const std::string text(buffer.data(), static_cast<std::size_t>(size));
  if (!text.starts_with("<")) {
    return text;
  }
  // Behind the level.
  events_.push_back(text.substr(text.find('>') + 1));
  return "";
}

std::string ControlSocket::Ask(const std::string& request) {
  if (send(socket_.Get(), request.data(), request.size(), 0) < 0) {
    ThrowErrno("nobody takes the request " + request);
  }
  const Deadline deadline(kPatience);
  while (!deadline.HasPassed()) {
    if (const std::string answer = Receive(deadline.ForPoll()); !answer.empty()) {
      return answer;
    }
  }
  throw std::runtime_error("no answer to " + request);
}

void ControlSocket::Do(const std::string& request) {
  if (const std::string answer = Ask(request); answer != "OK\n") {
    throw std::runtime_error(request + " was answered with " + answer);
  }
}

std::string ControlSocket::WaitFor(const std::vector<std::string>& beginnings) {
  const auto awaited = [&](const std::string& event) {
    return std::ranges::any_of(beginnings,
                               [&](const std::string& beginning) { return event.starts_with(beginning); });
  };
  const Deadline deadline(kPatience);
  for (;;) {
    if (const auto found = std::ranges::find_if(events_, awaited); found != events_.end()) {
      const std::string event = *found;
      events_.erase(events_.begin(), std::next(found));
      return event;
    }
    if (deadline.HasPassed()) {
      break;
    }
    Receive(deadline.ForPoll());
  }
  std::string sentence = "no event " + beginnings.front() + " but:";
  for (const std::string& event : events_) {
    sentence += "\n" + event;
  }
  throw std::runtime_error(sentence);
}

void ControlSocket::ForgetEvents() {
  // The answer comes behind all events that were sent before.
  Ask("PING");
  events_.clear();
}

bool ControlSocket::Has(const std::string& beginning) {
  Ask("PING");
  return std::ranges::any_of(events_, [&](const std::string& event) { return event.starts_with(beginning); });
}

}  // namespace TALO::Hwsim
