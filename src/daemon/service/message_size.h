#pragma once

#include <systemd/sd-bus.h>

#include <cstddef>
#include <optional>
#include <string>

/// How much a call may hold, whatever its operation; the rules of an operation are stricter.
namespace TALO::Wifid {

constexpr std::size_t kMaximumTextBytes = 1024;
constexpr std::size_t kMaximumListValues = 4096;
constexpr std::size_t kMaximumBytesOfTexts = 262144;  ///< of all in one call
constexpr std::size_t kMaximumValues = 16384;         ///< of all lists in one call, and what they hold

/// What is too large in a call, as in "a list with more than 4096 values". Nothing is taken out of the
/// message, so a large one costs no more than a small one; it is as unread as before. Throws CodecError for a
/// message that cannot be read.
std::optional<std::string> FindExcess(sd_bus_message* call);

}  // namespace TALO::Wifid
