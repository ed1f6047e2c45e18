#pragma once

#include "daemon/system/event_watch.h"
#include "daemon/system/netlink_socket.h"

#include <functional>

namespace TALO::Wifid {

/// Hears from the kernel that another country came into force.
class CountryEvents {
 public:
  /// `changed` is called on the event loop, once for several changes at a time. Throws std::system_error when
  /// the kernel cannot be listened to.
  CountryEvents(const Loop& loop, std::function<void()> changed);

 private:
  void Read();

  std::function<void()> changed_;
  SocketHandle socket_;
  EventWatch watch_;
};

}  // namespace TALO::Wifid
