#include "support/events.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

#include <algorithm>

// The shipped scenarios, run as their users would.

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;

class ShippedScenarioRunTest : public testing::Test {
 protected:
  void Start(const std::string& name, SupportedModel model) {
    auto scenario = LoadScenario(std::string(TALOWIFI_SOURCE_DIR) + "/scenarios/" + name);
    ASSERT_TRUE(scenario.Succeeded()) << scenario.Why().sentence;
    simulation_.emplace(scenario.Value(), model);
  }

  /// "Home" and "Guest" on the radio.
  static RadioPlan PlanOf(const RadioCapability& radio) {
    RadioPlan plan = MakeRadioPlan({MakeBSS(1), MakeBSS(2)});
    plan.radio = radio.radio;
    plan.channel = radio.channels.front();
    plan.bsss[1].ssid = "Guest";
    plan.bsss[1].passphrase = "welcome-guest";
    plan.bsss[1].bridge = "br-guest";
    for (int slot = 1; slot <= 2; ++slot) {
      BSSPlan& bss = plan.bsss[static_cast<std::size_t>(slot) - 1];
      bss.interface = BSSInterface(radio, slot);
      bss.bssid = BSSAddress(radio, slot);
    }
    return plan;
  }

  /// Applied at 70 on all radios.
  void ApplyEverywhere(const std::function<void(RadioPlan&)>& change) {
    for (const RadioCapability& radio : simulation_->driver.GetCapabilities().radios) {
      RadioPlan plan = PlanOf(radio);
      change(plan);
      simulation_->Apply(plan);
    }
    simulation_->Advance(70);
    simulation_->TakeNotes();
  }

  std::vector<int> SortedStationsOn(const std::string& interface) {
    std::vector<int> stations = simulation_->StationsOn(interface);
    std::ranges::sort(stations);
    return stations;
  }

  std::optional<Simulation> simulation_;
};

void Nothing(RadioPlan&) {}

}  // namespace

TEST_F(ShippedScenarioRunTest, TheHomeFillsUpAndThePrinterUsesWPS) {
  for (const SupportedModel model : {SupportedModel::Alder100, SupportedModel::Dune40}) {
    Start("home-router.json", model);
    ApplyEverywhere(Nothing);
    simulation_->Advance(60000);
    EXPECT_EQ((std::vector<int>{7}), SortedStationsOn("wlan0_1"));
    EXPECT_EQ((std::vector<int>{1, 2, 3}), SortedStationsOn("wlan1_1"));
    EXPECT_EQ((std::vector<int>{4, 5}), SortedStationsOn("wlan1_2"));
    simulation_->StartWPS("wlan0_1");
    simulation_->Advance(12000);
    EXPECT_EQ((std::vector<int>{7, 8}), SortedStationsOn("wlan0_1"));
    // 01 roams after ten minutes, 02 leaves after half an hour.
    simulation_->Advance(1800000);
    EXPECT_EQ((std::vector<int>{1, 7, 8}), SortedStationsOn("wlan0_1"));
    EXPECT_EQ((std::vector<int>{3}), SortedStationsOn("wlan1_1"));
  }
}

TEST_F(ShippedScenarioRunTest, EveryRadioOfTheHomeJoinsTheUplink) {
  Start("home-router.json", SupportedModel::Alder100);
  ApplyEverywhere([](RadioPlan& plan) {
    plan.station = StationPlan{"sta", "Uplink", "", "uplink-password", {}, SecurityMode::PersonalWPA2};
  });
  simulation_->Advance(1100);
  Notes stations;
  for (const LiveRadio& live : simulation_->driver.GetLive()) {
    stations.push_back(Describe(live.station));
  }
  EXPECT_EQ((Notes{"connected to Uplink 06:10:00:00:00:01 on channel 6, -58 dBm, 144 Mbit/s for 0 s",
                   "connected to Uplink 06:10:00:00:00:02 on channel 44, -62 dBm, 866 Mbit/s for 0 s",
                   "connected to Uplink 06:10:00:00:00:03 on channel 108, -66 dBm, 650 Mbit/s for 0 s"}),
            stations);
}

TEST_F(ShippedScenarioRunTest, TheRepeaterRoamsToTheBetterParent) {
  Start("mesh-repeater.json", SupportedModel::Alder100);
  ApplyEverywhere([](RadioPlan& plan) {
    if (plan.radio == RadioFrequency::Band5GHz_2) {
      plan.backhaulStation = BackhaulStationPlan{"wlan2bhs", "Mesh", "mesh-backhaul", ScanType::BestAP};
    }
  });
  const auto parent = [this] {
    return Describe(simulation_->Live(RadioFrequency::Band5GHz_2).backhaulStation);
  };
  simulation_->Advance(1100);
  EXPECT_EQ("connected to Mesh 06:30:00:00:00:02 on channel 108, -72 dBm, 390 Mbit/s for 0 s", parent());
  simulation_->Advance(60000);
  EXPECT_EQ("connected to Mesh 06:30:00:00:00:04 on channel 112, -55 dBm, 866 Mbit/s for 0 s", parent());
}

TEST_F(ShippedScenarioRunTest, TheWholeCrowdIsServed) {
  Start("crowded-building.json", SupportedModel::Cedar300);
  ApplyEverywhere(Nothing);
  simulation_->Advance(3300);
  EXPECT_EQ(32U, simulation_->StationsOn("wlan0_1").size());
  EXPECT_EQ(96U, simulation_->StationsOn("wlan1_1").size());
  EXPECT_EQ(128U, simulation_->TakeNotes().size());
  const auto heard = simulation_->ScanNow(RadioFrequency::Band2_4GHz);
  ASSERT_TRUE(heard.Succeeded());
  EXPECT_EQ(80U, heard.Value().size());
}

}  // namespace TALO::Wifid
