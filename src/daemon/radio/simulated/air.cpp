#include "daemon/radio/simulated/air.h"

#include "daemon/radio/simulated/hardware.h"

#include <algorithm>
#include <set>

namespace TALO::Wifid {

Air::Air(const Surroundings& surroundings, const std::function<void()>& changed)
    : surroundings_(surroundings), start_(surroundings.timers.Now()) {
  std::set<int> moments;
  for (const AccessPoint& neighbour : surroundings.scenario.neighbours) {
    if (neighbour.appearsAt > 0) {
      moments.insert(neighbour.appearsAt);
    }
    if (neighbour.vanishesAt) {
      moments.insert(*neighbour.vanishesAt);
    }
  }
  for (const int moment : moments) {
    surroundings.timers.After(Seconds(moment), changed);
  }
}

bool Air::IsThere(const AccessPoint& neighbour) const {
  const Timers::Duration now = surroundings_.timers.Now() - start_;
  return now >= Seconds(neighbour.appearsAt) &&
         (!neighbour.vanishesAt || now < Seconds(*neighbour.vanishesAt));
}

std::vector<const AccessPoint*> Air::HeardOn(const std::vector<int>& channels) const {
  std::vector<const AccessPoint*> heard;
  for (const AccessPoint& neighbour : surroundings_.scenario.neighbours) {
    if (IsThere(neighbour) && std::ranges::find(channels, neighbour.channel) != channels.end()) {
      heard.push_back(&neighbour);
    }
  }
  std::ranges::stable_sort(heard, std::ranges::greater(), &AccessPoint::signal);
  return heard;
}

int Air::CountOn(int channel, int width) const {
  const auto& neighbours = surroundings_.scenario.neighbours;
  return static_cast<int>(std::ranges::count_if(neighbours, [&](const AccessPoint& neighbour) {
    return IsThere(neighbour) && DoOverlap(channel, width, neighbour.channel, neighbour.channelWidth);
  }));
}

}  // namespace TALO::Wifid
