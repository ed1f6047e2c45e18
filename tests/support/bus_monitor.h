#pragma once

#include "bus/message.h"

#include <string>

namespace TALO::EndToEnd {

/// Sees every message that the bus passes on from now on.
class BusMonitor {
 public:
  explicit BusMonitor(const std::string& address);

  /// Waits until the bus has passed on a call of `member`.
  void WaitForCall(const std::string& member);

  /// All signals with their values that the bus passes on until then.
  std::string SignalsUntilCall(const std::string& member);

 private:
  Wifi::Bus::BusHandle bus_;
};

}  // namespace TALO::EndToEnd
