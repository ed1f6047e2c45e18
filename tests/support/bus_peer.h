#pragma once

// The far end of a bus connection, in a thread of its own: it keeps what it was asked and answers as it was
// told to.

#include "bus/message.h"
#include "support/bus_ends.h"

#include <functional>
#include <iosfwd>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace TALO::Wifi::Bus {

/// A method call as it arrived.
struct ReceivedCall {
  std::string destination;
  std::string path;
  std::string interface;
  std::string member;
  std::string signature;

  bool operator==(const ReceivedCall&) const = default;
};

void PrintTo(const ReceivedCall& call, std::ostream* out);

/// Answers a call, or leaves it unanswered. The connection is closed when it returns false. Runs in the
/// peer's thread.
using Answer = std::function<bool(sd_bus_message* call)>;

/// What a peer does and what it saw; used from both threads.
class PeerScript {
 public:
  void SetAnswer(Answer answer);
  bool Receive(sd_bus_message* call);
  std::vector<ReceivedCall> Calls() const;

 private:
  mutable std::mutex mutex_;
  Answer answer_ = [](sd_bus_message*) { return true; };
  std::vector<ReceivedCall> calls_;
};

/// A peer on a connected socket.
class BusPeer {
 public:
  explicit BusPeer(Descriptor socket);
  ~BusPeer();

  PeerScript& Script() { return script_; }

 private:
  PeerScript script_;
  Descriptor wake_;
  std::thread thread_;
};

/// A bus of its own for this process, with the daemon on it: listens where clients look for the system bus,
/// and serves one connection after the other.
class SystemBus {
 public:
  SystemBus();
  ~SystemBus();

  PeerScript& Script() { return script_; }
  int Connections() const;

 private:
  void Run();

  PeerScript script_;
  std::string directory_;
  mutable std::mutex mutex_;
  int connections_ = 0;
  bool stopping_ = false;
  Descriptor listening_;
  Descriptor serving_;
  std::thread thread_;
};

/// Answers made of a reply that `append` fills, or of an error.
Answer ReplyWith(std::function<void(sd_bus_message* reply)> append);
Answer ReplyWithError(const std::string& name, const std::string& message);
/// A reply with this signature and any body, put together by hand.
Answer ReplyWithRawBody(const std::string& signature, const std::string& body);
/// Sends a reply to a call.
void SendReply(sd_bus_message* call, const std::function<void(sd_bus_message* reply)>& append);

}  // namespace TALO::Wifi::Bus
