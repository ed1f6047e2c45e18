#include "support/command_test.h"
#include "support/conversion_messages.h"

namespace TALO::Tool {

using Wifi::CountryCode;
using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;

namespace {

class GetRadios : public CommandTest {};
class GetRadioStatuses : public CommandTest {};
class GetRadioStatusesSimple : public CommandTest {};
class GetRadioIfStatuses : public CommandTest {};
class GetInterfaceRadioMap : public CommandTest {};
class GetRadioConversionInfo : public CommandTest {};

constexpr auto kUnnamed = static_cast<RadioFrequency>(7);
constexpr auto kNegativeUnnamed = static_cast<RadioFrequency>(-2);

TEST_F(GetRadios, PrintsEveryMemberInTheDaemonsOrder) {
  daemon_.radioSettings = {{RadioFrequency::Band5GHz_2, true, 36, 160, 75, 6, CountryCode::DE},
                           {kUnnamed, false, 0, 20, 100, 4, CountryCode::MaxCountryCode}};
  const ToolRun run = runTool({"getRadios"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"channel\" : 36,\n"
            "\t\t\"channelWidth\" : 160,\n"
            "\t\t\"country\" : \"DE\",\n"
            "\t\t\"enable\" : true,\n"
            "\t\t\"radio\" : \"Band5GHz_2\",\n"
            "\t\t\"transmitPower\" : 75,\n"
            "\t\t\"wifiGeneration\" : 6\n"
            "\t},\n"
            "\t{\n"
            "\t\t\"channel\" : 0,\n"
            "\t\t\"channelWidth\" : 20,\n"
            "\t\t\"country\" : \"MaxCountryCode\",\n"
            "\t\t\"enable\" : false,\n"
            "\t\t\"radio\" : 7,\n"
            "\t\t\"transmitPower\" : 100,\n"
            "\t\t\"wifiGeneration\" : 4\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetRadioSettings()"}));
}

TEST_F(GetRadios, BehavesWithFurtherWordsAsAlone) {
  const ToolRun alone = runTool({"getRadios"});
  EXPECT_EQ(alone.output, "[]\n\n");
  daemon_.calls.clear();
  const ToolRun run = runTool({"getRadios", "--radio", "Band5GHz", "--unknown=1", "all"});
  EXPECT_EQ(run.output, alone.output);
  EXPECT_EQ(run.status, alone.status);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetRadioSettings()"}));
}

TEST_F(GetRadioStatuses, PrintsEveryMember) {
  daemon_.radioStatuses = {
      {RadioFrequency::Band2_4GHz, true, 11, 40, 63, 5, MACAddress("02:00:00:00:00:0A"), {"wlan1", "wlan0"}}};
  const ToolRun run = runTool({"getRadioStatuses"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"bssid\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\"channel\" : 11,\n"
            "\t\t\"channelWidth\" : 40,\n"
            "\t\t\"interfaces\" : \n"
            "\t\t[\n"
            "\t\t\t\"wlan1\",\n"
            "\t\t\t\"wlan0\"\n"
            "\t\t],\n"
            "\t\t\"radio\" : \"Band2_4GHz\",\n"
            "\t\t\"stations\" : 5,\n"
            "\t\t\"up\" : true,\n"
            "\t\t\"utilisation\" : 63\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetRadioStatuses()"}));
}

TEST_F(GetRadioStatusesSimple, PrintsEveryMember) {
  daemon_.radioStatusesSimple = {{RadioFrequency::Band5GHz, false, 0, MACAddress(), {}}};
  const ToolRun run = runTool({"getRadioStatusesSimple"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"bssid\" : \"00:00:00:00:00:00\",\n"
            "\t\t\"channel\" : 0,\n"
            "\t\t\"interfaces\" : [],\n"
            "\t\t\"radio\" : \"Band5GHz\",\n"
            "\t\t\"up\" : false\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetRadioStatusesSimple()"}));
}

constexpr const char* kIfStatusHeader = "Frequency           Radio Interface     Enabled Wifi Interfaces\n";

TEST_F(GetRadioIfStatuses, PrintsOnlyTheHeaderWhenThereAreNoRadios) {
  const ToolRun run = runTool({"getRadioIfStatuses"});
  EXPECT_EQ(run.output, kIfStatusHeader);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioIfStatuses()"}));
}

TEST_F(GetRadioIfStatuses, PrintsARowForEachRadioInTheDaemonsOrder) {
  daemon_.radioIfStatuses = {{RadioFrequency::Band5GHz, "phy1", {"wlan10", "wlan1"}},
                             {RadioFrequency::Band2_4GHz, "phy0", {"wlan0"}},
                             {RadioFrequency::Band5GHz, "", {}}};
  const ToolRun run = runTool({"getRadioIfStatuses"});
  EXPECT_EQ(run.output, std::string(kIfStatusHeader) +
                            "Band5GHz            phy1                wlan10 wlan1 \n"
                            "Band2_4GHz          phy0                wlan0 \n"
                            "Band5GHz                                \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioIfStatuses()"}));
}

TEST_F(GetRadioIfStatuses, PrintsEveryNameOfARadio) {
  daemon_.radioIfStatuses = {{RadioFrequency::Error, "a", {}},      {RadioFrequency::SmartConnect, "b", {}},
                             {RadioFrequency::Band2_4GHz, "c", {}}, {RadioFrequency::Band5GHz, "d", {}},
                             {RadioFrequency::Band5GHz_1, "e", {}}, {RadioFrequency::Band5GHz_2, "f", {}}};
  const ToolRun run = runTool({"getRadioIfStatuses"});
  EXPECT_EQ(run.output, std::string(kIfStatusHeader) +
                            "Error               a                   \n"
                            "SmartConnect        b                   \n"
                            "Band2_4GHz          c                   \n"
                            "Band5GHz            d                   \n"
                            "Band5GHz_1          e                   \n"
                            "Band5GHz_2          f                   \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioIfStatuses()"}));
}

TEST_F(GetRadioIfStatuses, PrintsALongRadioInterfaceWhole) {
  daemon_.radioIfStatuses = {{RadioFrequency::Band5GHz, "nineteen-characters", {"w"}},
                             {RadioFrequency::Band5GHz, "twenty-characters-it", {"w"}},
                             {RadioFrequency::Band5GHz, "more-than-twenty-characters", {"", "w"}}};
  const ToolRun run = runTool({"getRadioIfStatuses"});
  EXPECT_EQ(run.output, std::string(kIfStatusHeader) +
                            "Band5GHz            nineteen-characters w \n"
                            "Band5GHz            twenty-characters-itw \n"
                            "Band5GHz            more-than-twenty-characters w \n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioIfStatuses()"}));
}

TEST_F(GetRadioIfStatuses, KeepsTheRowsInFrontOfARadioWithoutAName) {
  daemon_.radioIfStatuses = {{RadioFrequency::Band5GHz, "phy1", {"wlan1"}},
                             {kUnnamed, "phy2", {"wlan2"}},
                             {RadioFrequency::Band2_4GHz, "phy0", {"wlan0"}}};
  const ToolRun run = runTool({"getRadioIfStatuses"});
  EXPECT_EQ(run.output, std::string(kIfStatusHeader) + "Band5GHz            phy1                wlan1 \n" +
                            unnamedValue(kRadioFrequencyType, "7"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioIfStatuses()"}));
}

constexpr const char* kRadioMapHeader = "Wifi Interface      Radio Frequency     \n";

TEST_F(GetInterfaceRadioMap, PrintsTheHeaderAndOneEmptyLineForAnEmptyMap) {
  const ToolRun run = runTool({"getInterfaceRadioMap"});
  EXPECT_EQ(run.output, std::string(kRadioMapHeader) + "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaceRadioMap()"}));
}

TEST_F(GetInterfaceRadioMap, PrintsInterfacesInByteOrder) {
  daemon_.networkInterfaceRadioMap = {{"wlan1", RadioFrequency::Band5GHz},
                                      {"wlan0", RadioFrequency::Band2_4GHz},
                                      {"wlan10", RadioFrequency::Band5GHz_2},
                                      {"Wlan", RadioFrequency::Error}};
  const ToolRun run = runTool({"getInterfaceRadioMap"});
  EXPECT_EQ(run.output, std::string(kRadioMapHeader) +
                            "Wlan                Error               \n"
                            "wlan0               Band2_4GHz          \n"
                            "wlan1               Band5GHz            \n"
                            "wlan10              Band5GHz_2          \n"
                            "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaceRadioMap()"}));
}

TEST_F(GetInterfaceRadioMap, DoesNotCutAnInterfaceNameOf20OrMoreCharacters) {
  daemon_.networkInterfaceRadioMap = {{"nineteen-characters", RadioFrequency::Band5GHz},
                                      {"twenty-characters-it", RadioFrequency::Band5GHz},
                                      {"twenty-one-characters", RadioFrequency::SmartConnect}};
  const ToolRun run = runTool({"getInterfaceRadioMap"});
  EXPECT_EQ(run.output, std::string(kRadioMapHeader) +
                            "nineteen-characters Band5GHz            \n"
                            "twenty-characters-itBand5GHz            \n"
                            "twenty-one-charactersSmartConnect        \n"
                            "\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaceRadioMap()"}));
}

TEST_F(GetInterfaceRadioMap, KeepsTheInterfaceInFrontOfARadioWithoutAName) {
  daemon_.networkInterfaceRadioMap = {{"wlan0", RadioFrequency::Band2_4GHz},
                                      {"wlan1", kNegativeUnnamed},
                                      {"wlan2", RadioFrequency::Band5GHz}};
  const ToolRun run = runTool({"getInterfaceRadioMap"});
  EXPECT_EQ(run.output, std::string(kRadioMapHeader) +
                            "wlan0               Band2_4GHz          \n"
                            "wlan1               " +
                            unnamedValue(kRadioFrequencyType, "-2"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetNetworkInterfaceRadioMap()"}));
}

TEST_F(GetRadioConversionInfo, PrintsNoLineBetweenItsLabelsForAnEmptyMap) {
  const ToolRun run = runTool({"getRadioConversionInfo"});
  EXPECT_EQ(run.output, "Radio conversion map:\nBackhaul swapped: 0\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioConversionInfo()"}));
}

TEST_F(GetRadioConversionInfo, PrintsTheMapInTheOrderOfTheRadios) {
  daemon_.radioConversionInfo = {{{RadioFrequency::Band5GHz_2, RadioFrequency::Band5GHz_1},
                                  {RadioFrequency::Error, RadioFrequency::Error},
                                  {RadioFrequency::Band5GHz, RadioFrequency::Band5GHz_1},
                                  {RadioFrequency::SmartConnect, RadioFrequency::Band2_4GHz}},
                                 true};
  const ToolRun run = runTool({"getRadioConversionInfo"});
  EXPECT_EQ(run.output,
            "Radio conversion map:\n"
            "\tError => Error\n"
            "\tSmartConnect => Band2_4GHz\n"
            "\tBand5GHz => Band5GHz_1\n"
            "\tBand5GHz_2 => Band5GHz_1\n"
            "Backhaul swapped: 1\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioConversionInfo()"}));
}

TEST_F(GetRadioConversionInfo, LeavesTheTabInFrontOfARadioWithoutAName) {
  daemon_.radioConversionInfo.conversionMap = {{RadioFrequency::Band5GHz, RadioFrequency::Band5GHz},
                                               {kUnnamed, RadioFrequency::Band5GHz}};
  const ToolRun run = runTool({"getRadioConversionInfo"});
  EXPECT_EQ(run.output,
            "Radio conversion map:\n\tBand5GHz => Band5GHz\n\t" + unnamedValue(kRadioFrequencyType, "7"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioConversionInfo()"}));
}

TEST_F(GetRadioConversionInfo, LeavesTheNamedRadioInFrontOfOneWithoutAName) {
  daemon_.radioConversionInfo.conversionMap = {{RadioFrequency::Band5GHz, kNegativeUnnamed},
                                               {RadioFrequency::Band5GHz_1, RadioFrequency::Band5GHz}};
  const ToolRun run = runTool({"getRadioConversionInfo"});
  EXPECT_EQ(run.output, "Radio conversion map:\n\tBand5GHz => " + unnamedValue(kRadioFrequencyType, "-2"));
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kGetClient, "GetRadioConversionInfo()"}));
}

}  // namespace

}  // namespace TALO::Tool
