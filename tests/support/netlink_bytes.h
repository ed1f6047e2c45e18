#pragma once

#include "daemon/system/netlink_message.h"
#include "support/files.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

/// Messages of the kernel, recorded and made by hand.
namespace TALO::Wifid {

/// The bytes of a number as this machine has it in memory.
template <typename T>
std::string Raw(T number) {
  std::string bytes(sizeof number, '\0');
  std::memcpy(bytes.data(), &number, sizeof number);
  return bytes;
}

inline std::string Padded(std::string bytes) {
  bytes.resize((bytes.size() + 3) / 4 * 4, '\0');
  return bytes;
}

inline std::string Attribute(int type, const std::string& payload) {
  return Padded(Raw(static_cast<std::uint16_t>(4 + payload.size())) + Raw(static_cast<std::uint16_t>(type)) +
                payload);
}

/// `body` is the message's own header and its attributes.
inline std::string NetlinkMessage(int type, int flags, const std::string& body) {
  return Raw(static_cast<std::uint32_t>(16 + body.size())) + Raw(static_cast<std::uint16_t>(type)) +
         Raw(static_cast<std::uint16_t>(flags)) + Raw(std::uint32_t{0}) + Raw(std::uint32_t{0}) + body;
}

/// A message of nl80211 with this command.
inline std::string WirelessMessage(int command, const std::string& attributes) {
  return NetlinkMessage(28, 0, Raw(static_cast<std::uint32_t>(command)) + attributes);
}

/// The messages of a recorded answer.
inline Messages ReadFixture(const std::string& name) {
  std::string left = ReadFile(std::string(TALOWIFI_FIXTURES) + "/" + name);
  Messages messages;
  while (!left.empty()) {
    std::uint32_t length = 0;
    std::memcpy(&length, left.data(), sizeof length);
    if (length < 16 || length > left.size()) {
      throw std::runtime_error("the fixture " + name + " is broken");
    }
    messages.push_back(left.substr(0, length));
    left.erase(0, length);
  }
  return messages;
}

}  // namespace TALO::Wifid
