#include "daemon/radio/linux/channel_choice.h"

#include "daemon/radio/linux/abilities.h"
#include "support/machine/fake_kernel.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <functional>
#include <utility>
#include <vector>

// What a radio can do of a plan.

namespace TALO::Wifid {

namespace {

using Channels = std::vector<int>;

/// A band of 5 GHz whose channels are free but for these.
WiphyBand BandWith(const std::function<void(WiphyChannel&)>& change) {
  WiphyBand band = *MakeWiphy(0).band5GHz;
  for (WiphyChannel& channel : band.channels) {
    change(channel);
  }
  return band;
}

RadioPlan PlanWith(int channel, int width) {
  RadioPlan plan;
  plan.radio = RadioFrequency::Band5GHz;
  plan.enable = true;
  plan.channel = channel;
  plan.channelWidth = width;
  return plan;
}

RadioCapability Radio() { return DualBandRouter().radios[1]; }

Present On(int channel) {
  Present present;
  present.channel.emplace();
  present.channel->channel = channel;
  present.lastChannel = channel;
  present.lastChannel = channel;
  return present;
}

TEST(ChannelChoice, TakesThePlansChannelAsWideAsItCan) {
  const WiphyBand band = BandWith([](WiphyChannel&) {});
  const ChannelSettings wide = ValueOf(ChooseChannel(PlanWith(44, 0), Radio(), band, {}));
  EXPECT_EQ(44, wide.channel);
  EXPECT_EQ(80, wide.width);
  EXPECT_EQ(42, wide.centre);
  EXPECT_TRUE(wide.band5GHz);
  EXPECT_EQ(20, ValueOf(ChooseChannel(PlanWith(44, 20), Radio(), band, {})).width);
}

TEST(ChannelChoice, RefusesAChannelThatTheCountryInForceDoesNotAllow) {
  const std::string why =
      "the radio Band5GHz cannot use channel 40: the country in force does not let access points send there";
  EXPECT_EQ(
      (Refusal{ErrorCode::RadioFailed, why}),
      WhyNot(ChooseChannel(PlanWith(40, 20), Radio(),
                           BandWith([](WiphyChannel& each) { each.disabled = each.number == 40; }), {})));
  EXPECT_EQ(
      (Refusal{ErrorCode::RadioFailed, why}),
      WhyNot(ChooseChannel(PlanWith(40, 20), Radio(),
                           BandWith([](WiphyChannel& each) { each.listenOnly = each.number == 40; }), {})));
  EXPECT_EQ((Refusal{ErrorCode::NotSupported,
                     "the radio Band5GHz cannot use channel 40: it takes looking out for radars (DFS)"}),
            WhyNot(ChooseChannel(PlanWith(40, 20), Radio(),
                                 BandWith([](WiphyChannel& each) { each.radar = each.number == 40; }), {})));
}

TEST(ChannelChoice, ChoosesTheFirstFreeChannelAndStaysThere) {
  const WiphyBand band = BandWith([](WiphyChannel& each) {
    each.listenOnly = each.number == 36;
    each.radar = each.number >= 52;
  });
  const RadioPlan plan = PlanWith(kAutomaticChannel, 20);
  EXPECT_EQ(40, ValueOf(ChooseChannel(plan, Radio(), band, {})).channel);
  EXPECT_EQ(48, ValueOf(ChooseChannel(plan, Radio(), band, On(48))).channel);
  for (const int lost : {36, 52, 1}) {
    EXPECT_EQ(40, ValueOf(ChooseChannel(plan, Radio(), band, On(lost))).channel) << lost;
  }
  RadioCapability upper = Radio();
  upper.channels = {44, 48};
  EXPECT_EQ(44, ValueOf(ChooseChannel(plan, upper, band, {})).channel);
  EXPECT_EQ(
      (Refusal{ErrorCode::RadioFailed,
               "the radio Band5GHz cannot use any channel: the country in force does not let access points "
               "send on any"}),
      WhyNot(ChooseChannel(plan, Radio(), BandWith([](WiphyChannel& each) { each.disabled = true; }), {})));
}

TEST(ChannelChoice, FollowsTheRadiosOwnStationWhereItCan) {
  const WiphyBand band = BandWith([](WiphyChannel& each) { each.radar = each.number >= 52; });
  const RadioPlan plan = PlanWith(kAutomaticChannel, 20);
  EXPECT_EQ(44, ValueOf(ChooseChannel(plan, Radio(), band, On(48), 44)).channel);
  EXPECT_EQ(48, ValueOf(ChooseChannel(plan, Radio(), band, On(48), 52)).channel);
  EXPECT_EQ(36, ValueOf(ChooseChannel(plan, Radio(), band, {}, 52)).channel);
  EXPECT_EQ(40, ValueOf(ChooseChannel(PlanWith(40, 20), Radio(), band, On(40), 44)).channel);
}

TEST(TransmitPower, IsAPercentageOfWhatTheCountryAllows) {
  const WiphyBand band =
      BandWith([](WiphyChannel& each) { each.maximumPower = each.number == 36 ? 23 : 30; });
  // 23 dBm are 200 mW, half of that 20 dBm.
  const std::vector<std::pair<int, int>> cases = {{100, 23}, {50, 20}, {25, 17}, {10, 13},
                                                  {1, 3},    {0, 0},   {-1, 0}};
  for (const auto& [percent, power] : cases) {
    EXPECT_EQ(power, PowerOf(percent, band, 36)) << percent;
  }
  EXPECT_EQ(30, PowerOf(100, band, 40));
  EXPECT_EQ(0, PowerOf(1, BandWith([](WiphyChannel& each) { each.maximumPower = 10; }), 36));
}

TEST(Abilities, RefuseWhatHardwareOrProgramsCannotDo) {
  RadioHardware able;
  able.maximumAccessPoints = 3;
  able.maximumStations = 2;
  able.fourAddress = true;
  const auto bss = [](SecurityMode mode) {
    return [mode](RadioHardware&, RadioPlan& plan) {
      plan.bsss.emplace_back();
      plan.bsss.back().interface = "wlan1_1";
      plan.bsss.back().securityMode = mode;
    };
  };
  const auto accessPoints = [](int maximum, const std::vector<int>& networks) {
    return [maximum, networks](RadioHardware& hardware, RadioPlan& plan) {
      hardware.maximumAccessPoints = maximum;
      for (const int network : networks) {
        plan.bsss.emplace_back();
        plan.bsss.back().networkId = network;
        plan.bsss.back().securityMode = SecurityMode::PersonalWPA2;
      }
    };
  };
  const auto station = [](SecurityMode mode, int maximum) {
    return [mode, maximum](RadioHardware& hardware, RadioPlan& plan) {
      plan.station.emplace();
      plan.station->securityMode = mode;
      hardware.maximumStations = maximum;
    };
  };
  const auto backhaul = [](int maximum, bool fourAddress) {
    return [maximum, fourAddress](RadioHardware& hardware, RadioPlan& plan) {
      plan.backhaulStation.emplace();
      hardware.maximumStations = maximum;
      hardware.fourAddress = fourAddress;
    };
  };
  const std::string neither =
      "cannot join an access point: its hardware is an access point or a station, not both";
  const std::vector<std::pair<std::function<void(RadioHardware&, RadioPlan&)>, std::string>> cases = {
      {[](RadioHardware&, RadioPlan&) {}, ""},
      {[](RadioHardware&, RadioPlan& plan) {
         plan.broadcastLimit = {{}, false, 10};
       },
       ""},
      {[](RadioHardware&, RadioPlan& plan) {
         plan.broadcastLimit = {{}, true, 10};
       },
       "cannot limit broadcasts"},
      {accessPoints(1, {1}), ""},
      {accessPoints(1, {kBackhaulNetworkId}), ""},
      {accessPoints(1, {kBackhaulNetworkId, 1}),
       "cannot bring up 2 access points: its hardware has 1 at once"},
      {accessPoints(3, {kBackhaulNetworkId, 1}), ""},
      {accessPoints(2, {1}), ""},
      {accessPoints(2, {kBackhaulNetworkId}), ""},
      {accessPoints(2, {kBackhaulNetworkId, 1}),
       "cannot bring up 2 access points: its hardware has 2 at once, one of which holds the radio"},
      {bss(SecurityMode::PersonalWPA3), ""},
      {bss(SecurityMode::Disabled), ""},
      {bss(SecurityMode::WEP), "cannot bring up wlan1_1 with the security mode WEP"},
      {bss(SecurityMode::EnterpriseWPA2), "cannot bring up wlan1_1 with the security mode EnterpriseWPA2"},
      {station(SecurityMode::EnterpriseWPA2, 1), ""},
      {station(SecurityMode::WEP, 1), "cannot join an access point with the security mode WEP"},
      {station(SecurityMode::PersonalWPA2, 0), neither},
      {backhaul(1, true), ""},
      {backhaul(0, true), neither},
      {backhaul(1, false), "cannot join a parent: its hardware has no 4-address mode"},
      {[](RadioHardware& hardware, RadioPlan& plan) {
         plan.station.emplace();
         plan.station->securityMode = SecurityMode::PersonalWPA2;
         plan.backhaulStation.emplace();
         hardware.maximumStations = 1;
       },
       "cannot join an access point and a parent: its hardware can be one station at once"},
  };
  for (const auto& [change, why] : cases) {
    RadioHardware hardware = able;
    RadioPlan plan = PlanWith(36, 20);
    change(hardware, plan);
    const Result<void> result = CheckAbilities(hardware, plan);
    if (why.empty()) {
      EXPECT_TRUE(result.Succeeded()) << result.Why().sentence;
    } else {
      EXPECT_EQ((Refusal{ErrorCode::NotSupported, "the radio Band5GHz " + why}), WhyNot(result));
    }
  }
}

}  // namespace

}  // namespace TALO::Wifid
