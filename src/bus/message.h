#pragma once

#include <systemd/sd-bus.h>

#include <memory>
#include <stdexcept>
#include <string>

/// Owners of sd-bus objects, and what goes wrong with messages.
namespace TALO::Wifi::Bus {

struct UnrefMessage {
  void operator()(sd_bus_message* message) const noexcept { sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, UnrefMessage>;

struct CloseBus {
  void operator()(sd_bus* bus) const noexcept { sd_bus_flush_close_unref(bus); }
};
using BusHandle = std::unique_ptr<sd_bus, CloseBus>;

struct UnrefSlot {
  void operator()(sd_bus_slot* slot) const noexcept { sd_bus_slot_unref(slot); }
};
using Slot = std::unique_ptr<sd_bus_slot, UnrefSlot>;

/// An sd_bus_error that frees itself.
class BusError {
 public:
  BusError() = default;
  BusError(const BusError&) = delete;
  BusError& operator=(const BusError&) = delete;
  ~BusError() { sd_bus_error_free(&error_); }

  sd_bus_error* Get() noexcept { return &error_; }
  const sd_bus_error& operator*() const noexcept { return error_; }

 private:
  sd_bus_error error_ = SD_BUS_ERROR_NULL;
};

/// A message could not be built or read.
class CodecError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// A text that cannot travel as D-Bus text; the message names it.
class InvalidText : public CodecError {
 public:
  using CodecError::CodecError;
};

/// Throws CodecError with the meaning of a negative errno. Returns what is not negative.
int CheckMessage(int result);

}  // namespace TALO::Wifi::Bus
