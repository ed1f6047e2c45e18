#pragma once

#include "daemon/system/netlink_message.h"
#include "daemon/system/netlink_request.h"

#include <chrono>
#include <cstdint>
#include <memory>

struct nl_sock;

namespace TALO::Wifid {

/// Ends a socket of libnl.
struct FreeSocket {
  void operator()(nl_sock* socket) const noexcept;
};
using SocketHandle = std::unique_ptr<nl_sock, FreeSocket>;

/// Throws std::system_error with what libnl says of a failure of its own.
[[noreturn]] void ThrowNetlink(int failure);

/// A connection to the kernel, on which one question is asked at a time.
class NetlinkSocket {
 public:
  /// As in NETLINK_GENERIC. It connects when it is needed. What is asked is answered whole within that time,
  /// all tries together, or given up. The time begins when the kernel has taken the question: the call that
  /// hands it over returns when the kernel has the locks that it needs, and nothing ends it before.
  explicit NetlinkSocket(int protocol, std::chrono::milliseconds patience = std::chrono::seconds(5))
      : protocol_(protocol), patience_(patience) {}

  /// Asks and waits for the whole answer; a list that changed meanwhile is asked for again. Throws
  /// std::system_error with the kernel's reason, or ETIMEDOUT where the answer is not whole in time. What
  /// comes afterwards is no answer to the next question.
  Messages Ask(const NetlinkRequest& request);

  /// Connected. Throws std::system_error when it cannot be.
  nl_sock* Get();

 private:
  int protocol_;
  std::chrono::milliseconds patience_;
  SocketHandle socket_;
  std::uint32_t lastNumber_ = 0;  ///< of a question, whichever socket it went by
};

}  // namespace TALO::Wifid
