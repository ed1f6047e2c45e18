// What a radio hears and shows.

#include "daemon/model/text.h"
#include "daemon/radio/linux/linux_radio.h"
#include "daemon/radio/linux/questions.h"
#include "daemon/radio/linux/station_tasks.h"

#include <algorithm>
#include <set>
#include <utility>

namespace TALO::Wifid {

LiveRadio LinuxRadio::GetLive() const {
  LiveRadio live;
  live.radio = GetCapability().radio;
  live.station = station_.GetLive();
  live.backhaulStation = backhaulStation_.GetLive();
  if (!present_.channel || !present_.sound) {
    return live;
  }
  live.up = true;
  ShowChannel(live);
  live.utilisation = GetUtilisation();
  for (const auto& [interface, each] : present_.bsss) {
    live.bsss.push_back(
        {each.bss.networkId, interface, each.bss.bssid, each.sound, stations_.GetLive(interface)});
  }
  std::ranges::sort(live.bsss, {}, &LiveBSS::networkId);
  return live;
}

// hostapd may exchange the halves of a wide channel, or narrow it, where neighbours are in the way. The
// kernel knows it from the BSSs that send.
void LinuxRadio::ShowChannel(LiveRadio& live) const {
  live.channel = present_.channel->channel;
  live.channelWidth = present_.channel->width;
  for (const WirelessInterface& each : HearFromKernel(shared_.doors.kernel, &Kernel::GetInterfaces)) {
    if (present_.bsss.contains(each.name) && ChannelAt(each.frequency) != 0) {
      live.channel = ChannelAt(each.frequency);
      live.channelWidth = each.channelWidth;
      return;
    }
  }
}

int LinuxRadio::GetUtilisation() const {
  constexpr std::uint64_t kPercent = 100;
  // Of the radio's own interface: one that does not send belongs to the same channel.
  for (const ChannelSurvey& survey :
       HearFromKernel(shared_.doors.kernel, &Kernel::GetSurvey, GetCapability().interface)) {
    if (survey.inUse && survey.active != 0) {
      return static_cast<int>(std::min(survey.busy * kPercent / survey.active, kPercent));
    }
  }
  return 0;
}

void LinuxRadio::LookForStations() {
  for (const auto& [interface, each] : present_.bsss) {
    if (each.sound) {
      LookForStationsOf(each.bss);
    }
  }
}

void LinuxRadio::LookForStationsOf(const BSSPlan& bss) {
  stations_.Compare(bss, [&](const Wifi::Util::MACAddress& station) { return ReasonToLeave(bss, station); });
}

void LinuxRadio::LookForUpstreams() {
  LookFor(station_);
  LookFor(backhaulStation_);
}

void LinuxRadio::LookFor(const UpstreamWatch& upstream) {
  const std::string& interface = upstream.GetInterface();
  if (interface.empty()) {
    return;
  }
  const auto linked = AskKernel(shared_.doors.kernel, &Kernel::GetStations, interface);
  if (!linked.Succeeded()) {
    return;
  }
  const auto joined = std::ranges::find(linked.Value(), true, &LinkedStation::authorized);
  if (joined != linked.Value().end() && !upstream.IsConnectedTo(joined->address)) {
    TakeFromSupplicant({interface, "CTRL-EVENT-CONNECTED", {joined->address.ToString()}, {}});
  } else if (linked.Value().empty() && upstream.IsConnected()) {
    TakeFromSupplicant({interface, "CTRL-EVENT-DISCONNECTED", {}, {}});
  }
}

void LinuxRadio::Scan(RadioDriver::ScanDone done) {
  Enter([this, done = std::move(done)](const Leave& leave) {
    ScanNow([leave, done](const Result<std::vector<Wifi::ScanResult>>& results) {
      leave();
      done(results);
    });
  });
}

void LinuxRadio::ScanNow(const RadioDriver::ScanDone& done) {
  if (!present_.channel) {
    done(Refusal{ErrorCode::RadioFailed, "the radio " + NameOrNumber(GetCapability().radio) + " is not up"});
    return;
  }
  if (auto remembered = listener_.Remember()) {
    done(std::move(*remembered));
    return;
  }
  for (const UpstreamWatch* watch : {&station_, &backhaulStation_}) {
    if (!watch->GetInterface().empty()) {
      Listen(watch->GetInterface(), done);
      return;
    }
  }
  if (setting_.hardware.maximumStations == 0) {
    done(Refusal{ErrorCode::NotSupported,
                 "the radio " + NameOrNumber(GetCapability().radio) +
                     " cannot listen: its hardware is an access point or a station, not both"});
    return;
  }
  const std::string interface = GetCapability().interface + "lsn";
  runner_.Run({MakeListener(setting_, interface)}, [this, interface, done](const Result<void>& made) {
    if (!made.Succeeded()) {
      runner_.Run({DropListener(interface)}, [done, made](const Result<void>&) { done(made.Why()); });
      return;
    }
    Listen(interface, [this, interface, done](const Result<std::vector<Wifi::ScanResult>>& results) {
      runner_.Run({DropListener(interface)}, [done, results](const Result<void>&) { done(results); });
    });
  });
}

void LinuxRadio::Listen(const std::string& interface, const RadioDriver::ScanDone& done) {
  const auto band = AskForBand();
  if (!band.Succeeded()) {
    done(band.Why());
    return;
  }
  std::set<Wifi::Util::MACAddress> own;
  for (const auto& [name, each] : present_.bsss) {
    own.insert(each.bss.bssid);
  }
  listener_.Listen(interface, FrequenciesToListenTo(band.Value()), std::move(own), done);
}

std::vector<int> LinuxRadio::FrequenciesToListenTo(const WiphyBand& band) const {
  std::vector<int> frequencies;
  for (const WiphyChannel& channel : band.channels) {
    if (!channel.disabled && std::ranges::binary_search(GetCapability().channels, channel.number)) {
      frequencies.push_back(channel.frequency);
    }
  }
  return frequencies;
}

}  // namespace TALO::Wifid
