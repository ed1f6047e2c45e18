#pragma once

#include "daemon/system/netlink_message.h"
#include "daemon/system/netlink_request.h"
#include "values/mac_address.h"

#include <map>
#include <string>
#include <vector>

/// What rtnetlink is asked, and what it answers.
namespace TALO::Wifid {

/// A network interface of any kind.
struct Link {
  unsigned index = 0;
  std::string name;
  bool isBridge = false;
  unsigned master = 0;  ///< the link that it belongs to, 0 for none

  bool operator==(const Link&) const = default;
};

NetlinkRequest ListLinks();
std::vector<Link> ReadLinks(const Messages& messages);

NetlinkRequest ChangeUp(unsigned link, bool up);
/// 0 for none.
NetlinkRequest ChangeMaster(unsigned link, unsigned master);

NetlinkRequest ListNeighbours();
/// The address that each was last seen with: IPv4 before IPv6, and that before one of its link alone; of
/// those alike, the one that was confirmed last.
std::map<Wifi::Util::MACAddress, std::string> ReadNeighbours(const Messages& messages);

}  // namespace TALO::Wifid
