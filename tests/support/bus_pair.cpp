#include "support/bus_pair.h"

#include "bus/names.h"

#include <poll.h>
#include <sys/socket.h>

#include <gtest/gtest.h>

#include <array>
#include <chrono>
#include <stdexcept>
#include <utility>

namespace TALO::Wifid {

namespace Bus = Wifi::Bus;

namespace {

using Clock = std::chrono::steady_clock;

/// Far more than a test takes: only a broken one meets it.
constexpr std::chrono::seconds kDeadline{60};

sd_bus* NewBus(int descriptor) {
  sd_bus* bus = nullptr;
  Bus::CheckMessage(sd_bus_new(&bus));
  Bus::CheckMessage(sd_bus_set_fd(bus, descriptor, descriptor));
  Bus::CheckMessage(sd_bus_set_anonymous(bus, 1));
  return bus;
}

}  // namespace

BusPair::BusPair() {
  std::array<int, 2> ends{};
  if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0) {
    throw std::runtime_error("no socket pair can be made");
  }
  server_.reset(NewBus(ends[0]));
  client_.reset(NewBus(ends[1]));
  sd_id128_t id{};
  Bus::CheckMessage(sd_id128_randomize(&id));
  Bus::CheckMessage(sd_bus_set_server(server_.get(), 1, id));
  Bus::CheckMessage(sd_bus_start(server_.get()));
  Bus::CheckMessage(sd_bus_start(client_.get()));
  EXPECT_TRUE(
      RunUntil([this] { return sd_bus_is_ready(server_.get()) > 0 && sd_bus_is_ready(client_.get()) > 0; }));
}

Bus::Message BusPair::NewCall(const char* interface, const char* member) const {
  return NewCall(Bus::kObjectPath, interface, member);
}

Bus::Message BusPair::NewCall(const char* path, const char* interface, const char* member) const {
  sd_bus_message* call = nullptr;
  Bus::CheckMessage(sd_bus_message_new_method_call(client_.get(), &call, nullptr, path, interface, member));
  return Bus::Message(call);
}

std::uint64_t BusPair::Send(sd_bus_message* call) {
  std::uint64_t cookie = 0;
  Bus::CheckMessage(sd_bus_send(client_.get(), call, &cookie));
  return cookie;
}

sd_bus_message* BusPair::WaitForAnswer(std::uint64_t cookie) {
  RunUntil([&] { return FindAnswer(cookie) != nullptr; });
  return FindAnswer(cookie);
}

void BusPair::RunUntilQuiet() {
  const Bus::Message ping = NewCall("org.freedesktop.DBus.Peer", "Ping");
  EXPECT_EQ(ErrorOf(WaitForAnswer(Send(ping.get()))), "none");
}

std::size_t BusPair::CountAnswers(std::uint64_t cookie) const {
  std::size_t count = 0;
  for (const Bus::Message& message : received_) {
    std::uint64_t answered = 0;
    if (sd_bus_message_get_reply_cookie(message.get(), &answered) >= 0 && answered == cookie) {
      ++count;
    }
  }
  return count;
}

std::vector<sd_bus_message*> BusPair::Signals() const {
  std::vector<sd_bus_message*> signals;
  for (const Bus::Message& message : received_) {
    if (sd_bus_message_is_signal(message.get(), nullptr, nullptr) > 0) {
      signals.push_back(message.get());
    }
  }
  return signals;
}

sd_bus_message* BusPair::FindAnswer(std::uint64_t cookie) const {
  for (const Bus::Message& message : received_) {
    std::uint64_t answered = 0;
    if (sd_bus_message_get_reply_cookie(message.get(), &answered) >= 0 && answered == cookie) {
      return message.get();
    }
  }
  return nullptr;
}

bool BusPair::RunOnce() {
  bool worked = Bus::CheckMessage(sd_bus_process(server_.get(), nullptr)) > 0;
  sd_bus_message* message = nullptr;
  worked = Bus::CheckMessage(sd_bus_process(client_.get(), &message)) > 0 || worked;
  if (message != nullptr) {
    received_.emplace_back(message);
  }
  return worked;
}

bool BusPair::RunUntil(const std::function<bool()>& isDone) {
  const auto end = Clock::now() + kDeadline;
  while (!isDone()) {
    if (RunOnce()) {
      continue;
    }
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now());
    if (left.count() <= 0) {
      return false;
    }
    std::array<pollfd, 2> ends{};
    for (const auto& [end_, bus] : {std::pair(&ends[0], server_.get()), std::pair(&ends[1], client_.get())}) {
      end_->fd = Bus::CheckMessage(sd_bus_get_fd(bus));
      end_->events = static_cast<short>(Bus::CheckMessage(sd_bus_get_events(bus)));
    }
    poll(ends.data(), ends.size(), static_cast<int>(left.count()));
  }
  return true;
}

std::string ErrorOf(sd_bus_message* answer) {
  if (answer == nullptr) {
    return "no answer";
  }
  const sd_bus_error* error = sd_bus_message_get_error(answer);
  return error == nullptr ? "none" : std::string(error->name) + ": " + error->message;
}

std::string SignatureOf(sd_bus_message* answer) {
  return answer == nullptr ? "no answer" : sd_bus_message_get_signature(answer, 1);
}

}  // namespace TALO::Wifid
