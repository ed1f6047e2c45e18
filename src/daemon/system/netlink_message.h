#pragma once

#include <linux/netlink.h>

#include <cstdint>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What the kernel sent in answer to one request, each message whole.
using Messages = std::vector<std::string>;

/// The attributes of a message or inside another attribute; what is no attribute ends them. Valid as long as
/// the message.
class Attributes {
 public:
  /// None.
  Attributes() = default;
  /// Those of a message behind its own header of that size.
  Attributes(const std::string& message, std::size_t header);
  /// Those inside one.
  explicit Attributes(const nlattr* attribute);

  std::vector<const nlattr*> All() const;

  bool Has(int type) const { return Find(type) != nullptr; }
  /// Nothing where there is none or it is too short.
  template <typename T>
  std::optional<T> Number(int type) const {
    const std::string bytes = Bytes(type);
    if (bytes.size() < sizeof(T)) {
      return std::nullopt;
    }
    T number{};
    std::memcpy(&number, bytes.data(), sizeof number);
    return number;
  }
  /// Empty where there is none.
  std::string Bytes(int type) const;
  std::string Text(int type) const;
  Attributes Inside(int type) const;

 private:
  const nlattr* Find(int type) const;

  const nlattr* first_ = nullptr;
  int length_ = 0;
};

/// What stands before a message's attributes; zeros in a message that is too short.
template <typename Header>
Header HeaderOf(const std::string& message) {
  Header header{};
  if (message.size() >= NLMSG_LENGTH(sizeof header)) {
    std::memcpy(&header, message.data() + NLMSG_HDRLEN, sizeof header);
  }
  return header;
}

}  // namespace TALO::Wifid
