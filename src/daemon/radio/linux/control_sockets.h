#pragma once

#include "daemon/model/result.h"

#include <functional>
#include <memory>
#include <string>

namespace TALO::Wifid {

/// A connection to the control socket of a running program. Its end drops what is still unanswered.
class ControlSocket {
 public:
  using Answer = std::function<void(Result<std::string>)>;

  virtual ~ControlSocket() = default;

  /// Sends a request; the answers come in the order of the requests, later and never from inside the call.
  /// Failures are RadioFailed: the program does not take the request, is gone, or has not answered within
  /// ten seconds, after which it is not waited for.
  virtual void Request(const std::string& request, Answer answer) = 0;
};

/// The door to control sockets.
class ControlSockets {
 public:
  /// Called on the event loop with each message that nobody asked for.
  using MessageSink = std::function<void(const std::string&)>;

  virtual ~ControlSockets() = default;

  /// Connects to the socket at this path, for requests and, once the program has answered the request
  /// "ATTACH", for the messages that nobody asked for. Nothing is said to the program yet. Fails with
  /// RadioFailed where nobody listens.
  virtual Result<std::unique_ptr<ControlSocket>> Connect(const std::string& path, MessageSink sink) = 0;
};

}  // namespace TALO::Wifid
