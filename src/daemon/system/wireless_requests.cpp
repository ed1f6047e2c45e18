#include "daemon/system/wireless_requests.h"

#include "daemon/system/mac_bytes.h"

#include <linux/genetlink.h>
#include <linux/netlink.h>
#include <linux/nl80211.h>

#include <cstdint>

namespace TALO::Wifid {

namespace {

NetlinkRequest Command(int family, nl80211_commands command, int flags = 0) {
  return {family, flags, genlmsghdr{.cmd = static_cast<std::uint8_t>(command), .version = 0, .reserved = 0}};
}

NetlinkRequest CommandOn(unsigned interface, int family, nl80211_commands command, int flags = 0) {
  NetlinkRequest request = Command(family, command, flags);
  request.Number<std::uint32_t>(NL80211_ATTR_IFINDEX, interface);
  return request;
}

nl80211_iftype NumberOf(InterfaceType type) {
  switch (type) {
    case InterfaceType::Station:
      return NL80211_IFTYPE_STATION;
    case InterfaceType::AccessPoint:
      return NL80211_IFTYPE_AP;
    case InterfaceType::AccessPointVLAN:
      return NL80211_IFTYPE_AP_VLAN;
    case InterfaceType::Other:
      break;
  }
  return NL80211_IFTYPE_UNSPECIFIED;
}

}  // namespace

NetlinkRequest ListWiphys(int family) {
  NetlinkRequest request = Command(family, NL80211_CMD_GET_WIPHY, NLM_F_DUMP);
  // Without it the kernel leaves out what does not fit one message.
  request.Flag(NL80211_ATTR_SPLIT_WIPHY_DUMP);
  return request;
}

NetlinkRequest ListInterfaces(int family) { return Command(family, NL80211_CMD_GET_INTERFACE, NLM_F_DUMP); }

NetlinkRequest ListStations(int family, unsigned interface) {
  return CommandOn(interface, family, NL80211_CMD_GET_STATION, NLM_F_DUMP);
}

NetlinkRequest ListSurvey(int family, unsigned interface) {
  return CommandOn(interface, family, NL80211_CMD_GET_SURVEY, NLM_F_DUMP);
}

NetlinkRequest AskForCountry(int family) { return Command(family, NL80211_CMD_GET_REG); }

NetlinkRequest ChangeCountry(int family, const std::string& code) {
  NetlinkRequest request = Command(family, NL80211_CMD_REQ_SET_REG);
  request.Text(NL80211_ATTR_REG_ALPHA2, code);
  return request;
}

NetlinkRequest ChangeTransmitPower(int family, int wiphy, int power) {
  constexpr int kMillibelsPerDecibel = 100;
  NetlinkRequest request = Command(family, NL80211_CMD_SET_WIPHY);
  request.Number(NL80211_ATTR_WIPHY, static_cast<std::uint32_t>(wiphy))
      .Number<std::uint32_t>(NL80211_ATTR_WIPHY_TX_POWER_SETTING, NL80211_TX_POWER_LIMITED)
      .Number(NL80211_ATTR_WIPHY_TX_POWER_LEVEL, static_cast<std::int32_t>(power * kMillibelsPerDecibel));
  return request;
}

NetlinkRequest MakeInterface(int family, const Kernel::NewInterface& interface) {
  NetlinkRequest request = Command(family, NL80211_CMD_NEW_INTERFACE);
  request.Number(NL80211_ATTR_WIPHY, static_cast<std::uint32_t>(interface.wiphy))
      .Text(NL80211_ATTR_IFNAME, interface.name)
      .Number<std::uint32_t>(NL80211_ATTR_IFTYPE, NumberOf(interface.type));
  if (interface.address != Wifi::Util::MACAddress()) {
    request.Bytes(NL80211_ATTR_MAC, BytesOf(interface.address));
  }
  if (interface.fourAddress) {
    request.Number<std::uint8_t>(NL80211_ATTR_4ADDR, 1);
  }
  return request;
}

NetlinkRequest EndInterface(int family, unsigned interface) {
  return CommandOn(interface, family, NL80211_CMD_DEL_INTERFACE);
}

}  // namespace TALO::Wifid
