#pragma once

#include "daemon/radio/linux/wiphy.h"

#include <string>

namespace TALO::Wifid {

/// How a radio uses its channel: what all its BSSs have in common.
struct ChannelSettings {
  bool band5GHz = false;
  int channel = 0;    ///< of the primary 20 MHz
  int width = 20;     ///< MHz
  int secondary = 0;  ///< where the secondary 20 MHz lie: 1 above, -1 below, 0 for a width of 20 MHz
  int centre = 0;     ///< channel number of the middle of 80 or 160 MHz, 0 for less
  bool highThroughput = false;         ///< 802.11n
  bool veryHighThroughput = false;     ///< 802.11ac
  bool veryHighThroughput160 = false;  ///< the width is 160 MHz by 802.11ac too
  bool highEfficiency = false;         ///< 802.11ax

  bool operator==(const ChannelSettings&) const = default;
};

/// The widest settings of at most `width` MHz (0 for no limit) for which the band has all channels, without
/// one that is disabled, for listening only or needs looking out for radars. Where the primary channel itself
/// is not usable so, 20 MHz wide, for the radio to refuse.
ChannelSettings SettingsOf(const WiphyBand& band, bool band5GHz, int channel, int width);

/// The channel at a frequency in MHz, 0 for one that is in neither band.
int ChannelAt(int frequency);

}  // namespace TALO::Wifid
