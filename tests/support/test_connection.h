#pragma once

#include "bus/message.h"
#include "support/process.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::EndToEnd {

/// Processes the bus until `done` holds. Between events it asks again whenever `wake`, a descriptor or -1, is
/// readable. Throws std::runtime_error, which names `awaited`, when the deadline passes or the bus breaks.
/// Messages that sd-bus has no use for go to `receive`.
void ProcessBusUntil(sd_bus* bus, int wake, const std::string& awaited, const std::function<bool()>& done,
                     const std::function<void(sd_bus_message*)>& receive = nullptr);

/// The error that a call was answered with.
class CallError : public std::runtime_error {
 public:
  CallError(const std::string& name, const std::string& message)
      : std::runtime_error(name + ": " + message), name_(name), message_(message) {}

  const std::string& Name() const { return name_; }
  const std::string& Message() const { return message_; }

 private:
  std::string name_;
  std::string message_;
};

/// A test's own connection to the bus.
class TestConnection {
 public:
  explicit TestConnection(const std::string& address);
  explicit TestConnection(Wifi::Bus::BusHandle bus) : bus_(std::move(bus)) {}

  /// Waits until the daemon's name has an owner. Throws std::runtime_error with its log when `daemon` ends
  /// before.
  void WaitForOwner(const Process& daemon);
  /// Waits until the daemon's name has no owner.
  void WaitForNoOwner();
  /// Whether it has one now.
  bool HasOwner();

  /// These throw CallError for an error in place of an answer.
  std::string Introspect(const char* path);
  std::string GetLogLevel();
  void SetLogLevel(const char* level);
  /// Asks the bus to start the daemon.
  void Activate();

 private:
  struct OwnerWatch {
    bool hasOwner = false;
  };

  static int OnOwnerChanged(sd_bus_message* signal, void* watch, sd_bus_error* error);
  void WaitForOwnerToBe(bool present, const Process* daemon);
  /// Sends a call that has been filled in and returns the answer.
  Wifi::Bus::Message Call(const Wifi::Bus::Message& call);
  Wifi::Bus::Message NewCall(const char* name, const char* path, const char* interface, const char* member);

  Wifi::Bus::BusHandle bus_;
};

/// Whom a connection acts for.
struct User {
  uid_t id;
  gid_t group;
  std::vector<gid_t> groups = {};
};

/// Opens a connection that the bus takes for another user's. Only root can.
Wifi::Bus::BusHandle OpenBusAs(const std::string& address, const User& user);

/// Opens a connection to the bus at `address`; one that is to become a monitor is told so before.
Wifi::Bus::BusHandle OpenBus(const std::string& address, bool asMonitor = false);

}  // namespace TALO::EndToEnd
