#pragma once

#include "daemon/service/announcer.h"
#include "daemon/service/log.h"

#include <systemd/sd-bus.h>

namespace TALO::Wifid {

/// Announces by signals on the bus.
class BusAnnouncer final : public Announcer {
 public:
  explicit BusAnnouncer(const Log& log) : log_(log) {}

  /// Where signals go from now on; nothing is sent before.
  void Attach(sd_bus* bus) { bus_ = bus; }

  void NetworksChanged() override;
  void Happened(const RadioEvent& event) override;

 private:
  template <typename Signal, typename... Values>
  void Send(const Values&... values);

  const Log& log_;
  sd_bus* bus_ = nullptr;
};

}  // namespace TALO::Wifid
