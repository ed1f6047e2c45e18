#include "daemon/radio/linux/channel_choice.h"

#include "daemon/model/text.h"
#include "daemon/radio/linux/hardware.h"

#include <algorithm>
#include <cmath>

namespace TALO::Wifid {

namespace {

const WiphyChannel* FindChannel(const WiphyBand& band, int number) {
  const auto channel = std::ranges::find(band.channels, number, &WiphyChannel::number);
  return channel != band.channels.end() ? &*channel : nullptr;
}

bool MaySend(const WiphyChannel& channel) {
  return !channel.disabled && !channel.listenOnly && !channel.radar;
}

/// Why a channel cannot be used, where it cannot.
Result<void> CheckChannel(const WiphyBand& band, int number, const std::string& radio) {
  const WiphyChannel* channel = FindChannel(band, number);
  const std::string what = radio + " cannot use channel " + std::to_string(number) + ": ";
  if (channel == nullptr || channel->disabled || channel->listenOnly) {
    return Refusal{ErrorCode::RadioFailed,
                   what + "the country in force does not let access points send there"};
  }
  if (channel->radar) {
    return Refusal{ErrorCode::NotSupported, what + "it takes looking out for radars (DFS)"};
  }
  return {};
}

bool IsOneOf(const std::vector<int>& channels, int number) {
  return std::ranges::find(channels, number) != channels.end();
}

}  // namespace

Result<ChannelSettings> ChooseChannel(const RadioPlan& plan, const RadioCapability& radio,
                                      const WiphyBand& band, const Present& present, int upstreamChannel) {
  const std::string name = "the radio " + NameOrNumber(plan.radio);
  int number = plan.channel;
  if (number == kAutomaticChannel) {
    std::vector<int> free;
    for (const WiphyChannel& channel : band.channels) {
      if (MaySend(channel) && IsOneOf(radio.channels, channel.number)) {
        free.push_back(channel.number);
      }
    }
    if (free.empty()) {
      return Refusal{
          ErrorCode::RadioFailed,
          name + " cannot use any channel: the country in force does not let access points send on any"};
    }
    const int wanted = IsOneOf(free, upstreamChannel) ? upstreamChannel : present.lastChannel;
    number = IsOneOf(free, wanted) ? wanted : free.front();
  }
  if (auto check = CheckChannel(band, number, name); !check.Succeeded()) {
    return check.Why();
  }
  return SettingsOf(band, IsOf5GHz(plan.radio), number, plan.channelWidth);
}

int PowerOf(int percent, const WiphyBand& band, int channel) {
  constexpr double kAll = 100;
  constexpr double kDecibels = 10;
  const WiphyChannel* found = FindChannel(band, channel);
  const int most = found != nullptr ? found->maximumPower : 0;
  return percent <= 0
             ? 0
             : std::max(0, most + static_cast<int>(std::lround(kDecibels * std::log10(percent / kAll))));
}

}  // namespace TALO::Wifid
