#pragma once

#include "daemon/radio/radio_events.h"

namespace TALO::Wifid {

/// Where callers are told what changed. What it is told has happened: it is stored and in the air.
class Announcer {
 public:
  virtual ~Announcer() = default;

  /// A network was made, changed or deleted.
  virtual void NetworksChanged() = 0;

  /// Something happened on the radios.
  virtual void Happened(const RadioEvent& event) = 0;
};

}  // namespace TALO::Wifid
