#pragma once

#include "daemon/radio/simulated/surroundings.h"

#include <functional>
#include <vector>

namespace TALO::Wifid {

/// The neighbours' access points, coming and going.
class Air {
 public:
  /// `changed` is called whenever one has appeared or vanished.
  Air(const Surroundings& surroundings, const std::function<void()>& changed);

  /// Those that are there now and on one of the channels: the strongest first, equally strong ones in the
  /// order of the scenario. They live as long as the scenario.
  std::vector<const AccessPoint*> HeardOn(const std::vector<int>& channels) const;

  bool IsThere(const AccessPoint& neighbour) const;

  /// How many are there that disturb a channel.
  int CountOn(int channel, int width) const;

 private:
  const Surroundings& surroundings_;
  Timers::Duration start_;
};

}  // namespace TALO::Wifid
