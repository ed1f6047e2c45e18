#include "unit/daemon/radio/driver_conformance_test.h"

#include "support/events.h"

#include <algorithm>
#include <set>

namespace TALO::Wifid {

using Events = std::vector<std::string>;
using Phase = LiveUpstream::Phase;
using Wifi::Util::MACAddress;

void DriverConformanceTest::SetUp() {
  world_ = GetParam().make();
  driver_ = &world_->Driver();
  driver_->SetEventSink([this](const RadioEvent& event) { events_.push_back(Describe(event)); });
}

RadioPlan DriverConformanceTest::PlanOf(const RadioCapability& radio, const std::vector<int>& slots) {
  RadioPlan plan;
  plan.radio = radio.radio;
  plan.enable = true;
  plan.channel = radio.channels.front();
  plan.channelWidth = 20;
  plan.transmitPower = 100;
  plan.country = CountryCode::DE;
  for (const int slot : slots) {
    BSSPlan bss;
    bss.networkId = slot;
    bss.interface = BSSInterface(radio, slot);
    bss.bssid = BSSAddress(radio, slot);
    bss.ssid = "Network " + std::to_string(slot);
    bss.securityMode = SecurityMode::PersonalWPA2;
    bss.passphrase = "correct-horse";
    bss.bridge = "br0";
    plan.bsss.push_back(bss);
  }
  return plan;
}

Result<void> DriverConformanceTest::Await(const std::function<void(RadioDriver::Done)>& operation) {
  std::vector<Result<void>> answers;
  bool inside = true;
  operation([&](const Result<void>& result) {
    EXPECT_FALSE(inside) << "answered from inside the call";
    answers.push_back(result);
  });
  inside = false;
  if (!world_->WaitUntil([&answers] { return !answers.empty(); })) {
    ADD_FAILURE() << "never answered";
    return Refusal{ErrorCode::NoAnswer, "never answered"};
  }
  world_->Settle();
  EXPECT_EQ(1U, answers.size()) << "answered more than once";
  return answers.front();
}

Result<void> DriverConformanceTest::Apply(const RadioPlan& plan, ApplyMode mode) {
  return Await([&](RadioDriver::Done done) { driver_->Apply(plan, mode, std::move(done)); });
}

DriverConformanceTest::ScanAnswer DriverConformanceTest::Scan(RadioFrequency radio) {
  ScanAnswer answer = Refusal{ErrorCode::NoAnswer, "never answered"};
  const Result<void> result = Await([&](RadioDriver::Done done) {
    driver_->Scan(radio, [&answer, done = std::move(done)](const ScanAnswer& results) {
      answer = results;
      done({});
    });
  });
  EXPECT_TRUE(result.Succeeded());
  return answer;
}

LiveRadio DriverConformanceTest::LiveOf(const RadioCapability& radio) {
  const std::vector<LiveRadio> live = driver_->GetLive();
  const auto found = std::ranges::find(live, radio.radio, &LiveRadio::radio);
  return found != live.end() ? *found : LiveRadio();
}

std::vector<LiveBSS> DriverConformanceTest::BSSsOf(const RadioPlan& plan) {
  std::vector<LiveBSS> bsss;
  for (const BSSPlan& bss : plan.bsss) {
    bsss.push_back({bss.networkId, bss.interface, bss.bssid, true, {}});
  }
  return bsss;
}

TEST_P(DriverConformanceTest, CapabilitiesDescribeEveryRadio) {
  ASSERT_LE(2U, Radios().size());
  EXPECT_TRUE(std::ranges::is_sorted(Radios(), {}, &RadioCapability::radio));
  std::set<std::string> interfaces;
  std::set<MACAddress> addresses;
  for (const RadioCapability& radio : Radios()) {
    EXPECT_LT(RadioFrequency::SmartConnect, radio.radio);
    interfaces.insert(radio.interface);
    addresses.insert(radio.address);
    EXPECT_LE(1, radio.maximumBSSs);
    EXPECT_LE(20, radio.maximumChannelWidth);
    ASSERT_FALSE(radio.channels.empty());
    EXPECT_TRUE(std::ranges::is_sorted(radio.channels));
    EXPECT_LT(0, radio.channels.front());
  }
  EXPECT_EQ(Radios().size(), interfaces.size());
  EXPECT_EQ(Radios().size(), addresses.size());
  EXPECT_FALSE(interfaces.contains(""));
  EXPECT_FALSE(addresses.contains(MACAddress()));
  EXPECT_TRUE(driver_->GetBridges().contains("br0"));
}

TEST_P(DriverConformanceTest, EverySlotOfEveryRadioHasAnAddressOfItsOwn) {
  std::set<MACAddress> addresses;
  for (const RadioCapability& radio : Radios()) {
    for (int slot = kBackhaulSlot; slot <= radio.maximumBSSs; ++slot) {
      const MACAddress address = BSSAddress(radio, slot);
      EXPECT_TRUE(addresses.insert(address).second) << address.ToString();
      // They count up, so the block does not run over its end.
      EXPECT_LE(radio.address, address);
    }
  }
}

TEST_P(DriverConformanceTest, BeforeAnythingIsAppliedEveryRadioIsDown) {
  std::vector<LiveRadio> expected;
  for (const RadioCapability& radio : Radios()) {
    expected.emplace_back();
    expected.back().radio = radio.radio;
  }
  EXPECT_TRUE(expected == driver_->GetLive());
}

TEST_P(DriverConformanceTest, EachRadioComesToItsPlanAndTellsSo) {
  for (const RadioCapability& radio : Radios()) {
    events_.clear();
    const RadioPlan plan = PlanOf(radio, {1, 2});
    ASSERT_TRUE(Apply(plan).Succeeded());
    LiveRadio live = LiveOf(radio);
    EXPECT_LE(0, live.utilisation);
    EXPECT_GE(100, live.utilisation);
    live.utilisation = 0;
    LiveRadio expected;
    expected.radio = radio.radio;
    expected.up = true;
    expected.channel = radio.channels.front();
    expected.channelWidth = 20;
    expected.bsss = BSSsOf(plan);
    EXPECT_TRUE(expected == live);
    EXPECT_EQ((Events{Describe(RadioStateChanged{radio.radio, true})}), events_);
  }
}

TEST_P(DriverConformanceTest, TheSamePlanAgainTellsNothing) {
  const RadioPlan plan = PlanOf(FirstRadio(), {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  events_.clear();
  const LiveRadio before = LiveOf(FirstRadio());
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ(Events(), events_);
  EXPECT_TRUE(before == LiveOf(FirstRadio()));
  ASSERT_TRUE(Apply(plan, ApplyMode::Everything).Succeeded());
  EXPECT_TRUE(BSSsOf(plan) == LiveOf(FirstRadio()).bsss);
}

TEST_P(DriverConformanceTest, BSSsComeGoAndChangeBesideOneAnother) {
  const std::vector<std::vector<int>> steps = {{1}, {1, 2}, {2, 3}, {3}, {}, {1, 3}};
  for (const std::vector<int>& slots : steps) {
    RadioPlan plan = PlanOf(FirstRadio(), slots);
    ASSERT_TRUE(Apply(plan).Succeeded());
    EXPECT_TRUE(BSSsOf(plan) == LiveOf(FirstRadio()).bsss);
    for (BSSPlan& bss : plan.bsss) {
      bss.passphrase = "battery-staple";
      bss.hidden = true;
      bss.access.rule = AccessPlan::Rule::OnlyListed;
    }
    ASSERT_TRUE(Apply(plan).Succeeded());
    EXPECT_TRUE(BSSsOf(plan) == LiveOf(FirstRadio()).bsss);
  }
  EXPECT_EQ((Events{Describe(RadioStateChanged{FirstRadio().radio, true})}), events_);
}

TEST_P(DriverConformanceTest, ARadioMovesToAnotherChannel) {
  RadioPlan plan = PlanOf(FirstRadio(), {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  plan.channel = FirstRadio().channels.at(1);
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ(plan.channel, LiveOf(FirstRadio()).channel);
  EXPECT_TRUE(BSSsOf(plan) == LiveOf(FirstRadio()).bsss);
}

TEST_P(DriverConformanceTest, ARadioThatChoosesItsChannelTakesOneItHas) {
  RadioPlan plan = PlanOf(FirstRadio(), {1});
  plan.channel = 0;
  ASSERT_TRUE(Apply(plan).Succeeded());
  const std::vector<int>& channels = FirstRadio().channels;
  EXPECT_NE(channels.end(), std::ranges::find(channels, LiveOf(FirstRadio()).channel));
}

TEST_P(DriverConformanceTest, ARadioThatIsOffHasNothingUp) {
  RadioPlan plan = PlanOf(FirstRadio(), {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  events_.clear();
  plan.enable = false;
  ASSERT_TRUE(Apply(plan).Succeeded());
  const LiveRadio live = LiveOf(FirstRadio());
  EXPECT_FALSE(live.up);
  EXPECT_EQ(0, live.channel);
  EXPECT_TRUE(std::ranges::none_of(live.bsss, &LiveBSS::up));
  EXPECT_EQ((Events{Describe(RadioStateChanged{FirstRadio().radio, false})}), events_);
}

TEST_P(DriverConformanceTest, RadiosAreChangedAtTheSameTime) {
  std::size_t answers = 0;
  for (const RadioCapability& radio : Radios()) {
    driver_->Apply(PlanOf(radio, {1}), ApplyMode::WhatDiffers, [&answers](const Result<void>& result) {
      EXPECT_TRUE(result.Succeeded());
      ++answers;
    });
  }
  EXPECT_EQ(0U, answers);
  ASSERT_TRUE(world_->WaitUntil([&] { return answers == Radios().size(); }));
  for (const LiveRadio& live : driver_->GetLive()) {
    EXPECT_TRUE(live.up);
    EXPECT_EQ(1U, live.bsss.size());
  }
}

TEST_P(DriverConformanceTest, WhatCannotBeFailsAndChangesNothing) {
  const RadioPlan plan = PlanOf(FirstRadio(), {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  const std::vector<LiveBSS> before = LiveOf(FirstRadio()).bsss;
  const std::vector<std::function<void(RadioPlan&)>> mistakes = {
      [](RadioPlan& bad) { bad.channel = 1000; },
      [](RadioPlan& bad) { bad.channelWidth = 1000; },
      [](RadioPlan& bad) {
        bad.channel = 13;
        bad.country = CountryCode::US;
      },
      [](RadioPlan& bad) { bad.bsss.front().bridge = "no-such-bridge"; },
      [](RadioPlan& bad) { bad.radio = RadioFrequency::SmartConnect; },
  };
  for (const auto& mistake : mistakes) {
    RadioPlan bad = plan;
    mistake(bad);
    const Result<void> result = Apply(bad);
    ASSERT_FALSE(result.Succeeded());
    EXPECT_EQ(ErrorCode::RadioFailed, result.Why().code);
    EXPECT_TRUE(before == LiveOf(FirstRadio()).bsss);
  }
}

TEST_P(DriverConformanceTest, ListensOnItsOwnChannelsAndRemembers) {
  for (const RadioCapability& radio : Radios()) {
    ASSERT_TRUE(Apply(PlanOf(radio, {1})).Succeeded());
    const ScanAnswer answer = Scan(radio.radio);
    ASSERT_TRUE(answer.Succeeded());
    for (const Wifi::ScanResult& result : answer.Value()) {
      EXPECT_EQ(radio.radio, result.radio);
      EXPECT_NE(radio.channels.end(), std::ranges::find(radio.channels, result.channel));
      EXPECT_NE(BSSAddress(radio, 1), result.bssid);
      EXPECT_EQ(0, result.age);
    }
    const ScanAnswer again = Scan(radio.radio);
    ASSERT_TRUE(again.Succeeded());
    ASSERT_EQ(answer.Value().size(), again.Value().size());
    for (std::size_t i = 0; i < again.Value().size(); ++i) {
      EXPECT_EQ(answer.Value()[i].bssid, again.Value()[i].bssid);
      EXPECT_LE(again.Value()[i].age, 10);
    }
  }
  // Not each time that a real radio listens it hears everybody.
  EXPECT_TRUE(world_->WaitUntil([this] {
    const ScanAnswer answer = Scan(FirstRadio().radio);
    return answer.Succeeded() &&
           std::ranges::find(answer.Value(), "Miller", &Wifi::ScanResult::ssid) != answer.Value().end();
  }));
}

TEST_P(DriverConformanceTest, ARadioThatIsNotUpDoesNotListen) {
  const ScanAnswer answer = Scan(FirstRadio().radio);
  ASSERT_FALSE(answer.Succeeded());
  EXPECT_EQ(ErrorCode::RadioFailed, answer.Why().code);
}

TEST_P(DriverConformanceTest, AStationWithoutItsAccessPointSaysSo) {
  RadioPlan plan = PlanOf(FirstRadio(), {1});
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ(Phase::Disabled, LiveOf(FirstRadio()).station.phase);
  plan.station = StationPlan{FirstRadio().interface + "sta", "nobody has this", "", "correct-horse", {},
                             SecurityMode::PersonalWPA2};
  ASSERT_TRUE(Apply(plan).Succeeded());
  ASSERT_TRUE(world_->WaitUntil([this] { return LiveOf(FirstRadio()).station.phase == Phase::Failed; }));
  EXPECT_EQ("failed to join nobody has this: no such access point", Describe(LiveOf(FirstRadio()).station));
  EXPECT_TRUE(Await([this](RadioDriver::Done done) {
                driver_->Reconnect(FirstRadio().radio, std::move(done));
              }).Succeeded());
  plan.station.reset();
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ("disabled ", Describe(LiveOf(FirstRadio()).station));
}

TEST_P(DriverConformanceTest, AWPSSessionIsOpenedOnABSSThatIsUpAndCancelled) {
  const std::string interface = BSSInterface(FirstRadio(), 1);
  const auto start = [&](RadioDriver::Done done) { driver_->StartWPS(interface, std::move(done)); };
  const auto cancel = [&](RadioDriver::Done done) { driver_->CancelWPS(interface, std::move(done)); };
  EXPECT_EQ(ErrorCode::RadioFailed, Await(start).Why().code);
  EXPECT_EQ(ErrorCode::NotAllowed, Await(cancel).Why().code);
  ASSERT_TRUE(Apply(PlanOf(FirstRadio(), {1})).Succeeded());
  events_.clear();
  ASSERT_TRUE(Await(start).Succeeded());
  EXPECT_EQ(ErrorCode::Busy, Await(start).Why().code);
  EXPECT_EQ(Events(), events_);
  ASSERT_TRUE(Await(cancel).Succeeded());
  EXPECT_EQ((Events{"WPS on " + interface + ": cancelled"}), events_);
  EXPECT_EQ(ErrorCode::NotAllowed, Await(cancel).Why().code);
}

TEST_P(DriverConformanceTest, AnInterfaceThatIsNotThereHasNoRegistrar) {
  const Result<void> result = Await([this](RadioDriver::Done done) {
    driver_->ConfigureRegistrar({"no-such-interface", "Home", "correct-horse", "PersonalWPA2"},
                                std::move(done));
  });
  ASSERT_FALSE(result.Succeeded());
  EXPECT_EQ(ErrorCode::NotSupported, result.Why().code);
}

}  // namespace TALO::Wifid
