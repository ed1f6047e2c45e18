#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScheduleMode;
using Calls = std::vector<std::string>;

namespace {

class ScheduleCommand : public testing::Test {
 protected:
  ScheduleCommand() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

class UpdateSchedule : public ScheduleCommand {};

TEST_F(UpdateSchedule, PassesEveryModeOnAndErrorWithThem) {
  for (const std::string mode : {"Error", "ValidFor", "Customized"}) {
    SCOPED_TRACE(mode);
    FakeDaemon::Reset();
    const ToolRun run = runTool({"updateSchedule", "--mode", mode});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls,
              (Calls{"WifiClientFactoryForTool::GetInstance()", "UpdateSchedule(" + mode + ")"}));
  }
}

TEST_F(UpdateSchedule, PassesMinusOneOnForTheModeError) {
  const ToolRun run = runTool({"updateSchedule", "--mode", "Error"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactoryForTool::GetInstance()", "UpdateSchedule(Error)"}));
  EXPECT_EQ(static_cast<int>(ScheduleMode::Error), -1);
}

TEST_F(UpdateSchedule, RefusesTheLowerCaseWordCustomized) {
  const ToolRun run = runTool({"updateSchedule", "--mode", "customized"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi4Util12ScheduleModeE]: customized: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{});
}

TEST_F(UpdateSchedule, ConvertsTheModeBeforeItObtainsTheClient) {
  for (const std::string mode : {"", "bad", "ValidFor ", "Valid", "1"}) {
    SCOPED_TRACE(mode);
    FakeDaemon::Reset();
    daemon_.Fail("WifiClientFactoryForTool", std::runtime_error("no client"));
    const ToolRun run = runTool({"updateSchedule", "--mode", mode});
    EXPECT_EQ(run.output,
              "Failed to execute command: Failed to convert string to enum class "
              "[N4TALO4Wifi4Util12ScheduleModeE]: " +
                  mode + ": Runtime error\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{});
  }
}

class GetScheduleStatus : public ScheduleCommand {};

TEST_F(GetScheduleStatus, PrintsTheRadiosOfANetworkInTheOrderOfItsEntries) {
  daemon_.scheduleStatus = {{7,
                             {{RadioFrequency::Band2_4GHz, ScheduleMode::Customized, 3},
                              {RadioFrequency::Band5GHz, ScheduleMode::ValidFor, 0}}}};
  const ToolRun run = runTool({"getScheduleStatus"});
  EXPECT_EQ(run.output, "ID: 7\n\tBand2_4GHz: 3\n\tBand5GHz: 0\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetScheduleStatus()"}));
}

TEST_F(GetScheduleStatus, PrintsTheNetworksInAscendingOrder) {
  daemon_.scheduleStatus = {{10, {{RadioFrequency::Band5GHz_2, ScheduleMode::Error, 2147483647}}},
                            {2, {}},
                            {-3,
                             {{RadioFrequency::SmartConnect, ScheduleMode::Error, -1},
                              {RadioFrequency::Error, ScheduleMode::Error, -2147483647 - 1},
                              {RadioFrequency::Band5GHz_1, ScheduleMode::Error, 60},
                              {RadioFrequency::Band5GHz_1, ScheduleMode::Error, 60}}}};
  const ToolRun run = runTool({"getScheduleStatus"});
  EXPECT_EQ(run.output,
            "ID: -3\n"
            "\tSmartConnect: -1\n"
            "\tError: -2147483648\n"
            "\tBand5GHz_1: 60\n"
            "\tBand5GHz_1: 60\n"
            "ID: 2\n"
            "ID: 10\n"
            "\tBand5GHz_2: 2147483647\n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetScheduleStatus, TakesNoNoticeOfAModeWithoutAName) {
  daemon_.scheduleStatus = {{1, {{RadioFrequency::Band5GHz, ScheduleMode{99}, 5}}}};
  const ToolRun run = runTool({"getScheduleStatus"});
  EXPECT_EQ(run.output, "ID: 1\n\tBand5GHz: 5\n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetScheduleStatus, KeepsWhatItPrintedWhenARadioHasNoName) {
  daemon_.scheduleStatus = {{1, {{RadioFrequency::Band5GHz, ScheduleMode::ValidFor, 5}}},
                            {7, {{RadioFrequency{5}, ScheduleMode::ValidFor, 6}}},
                            {8, {{RadioFrequency::Band5GHz, ScheduleMode::ValidFor, 7}}}};
  const ToolRun run = runTool({"getScheduleStatus"});
  EXPECT_EQ(run.output,
            "ID: 1\n"
            "\tBand5GHz: 5\n"
            "ID: 7\n"
            "\tFailed to execute command: Failed to Convert enum class [N4TALO4Wifi4Util14RadioFrequencyE] "
            "to string: 5: Runtime error\n");
  EXPECT_EQ(run.status, 1);
}

/// The two commands that take a network and a radio. Both obtain their client before they convert the radio.
struct RadioCommand {
  std::string command;
  std::string factory;
  std::string operation;

  friend void PrintTo(const RadioCommand& row, std::ostream* out) { *out << row.command; }
};

class CommandOnARadio : public testing::TestWithParam<RadioCommand> {
 protected:
  CommandOnARadio() { FakeDaemon::Reset(); }
  Calls Obtained() const { return {GetParam().factory + "::GetInstance()"}; }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

INSTANTIATE_TEST_SUITE_P(
    , CommandOnARadio,
    testing::Values(RadioCommand{"rotatePassword", "WifiClientFactoryForTool", "RotatePassword"},
                    RadioCommand{"triggerWPS_PBC", "WifiClientFactory", "TriggerWPS_PBC"}),
    [](const auto& row) { return row.param.command; });

TEST_P(CommandOnARadio, PassesEveryRadioOnSmartConnectAndErrorIncluded) {
  for (const std::string radio :
       {"Error", "SmartConnect", "Band2_4GHz", "Band5GHz", "Band5GHz_1", "Band5GHz_2"}) {
    SCOPED_TRACE(radio);
    FakeDaemon::Reset();
    const ToolRun run = runTool({GetParam().command, "--id", "-4", "--radio", radio});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{GetParam().factory + "::GetInstance()",
                                    GetParam().operation + "({id=-4, radio=" + radio + "})"}));
  }
}

TEST_P(CommandOnARadio, RefusesARadioThatIsNotExactlyANameOnceItHasTheClient) {
  for (const std::string radio : {"", "bad", "band2_4ghz", "Band5GHz ", "Band5", "Band6GHz", "0", "-1"}) {
    SCOPED_TRACE(radio);
    FakeDaemon::Reset();
    const ToolRun run = runTool({GetParam().command, "--id", "7", "--radio", radio});
    EXPECT_EQ(run.output,
              "Failed to execute command: Failed to convert string to enum class "
              "[N4TALO4Wifi4Util14RadioFrequencyE]: " +
                  radio + ": Runtime error\n");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Obtained());
  }
}

TEST_P(CommandOnARadio, ObtainsTheClientBeforeItConvertsTheRadio) {
  daemon_.Fail(GetParam().factory, std::runtime_error("no client"));
  const ToolRun run = runTool({GetParam().command, "--id", "7", "--radio", "bad"});
  EXPECT_EQ(run.output, "no client\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Obtained());
}

class TriggerWPS_PBC : public ScheduleCommand {};

TEST_F(TriggerWPS_PBC, PassesZeroOnForTheRadioSmartConnect) {
  const ToolRun run = runTool({"triggerWPS_PBC", "--id", "1", "--radio", "SmartConnect"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"WifiClientFactory::GetInstance()", "TriggerWPS_PBC({id=1, radio=SmartConnect})"}));
  EXPECT_EQ(static_cast<int>(RadioFrequency::SmartConnect), 0);
}

TEST_F(TriggerWPS_PBC, RefusesARadioInTheWrongCase) {
  const ToolRun run = runTool({"triggerWPS_PBC", "--id", "1", "--radio", "band2_4ghz"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi4Util14RadioFrequencyE]: band2_4ghz: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{"WifiClientFactory::GetInstance()"});
}

TEST_F(TriggerWPS_PBC, PassesMinusOneOnForTheRadioError) {
  const ToolRun run = runTool({"triggerWPS_PBC", "--id", "1", "--radio", "Error"});
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"WifiClientFactory::GetInstance()", "TriggerWPS_PBC({id=1, radio=Error})"}));
  EXPECT_EQ(static_cast<int>(RadioFrequency::Error), -1);
}

TEST_F(TriggerWPS_PBC, DoesNotAskForTheDefaultTargetOrWhetherItIsAvailable) {
  daemon_.Fail("GetDefaultWPSTarget", std::runtime_error("not asked"));
  daemon_.Fail("IsWPS_PBCAvailable", std::runtime_error("not asked"));
  const ToolRun run = runTool({"triggerWPS_PBC", "--id", "1", "--radio", "Band5GHz"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
}

class WPSERConfig : public ScheduleCommand {};

TEST_F(WPSERConfig, PassesAnEmptyKeyOn) {
  const ToolRun run =
      runTool({"wpsERConfig", "--ifName", "wlan0", "--ssid", "Home", "--key", "", "--mode", "OWE"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactoryForTool::GetInstance()",
                                  R"(WPSERConfig({ifName="wlan0", ssid="Home", key="", mode="OWE"}))"}));
}

TEST_F(WPSERConfig, ChecksAndConvertsNothing) {
  const ToolRun run =
      runTool({"wpsERConfig", "--ifName", "", "--ssid", "\xFF \xC3\xA9", "--key", "-x", "--mode", "no mode"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls,
            (Calls{"WifiClientFactoryForTool::GetInstance()",
                   R"(WPSERConfig({ifName="", ssid="\xff \xc3\xa9", key="-x", mode="no mode"}))"}));
}

class TriggerWPSConnected : public ScheduleCommand {};

TEST_F(TriggerWPSConnected, PassesAnEmptyInterfaceOn) {
  const ToolRun run = runTool({"triggerWPSConnected", "--ifName", ""});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", R"(TriggerWPSConnected(""))"}));
}

}  // namespace

}  // namespace TALO::Tool
