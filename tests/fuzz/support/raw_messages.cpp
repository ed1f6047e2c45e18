#include "fuzz/support/raw_messages.h"

#include "fuzz/support/require.h"

#include <sys/socket.h>

#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

namespace TALO::Fuzz {

namespace Bus = Wifi::Bus;

namespace {

std::string Number(std::size_t number) {
  const auto value = static_cast<std::uint32_t>(number);
  std::string bytes(sizeof value, '\0');
  std::memcpy(bytes.data(), &value, sizeof value);
  return bytes;
}

void PadToEight(std::string& bytes) { bytes.resize((bytes.size() + 7) / 8 * 8, '\0'); }

/// A field of a message's header: a text of that type, "s" or "o".
std::string Field(char field, char type, const std::string& text) {
  std::string bytes{field, '\1', type, '\0'};
  bytes += Number(text.size()) + text + '\0';
  PadToEight(bytes);
  return bytes;
}

/// A signal of version 1 in the bytes' order of this machine.
std::string SignalOf(const std::string& signature, const std::string& body) {
  std::string fields = Field('\1', 'o', "/a") + Field('\2', 's', "a.b") + Field('\3', 's', "C");
  fields += std::string{'\x08', '\1', 'g', '\0', static_cast<char>(signature.size())} + signature + '\0';
  std::string bytes("l\x04\0\x01", 4);
  bytes += Number(body.size()) + Number(1) + Number(fields.size()) + fields;
  PadToEight(bytes);
  return bytes + body;
}

void SendAll(int socket, std::string_view bytes) {
  Require(send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size()),
          "the socket takes a message");
}

}  // namespace

RawMessages::RawMessages() { Connect(); }

// Nobody reads at the other end: what was begun there cannot be finished.
RawMessages::~RawMessages() { sd_bus_close(bus_.get()); }

void RawMessages::Connect() {
  auto [server, peer] = Bus::ConnectedSockets();
  if (bus_) {
    sd_bus_close(bus_.get());
  }
  peer_ = std::move(peer);
  SendAll(peer_.Get(), std::string_view("\0AUTH ANONYMOUS\r\nBEGIN\r\n", 24));
  bus_ = Bus::StartAnonymousServer(std::move(server));
}

Bus::Message RawMessages::Receive(const std::string& signature, const std::string& body) {
  SendAll(peer_.Get(), SignalOf(signature, body));
  sd_bus_message* received = nullptr;
  int worked = 1;
  while (received == nullptr && worked > 0) {
    worked = sd_bus_process(bus_.get(), &received);
  }
  if (received == nullptr) {
    Connect();
  }
  return Bus::Message(received);
}

Bus::Message RawMessages::NewMessage() const {
  sd_bus_message* message = nullptr;
  Bus::CheckMessage(
      sd_bus_message_new_method_call(bus_.get(), &message, "com.example.Peer", "/", nullptr, "Test"));
  return Bus::Message(message);
}

void RawMessages::Seal(sd_bus_message* message) {
  Bus::CheckMessage(sd_bus_message_seal(message, 1, 0));
  Bus::CheckMessage(sd_bus_message_rewind(message, 1));
}

}  // namespace TALO::Fuzz
