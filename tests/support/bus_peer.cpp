#include "support/bus_peer.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <ostream>
#include <utility>

namespace TALO::Wifi::Bus {

void PrintTo(const ReceivedCall& call, std::ostream* out) {
  *out << call.destination << " " << call.path << " " << call.interface << "." << call.member << "("
       << call.signature << ")";
}

void PeerScript::SetAnswer(Answer answer) {
  const std::lock_guard lock(mutex_);
  answer_ = std::move(answer);
}

bool PeerScript::Receive(sd_bus_message* call) {
  Answer answer;
  {
    const std::lock_guard lock(mutex_);
    calls_.push_back({sd_bus_message_get_destination(call), sd_bus_message_get_path(call),
                      sd_bus_message_get_interface(call), sd_bus_message_get_member(call),
                      sd_bus_message_get_signature(call, 1)});
    answer = answer_;
  }
  return answer(call);
}

std::vector<ReceivedCall> PeerScript::Calls() const {
  const std::lock_guard lock(mutex_);
  return calls_;
}

namespace {

/// One connection's part of a script.
struct Serving {
  PeerScript& script;
  bool hangUp = false;
};

int OnMessage(sd_bus_message* message, void* userdata, sd_bus_error*) {
  auto& serving = *static_cast<Serving*>(userdata);
  if (sd_bus_message_is_method_call(message, nullptr, nullptr) <= 0) {
    return 0;
  }
  if (sd_bus_message_is_method_call(message, "org.freedesktop.DBus", "Hello") > 0) {
    return MustSucceed(sd_bus_reply_method_return(message, "s", ":1.1"));
  }
  if (!serving.script.Receive(message)) {
    serving.hangUp = true;
  }
  return 1;
}

/// Answers until either side closes the connection.
void Serve(Descriptor socket, PeerScript& script) {
  const BusHandle bus = StartServer(std::move(socket));
  Serving serving{script};
  MustSucceed(sd_bus_add_filter(bus.get(), nullptr, OnMessage, &serving));
  while (!serving.hangUp) {
    const int processed = sd_bus_process(bus.get(), nullptr);
    if (processed < 0 || (processed == 0 && sd_bus_wait(bus.get(), UINT64_MAX) < 0)) {
      return;
    }
  }
}

}  // namespace

BusPeer::BusPeer(Descriptor socket)
    : wake_(socket.Duplicate()), thread_([this, served = std::move(socket)]() mutable {
        Serve(std::move(served), script_);
        // Closing is not enough, as the other descriptor is still open.
        shutdown(wake_.Get(), SHUT_RDWR);
      }) {}

BusPeer::~BusPeer() {
  shutdown(wake_.Get(), SHUT_RDWR);
  thread_.join();
}

SystemBus::SystemBus() {
  std::string pattern = "/tmp/wifi-bus-XXXXXX";
  MustSucceed(mkdtemp(pattern.data()) == nullptr ? -errno : 0);
  directory_ = pattern;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = directory_ + "/socket";
  std::strncpy(address.sun_path, path.c_str(), sizeof(address.sun_path) - 1);
  listening_ = Descriptor(MustSucceed(socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0)));
  MustSucceed(
      bind(listening_.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) < 0 ? -errno : 0);
  MustSucceed(listen(listening_.Get(), 1) < 0 ? -errno : 0);
  setenv("DBUS_SYSTEM_BUS_ADDRESS", ("unix:path=" + path).c_str(), 1);
  thread_ = std::thread([this] { Run(); });
}

SystemBus::~SystemBus() {
  {
    const std::lock_guard lock(mutex_);
    stopping_ = true;
    shutdown(listening_.Get(), SHUT_RDWR);
    shutdown(serving_.Get(), SHUT_RDWR);
  }
  thread_.join();
  unlink((directory_ + "/socket").c_str());
  rmdir(directory_.c_str());
}

void SystemBus::Run() {
  for (;;) {
    Descriptor accepted(accept4(listening_.Get(), nullptr, nullptr, SOCK_CLOEXEC));
    if (accepted.Get() < 0) {
      return;
    }
    {
      const std::lock_guard lock(mutex_);
      if (stopping_) {
        return;
      }
      ++connections_;
      serving_ = accepted.Duplicate();
    }
    Serve(std::move(accepted), script_);
    const std::lock_guard lock(mutex_);
    shutdown(serving_.Get(), SHUT_RDWR);
  }
}

int SystemBus::Connections() const {
  const std::lock_guard lock(mutex_);
  return connections_;
}

void SendReply(sd_bus_message* call, const std::function<void(sd_bus_message* reply)>& append) {
  sd_bus_message* message = nullptr;
  MustSucceed(sd_bus_message_new_method_return(call, &message));
  const Message reply(message);
  append(reply.get());
  MustSucceed(sd_bus_send(nullptr, reply.get(), nullptr));
}

Answer ReplyWith(std::function<void(sd_bus_message* reply)> append) {
  return [append = std::move(append)](sd_bus_message* call) {
    SendReply(call, append);
    return true;
  };
}

Answer ReplyWithError(const std::string& name, const std::string& message) {
  return [name, message](sd_bus_message* call) {
    const sd_bus_error error = SD_BUS_ERROR_MAKE_CONST(name.c_str(), message.c_str());
    MustSucceed(sd_bus_reply_method_error(call, &error));
    return true;
  };
}

namespace {

// In the byte order that a message says it has, which is always the little end here.
std::string Number(std::uint32_t value) {
  std::string bytes;
  for (int i = 0; i < 4; ++i, value >>= 8U) {
    bytes += static_cast<char>(value & 0xFFU);
  }
  return bytes;
}

void PadToEight(std::string& bytes) { bytes.resize((bytes.size() + 7) / 8 * 8); }

}  // namespace

Answer ReplyWithRawBody(const std::string& signature, const std::string& body) {
  return [signature, body](sd_bus_message* call) {
    std::uint64_t cookie = 0;
    MustSucceed(sd_bus_message_get_cookie(call, &cookie));
    constexpr std::uint32_t kSerial = 1000;
    const std::string replySerial =
        std::string("\x05\x01u\0", 4) + Number(static_cast<std::uint32_t>(cookie));
    const std::string signatureField =
        std::string("\x08\x01g\0", 4) + static_cast<char>(signature.size()) + signature + '\0';
    const std::string fields = replySerial + signatureField;
    // A method return, no reply expected, version 1.
    std::string bytes = "l\x02\x01\x01" + Number(static_cast<std::uint32_t>(body.size())) + Number(kSerial) +
                        Number(static_cast<std::uint32_t>(fields.size())) + fields;
    PadToEight(bytes);
    bytes += body;
    // Past the bus object, which has nothing of its own to send.
    const int socket = sd_bus_get_fd(sd_bus_message_get_bus(call));
    const ssize_t sent = send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return sent == static_cast<ssize_t>(bytes.size());
  };
}

}  // namespace TALO::Wifi::Bus
