#include "daemon/system/link_messages.h"
#include "daemon/system/wireless_readings.h"
#include "daemon/system/wireless_requests.h"
#include "support/netlink_bytes.h"

#include <gtest/gtest.h>
#include <linux/neighbour.h>
#include <linux/nl80211.h>
#include <linux/rtnetlink.h>
#include <netlink/msg.h>

#include <cstdint>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace TALO::Wifid {

void PrintTo(const WirelessInterface& interface, std::ostream* out) {
  *out << interface.index << " " << interface.name << " on " << interface.wiphy << " type "
       << static_cast<int>(interface.type) << " " << interface.address.ToString() << " "
       << interface.frequency << " MHz, " << interface.channelWidth << " MHz wide";
}

void PrintTo(const LinkedStation& station, std::ostream* out) {
  *out << station.address.ToString() << (station.authorized ? " authorized " : " ") << station.signal
       << " dBm, " << station.transmitRate << " to it, " << station.receiveRate << " from it, "
       << station.connectedTime << " s";
}

namespace {

using Wifi::Util::MACAddress;

constexpr int kFamily = 28;

/// A request as it is sent.
std::string BytesOf(const NetlinkRequest& request) {
  const nlmsghdr* header = nlmsg_hdr(request.Get());
  return {reinterpret_cast<const char*>(header), header->nlmsg_len};
}

/// A number of 16 or 32 bits as this machine has it in memory.
std::string U16(unsigned number) { return Raw(static_cast<std::uint16_t>(number)); }
std::string U32(std::uint32_t number) { return Raw(number); }

/// A request of nl80211, made by hand.
std::string Wireless(int command, int flags, const std::string& attributes) {
  return NetlinkMessage(kFamily, flags,
                        std::string(1, static_cast<char>(command)) + std::string(3, '\0') + attributes);
}

TEST(ReadInterfaces, ReadsThoseWithANameInTheirOrder) {
  const MACAddress own("02:00:00:00:00:00");
  EXPECT_EQ(ReadInterfaces(ReadFixture("interfaces")),
            (std::vector<WirelessInterface>{
                {"wlan0", 2, 0, InterfaceType::AccessPoint, own, 5180, 80},
                {"sta0", 6, 0, InterfaceType::Station, MACAddress("42:00:00:00:00:00"), 0, 0},
                {"wlan0.sta1", 7, 0, InterfaceType::AccessPointVLAN, own, 5180, 80}}));
}

TEST(ReadInterfaces, KnowsEveryWidthAndPassesOverOtherTypes) {
  const std::vector<std::pair<std::uint32_t, int>> rows = {{0, 20},  {1, 20},  {2, 40}, {3, 80},
                                                           {4, 160}, {5, 160}, {6, 0},  {13, 320}};
  for (const auto& [number, width] : rows) {
    const auto read = ReadInterfaces({WirelessMessage(
        NL80211_CMD_NEW_INTERFACE, Attribute(NL80211_ATTR_IFNAME, std::string("mesh0\0", 6)) +
                                       Attribute(NL80211_ATTR_IFTYPE, U32(NL80211_IFTYPE_MESH_POINT)) +
                                       Attribute(NL80211_ATTR_CHANNEL_WIDTH, U32(number)))});
    ASSERT_EQ(read.size(), 1U);
    EXPECT_EQ(read[0].channelWidth, width) << number;
    EXPECT_EQ(read[0].type, InterfaceType::Other);
    EXPECT_EQ(read[0].name, "mesh0");
  }
}

TEST(ReadStations, ReadsWhatARealKernelTold) {
  EXPECT_EQ(ReadStations(ReadFixture("stations")),
            (std::vector<LinkedStation>{{MACAddress("02:00:00:00:01:00"), true, -27, 6, 27, 16}}));
}

TEST(ReadStations, KnowsWhoIsNotAuthorizedAndOldRates) {
  const std::string flags = U32(0xFFFFFFFF) + U32(0xFFFFFFFF & ~(1U << NL80211_STA_FLAG_AUTHORIZED));
  const std::string info =
      Attribute(NL80211_STA_INFO_STA_FLAGS, flags) +
      Attribute(NL80211_STA_INFO_TX_BITRATE, Attribute(NL80211_RATE_INFO_BITRATE, U16(540))) +
      Attribute(NL80211_STA_INFO_RX_BITRATE, Attribute(NL80211_RATE_INFO_BITRATE, U16(65535)) +
                                                 Attribute(NL80211_RATE_INFO_BITRATE32, U32(96080)));
  const std::string message =
      WirelessMessage(NL80211_CMD_NEW_STATION, Attribute(NL80211_ATTR_MAC, "\x0a\x01\x02\x03\x04\xff") +
                                                   Attribute(NL80211_ATTR_STA_INFO, info));
  EXPECT_EQ(ReadStations({message}),
            (std::vector<LinkedStation>{{MACAddress("0a:01:02:03:04:ff"), false, 0, 54, 9608, 0}}));
}

TEST(ReadSurvey, ReadsWhatARealKernelTold) {
  const auto surveys = ReadSurvey(ReadFixture("survey"));
  EXPECT_EQ(surveys, (std::vector<ChannelSurvey>{
                         {5180, false, 112, 14}, {5200, false, 128, 16}, {2412, false, 0, 0}}));
}

TEST(ReadSurvey, KnowsTheChannelInUseAndPassesOverThoseThatAreNotCounted) {
  const auto channel = [](std::uint32_t frequency, const std::string& more) {
    return WirelessMessage(
        NL80211_CMD_NEW_SURVEY_RESULTS,
        Attribute(NL80211_ATTR_SURVEY_INFO, Attribute(NL80211_SURVEY_INFO_FREQUENCY, U32(frequency)) + more));
  };
  const std::string active = Attribute(NL80211_SURVEY_INFO_TIME, Raw(std::uint64_t{5000000000}));
  const std::string busy = Attribute(NL80211_SURVEY_INFO_TIME_BUSY, Raw(std::uint64_t{4000000000}));
  EXPECT_EQ(ReadSurvey({channel(2412, ""), channel(2417, active), channel(2422, busy),
                        channel(2427, Attribute(NL80211_SURVEY_INFO_IN_USE, "") + active + busy)}),
            (std::vector<ChannelSurvey>{{2427, true, 5000000000, 4000000000}}));
}

TEST(ReadCountry, ReadsWhatARealKernelTold) {
  EXPECT_EQ(ReadCountry(ReadFixture("country")), "DE");
  EXPECT_EQ(ReadCountry({}), "");
}

TEST(ReadCountry, TakesNothingThatIsNoCountry) {
  for (const std::string code : {"", "D", "DEU"}) {
    EXPECT_EQ(ReadCountry({WirelessMessage(NL80211_CMD_GET_REG, Attribute(NL80211_ATTR_REG_ALPHA2, code))}),
              "")
        << code;
  }
}

TEST(IsCountryChange, IsSoForThatEventAlone) {
  EXPECT_TRUE(IsCountryChange(WirelessMessage(NL80211_CMD_REG_CHANGE, "")));
  EXPECT_FALSE(IsCountryChange(WirelessMessage(NL80211_CMD_REG_BEACON_HINT, "")));
  EXPECT_FALSE(IsCountryChange(""));
}

TEST(ReadLinks, ReadsWhatARealKernelTold) {
  std::map<std::string, Link> links;
  for (const Link& link : ReadLinks(ReadFixture("links"))) {
    links[link.name] = link;
  }
  ASSERT_EQ(links.size(), 6U);
  const unsigned bridge = links["br0"].index;
  EXPECT_EQ(links["lo"], (Link{1, "lo", false, 0}));
  EXPECT_EQ(links["wlan0"], (Link{2, "wlan0", false, bridge}));
  EXPECT_EQ(links["sta0"], (Link{6, "sta0", false, 0}));
  EXPECT_EQ(links["wlan0.sta1"], (Link{7, "wlan0.sta1", false, bridge}));
  EXPECT_EQ(links["br0"], (Link{bridge, "br0", true, 0}));
  EXPECT_GT(bridge, 2U);
}

TEST(ReadNeighbours, ReadsWhatARealKernelTold) {
  EXPECT_EQ(ReadNeighbours(ReadFixture("neighbours")),
            (std::map<MACAddress, std::string>{{MACAddress("02:00:00:00:01:00"), "192.168.7.2"}}));
}

std::string Neighbour(int family, int state, const std::string& address, const std::string& device,
                      std::uint32_t confirmed) {
  ndmsg header{};
  header.ndm_family = static_cast<std::uint8_t>(family);
  header.ndm_state = static_cast<std::uint16_t>(state);
  const std::string times = U32(confirmed) + U32(0) + U32(0) + U32(0);
  return NetlinkMessage(RTM_NEWNEIGH, 0,
                        Raw(header) + Attribute(NDA_DST, address) + Attribute(NDA_LLADDR, device) +
                            Attribute(NDA_CACHEINFO, times));
}

TEST(ReadNeighbours, PrefersIPv4ThenWhatIsNotOfTheLinkAloneThenWhatWasConfirmedLast) {
  constexpr int kIPv4 = 2;
  constexpr int kIPv6 = 10;
  const std::string device("\x0a\0\0\0\0\x01", 6);
  const std::string own = "\xfd" + std::string(14, '\0') + "\x01";
  const std::string ofLink = "\xfe\x80" + std::string(13, '\0') + "\x02";
  const std::string v6OfLink = Neighbour(kIPv6, NUD_REACHABLE, ofLink, device, 1);
  const std::string v6 = Neighbour(kIPv6, NUD_STALE, own, device, 900);
  const std::string old = Neighbour(kIPv4, NUD_STALE, "\xc0\xa8\x01\x05", device, 500);
  const std::string recent = Neighbour(kIPv4, NUD_STALE, "\xc0\xa8\x01\x06", device, 400);
  const auto found = [&](const Messages& messages) {
    const auto neighbours = ReadNeighbours(messages);
    return neighbours.empty() ? "none" : neighbours.at(MACAddress("0a:00:00:00:00:01"));
  };
  EXPECT_EQ(found({v6OfLink}), "fe80::2");
  EXPECT_EQ(found({v6OfLink, v6}), "fd00::1");
  EXPECT_EQ(found({v6, v6OfLink}), "fd00::1");
  EXPECT_EQ(found({v6, old, v6OfLink}), "192.168.1.5");
  EXPECT_EQ(found({old, recent}), "192.168.1.6");
  EXPECT_EQ(found({recent, old}), "192.168.1.6");
  for (const int state : {NUD_INCOMPLETE, NUD_FAILED, NUD_NOARP, NUD_NONE}) {
    EXPECT_EQ(found({Neighbour(kIPv4, state, "\xc0\xa8\x01\x05", device, 1)}), "none") << state;
  }
  EXPECT_EQ(found({Neighbour(kIPv4, NUD_REACHABLE, "\xc0\xa8\x01", device, 1)}), "none");
  EXPECT_EQ(found({Neighbour(kIPv4, NUD_REACHABLE, "\xc0\xa8\x01\x05", "\x0a", 1)}), "none");
}

TEST(Readings, SurviveEveryCutOfWhatARealKernelTold) {
  for (const char* name : {"interfaces", "stations", "survey", "country", "links", "neighbours"}) {
    for (const std::string& message : ReadFixture(name)) {
      for (std::size_t length = 0; length < message.size(); ++length) {
        const Messages cut = {message.substr(0, length)};
        EXPECT_LE(ReadInterfaces(cut).size() + ReadSurvey(cut).size() + ReadNeighbours(cut).size(), 3U);
        EXPECT_EQ(ReadStations(cut).size() + ReadLinks(cut).size(), 2U);
        EXPECT_LE(ReadCountry(cut).size(), 2U);
      }
    }
  }
}

TEST(WirelessRequests, AskForLists) {
  constexpr int kListFlags = 0x300;
  EXPECT_EQ(BytesOf(ListWiphys(kFamily)), Wireless(1, kListFlags, Attribute(174, "")));
  EXPECT_EQ(BytesOf(ListInterfaces(kFamily)), Wireless(5, kListFlags, ""));
  EXPECT_EQ(BytesOf(ListStations(kFamily, 9)), Wireless(17, kListFlags, Attribute(3, U32(9))));
  EXPECT_EQ(BytesOf(ListSurvey(kFamily, 9)), Wireless(50, kListFlags, Attribute(3, U32(9))));
}

TEST(WirelessRequests, AskForAndChangeTheCountry) {
  EXPECT_EQ(BytesOf(AskForCountry(kFamily)), Wireless(31, 0, ""));
  EXPECT_EQ(BytesOf(ChangeCountry(kFamily, "DE")), Wireless(27, 0, Attribute(33, std::string("DE\0", 3))));
}

TEST(WirelessRequests, LimitThePowerInHundredthsOfADecibel) {
  EXPECT_EQ(BytesOf(ChangeTransmitPower(kFamily, 9, 20)),
            Wireless(2, 0, Attribute(1, U32(9)) + Attribute(97, U32(1)) + Attribute(98, U32(2000))));
  EXPECT_EQ(BytesOf(ChangeTransmitPower(kFamily, 9, -1)),
            Wireless(2, 0, Attribute(1, U32(9)) + Attribute(97, U32(1)) + Attribute(98, U32(0xFFFFFF9C))));
}

TEST(WirelessRequests, MakeAndEndInterfaces) {
  const std::string radio = Attribute(1, U32(2));
  const std::string name = Attribute(4, std::string("wlan2_1\0", 8));
  const std::string address = Attribute(6, "\x02\x11\x22\x33\x44\x55");
  const MACAddress mac("02:11:22:33:44:55");
  EXPECT_EQ(BytesOf(MakeInterface(kFamily, {2, "wlan2_1", InterfaceType::AccessPoint, mac})),
            Wireless(7, 0, radio + name + Attribute(5, U32(3)) + address));
  EXPECT_EQ(BytesOf(MakeInterface(kFamily, {2, "wlan2_1", InterfaceType::Station, mac, true})),
            Wireless(7, 0, radio + name + Attribute(5, U32(2)) + address + Attribute(83, "\x01")));
  EXPECT_EQ(BytesOf(MakeInterface(kFamily, {2, "wlan2_1", InterfaceType::Station, MACAddress()})),
            Wireless(7, 0, radio + name + Attribute(5, U32(2))));
  EXPECT_EQ(BytesOf(EndInterface(kFamily, 9)), Wireless(8, 0, Attribute(3, U32(9))));
}

/// A link message, made by hand.
std::string LinkMessage(int type, int flags, std::uint32_t index, std::uint32_t up, std::uint32_t change,
                        const std::string& attributes) {
  return NetlinkMessage(type, flags, U32(0) + U32(index) + U32(up) + U32(change) + attributes);
}

TEST(LinkRequests, AskForListsAndChange) {
  EXPECT_EQ(BytesOf(ListLinks()), LinkMessage(18, 0x300, 0, 0, 0, Attribute(29, U32(8))));
  EXPECT_EQ(BytesOf(ChangeUp(7, true)), LinkMessage(16, 0, 7, 1, 1, ""));
  EXPECT_EQ(BytesOf(ChangeUp(7, false)), LinkMessage(16, 0, 7, 0, 1, ""));
  EXPECT_EQ(BytesOf(ChangeMaster(7, 3)), LinkMessage(16, 0, 7, 0, 0, Attribute(10, U32(3))));
  EXPECT_EQ(BytesOf(ChangeMaster(7, 0)), LinkMessage(16, 0, 7, 0, 0, Attribute(10, U32(0))));
  EXPECT_EQ(BytesOf(ListNeighbours()), NetlinkMessage(30, 0x300, std::string(12, '\0')));
}

}  // namespace

}  // namespace TALO::Wifid
