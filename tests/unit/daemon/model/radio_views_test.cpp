#include "daemon/model/views.h"
#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using enum RadioFrequency;
using Wifi::RadioIfStatus;
using Wifi::RadioSetting;
using Wifi::RadioStatus;
using Wifi::RadioStatusSimple;
using Wifi::Util::MACAddress;

using InterfaceMap = std::map<std::string, RadioFrequency>;

const MACAddress kWlan0("02:00:00:00:00:00");
const MACAddress kWlan1("02:00:00:00:01:00");
const MACAddress kWlan2("02:00:00:00:02:00");

/// Two networks on three radios: the first radio has both, the second lost one, the third is switched off.
class RadioViews : public testing::Test {
 protected:
  RadioViews() : state_(MakeState(3, {MakeNetwork(1, 1, "One"), MakeNetwork(2, 2, "Two")})) {
    state_.radios[2].enable = false;
    live_ = LiveAsPlanned(MakePlan(state_, radios_, {}));
    live_[0].utilisation = 37;
    live_[0].channel = 11;
    live_[0].bsss[0].stations.resize(3);
    live_[0].bsss[1].stations.resize(4);
    live_[1].bsss[0].up = false;
  }

  Picture Now() const { return {state_, radios_, live_}; }

  State state_;
  Capabilities radios_ = TriBandRadios();
  std::vector<LiveRadio> live_;
};

TEST_F(RadioViews, SettingsShowWhatIsWantedOfEveryRadio) {
  state_.country = CountryCode::US;
  state_.radios[1] = {Band5GHz_1, true, 44, 40, 50, 5};
  const std::vector<RadioSetting> expected = {
      {Band2_4GHz, true, 6, 20, 100, 6, CountryCode::US},
      {Band5GHz_1, true, 44, 40, 50, 5, CountryCode::US},
      {Band5GHz_2, false, 100, 80, 100, 6, CountryCode::US},
  };
  EXPECT_EQ(RadioSettings(Now()), expected);
}

TEST_F(RadioViews, StatusesShowWhatEveryRadioDoes) {
  const std::vector<RadioStatus> expected = {
      {Band2_4GHz, true, 11, 20, 37, 7, kWlan0, {"wlan0_1", "wlan0_2"}},
      {Band5GHz_1, true, 36, 80, 0, 0, kWlan1, {"wlan1_2"}},
      {Band5GHz_2, false, 0, 0, 0, 0, kWlan2, {}},
  };
  EXPECT_EQ(RadioStatuses(Now()), expected);
}

TEST_F(RadioViews, SimpleStatusesShowAPartOfIt) {
  const std::vector<RadioStatusSimple> expected = {
      {Band2_4GHz, true, 11, kWlan0, {"wlan0_1", "wlan0_2"}},
      {Band5GHz_1, true, 36, kWlan1, {"wlan1_2"}},
      {Band5GHz_2, false, 0, kWlan2, {}},
  };
  EXPECT_EQ(RadioStatusesSimple(Now()), expected);
}

TEST_F(RadioViews, InterfaceStatusesNameTheInterfacesThatAreUp) {
  const std::vector<RadioIfStatus> expected = {
      {Band2_4GHz, "wlan0", {"wlan0_1", "wlan0_2"}},
      {Band5GHz_1, "wlan1", {"wlan1_2"}},
      {Band5GHz_2, "wlan2", {}},
  };
  EXPECT_EQ(RadioIfStatuses(Now()), expected);
}

TEST_F(RadioViews, ARadioThatSaysNothingIsShownAsDown) {
  live_.clear();
  EXPECT_EQ(RadioStatuses(Now()), (std::vector<RadioStatus>{{Band2_4GHz, false, 0, 0, 0, 0, kWlan0, {}},
                                                            {Band5GHz_1, false, 0, 0, 0, 0, kWlan1, {}},
                                                            {Band5GHz_2, false, 0, 0, 0, 0, kWlan2, {}}}));
  EXPECT_EQ(RadioStatusesSimple(Now()), (std::vector<RadioStatusSimple>{{Band2_4GHz, false, 0, kWlan0, {}},
                                                                        {Band5GHz_1, false, 0, kWlan1, {}},
                                                                        {Band5GHz_2, false, 0, kWlan2, {}}}));
  EXPECT_EQ(RadioIfStatuses(Now()),
            (std::vector<RadioIfStatus>{
                {Band2_4GHz, "wlan0", {}}, {Band5GHz_1, "wlan1", {}}, {Band5GHz_2, "wlan2", {}}}));
}

TEST_F(RadioViews, TheInterfaceMapHoldsEveryNetworkUpOrNot) {
  state_.networks[1].activated = false;
  EXPECT_EQ(InterfaceRadioMap(Now()), (InterfaceMap{{"wlan0_1", Band2_4GHz},
                                                    {"wlan0_2", Band2_4GHz},
                                                    {"wlan1_1", Band5GHz_1},
                                                    {"wlan1_2", Band5GHz_1},
                                                    {"wlan2_1", Band5GHz_2},
                                                    {"wlan2_2", Band5GHz_2}}));
  state_.networks.clear();
  EXPECT_EQ(InterfaceRadioMap(Now()), InterfaceMap{});
}

TEST_F(RadioViews, OnADualBandRouterTheyShowItsTwoRadios) {
  radios_ = DualBandRadios();
  state_.radios = {{Band2_4GHz, true, 6, 20, 100, 6}, {Band5GHz, true, 36, 80, 100, 6}};
  state_.networks.pop_back();
  live_ = LiveAsPlanned(MakePlan(state_, radios_, {}));
  EXPECT_EQ(RadioSettings(Now()),
            (std::vector<RadioSetting>{{Band2_4GHz, true, 6, 20, 100, 6, CountryCode::DE},
                                       {Band5GHz, true, 36, 80, 100, 6, CountryCode::DE}}));
  EXPECT_EQ(RadioStatuses(Now()),
            (std::vector<RadioStatus>{{Band2_4GHz, true, 6, 20, 0, 0, kWlan0, {"wlan0_1"}},
                                      {Band5GHz, true, 36, 80, 0, 0, kWlan1, {"wlan1_1"}}}));
  EXPECT_EQ(RadioIfStatuses(Now()), (std::vector<RadioIfStatus>{{Band2_4GHz, "wlan0", {"wlan0_1"}},
                                                                {Band5GHz, "wlan1", {"wlan1_1"}}}));
  EXPECT_EQ(InterfaceRadioMap(Now()), (InterfaceMap{{"wlan0_1", Band2_4GHz}, {"wlan1_1", Band5GHz}}));
}

TEST_F(RadioViews, ATriBandRouterServesTheWholeBandWithItsLowerRadio) {
  EXPECT_EQ(ConversionInfo(Now()), (Wifi::RadioConversionInfo{{{Band2_4GHz, Band2_4GHz},
                                                               {Band5GHz, Band5GHz_1},
                                                               {Band5GHz_1, Band5GHz_1},
                                                               {Band5GHz_2, Band5GHz_2}},
                                                              false}));
}

TEST_F(RadioViews, ADualBandRouterServesEveryPartOfTheBandWithItsOnlyRadio) {
  radios_ = DualBandRadios();
  EXPECT_EQ(
      ConversionInfo(Now()),
      (Wifi::RadioConversionInfo{
          {{Band2_4GHz, Band2_4GHz}, {Band5GHz, Band5GHz}, {Band5GHz_1, Band5GHz}, {Band5GHz_2, Band5GHz}},
          false}));
}

}  // namespace

}  // namespace TALO::Wifid
