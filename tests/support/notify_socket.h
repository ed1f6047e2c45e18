#pragma once

#include "support/descriptors.h"
#include "support/temporary_directory.h"

#include <string>

namespace TALO::EndToEnd {

/// The service manager's end of what a service tells it.
class NotifySocket {
 public:
  NotifySocket();

  /// For NOTIFY_SOCKET.
  const std::string& Path() const { return path_; }

  /// The next message. Throws std::runtime_error when none comes.
  std::string Receive() const;
  /// True where one has come that was not received.
  bool HasMessage() const;

 private:
  TemporaryDirectory directory_;
  std::string path_;
  Descriptor socket_;
};

}  // namespace TALO::EndToEnd
