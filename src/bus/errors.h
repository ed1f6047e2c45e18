#pragma once

#include "values/errors.h"

#include <systemd/sd-bus.h>

#include <string>
#include <vector>

/// The one place where errors of the bus and of the daemon get their codes and sentences, in both directions.
namespace TALO::Wifi::Bus {

/// The name under which the daemon refuses with this code. The code must be one of the daemon's refusals; any
/// other answers null.
const char* ErrorNameOf(ErrorCode refusal);

/// The codes with which the daemon refuses, in their order.
std::vector<ErrorCode> Refusals();

/// Throws what `error` means to the caller of `operation`: WifiException for a refusal of the daemon,
/// DbusError for everything else.
[[noreturn]] void ThrowCallError(const sd_bus_error& error, const char* operation);

/// Throws DbusError: the bus itself cannot be reached, for the reason of this errno.
[[noreturn]] void ThrowBusUnavailable(int error);

/// Throws DbusError: the answer to `operation` cannot be read.
[[noreturn]] void ThrowBadReply(const char* operation, const std::string& reason);

}  // namespace TALO::Wifi::Bus
