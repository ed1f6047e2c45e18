#pragma once

#include "daemon/store/descriptor.h"
#include "daemon/system/event_watch.h"

#include <functional>
#include <optional>
#include <string>

namespace TALO::Wifid {

/// A socket for datagrams to and from the one at a path, and nobody else.
class DatagramChannel {
 public:
  /// `ready` is called on the event loop while there is something to receive, and while there is room to send
  /// after Send() found none. Throws std::system_error where nobody listens.
  DatagramChannel(const Loop& loop, const std::string& path, std::function<void()> ready);

  /// False when the other takes no more now. Throws std::system_error when it is gone or does not take this.
  bool Send(const std::string& text);

  /// Nothing when there is nothing now. What is longer than anybody says is cut.
  std::optional<std::string> Receive();

 private:
  std::string path_;
  Descriptor socket_;
  EventWatch watch_;
};

}  // namespace TALO::Wifid
