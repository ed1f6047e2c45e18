#pragma once

#include "bus/message.h"
#include "support/bus_ends.h"

#include <string>

namespace TALO::Fuzz {

/// Messages as another program may send them, put together by hand.
class RawMessages {
 public:
  RawMessages();
  ~RawMessages();

  /// A message that was received, with this signature and any bytes for a body. Null where the bus does not
  /// take it.
  Wifi::Bus::Message Receive(const std::string& signature, const std::string& body);

  /// An empty one to be written.
  Wifi::Bus::Message NewMessage() const;
  /// Ends the writing; it is read from its start.
  static void Seal(sd_bus_message* message);

 private:
  void Connect();

  Wifi::Bus::Descriptor peer_;
  Wifi::Bus::BusHandle bus_;
};

}  // namespace TALO::Fuzz
