#include "daemon/system/country_events.h"

#include "daemon/system/wireless_readings.h"

#include <sys/epoll.h>

#include <linux/netlink.h>
#include <linux/nl80211.h>
#include <netlink/errno.h>
#include <netlink/genl/ctrl.h>
#include <netlink/handlers.h>
#include <netlink/msg.h>
#include <netlink/netlink.h>
#include <netlink/socket.h>

#include <new>
#include <string>
#include <utility>

namespace TALO::Wifid {

namespace {

void Check(int result) {
  if (result < 0) {
    ThrowNetlink(result);
  }
}

SocketHandle Listen() {
  SocketHandle socket(nl_socket_alloc());
  if (!socket) {
    throw std::bad_alloc();
  }
  // What nobody asked for has no number of a question.
  nl_socket_disable_seq_check(socket.get());
  Check(nl_connect(socket.get(), NETLINK_GENERIC));
  const int group = genl_ctrl_resolve_grp(socket.get(), NL80211_GENL_NAME, NL80211_MULTICAST_GROUP_REG);
  Check(group);
  Check(nl_socket_add_membership(socket.get(), group));
  Check(nl_socket_set_nonblocking(socket.get()));
  return socket;
}

int OnMessage(nl_msg* message, void* changed) {
  const nlmsghdr* header = nlmsg_hdr(message);
  *static_cast<bool*>(changed) |= IsCountryChange({reinterpret_cast<const char*>(header), header->nlmsg_len});
  return NL_OK;
}

}  // namespace

CountryEvents::CountryEvents(const Loop& loop, std::function<void()> changed)
    : changed_(std::move(changed)),
      socket_(Listen()),
      watch_(loop, nl_socket_get_fd(socket_.get()), EPOLLIN, [this] { Read(); }) {}

void CountryEvents::Read() {
  bool changed = false;
  Check(nl_socket_modify_cb(socket_.get(), NL_CB_VALID, NL_CB_CUSTOM, OnMessage, &changed));
  int received = 0;
  while ((received = nl_recvmsgs_default(socket_.get())) >= 0) {
  }
  // Whatever else went wrong, as when more was told than there was room for: a change may have been lost.
  if (changed || received != -NLE_AGAIN) {
    changed_();
  }
}

}  // namespace TALO::Wifid
