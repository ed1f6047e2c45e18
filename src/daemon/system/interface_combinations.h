#pragma once

#include "daemon/system/netlink_message.h"

namespace TALO::Wifid {

/// What interfaces a radio that makes access points can have at once.
class InterfaceCombinations {
 public:
  /// One combination, as the kernel tells it.
  void Take(const Attributes& combination);

  int MaximumAccessPoints() const { return maximumAccessPoints_; }
  /// Beside the access point that holds the radio and one more.
  int MaximumStations() const { return maximumStations_; }
  /// Beside access points; one where there is no station beside them.
  int MaximumChannels() const { return maximumChannels_; }

 private:
  int maximumAccessPoints_ = 1;  ///< one alone needs no combination
  int maximumStations_ = 0;
  int maximumChannels_ = 1;
};

}  // namespace TALO::Wifid
