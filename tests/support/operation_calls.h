#pragma once

#include "bus/operations.h"
#include "support/bus_pair.h"

#include <cstdint>
#include <stdexcept>

/// Calls of the daemon's operations over a bus of two ends.
namespace TALO::Wifid {

/// Sends a call and returns its cookie.
template <auto Method, typename... Arguments>
std::uint64_t SendCall(BusPair& pair, const Arguments&... arguments) {
  namespace Bus = Wifi::Bus;
  const Bus::Message call = pair.NewCall(Bus::InterfaceOf<Method>::name.text, Bus::NameOf<Method>());
  Bus::MethodTraits<Method>::ArgumentsCodec::Append(call.get(), arguments...);
  return pair.Send(call.get());
}

/// The value of an answer. Throws std::runtime_error for one that is an error.
template <auto Method>
auto ValueOfAnswer(sd_bus_message* answer) {
  if (ErrorOf(answer) != "none") {
    throw std::runtime_error(ErrorOf(answer));
  }
  return Wifi::Bus::MethodTraits<Method>::ResultCodec::Read(answer);
}

}  // namespace TALO::Wifid
