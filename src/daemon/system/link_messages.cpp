#include "daemon/system/link_messages.h"

#include "daemon/system/mac_bytes.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <linux/if_link.h>
#include <linux/neighbour.h>
#include <linux/rtnetlink.h>
#include <net/if.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <tuple>

namespace TALO::Wifid {

namespace {

NetlinkRequest ChangeLink(const ifinfomsg& header) { return {RTM_NEWLINK, 0, header}; }

ifinfomsg HeaderOfLink(unsigned link) {
  ifinfomsg header{};
  header.ifi_index = static_cast<int>(link);
  return header;
}

/// How good an address is to be shown: less is better. The last is the time since it was confirmed.
using Rank = std::tuple<bool, bool, std::uint32_t>;

struct Neighbour {
  Rank rank;
  std::string address;
};

/// Empty for what is no address of that family.
std::string AddressText(int family, const std::string& bytes) {
  std::array<char, INET6_ADDRSTRLEN> text{};
  const std::size_t size = family == AF_INET ? sizeof(in_addr) : sizeof(in6_addr);
  if ((family != AF_INET && family != AF_INET6) || bytes.size() != size ||
      inet_ntop(family, bytes.data(), text.data(), text.size()) == nullptr) {
    return {};
  }
  return text.data();
}

bool IsOfLinkAlone(const std::string& bytes) {
  in6_addr address{};
  std::memcpy(&address, bytes.data(), sizeof address);
  return IN6_IS_ADDR_LINKLOCAL(&address);
}

/// Groups and what nobody answers for are no devices that were seen.
bool WasSeen(const ndmsg& header) {
  return (header.ndm_state & (NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT)) != 0;
}

}  // namespace

NetlinkRequest ListLinks() {
  NetlinkRequest request(RTM_GETLINK, NLM_F_DUMP, ifinfomsg{});
  request.Number<std::uint32_t>(IFLA_EXT_MASK, RTEXT_FILTER_SKIP_STATS);
  return request;
}

std::vector<Link> ReadLinks(const Messages& messages) {
  std::vector<Link> links;
  for (const std::string& message : messages) {
    const Attributes attributes(message, sizeof(ifinfomsg));
    links.push_back({static_cast<unsigned>(HeaderOf<ifinfomsg>(message).ifi_index),
                     attributes.Text(IFLA_IFNAME),
                     attributes.Inside(IFLA_LINKINFO).Text(IFLA_INFO_KIND) == "bridge",
                     attributes.Number<std::uint32_t>(IFLA_MASTER).value_or(0)});
  }
  return links;
}

NetlinkRequest ChangeUp(unsigned link, bool up) {
  ifinfomsg header = HeaderOfLink(link);
  header.ifi_change = IFF_UP;
  header.ifi_flags = up ? IFF_UP : 0;
  return ChangeLink(header);
}

NetlinkRequest ChangeMaster(unsigned link, unsigned master) {
  NetlinkRequest request = ChangeLink(HeaderOfLink(link));
  request.Number<std::uint32_t>(IFLA_MASTER, master);
  return request;
}

NetlinkRequest ListNeighbours() { return {RTM_GETNEIGH, NLM_F_DUMP, ndmsg{}}; }

std::map<Wifi::Util::MACAddress, std::string> ReadNeighbours(const Messages& messages) {
  std::map<Wifi::Util::MACAddress, Neighbour> best;
  for (const std::string& message : messages) {
    const auto header = HeaderOf<ndmsg>(message);
    const Attributes attributes(message, sizeof header);
    const std::string bytes = attributes.Bytes(NDA_DST);
    const std::string address = AddressText(header.ndm_family, bytes);
    const Wifi::Util::MACAddress device = MACOf(attributes.Bytes(NDA_LLADDR));
    if (!WasSeen(header) || address.empty() || device == Wifi::Util::MACAddress()) {
      continue;
    }
    const bool isIPv6 = header.ndm_family == AF_INET6;
    const nda_cacheinfo times = attributes.Number<nda_cacheinfo>(NDA_CACHEINFO).value_or(nda_cacheinfo{});
    const Neighbour found{{isIPv6, isIPv6 && IsOfLinkAlone(bytes), times.ndm_confirmed}, address};
    const auto [known, isNew] = best.try_emplace(device, found);
    if (!isNew && found.rank < known->second.rank) {
      known->second = found;
    }
  }
  std::map<Wifi::Util::MACAddress, std::string> addresses;
  for (const auto& [device, neighbour] : best) {
    addresses.emplace(device, neighbour.address);
  }
  return addresses;
}

}  // namespace TALO::Wifid
