#pragma once

#include "daemon/radio/linux/control_sockets.h"
#include "daemon/radio/timers.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// What answers at a control socket.
class ControlServer {
 public:
  virtual ~ControlServer() = default;

  /// Nothing where it does not answer.
  virtual std::optional<std::string> Answer(const std::string& request) = 0;
};

/// Control sockets as the programs of the fake machine have them. What is said takes a millisecond each way.
class FakeSockets final : public ControlSockets {
 public:
  static constexpr Timers::Duration kLatency{1};
  static constexpr Timers::Duration kPatience{10'000};

  explicit FakeSockets(Timers& timers) : timers_(timers) {}

  Result<std::unique_ptr<ControlSocket>> Connect(const std::string& path, MessageSink sink) override;

  /// In the place of whoever listened there before; the old connections are dead.
  void Listen(const std::string& path, ControlServer& server);
  /// Nobody listens any more. Those that are connected find out when they ask.
  void Close(const std::string& path);
  /// Whoever listens there tells nobody any more until he attaches again, as after failing to reach him.
  void DetachAll(const std::string& path);
  /// Tells all that have attached, each once.
  void Tell(const std::string& path, const std::string& message);

  Timers::Duration messageLatency = kLatency;  ///< of what is told without being asked

 private:
  class Connection;
  struct Listener {
    ControlServer* server = nullptr;
    std::vector<std::weak_ptr<MessageSink>> attached;

    void Attach(const std::weak_ptr<MessageSink>& sink);
  };

  Timers& timers_;
  std::map<std::string, std::shared_ptr<Listener>> listeners_;
};

}  // namespace TALO::Wifid
