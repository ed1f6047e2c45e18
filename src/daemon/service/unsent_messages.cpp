#include "daemon/service/unsent_messages.h"

#include "bus/message.h"

namespace TALO::Wifid {

bool HasTooManyUnsent(sd_bus* bus) {
  std::uint64_t unsent = 0;
  Wifi::Bus::CheckMessage(sd_bus_get_n_queued_write(bus, &unsent));
  return unsent >= kMaximumUnsentMessages;
}

}  // namespace TALO::Wifid
