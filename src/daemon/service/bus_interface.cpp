#include "daemon/service/bus_interface.h"

#include <algorithm>
#include <cerrno>
#include <exception>

namespace TALO::Wifid {

namespace {

/// sd-bus passes the endpoint: the first one's address and the entry's offset.
int Receive(sd_bus_message* message, void* endpoint, sd_bus_error* error) {
  try {
    static_cast<const Endpoint*>(endpoint)->Receive(message);
    return 1;
  } catch (const std::exception& failure) {
    return sd_bus_error_setf(error, SD_BUS_ERROR_FAILED, "the wifi daemon failed: %s", failure.what());
  }
}

/// Names as sd-bus wants them: each followed by a zero.
std::string ZeroTerminated(std::string_view names) {
  if (names.empty()) {
    return {};
  }
  std::string list(names);
  std::ranges::replace(list, ' ', '\0');
  return list + '\0';
}

}  // namespace

// Reserved, since entries point into the names.
Vtable::Vtable(std::size_t members) {
  names_.reserve(members);
  entries_.reserve(members + 2);
  entries_.push_back(SD_BUS_VTABLE_START(0));
}

void Vtable::AddMethod(const char* name, const char* arguments, std::string_view argumentNames,
                       const char* result, std::string_view resultName, bool sensitive) {
  const std::size_t offset = methods_++ * sizeof(Endpoint);
  names_.push_back(ZeroTerminated(argumentNames) + ZeroTerminated(resultName));
  // Who may call is decided by the bus's policy and by the daemon, not by sd-bus's question for capabilities.
  std::uint64_t flags = SD_BUS_VTABLE_UNPRIVILEGED;
  if (sensitive) {
    flags |= SD_BUS_VTABLE_SENSITIVE;
  }
  sd_bus_vtable entry{};
  entry.type = _SD_BUS_VTABLE_METHOD;
  entry.flags = flags & 0x00FFFFFFFFFFFFFFULL;
  entry.x.method = {name, arguments, result, Receive, offset, names_.back().c_str()};
  entries_.push_back(entry);
}

void Vtable::AddSignal(const char* name, const char* values, std::string_view valueNames) {
  names_.push_back(ZeroTerminated(valueNames));
  sd_bus_vtable entry{};
  entry.type = _SD_BUS_VTABLE_SIGNAL;
  entry.x.signal = {name, values, names_.back().c_str()};
  entries_.push_back(entry);
}

const sd_bus_vtable* Vtable::Finish() {
  entries_.push_back(SD_BUS_VTABLE_END);
  return entries_.data();
}

}  // namespace TALO::Wifid
