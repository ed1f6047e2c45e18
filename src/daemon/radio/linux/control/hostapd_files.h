#pragma once

#include "daemon/model/plan.h"
#include "daemon/radio/linux/control/channel_settings.h"

#include <string>

/// The configuration files of hostapd.
namespace TALO::Wifid {

/// What all files of a radio have in common.
struct HostapdSetup {
  ChannelSettings channel;
  std::string controlDirectory;  ///< where hostapd makes the control socket of each interface

  bool operator==(const HostapdSetup&) const = default;
};

/// The radio's own interface holds the radio and carries nothing: so that each BSS that does can come and go
/// without the others. It does not begin to send by itself, but hostapd lets it when a BSS gets a station
/// without 802.11n; so it is hidden and admits nobody.
std::string HolderFile(const HostapdSetup& setup, const std::string& interface);

/// Where a BSS's access lists are, see AcceptFile() and DenyFile().
struct AccessPaths {
  std::string accept;
  std::string deny;
};

/// Stations that a backhaul BSS takes at once. hostapd makes an interface for each, as in "wlan0_0.sta99",
/// with the lowest number that is free.
inline constexpr int kMostNodes = 99;

/// One BSS. `bridge` is where its stations' traffic goes, empty for none; a backhaul BSS is in 4-address
/// mode. Modes that need an authentication server and modes that hostapd does not know are not for here, see
/// CanCarry().
std::string BSSFile(const HostapdSetup& setup, const BSSPlan& bss, const std::string& bridge,
                    const AccessPaths& access);

std::string AcceptFile(const AccessPlan& access);
std::string DenyFile(const AccessPlan& access);

/// Whether hostapd can carry a BSS of this mode: not the enterprise modes, which need an authentication
/// server, and not WEP.
bool CanCarry(SecurityMode mode);

/// Why a BSS is not set up for WPS, as in "while its SSID is hidden"; empty where it is.
std::string WhyNoWPS(const BSSPlan& bss);
inline bool HasWPS(const BSSPlan& bss) { return WhyNoWPS(bss).empty(); }

}  // namespace TALO::Wifid
