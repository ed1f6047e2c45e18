#include "daemon/model/views.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::StationStatus;
using Wifi::Util::MACAddress;
using Phase = LiveUpstream::Phase;
using Interfaces = std::map<RadioFrequency, std::string>;

const MACAddress kParent("aa:bb:cc:dd:ee:01");

/// Every radio as it is without anything upstream.
std::vector<LiveRadio> LiveOf(const Capabilities& capabilities) {
  std::vector<LiveRadio> live;
  for (const RadioCapability& radio : capabilities.radios) {
    live.emplace_back().radio = radio.radio;
  }
  return live;
}

LiveUpstream Connected() { return {Phase::Connected, "", "Upstream", kParent, 44, -55, 866, 120}; }

StationStatus NotConnected(RadioFrequency radio, const std::string& interface, const std::string& state,
                           const std::string& reason = "") {
  return {radio, interface, false, state, reason, "", MACAddress(), 0, 0, 0, 0};
}

TEST(StationStatuses, TellHowFarEachRadioGot) {
  const Capabilities capabilities = TriBandRouter();
  const State state = StateWithNetworks(capabilities, 0);
  std::vector<LiveRadio> live = LiveOf(capabilities);
  live[1].station = Connected();
  live[2].station = {Phase::Failed, "wrong password", "Upstream", MACAddress(), 0, 0, 0, 0};
  EXPECT_EQ(StationStatuses({state, capabilities, live}),
            (std::vector<StationStatus>{
                NotConnected(Band2_4GHz, "wlan0sta", "disabled"),
                {Band5GHz_1, "wlan1sta", true, "connected", "", "Upstream", kParent, 44, -55, 866, 120},
                {Band5GHz_2, "wlan2sta", false, "failed", "wrong password", "Upstream", MACAddress(), 0, 0, 0,
                 0}}));
  live[0].station.phase = Phase::Scanning;
  live[1].station = {};
  live[1].station.phase = Phase::Connecting;
  live[2].station = {};
  EXPECT_EQ(StationStatuses({state, capabilities, live}),
            (std::vector<StationStatus>{NotConnected(Band2_4GHz, "wlan0sta", "scanning"),
                                        NotConnected(Band5GHz_1, "wlan1sta", "connecting"),
                                        NotConnected(Band5GHz_2, "wlan2sta", "disabled")}));
}

TEST(StationStatuses, HoldEveryRadioBeforeAnyWasSeen) {
  const Capabilities capabilities = DualBandRouter();
  const State state = StateWithNetworks(capabilities, 0);
  EXPECT_EQ(StationStatuses({state, capabilities, {}}),
            (std::vector<StationStatus>{NotConnected(Band2_4GHz, "wlan0sta", "disabled"),
                                        NotConnected(Band5GHz, "wlan1sta", "disabled")}));
}

TEST(StationInterfaces, AreOneARadio) {
  const Capabilities capabilities = TriBandRouter();
  const State state = StateWithNetworks(capabilities, 0);
  EXPECT_EQ(StationInterfaces({state, capabilities, {}}),
            (Interfaces{{Band2_4GHz, "wlan0sta"}, {Band5GHz_1, "wlan1sta"}, {Band5GHz_2, "wlan2sta"}}));
}

State WithBackhaul(const Capabilities& capabilities) {
  State state = StateWithNetworks(capabilities, 1);
  state.backhaul = {true, "mesh", "mesh password"};
  state.backhaulSTA = {true, "parents", "parents password"};
  return state;
}

TEST(BackhaulViews, ShowTheRadioThatCarriesIt) {
  const Capabilities capabilities = TriBandRouter();
  State state = WithBackhaul(capabilities);
  const std::vector<LiveRadio> live = LiveOf(capabilities);
  const Picture picture{state, capabilities, live};
  EXPECT_EQ(BackhaulSettingOf(picture), (Wifi::BackhaulSetting{true, "mesh", "mesh password", {Band5GHz_2}}));
  EXPECT_EQ(BackhaulInterfaces(picture), (Interfaces{{Band5GHz_2, "wlan2_0"}}));
  EXPECT_EQ(BackhaulSTASettingOf(picture),
            (Wifi::BackhaulSTASetting{true, "parents", "parents password", {Band5GHz_2}}));
  EXPECT_EQ(BackhaulSTAInterfaces(picture), (Interfaces{{Band5GHz_2, "wlan2bhs"}}));
  state.backhaulSwapped = true;
  EXPECT_EQ(BackhaulSettingOf(picture), (Wifi::BackhaulSetting{true, "mesh", "mesh password", {Band5GHz_1}}));
  EXPECT_EQ(BackhaulInterfaces(picture), (Interfaces{{Band5GHz_1, "wlan1_0"}}));
  EXPECT_EQ(BackhaulSTASettingOf(picture),
            (Wifi::BackhaulSTASetting{true, "parents", "parents password", {Band5GHz_1}}));
  EXPECT_EQ(BackhaulSTAInterfaces(picture), (Interfaces{{Band5GHz_1, "wlan1bhs"}}));
}

TEST(BackhaulViews, ShowTheOneRadioOfSimplerRouters) {
  const Capabilities dual = DualBandRouter();
  EXPECT_EQ(BackhaulInterfaces({WithBackhaul(dual), dual, {}}), (Interfaces{{Band5GHz, "wlan1_0"}}));
  EXPECT_EQ(BackhaulSTAInterfaces({WithBackhaul(dual), dual, {}}), (Interfaces{{Band5GHz, "wlan1bhs"}}));
  const Capabilities low = LowBandRouter();
  EXPECT_EQ(BackhaulInterfaces({WithBackhaul(low), low, {}}), (Interfaces{{Band2_4GHz, "wlan0_0"}}));
  EXPECT_EQ(BackhaulSTAInterfaces({WithBackhaul(low), low, {}}), (Interfaces{{Band2_4GHz, "wlan0bhs"}}));
}

TEST(BackhaulViews, ShowNoRadioWhileItIsNotEnabled) {
  const Capabilities capabilities = TriBandRouter();
  State state = WithBackhaul(capabilities);
  state.backhaul.enable = false;
  state.backhaulSTA.enable = false;
  const std::vector<LiveRadio> live = LiveOf(capabilities);
  const Picture picture{state, capabilities, live};
  EXPECT_EQ(BackhaulSettingOf(picture), (Wifi::BackhaulSetting{false, "mesh", "mesh password", {}}));
  EXPECT_EQ(BackhaulInterfaces(picture), Interfaces{});
  EXPECT_EQ(BackhaulSTASettingOf(picture),
            (Wifi::BackhaulSTASetting{false, "parents", "parents password", {}}));
  EXPECT_EQ(BackhaulSTAInterfaces(picture), Interfaces{});
  EXPECT_EQ(BackhaulSTAStatuses(picture), std::vector<Wifi::BackhaulSTAStatus>{});
}

TEST(BackhaulViews, ShowNothingOnARouterWithoutRadios) {
  const Capabilities none;
  const State state = WithBackhaul(none);
  EXPECT_EQ(BackhaulInterfaces({state, none, {}}), Interfaces{});
  EXPECT_EQ(BackhaulSTAStatuses({state, none, {}}), std::vector<Wifi::BackhaulSTAStatus>{});
}

TEST(BackhaulSTAStatuses, ShowTheParentOnceConnected) {
  const Capabilities capabilities = TriBandRouter();
  State state = WithBackhaul(capabilities);
  state.scanType = ScanType::BestAP;
  std::vector<LiveRadio> live = LiveOf(capabilities);
  live[2].backhaulStation = {Phase::Connected, "", "parents", kParent, 116, -61, 433, 77};
  EXPECT_EQ(BackhaulSTAStatuses({state, capabilities, live}),
            (std::vector<Wifi::BackhaulSTAStatus>{
                {Band5GHz_2, "wlan2bhs", true, ScanType::BestAP, kParent, 116, -61, 77}}));
}

TEST(BackhaulSTAStatuses, ShowNoParentBefore) {
  const Capabilities capabilities = TriBandRouter();
  const State state = WithBackhaul(capabilities);
  const std::vector<Wifi::BackhaulSTAStatus> expected = {
      {Band5GHz_2, "wlan2bhs", false, ScanType::Default, MACAddress(), 0, 0, 0}};
  for (const Phase phase : {Phase::Disabled, Phase::Scanning, Phase::Connecting, Phase::Failed}) {
    std::vector<LiveRadio> live = LiveOf(capabilities);
    live[2].backhaulStation = {phase, "", "parents", kParent, 116, -61, 433, 77};
    EXPECT_EQ(BackhaulSTAStatuses({state, capabilities, live}), expected);
  }
  EXPECT_EQ(BackhaulSTAStatuses({state, capabilities, {}}), expected);
}

}  // namespace

}  // namespace TALO::Wifid
