#include "daemon/radio/simulated/broadcasts.h"

#include <algorithm>

namespace TALO::Wifid {

std::optional<int> BroadcastMaximum(const Wifi::MACFilterGlobal& limit,
                                    const Wifi::Util::MACAddress& device) {
  const auto& devices = limit.devices;
  const bool concerned =
      devices.empty() || std::ranges::find(devices, device, &Wifi::MACFilterDevice::address) != devices.end();
  return limit.enablePreventBroadcast && concerned ? std::optional(limit.maximumBroadcast) : std::nullopt;
}

void BroadcastMeter::Connect(Timers::Duration now, std::optional<int> maximum) {
  since_ = now;
  settledAt_ = now;
  maximum_ = maximum;
}

void BroadcastMeter::Disconnect(Timers::Duration now) {
  settled_ = CountAt(now);
  since_.reset();
}

void BroadcastMeter::Limit(Timers::Duration now, std::optional<int> maximum) {
  settled_ = CountAt(now);
  settledAt_ = now;
  maximum_ = maximum;
}

BroadcastCount BroadcastMeter::CountAt(Timers::Duration now) const {
  if (!since_) {
    return settled_;
  }
  const BroadcastCount before = CountSince(settledAt_ - *since_);
  const BroadcastCount all = CountSince(now - *since_);
  return {settled_.passed + all.passed - before.passed, settled_.dropped + all.dropped - before.dropped};
}

int BroadcastMeter::PassingPerSecond() const {
  return since_ ? std::min(perSecond_, maximum_.value_or(perSecond_)) : 0;
}

/// As if the limit had been the same all the time.
BroadcastCount BroadcastMeter::CountSince(Timers::Duration connected) const {
  constexpr std::int64_t kSecond = 1000;
  const std::int64_t maximum = maximum_.value_or(perSecond_);
  const std::int64_t seconds = connected.count() / kSecond;
  const std::int64_t inThisSecond = perSecond_ * (connected.count() % kSecond) / kSecond;
  const std::int64_t sent = seconds * perSecond_ + inThisSecond;
  const std::int64_t passed =
      seconds * std::min<std::int64_t>(perSecond_, maximum) + std::min(inThisSecond, maximum);
  return {passed, sent - passed};
}

}  // namespace TALO::Wifid
