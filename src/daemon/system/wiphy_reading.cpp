#include "daemon/system/wiphy_reading.h"

#include "daemon/system/band_reading.h"
#include "daemon/system/interface_combinations.h"

#include <linux/genetlink.h>
#include <linux/nl80211.h>
#include <netlink/attr.h>

#include <cstdint>
#include <map>
#include <utility>

namespace TALO::Wifid {

namespace {

/// A radio while its messages come.
struct Begun {
  Wiphy wiphy;
  std::map<int, BandReading> bands;  ///< by the kernel's number
  bool station = false;
  bool accessPoint = false;
  bool accessPointVLAN = false;
  InterfaceCombinations combinations;
};

void Take(Begun& begun, const Attributes& attributes) {
  if (attributes.Has(NL80211_ATTR_WIPHY_NAME)) {
    begun.wiphy.name = attributes.Text(NL80211_ATTR_WIPHY_NAME);
  }
  for (const nlattr* band : attributes.Inside(NL80211_ATTR_WIPHY_BANDS).All()) {
    begun.bands[nla_type(band)].Take(Attributes(band));
  }
  if (const Attributes types = attributes.Inside(NL80211_ATTR_SUPPORTED_IFTYPES); !types.All().empty()) {
    begun.station = types.Has(NL80211_IFTYPE_STATION);
    begun.accessPoint = types.Has(NL80211_IFTYPE_AP);
    begun.accessPointVLAN = types.Has(NL80211_IFTYPE_AP_VLAN);
  }
  for (const nlattr* combination : attributes.Inside(NL80211_ATTR_INTERFACE_COMBINATIONS).All()) {
    begun.combinations.Take(Attributes(combination));
  }
}

Wiphy Finished(Begun begun) {
  Wiphy wiphy = std::move(begun.wiphy);
  const auto band = [&](int number) {
    const auto found = begun.bands.find(number);
    return found == begun.bands.end() ? std::nullopt : std::optional(found->second.Finish(number));
  };
  wiphy.band2_4GHz = band(NL80211_BAND_2GHZ);
  wiphy.band5GHz = band(NL80211_BAND_5GHZ);
  if (begun.accessPoint) {
    wiphy.maximumAccessPoints = begun.combinations.MaximumAccessPoints();
    wiphy.maximumStations = begun.combinations.MaximumStations();
    wiphy.maximumChannels = begun.combinations.MaximumChannels();
  }
  // The kernel does not tell of 4-address mode. Its own wifi stack has it wherever it has these interfaces,
  // and radios that bring a stack of their own have neither.
  wiphy.fourAddress = begun.station && begun.accessPointVLAN;
  return wiphy;
}

}  // namespace

std::vector<Wiphy> ReadWiphys(const Messages& messages) {
  std::map<int, Begun> radios;
  for (const std::string& message : messages) {
    const Attributes attributes(message, GENL_HDRLEN);
    if (const auto index = attributes.Number<std::uint32_t>(NL80211_ATTR_WIPHY)) {
      const int number = static_cast<int>(*index);
      radios[number].wiphy.index = number;
      Take(radios[number], attributes);
    }
  }
  std::vector<Wiphy> wiphys;
  wiphys.reserve(radios.size());
  for (auto& [number, begun] : radios) {
    wiphys.push_back(Finished(std::move(begun)));
  }
  return wiphys;
}

}  // namespace TALO::Wifid
