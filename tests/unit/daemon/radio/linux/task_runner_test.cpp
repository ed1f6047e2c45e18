#include "daemon/radio/linux/task_runner.h"

#include "support/machine/fake_machine.h"
#include "support/machine/linux_router.h"
#include "support/machine/tasks.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace TALO::Wifid {

namespace {

using Lines = std::vector<std::string>;
using Wifi::Util::MACAddress;

class TaskRunnerTest : public testing::Test {
 protected:
  TaskRunnerTest() {
    for (Program* program : {&hostapd_, &supplicant_}) {
      program->Start();
      EXPECT_TRUE(machine_.WaitUntil([program] { return program->IsReady(); }));
    }
  }

  static Program::Sinks Sinks() {
    return {.ready = [] {},
            .gone = [] {},
            .message = [](const ControlMessage&) {},
            .lookAgain = [] {},
            .hideSecrets = [](const std::string& line) { return line; }};
  }

  std::string Run(std::vector<Task> tasks) {
    std::optional<Result<void>> answer;
    runner_.Run(std::move(tasks), [&answer](const Result<void>& result) { answer = result; });
    return machine_.WaitUntil([&answer] { return answer.has_value(); }) ? Describe(*answer)
                                                                        : "never answered";
  }

  FakeMachine machine_;
  Program hostapd_{{"hostapd", {"/usr/sbin/hostapd", {"-g", "/run/a"}}, "/run/a"}, machine_.Doors(), Sinks()};
  Program supplicant_{{"wpa_supplicant", {"/usr/sbin/wpa_supplicant", {"-g", "/run/b"}}, "/run/b"},
                      machine_.Doors(),
                      Sinks()};
  Lines lines_;
  TaskRunner runner_{machine_.Doors(),
                     hostapd_,
                     supplicant_,
                     {.reached =
                          [this](const Outcome& outcome) {
                            lines_.push_back("reached" + Describe({{{}, outcome}}).back());
                          },
                      .doubted =
                          [this](const Outcome& outcome) {
                            lines_.push_back("doubted" + Describe({{{}, outcome}}).back());
                          }}};
};

Kernel::NewInterface NewInterface(const std::string& name, const std::string& address) {
  return {0, name, InterfaceType::Station, MACAddress(address), false};
}

TEST_F(TaskRunnerTest, ATaskThatIsNotNeededIsNotedWhereItFailsAndTheNextGoesOn) {
  machine_.kernel.refusals["SetTransmitPower"] = "Operation not supported";
  EXPECT_EQ("done", Run({{{SendWithPower{0, 17}, WriteFile{"a", "a"}}, PowerIs{17}, false},
                         {{WriteFile{"b", "b"}}, RadioIsDown{}}}));
  EXPECT_EQ((Lines{"doubted= power is 17", "reached= radio is down"}), lines_);
  EXPECT_FALSE(machine_.files.files.contains("a"));
  EXPECT_TRUE(machine_.files.files.contains("b"));
  EXPECT_TRUE(machine_.HasNote(DriverNote::Weight::Warning,
                               "the radio cannot send with 17 dBm: phy0: Operation not supported"));
}

TEST_F(TaskRunnerTest, CarriesOutEveryKindOfAction) {
  machine_.files.files["old.conf"] = "old";
  EXPECT_EQ(
      "done",
      Run({{{WriteFile{"new.conf", "new"}, RemoveFile{"old.conf"}, SendWithPower{0, 17},
             MakeInterface{NewInterface("wlan0sta", "0a:00:00:00:00:01")}},
            RadioIsDown{}},
           {{MakeInterface{{0, "wlan0bhs", InterfaceType::Station, MACAddress("0a:00:00:00:00:02"), true}},
             PutOnBridge{"wlan0bhs", "br1"}, DropInterface{"wlan0sta"}, DropInterface{"not there"}},
            PowerIs{17}}}));
  EXPECT_EQ((std::map<std::string, std::string>{{"new.conf", "new"}}), machine_.files.files);
  EXPECT_EQ(17, machine_.kernel.powers.at(0));
  EXPECT_FALSE(machine_.kernel.HasInterface("wlan0sta"));
  EXPECT_EQ("br1", machine_.kernel.GetBridgeOf("wlan0bhs"));
  EXPECT_EQ((Lines{"reached= radio is down", "reached= power is 17"}), lines_);
}

TEST_F(TaskRunnerTest, AnInterfaceThatIsLeftFromBeforeIsMadeAnew) {
  ASSERT_TRUE(machine_.kernel.AddInterface(NewInterface("wlan0sta", "0a:00:00:00:00:09")).Succeeded());
  EXPECT_EQ("done", Run({{{MakeInterface{NewInterface("wlan0sta", "0a:00:00:00:00:01")}}, StationIs{}}}));
  EXPECT_EQ(MACAddress("0a:00:00:00:00:01"), machine_.kernel.InterfaceOf("wlan0sta").address);
}

TEST_F(TaskRunnerTest, AnInterfaceIsKeptOrMadeAndNeverTakenFromAnotherRadio) {
  const MACAddress address = machine_.kernel.InterfaceOf("wlan0").address;
  EXPECT_EQ("done", Run({{{KeepInterface{NewInterface("wlan0", "0a:00:00:00:00:01")},
                           KeepInterface{NewInterface("radio0", "0a:00:00:00:00:02")}},
                          RadioIsDown{}}}));
  EXPECT_EQ(address, machine_.kernel.InterfaceOf("wlan0").address);
  EXPECT_EQ(MACAddress("0a:00:00:00:00:02"), machine_.kernel.InterfaceOf("radio0").address);
  EXPECT_EQ("RadioFailed the radio cannot be taken down: the interface wlan1 belongs to another radio now",
            Run({{{KeepInterface{NewInterface("wlan1", "0a:00:00:00:00:03")}}, RadioIsDown{}}}));
}

TEST_F(TaskRunnerTest, AFailureEndsItAndItsTaskIsInDoubt) {
  machine_.kernel.refusals["SetTransmitPower"] = "Device or resource busy";
  EXPECT_EQ("RadioFailed the radio cannot send with 17 dBm: phy0: Device or resource busy",
            Run({{{WriteFile{"a", "a"}}, RadioIsDown{}},
                 {{WriteFile{"b", "b"}, SendWithPower{0, 17}, WriteFile{"c", "c"}}, PowerIs{17}},
                 {{WriteFile{"d", "d"}}, BSSIsDown{"wlan0_1"}}}));
  EXPECT_EQ((Lines{"reached= radio is down", "doubted= power is 17"}), lines_);
  EXPECT_EQ((std::map<std::string, std::string>{{"a", "a"}, {"b", "b"}}), machine_.files.files);
  EXPECT_EQ("done", Run({{{WriteFile{"e", "e"}}, RadioIsDown{}}}));
}

TEST_F(TaskRunnerTest, GivesTheReasonThatTheProgramPrints) {
  machine_.hostapd.Print("long before");
  machine_.Advance(10);
  EXPECT_EQ(
      "RadioFailed wlan0_1 cannot be taken down: hostapd says: Could not open configuration file '/x' for "
      "reading.",
      Run({{{AskHostapd{"ADD bss_config=phy0:/x"}}, BSSIsDown{"wlan0_1"}}}));
  EXPECT_EQ("RadioFailed wlan0_1 cannot be taken down: hostapd refuses it",
            Run({{{AskHostapd{"REMOVE wlan0_1"}}, BSSIsDown{"wlan0_1"}}}));
  EXPECT_EQ("RadioFailed the station cannot be set up: wpa_supplicant refuses it",
            Run({{{AskSupplicant{"INTERFACE_REMOVE wlan0sta"}}, StationIs{}}}));
}

TEST_F(TaskRunnerTest, WhatMayFailDoes) {
  EXPECT_EQ("done",
            Run({{{AskHostapd{"REMOVE wlan0_1", true}, AskSupplicant{"INTERFACE_REMOVE wlan0sta", true}},
                  BSSIsDown{"wlan0_1"}}}));
}

TEST_F(TaskRunnerTest, AProgramThatEndsFailsWhatItWasAskedUnlessThatMayFail) {
  machine_.hostapd.diesOf = "REMOVE wlan0_1";
  EXPECT_EQ("RadioFailed wlan0_1 cannot be taken down: hostapd does not run: it ended: killed by signal 11",
            Run({{{AskHostapd{"REMOVE wlan0_1"}}, BSSIsDown{"wlan0_1"}}}));
  EXPECT_EQ((Lines{"doubted= wlan0_1 is down"}), lines_);
  lines_.clear();
  EXPECT_EQ("done", Run({{{AskHostapd{"REMOVE wlan0_1", true}}, BSSIsDown{"wlan0_1"}}}));
  EXPECT_EQ((Lines{"reached= wlan0_1 is down"}), lines_);
}

TEST_F(TaskRunnerTest, SaysOfEachOutcomeWhatDidNotWork) {
  BSSPlan bss;
  bss.interface = "wlan0_1";
  ChannelSettings channel;
  channel.channel = 6;
  const std::vector<std::pair<Outcome, std::string>> cases = {
      {RadioIsDown{}, "the radio cannot be taken down"},
      {RadioIsUp{channel}, "the radio cannot be brought up on channel 6"},
      {BSSIsDown{"wlan0_1"}, "wlan0_1 cannot be taken down"},
      {BSSIsUp{bss}, "wlan0_1 cannot be brought up"},
      {BSSHasChanged{bss, {}}, "wlan0_1 cannot be changed"},
      {PowerIs{3}, "the radio cannot send with 3 dBm"},
      {StationIs{}, "the station cannot be set up"},
      {BackhaulStationIs{}, "the backhaul station cannot be set up"},
      {ListenerIs{true}, "the radio cannot listen"},
      {StationsRejoin{}, "the stations cannot rejoin"},
  };
  EXPECT_EQ(std::variant_size_v<Outcome>, cases.size());
  for (const auto& [outcome, sentence] : cases) {
    EXPECT_EQ("RadioFailed " + sentence + ": wlan9: No such device",
              Run({{{PutOnBridge{"wlan9", "br0"}}, outcome}}));
  }
}

TEST_F(TaskRunnerTest, SaysWhatIsUnderWay) {
  EXPECT_EQ(nullptr, runner_.UnderWay());
  runner_.Run({{{AskHostapd{"REMOVE wlan0_1", true}}, PowerIs{3}}}, [](const Result<void>&) {});
  ASSERT_NE(nullptr, runner_.UnderWay());
  EXPECT_EQ(Outcome(PowerIs{3}), *runner_.UnderWay());
  machine_.Advance(10);
  EXPECT_EQ(nullptr, runner_.UnderWay());
}

}  // namespace

}  // namespace TALO::Wifid
