#include "support/command_test.h"
#include "support/conversion_messages.h"

#include <map>
#include <stdexcept>

namespace TALO::Tool {

using Wifi::FakeDaemon;
using Wifi::Util::MACAddress;
using Wifi::Util::RadioFrequency;
using Wifi::Util::ScanType;

namespace {

class GetBackhaul : public CommandTest {};
class GetBackhaulSTA : public CommandTest {};
class GetBackhaulSTAStatuses : public CommandTest {};
class EnableScan : public CommandTest {};
class ModifyMeshInfo : public CommandTest {};
class SwapBackhaulBand : public CommandTest {};
class IsBackhaulBandSwapped : public CommandTest {};
class IsWifiAdjustNeeded : public CommandTest {};

TEST_F(GetBackhaul, PrintsOneObjectWithEveryMember) {
  daemon_.backhaulSetting = {
      true, "Mesh", "correct-horse", {RadioFrequency::Band5GHz_2, RadioFrequency::Band2_4GHz}};
  const ToolRun run = runTool({"getBackhaul"});
  EXPECT_EQ(run.output,
            "{\n"
            "\t\"enable\" : true,\n"
            "\t\"password\" : \"correct-horse\",\n"
            "\t\"radios\" : \n"
            "\t[\n"
            "\t\t\"Band2_4GHz\",\n"
            "\t\t\"Band5GHz_2\"\n"
            "\t],\n"
            "\t\"ssid\" : \"Mesh\",\n"
            "\t\"ssidHex\" : \"4d657368\"\n"
            "}\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "GetBackhaulSetting()"}));
}

TEST_F(GetBackhaulSTA, PrintsOneObjectWithEveryMember) {
  daemon_.backhaulSTASetting = {false, "M\xff", "\"\\\x01", {static_cast<RadioFrequency>(9)}};
  const ToolRun run = runTool({"getBackhaulSTA"});
  EXPECT_EQ(run.output,
            "{\n"
            "\t\"enable\" : false,\n"
            "\t\"password\" : \"\\\"\\\\\\u0001\",\n"
            "\t\"radios\" : \n"
            "\t[\n"
            "\t\t9\n"
            "\t],\n"
            "\t\"ssid\" : \"M\\ufffd\",\n"
            "\t\"ssidHex\" : \"4dff\"\n"
            "}\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "GetBackhaulSTASetting()"}));
}

TEST_F(GetBackhaulSTAStatuses, PrintsEveryMemberInTheDaemonsOrder) {
  daemon_.backhaulSTAStatuses = {
      {RadioFrequency::Band5GHz, "wlan1-sta", true, ScanType::BestAP, MACAddress("02:00:00:00:00:0a"), 36,
       -48, 90},
      {RadioFrequency::Band2_4GHz, "wlan0-sta", false, static_cast<ScanType>(3), MACAddress(), 0, 0, 0}};
  const ToolRun run = runTool({"getBackhaulSTAStatuses"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"channel\" : 36,\n"
            "\t\t\"connected\" : true,\n"
            "\t\t\"connectedTime\" : 90,\n"
            "\t\t\"interface\" : \"wlan1-sta\",\n"
            "\t\t\"parent\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\"radio\" : \"Band5GHz\",\n"
            "\t\t\"scanType\" : \"BestAP\",\n"
            "\t\t\"signal\" : -48\n"
            "\t},\n"
            "\t{\n"
            "\t\t\"channel\" : 0,\n"
            "\t\t\"connected\" : false,\n"
            "\t\t\"connectedTime\" : 0,\n"
            "\t\t\"interface\" : \"wlan0-sta\",\n"
            "\t\t\"parent\" : \"00:00:00:00:00:00\",\n"
            "\t\t\"radio\" : \"Band2_4GHz\",\n"
            "\t\t\"scanType\" : 3,\n"
            "\t\t\"signal\" : 0\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "GetBackhaulSTAStatuses()"}));
}

/// The two listings of interfaces, which print alike.
struct InterfaceListing {
  const char* word;
  const char* operation;
  std::map<RadioFrequency, std::string> FakeDaemon::*answer;
};

class InterfacesOfTheBackhaul : public CommandTest, public testing::WithParamInterface<InterfaceListing> {
 protected:
  /// Sets the answer and expects what is printed of it.
  void expectListing(const std::map<RadioFrequency, std::string>& interfaces, const std::string& output,
                     int status) {
    daemon_.*GetParam().answer = interfaces;
    const ToolRun run = runTool({GetParam().word});
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.status, status);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, GetParam().operation}));
  }
};

TEST_P(InterfacesOfTheBackhaul, AreAHeadingAndOneEmptyLineForAnEmptyMap) {
  expectListing({}, "Interfaces: \n\n", 0);
}

TEST_P(InterfacesOfTheBackhaul, AreListedInTheOrderOfTheRadios) {
  expectListing({{RadioFrequency::Band5GHz_1, "wlan1"},
                 {RadioFrequency::Band2_4GHz, "wlan0"},
                 {RadioFrequency::Band5GHz_2, "wlan2"},
                 {RadioFrequency::Band5GHz, ""},
                 {RadioFrequency::SmartConnect, "any"},
                 {RadioFrequency::Error, "none"}},
                "Interfaces: \n"
                "\t Error : none\n"
                "\t SmartConnect : any\n"
                "\t Band2_4GHz : wlan0\n"
                "\t Band5GHz : \n"
                "\t Band5GHz_1 : wlan1\n"
                "\t Band5GHz_2 : wlan2\n"
                "\n",
                0);
}

TEST_P(InterfacesOfTheBackhaul, StayPrintedInFrontOfARadioWithoutAName) {
  expectListing({{RadioFrequency::Band2_4GHz, "wlan0"}, {static_cast<RadioFrequency>(100), "wlan1"}},
                "Interfaces: \n\t Band2_4GHz : wlan0\n\t " + unnamedValue(kRadioFrequencyType, "100"), 1);
}

INSTANTIATE_TEST_SUITE_P(Commands, InterfacesOfTheBackhaul,
                         testing::Values(InterfaceListing{"getBackhaulInterfaces", "GetBackhaulInterfaces()",
                                                          &FakeDaemon::backhaulInterfaces},
                                         InterfaceListing{"getBackhaulSTAInterfaces",
                                                          "GetBackhaulSTAInterfaces()",
                                                          &FakeDaemon::backhaulSTAInterfaces}),
                         [](const auto& listing) { return listing.param.word; });

/// The two commands that send a backhaul configuration; only one passes a flag behind it.
struct BackhaulChange {
  const char* word;
  const char* operation;
  const char* flag;
  const char* usage;
};

class ChangeOfTheBackhaul : public CommandTest, public testing::WithParamInterface<BackhaulChange> {
 protected:
  /// Expects the values to arrive as they are listed.
  void expectSent(const std::string& enable, const std::string& ssid, const std::string& password,
                  const std::string& listed) {
    SCOPED_TRACE(listed);
    daemon_.calls.clear();
    const ToolRun run =
        runTool({GetParam().word, "--enable", enable, "--ssid", ssid, "--password", password});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls,
              (Calls{kAskLogLevel, kGetMeshClient,
                     std::string(GetParam().operation) + "(" + listed + GetParam().flag + ")"}));
  }
};

TEST_P(ChangeOfTheBackhaul, SendsTheConfiguration) {
  expectSent("1", "Mesh", "correct-horse", R"({enable=true, ssid="Mesh", password="correct-horse"})");
  expectSent("off", "Mesh", "correct-horse", R"({enable=false, ssid="Mesh", password="correct-horse"})");
}

TEST_P(ChangeOfTheBackhaul, PassesTextsOfAnyBytes) {
  expectSent("1", "", "", R"({enable=true, ssid="", password=""})");
  expectSent("0", "M\xff\n e", " \x80", R"({enable=false, ssid="M\xff\x0a e", password=" \x80"})");
  expectSent("1", "-Mesh", "--password1", R"({enable=true, ssid="-Mesh", password="--password1"})");
}

TEST_P(ChangeOfTheBackhaul, FailsWhenReadingAMissingPasswordAndSendsNothing) {
  const ToolRun run = runTool({GetParam().word, "--enable", "1", "--ssid", "x"});
  EXPECT_EQ(run.output, GetParam().usage);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

INSTANTIATE_TEST_SUITE_P(
    Commands, ChangeOfTheBackhaul,
    testing::Values(BackhaulChange{"modifyBackhaul", "ModifyBackhaul", ", false",
                                   "Usage: modifyBackhaul --enable 1/0 --ssid ssid --password password:\n"
                                   "  --enable arg          enable\n"
                                   "  --ssid arg            ssid\n"
                                   "  --password arg        password\n"
                                   "\n"},
                    // Only this caption ends in a blank.
                    BackhaulChange{"modifyBackhaulSTA", "ModifyBackhaulSTA", "",
                                   "Usage: modifyBackhaulSTA --enable 1/0 --ssid ssid --password password :\n"
                                   "  --enable arg          enable\n"
                                   "  --ssid arg            ssid\n"
                                   "  --password arg        password\n"
                                   "\n"}),
    [](const auto& change) { return change.param.word; });

TEST_F(EnableScan, SendsMinus1ForTheTypeError) {
  static_assert(static_cast<int>(ScanType::Error) == -1);
  const ToolRun run = runTool({"enableScan", "--type", "Error"});
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "EnableScan(Error)"}));
}

TEST_F(EnableScan, TakesEveryOtherNameOfAType) {
  for (const std::string type : {"Disable", "Default", "BestAP"}) {
    SCOPED_TRACE(type);
    daemon_.calls.clear();
    const ToolRun run = runTool({"enableScan", "--type", type});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "EnableScan(" + type + ")"}));
  }
}

TEST_F(EnableScan, RefusesWordsThatNameNoTypeOnceItHasAClient) {
  for (const char* type : {"disable", "BESTAP", "Best", "BestAP ", "Disabled", "2", "", "-1", "%s%n"}) {
    SCOPED_TRACE(type);
    daemon_.calls.clear();
    const ToolRun run = runTool({"enableScan", "--type", type});
    EXPECT_EQ(run.output, unknownWord(kScanTypeType, type));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient}));
  }
}

TEST_F(EnableScan, ReportsAFailureToObtainTheClientBeforeABadType) {
  daemon_.Fail("WifiClientFactoryForMesh", std::runtime_error("no client"));
  const ToolRun run = runTool({"enableScan", "--type", "bad"});
  EXPECT_EQ(run.output, "no client\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient}));
}

/// Arguments of `modifyMeshInfo` and the record that they make.
void expectMeshInfo(std::vector<std::string> words, const std::string& listed) {
  SCOPED_TRACE(testing::PrintToString(words));
  FakeDaemon::Reset();
  words.insert(words.begin(), "modifyMeshInfo");
  const ToolRun run = runTool(words);
  EXPECT_EQ(run.output, "");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(FakeDaemon::Get().calls,
            (Calls{kAskLogLevel, kGetMeshClient, "ModifyMeshInfo({" + listed + "})"}));
}

TEST_F(ModifyMeshInfo, SendsAnEmptySetOfModelsWhenOnlyIsRepeaterIsGiven) {
  expectMeshInfo({"--isRepeater", "1"}, "models=[], isRepeater=true");
}

TEST_F(ModifyMeshInfo, SendsEachModelOnceInTheirOrder) {
  expectMeshInfo({"--models", "Dune40", "Alder100", "Dune40", "--isRepeater", "0"},
                 "models=[Alder100, Dune40], isRepeater=false");
}

TEST_F(ModifyMeshInfo, RefusesAModelInLowerCase) {
  const ToolRun run = runTool({"modifyMeshInfo", "--models", "alder100", "--isRepeater", "1"});
  EXPECT_EQ(run.output,
            "Failed to execute command: Failed to convert string to enum class "
            "[N4TALO4Wifi4Util14SupportedModelE]: alder100: Runtime error\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(ModifyMeshInfo, TakesEveryNameOfAModelAndTheSentinel) {
  expectMeshInfo({"--models", "Cedar300", "Birch200", "Error", "Dune40", "Alder100", "--isRepeater", "1"},
                 "models=[Error, Alder100, Birch200, Cedar300, Dune40], isRepeater=true");
}

TEST_F(ModifyMeshInfo, CollectsTheModelsOfSeveralOptions) {
  expectMeshInfo({"--models", "Dune40", "--isRepeater", "1", "--models", "Birch200"},
                 "models=[Birch200, Dune40], isRepeater=true");
}

TEST_F(ModifyMeshInfo, ReportsTheFirstWordThatNamesNoModelBeforeItAsksForAClient) {
  daemon_.Fail("WifiClientFactoryForMesh", std::runtime_error("no client"));
  for (const char* model : {"Alder", "Alder1000", "Alder100 ", "0", "", "Alder100|Birch200", "%s%n"}) {
    SCOPED_TRACE(model);
    daemon_.calls.clear();
    const ToolRun run =
        runTool({"modifyMeshInfo", "--models", "Dune40", model, "Worse300", "--isRepeater", "1"});
    EXPECT_EQ(run.output, unknownWord(kSupportedModelType, model));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
  }
}

TEST_F(ModifyMeshInfo, PrintsItsUsageForAMissingIsRepeaterWhateverTheModelsSay) {
  const ToolRun run = runTool({"modifyMeshInfo", "--models", "bad"});
  EXPECT_EQ(run.output,
            "Usage: modifyMeshInfo --models Alder100|Birch200|Cedar300|Dune40 --isRepeater 0/1:\n"
            "  --models arg          models\n"
            "  --isRepeater arg      isRepeater\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(SwapBackhaulBand, PassesTheFlag) {
  for (const bool enable : {true, false}) {
    SCOPED_TRACE(enable);
    daemon_.calls.clear();
    const ToolRun run = runTool({"swapBackhaulBand", "--enable", enable ? "1" : "0"});
    EXPECT_EQ(run.output, "");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient,
                                    enable ? "SwapBackhaulBand(true)" : "SwapBackhaulBand(false)"}));
  }
}

TEST_F(IsBackhaulBandSwapped, PrintsExactlyOneWordAndALineEnd) {
  for (const bool swapped : {true, false}) {
    SCOPED_TRACE(swapped);
    daemon_.calls.clear();
    daemon_.isBackhaulBandSwapped = swapped;
    const ToolRun run = runTool({"isBackhaulBandSwapped"});
    EXPECT_EQ(run.output, swapped ? "yes\n" : "no\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "IsBackhaulBandSwapped()"}));
  }
}

TEST_F(IsWifiAdjustNeeded, PrintsExactlyOneWordAndALineEnd) {
  for (const bool needed : {true, false}) {
    SCOPED_TRACE(needed);
    daemon_.calls.clear();
    daemon_.isWifiAdjustNeeded = needed;
    const ToolRun run = runTool({"isWifiAdjustNeeded"});
    EXPECT_EQ(run.output, needed ? "yes\n" : "no\n");
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetMeshClient, "IsWifiAdjustNeeded()"}));
  }
}

}  // namespace

}  // namespace TALO::Tool
