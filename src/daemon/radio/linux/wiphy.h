#pragma once

#include "values/mac_address.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// What the kernel tells of the wifi hardware and of what it does now.
namespace TALO::Wifid {

/// A channel of 20 MHz, and what the country in force lets it be used for.
struct WiphyChannel {
  int number = 0;
  int frequency = 0;        ///< MHz
  bool disabled = false;    ///< the country or the hardware does not have it
  bool listenOnly = false;  ///< nobody may begin to send there
  bool radar = false;       ///< may be used after listening for radars alone
  int maximumPower = 0;     ///< dBm
  int maximumWidth = 20;    ///< MHz, of the channels that it may be a part of

  bool operator==(const WiphyChannel&) const = default;
};

struct WiphyBand {
  std::vector<WiphyChannel> channels;  ///< in the order of their frequencies
  int maximumWidth = 20;               ///< MHz
  bool highThroughput = false;         ///< 802.11n
  bool veryHighThroughput = false;     ///< 802.11ac
  bool veryHighThroughput160 = false;  ///< of its own up to 160 MHz, not by 802.11ax alone
  bool highEfficiency = false;         ///< 802.11ax

  bool operator==(const WiphyBand&) const = default;
};

/// One physical radio.
struct Wiphy {
  int index = 0;     ///< the kernel's number
  std::string name;  ///< as in "phy0"
  std::optional<WiphyBand> band2_4GHz;
  std::optional<WiphyBand> band5GHz;
  int maximumAccessPoints = 0;  ///< at once, on one channel
  int maximumStations = 0;      ///< at once, beside access points
  int maximumChannels = 1;      ///< at once, where a station is beside access points
  bool fourAddress = false;     ///< stations in 4-address mode

  bool operator==(const Wiphy&) const = default;
};

enum class InterfaceType { Station, AccessPoint, AccessPointVLAN, Other };

/// A network interface of a radio.
struct WirelessInterface {
  std::string name;
  int index = 0;  ///< the kernel's number
  int wiphy = 0;  ///< Wiphy::index
  InterfaceType type = InterfaceType::Other;
  Wifi::Util::MACAddress address;
  int frequency = 0;     ///< MHz of its channel, 0 where it has none
  int channelWidth = 0;  ///< MHz, likewise

  bool operator==(const WirelessInterface&) const = default;
};

/// The other end of a link, as the kernel counts it.
struct LinkedStation {
  Wifi::Util::MACAddress address;
  bool authorized = false;  ///< only then does traffic pass
  int signal = 0;           ///< dBm
  int transmitRate = 0;     ///< Mbit/s towards it
  int receiveRate = 0;      ///< Mbit/s from it
  int connectedTime = 0;    ///< seconds

  bool operator==(const LinkedStation&) const = default;
};

/// How long a channel was listened to, and how long of that it was busy; milliseconds since some point.
struct ChannelSurvey {
  int frequency = 0;  ///< MHz
  bool inUse = false;
  std::uint64_t active = 0;
  std::uint64_t busy = 0;

  bool operator==(const ChannelSurvey&) const = default;
};

}  // namespace TALO::Wifid
