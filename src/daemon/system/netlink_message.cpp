#include "daemon/system/netlink_message.h"

#include <netlink/attr.h>
#include <netlink/msg.h>

#include <algorithm>

namespace TALO::Wifid {

Attributes::Attributes(const std::string& message, std::size_t header) {
  const std::size_t start = NLMSG_HDRLEN + NLMSG_ALIGN(header);
  if (message.size() > start) {
    first_ = reinterpret_cast<const nlattr*>(message.data() + start);
    length_ = static_cast<int>(message.size() - start);
  }
}

Attributes::Attributes(const nlattr* attribute)
    : first_(static_cast<const nlattr*>(nla_data(attribute))), length_(nla_len(attribute)) {}

std::vector<const nlattr*> Attributes::All() const {
  std::vector<const nlattr*> all;
  int left = length_;
  for (const nlattr* attribute = first_; nla_ok(attribute, left) != 0;
       attribute = nla_next(attribute, &left)) {
    all.push_back(attribute);
  }
  return all;
}

const nlattr* Attributes::Find(int type) const {
  for (const nlattr* attribute : All()) {
    if (nla_type(attribute) == type) {
      return attribute;
    }
  }
  return nullptr;
}

std::string Attributes::Bytes(int type) const {
  const nlattr* found = Find(type);
  if (found == nullptr) {
    return {};
  }
  return {static_cast<const char*>(nla_data(found)), static_cast<std::size_t>(nla_len(found))};
}

std::string Attributes::Text(int type) const {
  std::string text = Bytes(type);
  text.resize(std::min(text.size(), text.find('\0')));
  return text;
}

Attributes Attributes::Inside(int type) const {
  const nlattr* found = Find(type);
  return found == nullptr ? Attributes() : Attributes(found);
}

}  // namespace TALO::Wifid
