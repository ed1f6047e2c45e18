#pragma once

#include "daemon/radio/linux/wiphy.h"
#include "daemon/system/netlink_message.h"

#include <cstdint>
#include <map>
#include <optional>

namespace TALO::Wifid {

/// A band of a radio while the kernel tells of it, part by part.
class BandReading {
 public:
  void Take(const Attributes& band);

  /// What was told of the band with this number of the kernel. Frequencies that no channel of that band has
  /// are passed over.
  WiphyBand Finish(int band) const;

 private:
  void TakeChannel(const Attributes& channel);
  /// What the access points of an 802.11ax radio can.
  void TakeHighEfficiency(const Attributes& capabilities);
  int MaximumWidth(bool is5GHz) const;

  std::map<int, WiphyChannel>
      channels_;  ///< by frequency, without numbers; their width is what the country allows
  std::optional<std::uint16_t> highThroughput_;
  std::optional<std::uint32_t> veryHighThroughput_;
  std::optional<std::uint8_t> highEfficiency_;  ///< its widths
};

}  // namespace TALO::Wifid
