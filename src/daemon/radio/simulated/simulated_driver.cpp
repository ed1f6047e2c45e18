#include "daemon/radio/simulated/simulated_driver.h"

#include "client/bytes.h"

#include <algorithm>
#include <string>

namespace TALO::Wifid {

namespace {

constexpr int kMaximumBSSs = 16;

std::vector<int> ChannelsOf(RadioFrequency radio) {
  switch (radio) {
    case RadioFrequency::Band2_4GHz:
      return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13};
    case RadioFrequency::Band5GHz:
      return {36, 40, 44, 48, 52, 56, 60, 64, 100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
    case RadioFrequency::Band5GHz_1:
      return {36, 40, 44, 48, 52, 56, 60, 64};
    case RadioFrequency::Band5GHz_2:
      return {100, 104, 108, 112, 116, 120, 124, 128, 132, 136, 140};
    case RadioFrequency::Error:
    case RadioFrequency::SmartConnect:
      break;
  }
  return {};
}

/// Locally administered, one block of 256 addresses a radio.
Wifi::Util::MACAddress AddressOfRadio(std::size_t index) {
  return Wifi::Util::MACAddress("02:00:00:00:" + Wifi::ToHex(std::string(1, static_cast<char>(index))) +
                                ":00");
}

Capabilities MakeCapabilities(SupportedModel model) {
  Capabilities capabilities{model, {}};
  for (const RadioFrequency radio : RadiosOf(model)) {
    const std::size_t index = capabilities.radios.size();
    const int maximumWidth = radio == RadioFrequency::Band2_4GHz ? 40 : 80;
    capabilities.radios.push_back({radio, "wlan" + std::to_string(index), AddressOfRadio(index), kMaximumBSSs,
                                   ChannelsOf(radio), maximumWidth});
  }
  return capabilities;
}

/// Without neighbours one channel is as good as the other: the lowest.
int AutomaticChannel(const Capabilities& capabilities, RadioFrequency radio) {
  const auto capability = std::ranges::find(capabilities.radios, radio, &RadioCapability::radio);
  return capability != capabilities.radios.end() ? capability->channels.front() : 0;
}

/// Beacons of each BSS take about one percent of the air.
int UtilisationOf(const RadioPlan& plan) { return std::min(100, static_cast<int>(plan.bsss.size())); }

}  // namespace

SimulatedDriver::SimulatedDriver(SupportedModel model) : capabilities_(MakeCapabilities(model)) {
  for (const RadioCapability& radio : capabilities_.radios) {
    RadioPlan off;
    off.radio = radio.radio;
    inTheAir_.push_back(std::move(off));
  }
}

// Without stations nobody can tell a BSS that stayed from one that came back: both modes end the same.
void SimulatedDriver::Apply(const std::vector<RadioPlan>& plan, ApplyMode, Done done) {
  inTheAir_ = plan;
  for (RadioPlan& radio : inTheAir_) {
    if (radio.channel == 0) {
      radio.channel = AutomaticChannel(capabilities_, radio.radio);
    }
  }
  done({});
}

std::vector<LiveRadio> SimulatedDriver::GetLive() const {
  std::vector<LiveRadio> live;
  for (const RadioPlan& plan : inTheAir_) {
    LiveRadio radio;
    radio.radio = plan.radio;
    radio.up = plan.enable;
    if (plan.enable) {
      radio.channel = plan.channel;
      radio.channelWidth = plan.channelWidth;
      radio.utilisation = UtilisationOf(plan);
      for (const BSSPlan& bss : plan.bsss) {
        radio.bsss.push_back({bss.networkId, bss.interface, bss.bssid, true, 0});
      }
    }
    live.push_back(std::move(radio));
  }
  return live;
}

}  // namespace TALO::Wifid
