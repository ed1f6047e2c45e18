#include "support/fake_daemon.h"
#include "support/tool_run.h"
#include "values/errors.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;
using Calls = std::vector<std::string>;

namespace {

class DefaultWPS : public testing::Test {
 protected:
  DefaultWPS() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

class IsDefaultWPS_PBCAvalible : public DefaultWPS {};

TEST_F(IsDefaultWPS_PBCAvalible, PrintsOneDigitAndALineEnd) {
  daemon_.defaultWPSTarget = {7, RadioFrequency::Band5GHz};
  for (const bool available : {true, false}) {
    daemon_.calls.clear();
    daemon_.isWPS_PBCAvailable = available;
    const ToolRun run = runTool({"isDefaultWPS_PBCAvalible"});
    EXPECT_EQ(run.output, available ? "1\n" : "0\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDefaultWPSTarget()",
                                    "IsWPS_PBCAvailable({id=7, radio=Band5GHz})"}));
  }
}

TEST_F(IsDefaultWPS_PBCAvalible, PassesAnOddTargetStraightOn) {
  daemon_.defaultWPSTarget = {-1, RadioFrequency{77}};
  const ToolRun run = runTool({"isDefaultWPS_PBCAvalible"});
  EXPECT_EQ(run.output, "0\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDefaultWPSTarget()",
                                  "IsWPS_PBCAvailable({id=-1, radio=77})"}));
}

TEST_F(IsDefaultWPS_PBCAvalible, DoesNotAskFurtherWhenTheTargetIsRefused) {
  daemon_.Fail("GetDefaultWPSTarget",
               Wifi::WifiException(make_error_code(Wifi::ErrorCode::NotFound), "none"));
  const ToolRun run = runTool({"isDefaultWPS_PBCAvalible"});
  EXPECT_EQ(run.output, "Failed to execute command: none: Not found\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDefaultWPSTarget()"}));
}

class TriggerDefaultWPS_PBC : public DefaultWPS {};

TEST_F(TriggerDefaultWPS_PBC, StartsOnTheDefaultTargetWithoutAskingWhetherItIsAvailable) {
  daemon_.defaultWPSTarget = {3, RadioFrequency::Band2_4GHz};
  daemon_.isWPS_PBCAvailable = false;
  const ToolRun run = runTool({"triggerDefaultWPS_PBC"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDefaultWPSTarget()",
                                  "TriggerWPS_PBC({id=3, radio=Band2_4GHz})"}));
}

TEST_F(TriggerDefaultWPS_PBC, StartsNothingWhenTheTargetIsRefused) {
  daemon_.Fail("GetDefaultWPSTarget",
               Wifi::WifiException(make_error_code(Wifi::ErrorCode::NotFound), "none"));
  const ToolRun run = runTool({"triggerDefaultWPS_PBC"});
  EXPECT_EQ(run.output, "Failed to execute command: none: Not found\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDefaultWPSTarget()"}));
}

class GetDevices : public testing::Test {
 protected:
  GetDevices() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(GetDevices, PrintsAnEmptyArrayWhenNoDeviceIsConnected) {
  const ToolRun run = runTool({"getDevices"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
}

TEST_F(GetDevices, PrintsEveryMemberOfEveryDeviceInTheOrderReturned) {
  daemon_.devices = {{.address = MACAddress("02:00:00:00:00:FF"),
                      .name = "phone",
                      .ipAddress = "192.0.2.7",
                      .networkId = 7,
                      .ssid = "Home",
                      .radio = RadioFrequency::Band5GHz_1,
                      .interface = "wlan1",
                      .signal = -52,
                      .transmitRate = 866,
                      .receiveRate = 780,
                      .connectedTime = 3600},
                     {.address = MACAddress("02:00:00:00:00:01"),
                      .name = "a \"quoted\" name",
                      .ipAddress = "2001:db8::1",
                      .networkId = 1,
                      .ssid = std::string("\xFF\0x", 3),
                      .radio = RadioFrequency{9},
                      .interface = "wlan0",
                      .signal = 0,
                      .transmitRate = -1,
                      .receiveRate = 2147483647,
                      .connectedTime = 0}};
  const ToolRun run = runTool({"getDevices"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"address\" : \"02:00:00:00:00:ff\",\n"
            "\t\t\"connectedTime\" : 3600,\n"
            "\t\t\"interface\" : \"wlan1\",\n"
            "\t\t\"ipAddress\" : \"192.0.2.7\",\n"
            "\t\t\"name\" : \"phone\",\n"
            "\t\t\"networkId\" : 7,\n"
            "\t\t\"radio\" : \"Band5GHz_1\",\n"
            "\t\t\"receiveRate\" : 780,\n"
            "\t\t\"signal\" : -52,\n"
            "\t\t\"ssid\" : \"Home\",\n"
            "\t\t\"ssidHex\" : \"486f6d65\",\n"
            "\t\t\"transmitRate\" : 866\n"
            "\t},\n"
            "\t{\n"
            "\t\t\"address\" : \"02:00:00:00:00:01\",\n"
            "\t\t\"connectedTime\" : 0,\n"
            "\t\t\"interface\" : \"wlan0\",\n"
            "\t\t\"ipAddress\" : \"2001:db8::1\",\n"
            "\t\t\"name\" : \"a \\\"quoted\\\" name\",\n"
            "\t\t\"networkId\" : 1,\n"
            "\t\t\"radio\" : 9,\n"
            "\t\t\"receiveRate\" : 2147483647,\n"
            "\t\t\"signal\" : 0,\n"
            "\t\t\"ssid\" : \"\\ufffd\\u0000x\",\n"
            "\t\t\"ssidHex\" : \"ff0078\",\n"
            "\t\t\"transmitRate\" : -1\n"
            "\t}\n"
            "]\n"
            "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{"WifiClientFactory::GetInstance()", "GetDevices()"}));
}

TEST_F(GetDevices, PrintsADeviceOfWhichNothingIsKnownInFull) {
  daemon_.devices = {{}};
  const ToolRun run = runTool({"getDevices"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"address\" : \"00:00:00:00:00:00\",\n"
            "\t\t\"connectedTime\" : 0,\n"
            "\t\t\"interface\" : \"\",\n"
            "\t\t\"ipAddress\" : \"\",\n"
            "\t\t\"name\" : \"\",\n"
            "\t\t\"networkId\" : 0,\n"
            "\t\t\"radio\" : \"Error\",\n"
            "\t\t\"receiveRate\" : 0,\n"
            "\t\t\"signal\" : 0,\n"
            "\t\t\"ssid\" : \"\",\n"
            "\t\t\"ssidHex\" : \"\",\n"
            "\t\t\"transmitRate\" : 0\n"
            "\t}\n"
            "]\n"
            "\n");
  EXPECT_EQ(run.status, 0);
}

}  // namespace

}  // namespace TALO::Tool
