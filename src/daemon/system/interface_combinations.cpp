#include "daemon/system/interface_combinations.h"

#include <linux/nl80211.h>

#include <algorithm>
#include <cstdint>

namespace TALO::Wifid {

namespace {

/// So many interfaces of these kinds together.
struct Limit {
  int count = 0;
  bool accessPoint = false;
  bool station = false;
};

int CountIn(const Attributes& attributes, int type) {
  return static_cast<int>(attributes.Number<std::uint32_t>(type).value_or(0));
}

std::vector<Limit> LimitsOf(const Attributes& combination) {
  std::vector<Limit> limits;
  for (const nlattr* nested : combination.Inside(NL80211_IFACE_COMB_LIMITS).All()) {
    const Attributes limit(nested);
    const Attributes types = limit.Inside(NL80211_IFACE_LIMIT_TYPES);
    limits.push_back({CountIn(limit, NL80211_IFACE_LIMIT_MAX), types.Has(NL80211_IFTYPE_AP),
                      types.Has(NL80211_IFTYPE_STATION)});
  }
  return limits;
}

/// How many stations fit beside two access points. What a limit has room for may be of either kind.
int StationsBeside(const std::vector<Limit>& limits, int most) {
  constexpr int kAccessPoints = 2;
  int accessPoints = 0;
  int stations = 0;
  int either = 0;
  for (const Limit& limit : limits) {
    accessPoints += limit.accessPoint ? limit.count : 0;
    stations += limit.station ? limit.count : 0;
    either += limit.accessPoint || limit.station ? limit.count : 0;
  }
  return accessPoints < kAccessPoints
             ? 0
             : std::max(0, std::min({stations, either - kAccessPoints, most - kAccessPoints}));
}

}  // namespace

void InterfaceCombinations::Take(const Attributes& combination) {
  const std::vector<Limit> limits = LimitsOf(combination);
  const int most = CountIn(combination, NL80211_IFACE_COMB_MAXNUM);
  int accessPoints = 0;
  for (const Limit& limit : limits) {
    accessPoints += limit.accessPoint ? limit.count : 0;
  }
  maximumAccessPoints_ = std::max(maximumAccessPoints_, std::min(accessPoints, most));
  if (const int stations = StationsBeside(limits, most); stations > 0) {
    maximumStations_ = std::max(maximumStations_, stations);
    maximumChannels_ = std::max(maximumChannels_, CountIn(combination, NL80211_IFACE_COMB_NUM_CHANNELS));
  }
}

}  // namespace TALO::Wifid
