#include "support/fake_service.h"

#include <utility>

namespace TALO::EndToEnd {

using Wifi::Bus::CheckMessage;

FakeService::FakeService(const std::string& address, Answer answer)
    : bus_(OpenBus(address)), answer_(std::move(answer)) {
  CheckMessage(sd_bus_request_name(bus_.get(), "com.talo.Wifi1", 0));
}

void FakeService::ServeUntilEndOf(const Process& process) {
  bool vanishes = false;
  ProcessBusUntil(
      bus_.get(), process.EndDescriptor(), "the end of the caller",
      [&] { return vanishes || process.HasEnded(); },
      [&](sd_bus_message* message) {
        if (sd_bus_message_is_method_call(message, nullptr, nullptr) > 0) {
          vanishes = answer_(message) == Then::Vanish;
        }
      });
  if (vanishes) {
    bus_.reset();
  }
}

bool AsksForLogLevel(sd_bus_message* call) {
  return sd_bus_message_is_method_call(call, "org.freedesktop.DBus.Properties", "Get") > 0;
}

void AnswerLogLevel(sd_bus_message* call, const char* level) {
  CheckMessage(sd_bus_reply_method_return(call, "v", "s", level));
}

void AnswerError(sd_bus_message* call, const char* name, const char* message) {
  CheckMessage(sd_bus_reply_method_errorf(call, name, "%s", message));
}

}  // namespace TALO::EndToEnd
