#pragma once

#include "bus/message.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace TALO::Wifid {

/// A server and a client on the two ends of a socket, without a bus between them. Both live in the test's
/// thread and run only inside of the functions here.
class BusPair {
 public:
  BusPair();

  sd_bus* Server() const { return server_.get(); }
  sd_bus* Client() const { return client_.get(); }

  /// A call of the daemon's object for the client to fill in.
  Wifi::Bus::Message NewCall(const char* interface, const char* member) const;
  Wifi::Bus::Message NewCall(const char* path, const char* interface, const char* member) const;
  /// Sends it; the cookie tells its answers apart.
  std::uint64_t Send(sd_bus_message* call);
  /// Runs both ends until the call is answered; null when it is not in good time.
  sd_bus_message* WaitForAnswer(std::uint64_t cookie);
  /// Runs both ends until everything sent so far has been worked off: a ping sent now is answered last.
  void RunUntilQuiet();
  /// How often the call was answered so far.
  std::size_t CountAnswers(std::uint64_t cookie) const;
  /// The signals that the client received so far.
  std::vector<sd_bus_message*> Signals() const;

 private:
  bool RunUntil(const std::function<bool()>& isDone);
  bool RunOnce();
  sd_bus_message* FindAnswer(std::uint64_t cookie) const;

  Wifi::Bus::BusHandle server_;
  Wifi::Bus::BusHandle client_;
  std::vector<Wifi::Bus::Message> received_;
};

/// The error of an answer: name and sentence, as in "com.talo.Wifi1.Error.NotFound: there is no network 7".
/// "none" for an answer that is no error and "no answer" for null.
std::string ErrorOf(sd_bus_message* answer);

/// The signature of an answer's contents.
std::string SignatureOf(sd_bus_message* answer);

}  // namespace TALO::Wifid
