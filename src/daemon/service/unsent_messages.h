#pragma once

#include <systemd/sd-bus.h>

#include <cstdint>

namespace TALO::Wifid {

/// So many messages wait for a bus that does not take them; more would only fill the memory.
constexpr std::uint64_t kMaximumUnsentMessages = 1024;

/// Whether the bus takes nothing for so long that as many wait. Throws CodecError when that cannot be known.
bool HasTooManyUnsent(sd_bus* bus);

}  // namespace TALO::Wifid
