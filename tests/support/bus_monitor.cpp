#include "support/bus_monitor.h"

#include "support/test_connection.h"

#include <cstdint>

namespace TALO::EndToEnd {

using Wifi::Bus::CheckMessage;

BusMonitor::BusMonitor(const std::string& address) : bus_(OpenBus(address, true)) {
  CheckMessage(sd_bus_call_method(bus_.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus",
                                  "org.freedesktop.DBus.Monitoring", "BecomeMonitor", nullptr, nullptr, "asu",
                                  0, std::uint32_t{0}));
}

void BusMonitor::WaitForCall(const std::string& member) {
  bool seen = false;
  ProcessBusUntil(
      bus_.get(), -1, "a call of " + member, [&] { return seen; },
      [&](sd_bus_message* message) {
        seen = seen || sd_bus_message_is_method_call(message, nullptr, member.c_str()) > 0;
      });
}

}  // namespace TALO::EndToEnd
