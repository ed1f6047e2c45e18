#pragma once

#include "client/mac_filter_records.h"
#include "daemon/radio/timers.h"

#include <cstdint>
#include <optional>

namespace TALO::Wifid {

/// Frames for everybody that a device has sent.
struct BroadcastCount {
  std::int64_t passed = 0;
  std::int64_t dropped = 0;

  bool operator==(const BroadcastCount&) const = default;
};

/// How many frames a second of a device the limit lets pass; nothing where it concerns another or none.
std::optional<int> BroadcastMaximum(const Wifi::MACFilterGlobal& limit, const Wifi::Util::MACAddress& device);

/// What a device that sends so many frames a second has sent, evenly while it was connected. The limit counts
/// anew in each second of a connection; what comes first passes. It all follows from the time that has passed
/// when somebody asks, so no timer runs for it.
class BroadcastMeter {
 public:
  explicit BroadcastMeter(int perSecond) : perSecond_(perSecond) {}

  void Connect(Timers::Duration now, std::optional<int> maximum);
  void Disconnect(Timers::Duration now);
  /// From now on so many pass. Only while connected.
  void Limit(Timers::Duration now, std::optional<int> maximum);

  BroadcastCount CountAt(Timers::Duration now) const;

  /// Frames a second that pass now.
  int PassingPerSecond() const;

 private:
  BroadcastCount CountSince(Timers::Duration connected) const;

  int perSecond_;
  std::optional<Timers::Duration> since_;  ///< while it is connected
  Timers::Duration settledAt_{};
  std::optional<int> maximum_;
  BroadcastCount settled_;  ///< all until then
};

}  // namespace TALO::Wifid
