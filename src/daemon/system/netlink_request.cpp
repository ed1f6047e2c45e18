#include "daemon/system/netlink_request.h"

#include <netlink/attr.h>
#include <netlink/msg.h>

#include <new>

namespace TALO::Wifid {

void NetlinkRequest::FreeMessage::operator()(nl_msg* message) const noexcept { nlmsg_free(message); }

NetlinkRequest::NetlinkRequest(int type, int flags, const void* header, std::size_t size)
    : message_(nlmsg_alloc_simple(type, flags)) {
  if (!message_ || nlmsg_append(message_.get(), const_cast<void*>(header), size, NLMSG_ALIGNTO) < 0) {
    throw std::bad_alloc();
  }
}

NetlinkRequest& NetlinkRequest::Put(int type, const void* data, std::size_t size) {
  if (nla_put(message_.get(), type, static_cast<int>(size), data) < 0) {
    throw std::bad_alloc();
  }
  return *this;
}

}  // namespace TALO::Wifid
