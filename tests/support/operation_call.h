#pragma once

#include "bus/names.h"
#include "bus/operations.h"
#include "support/test_connection.h"

#include <string>

namespace TALO::EndToEnd {

/// Calls an operation of the daemon on this bus, as what no command reaches needs. Throws CallError when it
/// is refused.
template <auto Method, typename... Arguments>
auto CallOperation(const std::string& busAddress, const Arguments&... arguments) {
  using Traits = Wifi::Bus::MethodTraits<Method>;
  const Wifi::Bus::BusHandle bus = OpenBus(busAddress);
  sd_bus_message* message = nullptr;
  Wifi::Bus::CheckMessage(
      sd_bus_message_new_method_call(bus.get(), &message, Wifi::Bus::kBusName, Wifi::Bus::kObjectPath,
                                     Wifi::Bus::InterfaceOf<Method>::name.text, Wifi::Bus::NameOf<Method>()));
  const Wifi::Bus::Message call(message);
  Traits::ArgumentsCodec::Append(call.get(), arguments...);
  Wifi::Bus::BusError error;
  sd_bus_message* answer = nullptr;
  if (sd_bus_call(bus.get(), call.get(), 0, error.Get(), &answer) < 0) {
    throw CallError((*error).name, (*error).message);
  }
  const Wifi::Bus::Message reply(answer);
  return Traits::ResultCodec::Read(reply.get());
}

}  // namespace TALO::EndToEnd
