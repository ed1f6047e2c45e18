#include "support/command_test.h"
#include "support/conversion_messages.h"

#include <stdexcept>

namespace TALO::Tool {

using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;
using Wifi::Util::SecurityMode;

namespace {

class GetScanResults : public CommandTest {};
class GetStations : public CommandTest {};
class GetStationStatuses : public CommandTest {};
class GetStationInterfaces : public CommandTest {};
class ReconnectAllSTA : public CommandTest {};

TEST_F(GetScanResults, PrintsEveryMemberInTheDaemonsOrder) {
  daemon_.scanResults = {{RadioFrequency::Band5GHz, "Upstream", MACAddress("02:00:00:00:00:0A"), 36, 80, -61,
                          SecurityMode::PersonalWPA3, true, 4},
                         {RadioFrequency::Band5GHz, "\xff", MACAddress("02:00:00:00:00:01"), 40, 20, -90,
                          static_cast<SecurityMode>(-5), false, 0}};
  const ToolRun run = runTool({"getScanResults", "--radio", "Band5GHz"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"age\" : 4,\n"
            "\t\t\"bssid\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\"channel\" : 36,\n"
            "\t\t\"channelWidth\" : 80,\n"
            "\t\t\"radio\" : \"Band5GHz\",\n"
            "\t\t\"securityMode\" : \"PersonalWPA3\",\n"
            "\t\t\"signal\" : -61,\n"
            "\t\t\"ssid\" : \"Upstream\",\n"
            "\t\t\"ssidHex\" : \"557073747265616d\",\n"
            "\t\t\"wps\" : true\n"
            "\t},\n"
            "\t{\n"
            "\t\t\"age\" : 0,\n"
            "\t\t\"bssid\" : \"02:00:00:00:00:01\",\n"
            "\t\t\"channel\" : 40,\n"
            "\t\t\"channelWidth\" : 20,\n"
            "\t\t\"radio\" : \"Band5GHz\",\n"
            "\t\t\"securityMode\" : -5,\n"
            "\t\t\"signal\" : -90,\n"
            "\t\t\"ssid\" : \"\\ufffd\",\n"
            "\t\t\"ssidHex\" : \"ff\",\n"
            "\t\t\"wps\" : false\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetScanResults(Band5GHz)"}));
}

TEST_F(GetScanResults, TakesEveryNameOfARadio) {
  for (const std::string radio :
       {"Error", "SmartConnect", "Band2_4GHz", "Band5GHz", "Band5GHz_1", "Band5GHz_2"}) {
    SCOPED_TRACE(radio);
    daemon_.calls.clear();
    const ToolRun run = runTool({"getScanResults", "--radio", radio});
    EXPECT_EQ(run.output, "[]\n\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetScanResults(" + radio + ")"}));
  }
}

TEST_F(GetScanResults, RefusesWordsThatNameNoRadioBeforeItAsksForAClient) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  for (const char* radio : kNoRadios) {
    SCOPED_TRACE(radio);
    daemon_.calls.clear();
    const ToolRun run = runTool({"getScanResults", "--radio", radio});
    EXPECT_EQ(run.output, unknownWord(kRadioFrequencyType, radio));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
  }
}

TEST_F(GetStations, PrintsEveryMember) {
  daemon_.stationSettings = {{true, "Upstream", "us\xe9r", "correct-horse", MACAddress("02:00:00:00:00:0a"),
                              SecurityMode::EnterpriseWPA2, RadioFrequency::Band2_4GHz}};
  const ToolRun run = runTool({"getStations"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"bssid\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\"enable\" : true,\n"
            "\t\t\"essid\" : \"Upstream\",\n"
            "\t\t\"essidHex\" : \"557073747265616d\",\n"
            "\t\t\"password\" : \"correct-horse\",\n"
            "\t\t\"radio\" : \"Band2_4GHz\",\n"
            "\t\t\"securityMode\" : \"EnterpriseWPA2\",\n"
            "\t\t\"user\" : \"us\\ufffdr\",\n"
            "\t\t\"userHex\" : \"7573e972\"\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationSettings()"}));
}

TEST_F(GetStations, PrintsTheEmptyTextsOfANewStationInFull) {
  daemon_.stationSettings.resize(1);
  const ToolRun run = runTool({"getStations"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"bssid\" : \"00:00:00:00:00:00\",\n"
            "\t\t\"enable\" : false,\n"
            "\t\t\"essid\" : \"\",\n"
            "\t\t\"essidHex\" : \"\",\n"
            "\t\t\"password\" : \"\",\n"
            "\t\t\"radio\" : \"Error\",\n"
            "\t\t\"securityMode\" : \"Error\",\n"
            "\t\t\"user\" : \"\",\n"
            "\t\t\"userHex\" : \"\"\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationSettings()"}));
}

TEST_F(GetStations, BehavesWithExtraWordsAsWithoutThem) {
  const ToolRun alone = runTool({"getStations"});
  EXPECT_EQ(alone.output, "[]\n\n");
  daemon_.calls.clear();
  const ToolRun run = runTool({"getStations", "Band5GHz", "--radio", "Band5GHz"});
  EXPECT_EQ(run.output, alone.output);
  EXPECT_EQ(run.status, alone.status);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationSettings()"}));
}

TEST_F(GetStationStatuses, PrintsEveryMember) {
  daemon_.stationStatuses = {{RadioFrequency::Band5GHz_2, "wlan2-sta", true, "connected", "", "Upstream",
                              MACAddress("02:00:00:00:00:0a"), 100, -55, 866, 3600}};
  const ToolRun run = runTool({"getStationStatuses"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"bssid\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\"channel\" : 100,\n"
            "\t\t\"connected\" : true,\n"
            "\t\t\"connectedTime\" : 3600,\n"
            "\t\t\"essid\" : \"Upstream\",\n"
            "\t\t\"essidHex\" : \"557073747265616d\",\n"
            "\t\t\"interface\" : \"wlan2-sta\",\n"
            "\t\t\"radio\" : \"Band5GHz_2\",\n"
            "\t\t\"reason\" : \"\",\n"
            "\t\t\"signal\" : -55,\n"
            "\t\t\"state\" : \"connected\",\n"
            "\t\t\"transmitRate\" : 866\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationStatuses()"}));
}

TEST_F(GetStationInterfaces, PrintsItsHeadingAndOneEmptyLineForAnEmptyMap) {
  const ToolRun run = runTool({"getStationInterfaces"});
  EXPECT_EQ(run.output, "Interfaces: \n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationInterfaces()"}));
}

TEST_F(GetStationInterfaces, PrintsTheInterfacesInTheOrderOfTheRadios) {
  daemon_.stationInterfaces = {{RadioFrequency::Band5GHz_2, "wlan2"}, {RadioFrequency::Band5GHz_1, "wlan1"},
                               {RadioFrequency::Band5GHz, ""},        {RadioFrequency::Band2_4GHz, "\xff a"},
                               {RadioFrequency::SmartConnect, "any"}, {RadioFrequency::Error, "none"}};
  const ToolRun run = runTool({"getStationInterfaces"});
  EXPECT_EQ(run.output,
            "Interfaces: \n"
            "\t Error : none\n"
            "\t SmartConnect : any\n"
            "\t Band2_4GHz : \xff a\n"
            "\t Band5GHz : \n"
            "\t Band5GHz_1 : wlan1\n"
            "\t Band5GHz_2 : wlan2\n"
            "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationInterfaces()"}));
}

TEST_F(GetStationInterfaces, LeavesWhatItPrintedInFrontOfARadioWithoutAName) {
  daemon_.stationInterfaces = {{RadioFrequency::Band2_4GHz, "wlan0"},
                               {static_cast<RadioFrequency>(5), "wlan1"},
                               {static_cast<RadioFrequency>(6), "wlan2"}};
  const ToolRun run = runTool({"getStationInterfaces"});
  EXPECT_EQ(run.output, "Interfaces: \n\t Band2_4GHz : wlan0\n\t " + unnamedValue(kRadioFrequencyType, "5"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetStationInterfaces()"}));
}

TEST_F(ReconnectAllSTA, PrintsNothing) {
  const ToolRun run = runTool({"reconnectAllSTA"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "ReconnectAllSTA()"}));
}

}  // namespace

}  // namespace TALO::Tool
