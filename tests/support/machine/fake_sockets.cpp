#include "support/machine/fake_sockets.h"

#include <algorithm>
#include <utility>

namespace TALO::Wifid {

class FakeSockets::Connection final : public ControlSocket {
 public:
  Connection(Timers& timers, std::weak_ptr<Listener> listener, MessageSink sink)
      : timers_(timers),
        listener_(std::move(listener)),
        sink_(std::make_shared<MessageSink>(std::move(sink))) {}

  void Request(const std::string& request, Answer answer) override {
    const std::weak_ptr<MessageSink> alive = sink_;
    const auto give = [&timers = timers_, alive, answer = std::move(answer)](
                          Timers::Duration after, const Result<std::string>& result) {
      timers.After(after, [alive, answer, result] {
        if (alive.lock()) {
          answer(result);
        }
      });
    };
    timers_.After(kLatency, [listener = listener_, alive, request, give] {
      const auto peer = listener.lock();
      if (!peer) {
        give(kLatency, Refusal{ErrorCode::RadioFailed, "Connection refused"});
        return;
      }
      const std::optional<std::string> said = peer->server->Answer(request);
      if (said == "OK\n" && request == "ATTACH") {
        peer->Attach(alive);
      }
      if (said) {
        give(kLatency, *said);
      } else {
        give(kPatience, Refusal{ErrorCode::RadioFailed, "no answer within ten seconds"});
      }
    });
  }

 private:
  Timers& timers_;
  std::weak_ptr<Listener> listener_;
  std::shared_ptr<MessageSink> sink_;  ///< as long as the connection is there
};

Result<std::unique_ptr<ControlSocket>> FakeSockets::Connect(const std::string& path, MessageSink sink) {
  const auto listener = listeners_.find(path);
  if (listener == listeners_.end()) {
    return Refusal{ErrorCode::RadioFailed, "cannot connect to " + path + ": Connection refused"};
  }
  return std::unique_ptr<ControlSocket>(
      std::make_unique<Connection>(timers_, listener->second, std::move(sink)));
}

void FakeSockets::Listen(const std::string& path, ControlServer& server) {
  listeners_[path] = std::make_shared<Listener>(Listener{&server, {}});
}

void FakeSockets::Close(const std::string& path) { listeners_.erase(path); }

void FakeSockets::DetachAll(const std::string& path) { listeners_.at(path)->attached.clear(); }

void FakeSockets::Listener::Attach(const std::weak_ptr<MessageSink>& sink) {
  const auto isSame = [&sink](const auto& each) { return each.lock() == sink.lock(); };
  if (std::ranges::none_of(attached, isSame)) {
    attached.push_back(sink);
  }
}

void FakeSockets::Tell(const std::string& path, const std::string& message) {
  const auto listener = listeners_.find(path);
  if (listener == listeners_.end()) {
    return;
  }
  for (const std::weak_ptr<MessageSink>& each : listener->second->attached) {
    timers_.After(messageLatency, [each, message] {
      if (const auto sink = each.lock()) {
        (*sink)(message);
      }
    });
  }
}

}  // namespace TALO::Wifid
