#include "support/machine/linux_router.h"
#include "support/routers.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <tuple>

// The driver as a whole: what it leaves behind, what it keeps to itself, and what it does when it is refused.

namespace TALO::Wifid {

namespace {

using Events = std::vector<std::string>;
using Interfaces = std::vector<std::string>;

class LinuxDriverTest : public testing::Test, protected LinuxRouter {
 protected:
  Interfaces KernelInterfaces() const {
    Interfaces names;
    for (const WirelessInterface& interface : machine.kernel.GetInterfaces()) {
      names.push_back(interface.name);
    }
    return names;
  }

  /// All that it said to anybody but the programs.
  std::string Sayings(const Result<void>& answer) {
    std::string all = Describe(answer);
    for (const DriverNote& note : machine.notes) {
      all += note.sentence + "\n";
    }
    for (const std::string& event : TakeEvents()) {
      all += event + "\n";
    }
    return all;
  }
};

TEST_F(LinuxDriverTest, NothingOfItStaysOnTheRadios) {
  RadioPlan plan = Plan(0, {1, 2});
  plan.station = Station("Uplink", "uplink-password");
  ASSERT_TRUE(Apply(plan).Succeeded());
  EXPECT_EQ((Interfaces{"wlan0", "wlan1", "wlan0_1", "wlan0_2", "wlan0sta"}), KernelInterfaces());
  driver.reset();
  EXPECT_EQ((Interfaces{"wlan0", "wlan1"}), KernelInterfaces());
  EXPECT_FALSE(machine.hostapd.IsRunning());
  EXPECT_FALSE(machine.supplicant.IsRunning());
}

TEST_F(LinuxDriverTest, WhatADaemonBeforeLeftIsTakenAwayAndNothingElse) {
  driver.reset();
  for (const char* name : {"wlan0_1", "wlan0sta", "wlan1bhs", "wlan1lsn", "wlan0_3.sta1", "wlan00", "mon0"}) {
    ASSERT_TRUE(machine.kernel
                    .AddInterface({0, name, InterfaceType::Station,
                                   Wifi::Util::MACAddress("0e:00:00:00:00:" +
                                                          std::to_string(10 + KernelInterfaces().size())),
                                   false})
                    .Succeeded());
  }
  driver = std::make_unique<LinuxDriver>(LinuxSetup{.model = SupportedModel::Dune40}, machine.Doors());
  EXPECT_EQ((Interfaces{"wlan0", "wlan1", "wlan00", "mon0"}), KernelInterfaces());
}

TEST_F(LinuxDriverTest, NobodyIsCalledBackAfterItsEnd) {
  RadioPlan plan = Plan(0, {1});
  plan.station = Station("Uplink", "uplink-password");
  // However far it has got.
  for (int milliseconds = 0; milliseconds < 400; milliseconds += 7) {
    int answers = 0;
    driver = std::make_unique<LinuxDriver>(LinuxSetup{.model = SupportedModel::Dune40}, machine.Doors());
    driver->SetEventSink([&answers](const RadioEvent&) { ++answers; });
    const auto count = [&answers](const auto&) { ++answers; };
    driver->Apply(plan, ApplyMode::WhatDiffers, count);
    machine.Advance(milliseconds);
    driver->StartWPS("wlan0_1", count);
    driver->Scan(plan.radio, count);
    machine.Advance(1);
    const int before = answers;
    driver.reset();
    machine.kernel.EnforceCountry("DE");
    machine.kernel.EnforceCountry("00");
    machine.Advance(60'000);
    EXPECT_EQ(before, answers) << milliseconds;
  }
}

TEST_F(LinuxDriverTest, HardwareThatDoesNotCarryTheModelEndsItWithASentence) {
  FakeMachine other({MakeWiphy(0)});
  try {
    const LinuxDriver its(LinuxSetup{.model = SupportedModel::Dune40}, other.Doors());
    ADD_FAILURE() << "was made";
  } catch (const std::runtime_error& error) {
    EXPECT_STREQ(
        "the 1 phys of this machine do not carry the radios of the model Dune40: Band2_4GHz, Band5GHz",
        error.what());
  }
  // It hears of no country any more.
  other.kernel.EnforceCountry("DE");
}

TEST_F(LinuxDriverTest, ARadioWithoutAnInterfaceGetsOneWhichGoesWithTheDriver) {
  const auto start = [this] {
    driver = std::make_unique<LinuxDriver>(LinuxSetup{.model = SupportedModel::Dune40}, machine.Doors());
    EXPECT_EQ("radio1", driver->GetCapabilities().radios.at(1).interface);
    EXPECT_EQ("done", Describe(Apply(Plan(1, {1}))));
    EXPECT_EQ((Interfaces{"wlan0", "radio1", "radio1_1"}), KernelInterfaces());
  };
  driver.reset();
  ASSERT_TRUE(machine.kernel.DeleteInterface("wlan1").Succeeded());
  start();
  const Wifi::Util::MACAddress address = machine.kernel.InterfaceOf("radio1").address;
  driver.reset();
  EXPECT_EQ((Interfaces{"wlan0"}), KernelInterfaces());
  // Left by a daemon that was killed.
  ASSERT_TRUE(
      machine.kernel.AddInterface({1, "radio1", InterfaceType::AccessPoint, address, false}).Succeeded());
  start();
  driver.reset();
  EXPECT_EQ((Interfaces{"wlan0"}), KernelInterfaces());
}

TEST_F(LinuxDriverTest, ARadiosOwnInterfaceThatWasDeletedIsMadeAgainAsItWas) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  const Wifi::Util::MACAddress address = machine.kernel.InterfaceOf("wlan0").address;
  ASSERT_TRUE(machine.kernel.DeleteInterface("wlan0").Succeeded());
  machine.hostapd.LoseInterface("wlan0");
  machine.Advance(10);
  EXPECT_FALSE(Live(0).up);
  ASSERT_TRUE(WaitFor([this] { return Live(0).up && Live(0).bsss.size() == 1; }));
  EXPECT_EQ(address, machine.kernel.InterfaceOf("wlan0").address);
  // It is the machine's.
  driver.reset();
  EXPECT_EQ((Interfaces{"wlan1", "wlan0"}), KernelInterfaces());
}

TEST_F(LinuxDriverTest, ARouterOfEachModelComesUpAsItWasNeverSetUp) {
  using enum SupportedModel;
  using enum CountryCode;
  Wiphy narrow = MakeWiphy(1);
  narrow.band5GHz->maximumWidth = 40;
  const std::vector<std::tuple<SupportedModel, CountryCode, std::vector<int>>> cases = {
      {Alder100, DE, {6, 36, 0}}, {Alder100, US, {6, 36, 149}}, {Birch200, DE, {6, 36, 0}},
      {Cedar300, FR, {6, 36}},    {Dune40, US, {6, 36}},
  };
  for (const auto& [model, country, channels] : cases) {
    FakeMachine other({MakeWiphy(0), narrow, MakeWiphy(2)});
    LinuxDriver its(LinuxSetup{.model = model}, other.Doors());
    State state = MakeFirstState(its.GetCapabilities(), country);
    state.networks.push_back(MakeNetwork(1, "Home"));
    state.networks.back().bridge = "br0";
    std::vector<std::string> answers;
    for (const RadioPlan& plan : MakePlan(state, its.GetCapabilities(), {})) {
      its.Apply(plan, ApplyMode::WhatDiffers,
                [&answers](const Result<void>& result) { answers.push_back(Describe(result)); });
    }
    ASSERT_TRUE(other.WaitUntil([&] { return answers.size() == channels.size(); }));
    EXPECT_EQ(std::vector<std::string>(channels.size(), "done"), answers);
    std::vector<int> live;
    for (const LiveRadio& each : its.GetLive()) {
      live.push_back(each.channel);
      EXPECT_EQ(each.channel != 0 ? 1U : 0U, each.bsss.size());
    }
    EXPECT_EQ(channels, live);
  }
}

TEST_F(LinuxDriverTest, ARefusalOfHostapdIsGivenWithItsReasonAndTheRestGoesOn) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  RadioPlan bad = Plan(0, {1, 2});
  bad.bsss[1].passphrase = "short";
  TakeEvents();
  EXPECT_EQ(
      "RadioFailed wlan0_2 cannot be brought up: hostapd says: Line 15: invalid WPA passphrase length 5 "
      "(expected 8..63)",
      Describe(Apply(bad)));
  EXPECT_EQ("done", Describe(Apply(Plan(0, {1}))));
  EXPECT_EQ((Interfaces{"wlan0", "wlan0_1"}), machine.hostapd.GetBSSs("phy0"));
  EXPECT_EQ(1U, Live(0).bsss.size());
  EXPECT_EQ(1U, Live(0).bsss.at(0).stations.size());
  EXPECT_EQ(Events(), TakeEvents());
}

TEST_F(LinuxDriverTest, ABSSThatStayedHalfwayIsMadeAnew) {
  RadioPlan first = Plan(0, {1, 2});
  // So that it has no WPS, and its passphrase changes in place.
  first.bsss[1].hidden = true;
  ASSERT_TRUE(Apply(first).Succeeded());
  RadioPlan plan = first;
  plan.bsss[1].passphrase = "battery-staple";
  machine.hostapd.oddAnswers["IFNAME=wlan0_2 PMKSA_FLUSH"] = "FAIL\n";
  EXPECT_EQ("RadioFailed wlan0_2 cannot be changed: hostapd refuses it", Describe(Apply(plan)));
  const int before = machine.hostapd.addedBSSs;
  EXPECT_EQ("done", Describe(Apply(first)));
  EXPECT_EQ(before + 1, machine.hostapd.addedBSSs);
  EXPECT_EQ("wlan0_2", Join(1, 2).on);
}

TEST_F(LinuxDriverTest, FilesThatCannotBeWrittenFailThePlan) {
  machine.files.writeFailure = "No space left on device";
  const Result<void> answer = Apply(Plan(0, {1}));
  ASSERT_FALSE(answer.Succeeded());
  EXPECT_EQ(
      "the radio cannot be brought up on channel 1: cannot write /run/radios/wlan0.conf: No space left on "
      "device",
      answer.Why().sentence);
  machine.files.writeFailure.clear();
  EXPECT_EQ("done", Describe(Apply(Plan(0, {1}))));
}

TEST_F(LinuxDriverTest, AValueThatNoFileCanHoldFailsThePlan) {
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].passphrase = "correct\nhorse";
  EXPECT_EQ(
      "RadioFailed the radio Band2_4GHz cannot be set up: the value of wpa_passphrase would begin another "
      "line",
      Describe(Apply(plan)));
}

TEST_F(LinuxDriverTest, NoPassphraseIsEverSaid) {
  RadioPlan plan = Plan(0, {1});
  plan.bsss[0].passphrase = "correct-horse";
  plan.bsss[0].hidden = true;
  plan.station = Station("Uplink", "uplink-password");
  ASSERT_TRUE(Apply(plan).Succeeded());
  machine.hostapd.Print("passphrase 'correct-horse' is in use");
  machine.supplicant.Print("psk=\"uplink-password\" battery-staple");
  machine.Advance(10);
  plan.bsss[0].passphrase = "battery-staple";
  machine.hostapd.oddAnswers["IFNAME=wlan0_1 SET wpa_passphrase battery-staple"] = "FAIL\n";
  machine.hostapd.Print("still correct-horse");
  const Result<void> answer = Apply(plan);
  ASSERT_FALSE(answer.Succeeded());
  const std::string sayings = Sayings(answer);
  EXPECT_NE(std::string::npos, sayings.find("passphrase '***' is in use"));
  EXPECT_NE(std::string::npos, sayings.find("still ***"));
  for (const char* secret : {"correct-horse", "uplink-password"}) {
    EXPECT_EQ(std::string::npos, sayings.find(secret)) << secret;
  }
}

TEST_F(LinuxDriverTest, AKernelThatCannotBeAskedFailsThePlanAndNothingElse) {
  for (const std::string question : {"GetBridges", "GetCountry", "GetWiphys", "GetInterfaces"}) {
    SCOPED_TRACE(question);
    RadioPlan plan = Plan(0, {1});
    plan.station = Station("Uplink", "uplink-password");
    machine.kernel.broken = {question};
    const Result<void> answer = Apply(plan);
    ASSERT_FALSE(answer.Succeeded());
    EXPECT_EQ(ErrorCode::RadioFailed, answer.Why().code);
    EXPECT_NE(std::string::npos, answer.Why().sentence.find("the kernel does not answer: " + question))
        << answer.Why().sentence;
    machine.kernel.broken.clear();
    EXPECT_EQ("done", Describe(Apply(Plan(0, {}))));
  }
}

TEST_F(LinuxDriverTest, ViewsDoWithoutAKernelThatCannotBeAsked) {
  ASSERT_TRUE(Apply(Plan(0, {1})).Succeeded());
  Join(1, 1);
  machine.kernel.broken = {"GetStations",   "GetSurvey",  "GetNeighbours",
                           "GetInterfaces", "GetBridges", "GetWiphys"};
  machine.Advance(2000);
  const LiveRadio live = Live(0);
  EXPECT_EQ(0, live.utilisation);
  ASSERT_EQ(1U, live.bsss.at(0).stations.size());
  EXPECT_EQ(0, live.bsss.at(0).stations.at(0).signal);
  EXPECT_TRUE(driver->GetBridges().empty());
  const auto heard = Scan(0);
  ASSERT_FALSE(heard.Succeeded());
  EXPECT_EQ(ErrorCode::RadioFailed, heard.Why().code);
  driver.reset();
}

TEST_F(LinuxDriverTest, ASecondOperationOnARadioIsRefused) {
  std::vector<std::string> answers;
  const auto note = [&answers](const Result<void>& result) { answers.push_back(Describe(result)); };
  driver->Apply(Plan(0, {1}), ApplyMode::WhatDiffers, note);
  driver->Reconnect(RadioFrequency::Band2_4GHz, note);
  driver->Scan(RadioFrequency::Band5GHz_1, [&note](const auto& heard) { note(heard.Why()); });
  ASSERT_TRUE(WaitFor([&answers] { return answers.size() == 3; }));
  EXPECT_EQ((std::vector<std::string>{"Busy the radio Band2_4GHz is busy with another operation",
                                      "RadioFailed this router has no radio Band5GHz_1", "done"}),
            answers);
}

}  // namespace

}  // namespace TALO::Wifid
