// What every radio driver owes by its contract. A driver joins by a row of Drivers().

#include "daemon/radio/radio_driver.h"
#include "daemon/radio/simulated/simulated_driver.h"
#include "support/daemon_samples.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

struct DriverRow {
  std::string name;
  std::function<std::unique_ptr<RadioDriver>()> make;
  /// Lets the driver work until `isDone` or until it had time enough.
  std::function<void(const std::function<bool()>& isDone)> work;
};

void PrintTo(const DriverRow& row, std::ostream* out) { *out << row.name; }

DriverRow Simulated(const std::string& name, SupportedModel model) {
  return {name, [model] { return std::make_unique<SimulatedDriver>(model); },
          [](const std::function<bool()>&) {}};
}

std::vector<DriverRow> Drivers() {
  return {Simulated("SimulatedAlder100", SupportedModel::Alder100),
          Simulated("SimulatedBirch200", SupportedModel::Birch200),
          Simulated("SimulatedCedar300", SupportedModel::Cedar300),
          Simulated("SimulatedDune40", SupportedModel::Dune40)};
}

class EveryRadioDriver : public testing::TestWithParam<DriverRow> {
 protected:
  /// Every radio on, each on one of its own channels, with networks 1 to `networks`.
  std::vector<RadioPlan> PlanOf(int networks) const {
    State state = MakeState(networks + 1, {});
    for (int id = 1; id <= networks; ++id) {
      state.networks.push_back(MakeNetwork(id, id, "Net " + std::to_string(id)));
    }
    state.radios.clear();
    for (const RadioCapability& radio : driver_->GetCapabilities().radios) {
      state.radios.push_back({radio.radio, true, radio.channels.back(), 20, 100, 6});
    }
    return MakePlan(state, driver_->GetCapabilities());
  }

  /// Applies the plan and expects that all is as planned then.
  void ExpectApplied(const std::vector<RadioPlan>& plan, ApplyMode mode = ApplyMode::WhatDiffers) {
    int answers = 0;
    bool succeeded = false;
    driver_->Apply(plan, mode, [&](const Result<void>& result) {
      ++answers;
      succeeded = result.Succeeded();
    });
    GetParam().work([&answers] { return answers > 0; });
    ASSERT_EQ(answers, 1);
    EXPECT_TRUE(succeeded);
    EXPECT_EQ(WithoutUtilisation(driver_->GetLive()), LiveAsPlanned(plan));
    // Nor does it answer again later.
    GetParam().work([&answers] { return answers > 1; });
    EXPECT_EQ(answers, 1);
  }

  std::unique_ptr<RadioDriver> driver_ = GetParam().make();
};

TEST_P(EveryRadioDriver, NamesItsRadiosInAscendingOrder) {
  const Capabilities& capabilities = driver_->GetCapabilities();
  std::vector<RadioFrequency> radios;
  for (const RadioCapability& radio : capabilities.radios) {
    radios.push_back(radio.radio);
  }
  EXPECT_EQ(radios, RadiosOf(capabilities.model));
  EXPECT_FALSE(radios.empty());
  EXPECT_TRUE(std::ranges::is_sorted(radios));
}

TEST_P(EveryRadioDriver, KeepsItsCapabilities) {
  const Capabilities before = driver_->GetCapabilities();
  ExpectApplied(PlanOf(2));
  EXPECT_EQ(driver_->GetCapabilities(), before);
}

TEST_P(EveryRadioDriver, HasRadiosThatCanCarryNetworks) {
  for (const RadioCapability& radio : driver_->GetCapabilities().radios) {
    EXPECT_GE(radio.maximumBSSs, 1) << radio.interface;
    EXPECT_FALSE(radio.channels.empty()) << radio.interface;
    EXPECT_TRUE(std::ranges::is_sorted(radio.channels)) << radio.interface;
    EXPECT_EQ(std::ranges::adjacent_find(radio.channels), radio.channels.end()) << radio.interface;
    EXPECT_TRUE((std::set<int>{20, 40, 80, 160}.contains(radio.maximumChannelWidth))) << radio.interface;
    const bool low = radio.radio == RadioFrequency::Band2_4GHz;
    for (const int channel : radio.channels) {
      EXPECT_TRUE(low ? channel >= 1 && channel <= 14 : channel >= 36 && channel <= 177) << channel;
    }
  }
}

TEST_P(EveryRadioDriver, GivesEveryBSSANameAndAnAddressOfItsOwn) {
  std::set<std::string> interfaces;
  std::set<std::string> addresses;
  std::size_t count = 0;
  for (const RadioCapability& radio : driver_->GetCapabilities().radios) {
    interfaces.insert(radio.interface);
    addresses.insert(radio.address.ToString());
    ++count;
    for (int slot = 1; slot <= radio.maximumBSSs; ++slot) {
      interfaces.insert(BSSInterface(radio, slot));
      addresses.insert(BSSAddress(radio, slot).ToString());
      ++count;
    }
  }
  EXPECT_EQ(interfaces.size(), count);
  EXPECT_EQ(addresses.size(), count);
  EXPECT_FALSE(addresses.contains("00:00:00:00:00:00"));
  for (const std::string& interface : interfaces) {
    // The longest that the kernel takes.
    EXPECT_LE(interface.size(), 15U) << interface;
    EXPECT_FALSE(interface.empty());
  }
}

TEST_P(EveryRadioDriver, HasEveryRadioDownBeforeTheFirstPlan) {
  std::vector<LiveRadio> expected;
  for (const RadioCapability& radio : driver_->GetCapabilities().radios) {
    expected.push_back({radio.radio, false, 0, 0, 0, {}});
  }
  EXPECT_EQ(driver_->GetLive(), expected);
}

TEST_P(EveryRadioDriver, BringsThePlanIntoTheAir) { ExpectApplied(PlanOf(2)); }

TEST_P(EveryRadioDriver, BringsThePlanIntoTheAirWithForce) {
  ExpectApplied(PlanOf(2), ApplyMode::Everything);
}

TEST_P(EveryRadioDriver, TakesAPlanWithoutNetworks) { ExpectApplied(PlanOf(0)); }

TEST_P(EveryRadioDriver, CarriesAsManyNetworksAsItSays) {
  int networks = 1000;
  for (const RadioCapability& radio : driver_->GetCapabilities().radios) {
    networks = std::min(networks, radio.maximumBSSs);
  }
  ExpectApplied(PlanOf(networks));
}

TEST_P(EveryRadioDriver, FollowsPlansThatGrowAndShrink) {
  for (const int networks : {1, 3, 2, 0, 4, 1}) {
    SCOPED_TRACE(networks);
    ExpectApplied(PlanOf(networks));
  }
}

TEST_P(EveryRadioDriver, TakesTheSamePlanAgainInBothModes) {
  for (const ApplyMode mode : {ApplyMode::WhatDiffers, ApplyMode::Everything, ApplyMode::WhatDiffers}) {
    ExpectApplied(PlanOf(2), mode);
  }
}

TEST_P(EveryRadioDriver, ChangesANetworkInPlace) {
  ExpectApplied(PlanOf(2));
  auto plan = PlanOf(2);
  for (RadioPlan& radio : plan) {
    radio.bsss[0].ssid = "Other";
    radio.bsss[0].passphrase = "other-passphrase";
    radio.bsss[1].hidden = true;
    radio.bsss[1].securityMode = SecurityMode::PersonalWPA2;
  }
  ExpectApplied(plan);
}

TEST_P(EveryRadioDriver, PutsNetworksOnSomeOfItsRadios) {
  auto plan = PlanOf(2);
  plan.front().bsss.clear();
  plan.back().bsss.pop_back();
  ExpectApplied(plan);
}

TEST_P(EveryRadioDriver, SwitchesARadioOffAndOnAgain) {
  ExpectApplied(PlanOf(2));
  auto plan = PlanOf(2);
  plan.back().enable = false;
  ExpectApplied(plan);
  EXPECT_EQ(driver_->GetLive().back(),
            (LiveRadio{driver_->GetCapabilities().radios.back().radio, false, 0, 0, 0, {}}));
  ExpectApplied(PlanOf(2));
}

TEST_P(EveryRadioDriver, SwitchesAllRadiosOff) {
  auto plan = PlanOf(2);
  for (RadioPlan& radio : plan) {
    radio.enable = false;
  }
  ExpectApplied(plan);
}

TEST_P(EveryRadioDriver, ChangesChannelsAndCountry) {
  ExpectApplied(PlanOf(1));
  auto plan = PlanOf(1);
  for (std::size_t i = 0; i < plan.size(); ++i) {
    plan[i].channel = driver_->GetCapabilities().radios[i].channels.front();
    plan[i].country = CountryCode::FR;
    plan[i].transmitPower = 50;
  }
  ExpectApplied(plan);
}

TEST_P(EveryRadioDriver, ChoosesAChannelWhereItMay) {
  auto plan = PlanOf(1);
  for (RadioPlan& radio : plan) {
    radio.channel = 0;
  }
  bool succeeded = false;
  driver_->Apply(plan, ApplyMode::WhatDiffers,
                 [&](const Result<void>& result) { succeeded = result.Succeeded(); });
  GetParam().work([&succeeded] { return succeeded; });
  ASSERT_TRUE(succeeded);
  const auto live = driver_->GetLive();
  ASSERT_EQ(live.size(), plan.size());
  for (std::size_t i = 0; i < live.size(); ++i) {
    const auto& channels = driver_->GetCapabilities().radios[i].channels;
    EXPECT_NE(std::ranges::find(channels, live[i].channel), channels.end()) << live[i].channel;
  }
}

TEST_P(EveryRadioDriver, CountsUtilisationInPercent) {
  ExpectApplied(PlanOf(4));
  for (const LiveRadio& radio : driver_->GetLive()) {
    EXPECT_GE(radio.utilisation, 0);
    EXPECT_LE(radio.utilisation, 100);
  }
}

INSTANTIATE_TEST_SUITE_P(Drivers, EveryRadioDriver, testing::ValuesIn(Drivers()),
                         [](const auto& row) { return row.param.name; });

}  // namespace

}  // namespace TALO::Wifid
