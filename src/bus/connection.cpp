#include "bus/connection.h"

#include <cerrno>
#include <mutex>
#include <string_view>

namespace TALO::Wifi::Bus {

using Clock = std::chrono::steady_clock;

std::shared_ptr<Connection> Connection::Shared() {
  static std::mutex mutex;
  static std::shared_ptr<Connection> shared;
  const std::lock_guard lock(mutex);
  if (!shared || !shared->IsOpen()) {
    sd_bus* bus = nullptr;
    if (const int result = sd_bus_open_system(&bus); result < 0) {
      ThrowBusUnavailable(-result);
    }
    shared = std::make_shared<Connection>(BusHandle(bus), kDeadline);
  }
  return shared;
}

Connection::Connection(BusHandle bus, std::chrono::microseconds deadline)
    : bus_(bus.release()), deadline_(deadline) {
  WaitUntilReady();
}

bool Connection::IsOpen() const { return sd_bus_is_open(bus_.get()) > 0; }

// Not left to the first call: sd-bus waits longer than any deadline of ours for a bus that accepts and says
// nothing.
void Connection::WaitUntilReady() {
  const auto end = Clock::now() + deadline_;
  for (;;) {
    const int ready = sd_bus_is_ready(bus_.get());
    if (ready > 0) {
      return;
    }
    int result = ready < 0 ? ready : sd_bus_process(bus_.get(), nullptr);
    if (result > 0) {
      continue;
    }
    if (result == 0) {
      const auto left = std::chrono::duration_cast<std::chrono::microseconds>(end - Clock::now());
      if (left.count() <= 0) {
        ThrowBusUnavailable(ETIMEDOUT);
      }
      result = sd_bus_wait(bus_.get(), static_cast<std::uint64_t>(left.count()));
    }
    if (result < 0 && result != -EINTR) {
      ThrowBusUnavailable(-result);
    }
  }
}

Message Connection::NewCall(const char* path, const char* interface, const char* member, bool sensitive) {
  sd_bus_message* message = nullptr;
  BusError error;
  if (const int result =
          sd_bus_message_new_method_call(bus_.get(), &message, kBusName, path, interface, member);
      result < 0) {
    sd_bus_error_set_errno(error.Get(), result);
    ThrowCallError(*error, member);
  }
  Message call(message);
  if (sensitive) {
    sd_bus_message_sensitive(call.get());
  }
  return call;
}

Message Connection::Send(sd_bus_message* call, const char* operation, bool sensitive) {
  BusError error;
  sd_bus_message* message = nullptr;
  const int result =
      sd_bus_call(bus_.get(), call, static_cast<std::uint64_t>(deadline_.count()), error.Get(), &message);
  Message reply(message);
  if (result < 0) {
    // sd-bus fills in the error of every failure, its own included.
    ThrowCallError(*error, operation);
  }
  if (sensitive) {
    sd_bus_message_sensitive(reply.get());
  }
  return reply;
}

void Connection::CheckSignature(sd_bus_message* reply, const char* operation, const char* signature) {
  CheckContents(operation, sd_bus_message_get_signature(reply, 1), signature);
}

void Connection::CheckContents(const char* operation, const char* received, const char* wanted) {
  const std::string_view held = received != nullptr ? received : "";
  if (held != wanted) {
    ThrowBadReply(operation, "it holds \"" + std::string(held) + "\" instead of \"" + wanted + "\"");
  }
}

std::string Connection::GetTextProperty(const char* path, const char* interface, const char* property) {
  const Message call = NewCall(path, "org.freedesktop.DBus.Properties", "Get", false);
  Fill(property, [&] { ArgumentsCodec<std::string, std::string>::Append(call.get(), interface, property); });
  const Message reply = Send(call.get(), property, false);
  CheckSignature(reply.get(), property, "v");
  const char* contents = nullptr;
  sd_bus_message_peek_type(reply.get(), nullptr, &contents);
  CheckContents(property, contents, "s");
  try {
    EnterContainer(reply.get(), SD_BUS_TYPE_VARIANT, "s");
    return Codec<std::string>::Read(reply.get());
  } catch (const CodecError& error) {
    ThrowBadReply(property, error.what());
  }
}

}  // namespace TALO::Wifi::Bus
