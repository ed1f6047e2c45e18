#include "support/bus_monitor.h"

#include "support/test_connection.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace TALO::EndToEnd {

using Wifi::Bus::CheckMessage;

BusMonitor::BusMonitor(const std::string& address) : bus_(OpenBus(address, true)) {
  CheckMessage(sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus.Monitoring", "BecomeMonitor", nullptr, nullptr, "asu",
                                  0, std::uint32_t{0}));
}

namespace {

std::string TextOf(sd_bus_message* message) {
  char* text = nullptr;
  std::size_t size = 0;
  std::FILE* file = open_memstream(&text, &size);
  sd_bus_message_dump(message, file, SD_BUS_MESSAGE_DUMP_WITH_HEADER);
  std::fclose(file);
  std::string copy(text, size);
  std::free(text);
  return copy;
}

}  // namespace

void BusMonitor::WaitForCall(const std::string& member) { SignalsUntilCall(member); }

std::string BusMonitor::SignalsUntilCall(const std::string& member) {
  bool seen = false;
  std::string signals;
  ProcessBusUntil(
      bus_.get(), -1, "a call of " + member, [&] { return seen; },
      [&](sd_bus_message* message) {
        if (sd_bus_message_is_signal(message, nullptr, nullptr) > 0) {
          signals += TextOf(message);
        }
        seen = seen || sd_bus_message_is_method_call(message, nullptr, member.c_str()) > 0;
      });
  return signals;
}

}  // namespace TALO::EndToEnd
