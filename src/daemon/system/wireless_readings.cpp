#include "daemon/system/wireless_readings.h"

#include "daemon/system/mac_bytes.h"

#include <linux/genetlink.h>
#include <linux/nl80211.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace TALO::Wifid {

namespace {

InterfaceType TypeOf(std::uint32_t type) {
  switch (type) {
    case NL80211_IFTYPE_STATION:
      return InterfaceType::Station;
    case NL80211_IFTYPE_AP:
      return InterfaceType::AccessPoint;
    case NL80211_IFTYPE_AP_VLAN:
      return InterfaceType::AccessPointVLAN;
    default:
      return InterfaceType::Other;
  }
}

/// In MHz.
int WidthOf(std::uint32_t width) {
  switch (width) {
    case NL80211_CHAN_WIDTH_20_NOHT:
    case NL80211_CHAN_WIDTH_20:
      return 20;
    case NL80211_CHAN_WIDTH_40:
      return 40;
    case NL80211_CHAN_WIDTH_80:
      return 80;
    case NL80211_CHAN_WIDTH_80P80:
    case NL80211_CHAN_WIDTH_160:
      return 160;
    case NL80211_CHAN_WIDTH_320:
      return 320;
    default:
      return 0;
  }
}

template <typename T>
int IntegerIn(const Attributes& attributes, int type) {
  return static_cast<int>(attributes.Number<T>(type).value_or(0));
}

/// In Mbit/s; the kernel counts in hundreds of kbit/s.
int RateOf(const Attributes& rate) {
  constexpr int kUnitsPerMegabit = 10;
  const int wide = IntegerIn<std::uint32_t>(rate, NL80211_RATE_INFO_BITRATE32);
  return (wide != 0 ? wide : IntegerIn<std::uint16_t>(rate, NL80211_RATE_INFO_BITRATE)) / kUnitsPerMegabit;
}

}  // namespace

std::vector<WirelessInterface> ReadInterfaces(const Messages& messages) {
  std::vector<WirelessInterface> interfaces;
  for (const std::string& message : messages) {
    const Attributes attributes(message, GENL_HDRLEN);
    if (!attributes.Has(NL80211_ATTR_IFNAME)) {
      continue;
    }
    WirelessInterface interface;
    interface.name = attributes.Text(NL80211_ATTR_IFNAME);
    interface.index = IntegerIn<std::uint32_t>(attributes, NL80211_ATTR_IFINDEX);
    interface.wiphy = IntegerIn<std::uint32_t>(attributes, NL80211_ATTR_WIPHY);
    interface.type =
        TypeOf(attributes.Number<std::uint32_t>(NL80211_ATTR_IFTYPE).value_or(NL80211_IFTYPE_UNSPECIFIED));
    interface.address = MACOf(attributes.Bytes(NL80211_ATTR_MAC));
    interface.frequency = IntegerIn<std::uint32_t>(attributes, NL80211_ATTR_WIPHY_FREQ);
    if (const auto width = attributes.Number<std::uint32_t>(NL80211_ATTR_CHANNEL_WIDTH)) {
      interface.channelWidth = WidthOf(*width);
    }
    interfaces.push_back(interface);
  }
  std::ranges::sort(interfaces, {}, &WirelessInterface::index);
  return interfaces;
}

std::vector<LinkedStation> ReadStations(const Messages& messages) {
  std::vector<LinkedStation> stations;
  for (const std::string& message : messages) {
    const Attributes attributes(message, GENL_HDRLEN);
    const Attributes info = attributes.Inside(NL80211_ATTR_STA_INFO);
    const auto flags = info.Number<nl80211_sta_flag_update>(NL80211_STA_INFO_STA_FLAGS);
    LinkedStation station;
    station.address = MACOf(attributes.Bytes(NL80211_ATTR_MAC));
    station.authorized = flags && (flags->set & (1U << NL80211_STA_FLAG_AUTHORIZED)) != 0;
    station.signal = IntegerIn<std::int8_t>(info, NL80211_STA_INFO_SIGNAL);
    // The kernel counts from where this machine stands.
    station.transmitRate = RateOf(info.Inside(NL80211_STA_INFO_TX_BITRATE));
    station.receiveRate = RateOf(info.Inside(NL80211_STA_INFO_RX_BITRATE));
    station.connectedTime = IntegerIn<std::uint32_t>(info, NL80211_STA_INFO_CONNECTED_TIME);
    stations.push_back(station);
  }
  return stations;
}

std::vector<ChannelSurvey> ReadSurvey(const Messages& messages) {
  std::vector<ChannelSurvey> surveys;
  for (const std::string& message : messages) {
    const Attributes info = Attributes(message, GENL_HDRLEN).Inside(NL80211_ATTR_SURVEY_INFO);
    const auto active = info.Number<std::uint64_t>(NL80211_SURVEY_INFO_TIME);
    const auto busy = info.Number<std::uint64_t>(NL80211_SURVEY_INFO_TIME_BUSY);
    if (active && busy) {
      surveys.push_back({IntegerIn<std::uint32_t>(info, NL80211_SURVEY_INFO_FREQUENCY),
                         info.Has(NL80211_SURVEY_INFO_IN_USE), *active, *busy});
    }
  }
  return surveys;
}

std::string ReadCountry(const Messages& messages) {
  constexpr std::size_t kLetters = 2;
  const std::string code =
      messages.empty() ? "" : Attributes(messages[0], GENL_HDRLEN).Text(NL80211_ATTR_REG_ALPHA2);
  return code.size() == kLetters ? code : "";
}

bool IsCountryChange(const std::string& message) {
  return HeaderOf<genlmsghdr>(message).cmd == NL80211_CMD_REG_CHANGE;
}

}  // namespace TALO::Wifid
