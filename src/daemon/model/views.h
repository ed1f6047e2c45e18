#pragma once

#include "client/records.h"
#include "daemon/model/capabilities.h"
#include "daemon/model/live.h"
#include "daemon/model/state.h"

#include <map>
#include <set>
#include <string>
#include <vector>

/// What callers are shown: the state and what is in the air, put together. All are pure and never fail.
namespace TALO::Wifid {

/// Everything that an answer is made from.
struct Picture {
  const State& state;
  const Capabilities& capabilities;
  const std::vector<LiveRadio>& live;
};

std::vector<Wifi::NetworkSetting> NetworkSettings(const Picture& picture);
Wifi::NetworkSetting NetworkSettingOf(const Picture& picture, const NetworkState& network);
std::map<int, std::set<std::string>> NetworkInterfaces(const Picture& picture);
bool IsAllNetworkAPDisabled(const Picture& picture);
std::vector<Wifi::DeviceInfo> ConnectedDevices(const Picture& picture);

std::vector<Wifi::RadioSetting> RadioSettings(const Picture& picture);
std::vector<Wifi::RadioStatus> RadioStatuses(const Picture& picture);
std::vector<Wifi::RadioStatusSimple> RadioStatusesSimple(const Picture& picture);
std::vector<Wifi::RadioIfStatus> RadioIfStatuses(const Picture& picture);
std::map<std::string, RadioFrequency> InterfaceRadioMap(const Picture& picture);
Wifi::RadioConversionInfo ConversionInfo(const Picture& picture);

std::vector<Wifi::StationStatus> StationStatuses(const Picture& picture);
std::map<RadioFrequency, std::string> StationInterfaces(const Picture& picture);

Wifi::BackhaulSetting BackhaulSettingOf(const Picture& picture);
std::map<RadioFrequency, std::string> BackhaulInterfaces(const Picture& picture);
Wifi::BackhaulSTASetting BackhaulSTASettingOf(const Picture& picture);
std::map<RadioFrequency, std::string> BackhaulSTAInterfaces(const Picture& picture);
std::vector<Wifi::BackhaulSTAStatus> BackhaulSTAStatuses(const Picture& picture);

}  // namespace TALO::Wifid
