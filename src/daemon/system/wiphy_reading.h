#pragma once

#include "daemon/radio/linux/wiphy.h"
#include "daemon/system/netlink_message.h"

#include <vector>

namespace TALO::Wifid {

/// What the kernel tells of the radios. It tells of each in many messages, and of each of these in a part of
/// its attributes.
std::vector<Wiphy> ReadWiphys(const Messages& messages);

}  // namespace TALO::Wifid
