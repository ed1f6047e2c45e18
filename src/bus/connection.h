#pragma once

#include "bus/errors.h"
#include "bus/message.h"
#include "bus/names.h"
#include "bus/operations.h"

#include <chrono>
#include <memory>
#include <string>

namespace TALO::Wifi::Bus {

/// How long the bus and the daemon may take for one answer.
inline constexpr std::chrono::seconds kDeadline{30};

/// A client's connection to the daemon. Every call blocks until the answer is here or the deadline has
/// passed, and fails as ThrowCallError says. Not thread-safe.
class Connection {
 public:
  /// This process's connection to the system bus: opened when first asked for, opened again after it broke.
  /// Throws DbusError when there is no bus.
  static std::shared_ptr<Connection> Shared();

  /// Takes over a bus that has been started. Throws DbusError when it does not come up within the deadline.
  Connection(BusHandle bus, std::chrono::microseconds deadline);

  /// Calls the daemon's operation for a client's method.
  template <auto Method, typename... Arguments>
  typename MethodTraits<Method>::Result Call(const Arguments&... arguments) {
    using Traits = MethodTraits<Method>;
    constexpr bool kSensitive = Traits::ArgumentsCodec::holdsSecret || Traits::ResultCodec::holdsSecret;
    constexpr const char* kOperation = NameOf<Method>();
    const Message call = NewCall(kObjectPath, InterfaceOf<Method>::name.text, kOperation, kSensitive);
    Fill(kOperation, [&] { Traits::ArgumentsCodec::Append(call.get(), arguments...); });
    const Message reply = Send(call.get(), kOperation, kSensitive);
    CheckSignature(reply.get(), kOperation, Traits::ResultCodec::signature.text);
    try {
      return Traits::ResultCodec::Read(reply.get());
    } catch (const CodecError& error) {
      ThrowBadReply(kOperation, error.what());
    }
  }

  /// The text of one of the daemon's properties.
  std::string GetTextProperty(const char* path, const char* interface, const char* property);

  /// False once bus or connection has gone.
  bool IsOpen() const;

 private:
  void WaitUntilReady();
  Message NewCall(const char* path, const char* interface, const char* member, bool sensitive);
  Message Send(sd_bus_message* call, const char* operation, bool sensitive);
  static void CheckSignature(sd_bus_message* reply, const char* operation, const char* signature);
  static void CheckContents(const char* operation, const char* received, const char* wanted);

  /// Runs `append`; a text that cannot travel is the caller's bad argument.
  template <typename AppendArguments>
  static void Fill(const char* operation, AppendArguments append) {
    try {
      append();
    } catch (const InvalidText& error) {
      throw WifiException(make_error_code(ErrorCode::InvalidArgument),
                          std::string(operation) + ": " + error.what());
    } catch (const CodecError& error) {
      throw talo::dbus::DbusError(make_error_code(ErrorCode::Unexpected),
                                  std::string(operation) + " cannot be sent (" + error.what() + ")");
    }
  }

  /// Closes without flushing: nothing of ours is left to send once a call has returned, and flushing knows no
  /// deadline where the other end does not read or never spoke.
  struct AbandonBus {
    void operator()(sd_bus* bus) const noexcept { sd_bus_close_unref(bus); }
  };

  std::unique_ptr<sd_bus, AbandonBus> bus_;
  std::chrono::microseconds deadline_;
};

}  // namespace TALO::Wifi::Bus
