#include "support/events.h"
#include "support/print.h"
#include "support/simulation.h"

#include <gtest/gtest.h>

namespace TALO::Wifid {

namespace {

using Notes = std::vector<std::string>;
using Results = std::vector<Wifi::ScanResult>;

constexpr RadioFrequency kRadio = RadioFrequency::Band2_4GHz;

Wifi::ScanResult ResultOf(const AccessPoint& neighbour, RadioFrequency radio, int age) {
  return {radio,
          neighbour.ssid,
          neighbour.bssid,
          neighbour.channel,
          neighbour.channelWidth,
          neighbour.signal,
          neighbour.securityMode,
          neighbour.wps,
          age};
}

class SimulatedScanTest : public testing::Test {
 protected:
  /// At 1000 both radios are up.
  void Start(SupportedModel model = SupportedModel::Cedar300) {
    simulation_.emplace(scenario_, model);
    for (const RadioCapability& radio : simulation_->driver.GetCapabilities().radios) {
      RadioPlan plan = MakeRadioPlan({});
      plan.radio = radio.radio;
      plan.channel = radio.channels.front();
      simulation_->Apply(plan);
    }
    simulation_->Advance(1000);
    simulation_->TakeNotes();
  }

  Results Scan(RadioFrequency radio = kRadio) {
    const auto answer = simulation_->ScanNow(radio);
    EXPECT_TRUE(answer.Succeeded()) << answer.Why().sentence;
    return answer.Succeeded() ? answer.Value() : Results();
  }

  std::string ScanFailure(RadioFrequency radio = kRadio) {
    const auto answer = simulation_->ScanNow(radio);
    return answer.Succeeded() ? "heard" : Describe(answer.Why());
  }

  int NowInMilliseconds() { return static_cast<int>(simulation_->timers.Now().count()); }

  Scenario scenario_;
  std::optional<Simulation> simulation_;
};

}  // namespace

TEST_F(SimulatedScanTest, HearsTheNeighboursOfItsBandTheStrongestFirst) {
  AccessPoint open = MakeAccessPoint(1, "Café", 1, -80);
  open.securityMode = SecurityMode::Disabled;
  open.passphrase = "";
  AccessPoint strong = MakeAccessPoint(2, std::string("\xff\x00", 2), 13, -40);
  strong.wps = true;
  AccessPoint hidden = MakeAccessPoint(3, "hidden", 6, -80);
  hidden.hidden = true;
  AccessPoint upper = MakeAccessPoint(4, "Miller", 36, -50);
  upper.channelWidth = 80;
  scenario_.neighbours = {open, strong, hidden, upper};
  Start();
  Wifi::ScanResult hiddenResult = ResultOf(hidden, kRadio, 0);
  hiddenResult.ssid = "";
  EXPECT_EQ((Results{ResultOf(strong, kRadio, 0), ResultOf(open, kRadio, 0), hiddenResult}), Scan());
  EXPECT_EQ(1800, NowInMilliseconds());
  EXPECT_EQ((Results{ResultOf(upper, RadioFrequency::Band5GHz, 0)}), Scan(RadioFrequency::Band5GHz));
}

TEST_F(SimulatedScanTest, EachRadioOfATriBandRouterHearsItsOwnChannels) {
  const AccessPoint lower = MakeAccessPoint(1, "Miller", 64, -50);
  const AccessPoint upper = MakeAccessPoint(2, "Miller", 100, -50);
  scenario_.neighbours = {lower, upper};
  Start(SupportedModel::Alder100);
  EXPECT_EQ(Results(), Scan(kRadio));
  EXPECT_EQ((Results{ResultOf(lower, RadioFrequency::Band5GHz_1, 0)}), Scan(RadioFrequency::Band5GHz_1));
  EXPECT_EQ((Results{ResultOf(upper, RadioFrequency::Band5GHz_2, 0)}), Scan(RadioFrequency::Band5GHz_2));
}

TEST_F(SimulatedScanTest, NeverHearsTheRoutersOwnNetworks) {
  Start();
  simulation_->ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  EXPECT_EQ(Results(), Scan());
}

TEST_F(SimulatedScanTest, GivesResultsOfTheLastTenSecondsAgain) {
  AccessPoint neighbour = MakeAccessPoint(1, "Miller", 1, -50);
  neighbour.vanishesAt = 3;
  scenario_.neighbours = {neighbour};
  Start();
  EXPECT_EQ((Results{ResultOf(neighbour, kRadio, 0)}), Scan());
  simulation_->Advance(9999);
  EXPECT_EQ((Results{ResultOf(neighbour, kRadio, 9)}), Scan());
  EXPECT_EQ(11799, NowInMilliseconds());
  simulation_->Advance(1);
  EXPECT_EQ((Results{ResultOf(neighbour, kRadio, 10)}), Scan());
  EXPECT_EQ(11800, NowInMilliseconds());
  simulation_->Advance(1);
  EXPECT_EQ(Results(), Scan());
  EXPECT_EQ(12601, NowInMilliseconds());
}

TEST_F(SimulatedScanTest, HearsWhatIsThereWhenItHasListened) {
  AccessPoint late = MakeAccessPoint(1, "late", 1, -50);
  late.appearsAt = 2;
  scenario_.neighbours = {late};
  Start();
  simulation_->Advance(199);
  EXPECT_EQ(Results(), Scan());
  Start();
  simulation_->Advance(200);
  EXPECT_EQ((Results{ResultOf(late, kRadio, 0)}), Scan());
}

TEST_F(SimulatedScanTest, ARadioThatIsNotUpDoesNotHear) {
  Start();
  EXPECT_EQ(Results(), Scan());
  RadioPlan plan = MakeRadioPlan({});
  plan.enable = false;
  simulation_->ApplyNow(plan);
  EXPECT_EQ("RadioFailed the radio Band2_4GHz is not up", ScanFailure());
  EXPECT_EQ("RadioFailed this router has no radio Band5GHz_2", ScanFailure(RadioFrequency::Band5GHz_2));
  EXPECT_EQ("RadioFailed this router has no radio SmartConnect", ScanFailure(RadioFrequency::SmartConnect));
}

TEST_F(SimulatedScanTest, FailsAsTheScenarioSaysAndThenHearsAgain) {
  scenario_.faults.scan = {{kRadio, 1, 1, "no antenna"}};
  Start();
  EXPECT_EQ("heard", ScanFailure());
  // Results that are given again are no listening.
  EXPECT_EQ("heard", ScanFailure());
  simulation_->Advance(10001);
  EXPECT_EQ("RadioFailed the radio Band2_4GHz cannot listen: no antenna", ScanFailure());
  EXPECT_EQ(12601, NowInMilliseconds());
  EXPECT_EQ("heard", ScanFailure());
}

TEST_F(SimulatedScanTest, RadiosListenSideBySideAndDisturbNoStation) {
  scenario_.devices = {MakeDevice(1)};
  Start();
  simulation_->ApplyNow(MakeRadioPlan({MakeBSS(1)}));
  simulation_->Advance(1000);
  simulation_->TakeNotes();
  int answers = 0;
  simulation_->driver.Scan(kRadio, [&answers](const auto&) { ++answers; });
  simulation_->driver.Scan(RadioFrequency::Band5GHz, [&answers](const auto&) { ++answers; });
  simulation_->Advance(799);
  EXPECT_EQ(0, answers);
  simulation_->Advance(1);
  EXPECT_EQ(2, answers);
  EXPECT_EQ(Notes(), simulation_->TakeNotes());
}

TEST(SimulatedChannelTest, AnAutomaticChannelIsTheLeastDisturbedOne) {
  struct Case {
    std::vector<int> neighbours;
    RadioFrequency radio;
    int channel;
    int width;
  };
  const std::vector<Case> cases = {
      {{}, kRadio, 1, 40},
      {{1}, kRadio, 6, 40},
      {{1, 6}, kRadio, 11, 20},  // the other half would be channel 15
      {{1, 6, 11, 11, 11}, kRadio, 1, 40},
      {{}, RadioFrequency::Band5GHz, 36, 80},
      {{36, 52, 100}, RadioFrequency::Band5GHz, 116, 80},
  };
  for (const Case& entry : cases) {
    Scenario scenario;
    for (const int channel : entry.neighbours) {
      const int number = static_cast<int>(scenario.neighbours.size());
      scenario.neighbours.push_back(MakeAccessPoint(number, "Miller", channel, -50));
    }
    Simulation simulation(scenario);
    RadioPlan plan = MakeRadioPlan({});
    plan.radio = entry.radio;
    plan.channel = 0;
    plan.channelWidth = 0;
    simulation.ApplyNow(plan);
    EXPECT_EQ(entry.channel, simulation.Live(entry.radio).channel);
    EXPECT_EQ(entry.width, simulation.Live(entry.radio).channelWidth);
  }
}

}  // namespace TALO::Wifid
