#pragma once

#include "daemon/radio/linux/actions.h"

#include <string>
#include <vector>

namespace TALO::Wifid {

/// A line for each action, as in "write wlan0_1.conf", "hostapd: REMOVE wlan0_1", "hostapd may fail: ...",
/// and one for what they come to, as in "= wlan0_1 is up".
std::vector<std::string> Describe(const std::vector<Task>& tasks);

}  // namespace TALO::Wifid
