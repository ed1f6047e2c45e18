#include "support/command_test.h"
#include "support/conversion_messages.h"

#include <stdexcept>

namespace TALO::Tool {

using Wifi::MACFilterAction;
using Wifi::Util::MACAddress;

namespace {

class GetMACFilterGlobal : public CommandTest {};
class GetMACFilterProfiles : public CommandTest {};

/// A command that changes filters, run with words that a test chose.
class ChangeOfFilters : public CommandTest {
 protected:
  /// Expects success, `output` and `call` to the client.
  void expectSent(const std::vector<std::string>& words, const std::string& call,
                  const std::string& output = "") {
    SCOPED_TRACE(testing::PrintToString(words));
    daemon_.calls.clear();
    const ToolRun run = runTool(words);
    EXPECT_EQ(run.output, output);
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, call}));
  }

  /// Expects a failure after the client was obtained and before it was asked for anything.
  void expectNotSent(const std::vector<std::string>& words, const std::string& message) {
    SCOPED_TRACE(testing::PrintToString(words));
    daemon_.calls.clear();
    const ToolRun run = runTool(words);
    EXPECT_EQ(run.output, message);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient}));
  }
};
class SetMACFilterGlobal : public ChangeOfFilters {};
class CreateMACFilterProfile : public ChangeOfFilters {};
class ModifyMACFilterProfile : public ChangeOfFilters {};
class DeleteMACFilterProfile : public ChangeOfFilters {};

constexpr const char* kOddDevices = "input of column devices is not correct.\n";

constexpr const char* kGlobalJson =
    "{\n"
    "\t\"devices\" : \n"
    "\t[\n"
    "\t\t{\n"
    "\t\t\t\"address\" : \"02:00:00:00:00:0a\",\n"
    "\t\t\t\"name\" : \"laptop\"\n"
    "\t\t},\n"
    "\t\t{\n"
    "\t\t\t\"address\" : \"00:00:00:00:00:00\",\n"
    "\t\t\t\"name\" : \"\"\n"
    "\t\t}\n"
    "\t],\n"
    "\t\"enablePreventBroadcast\" : true,\n"
    "\t\"maximumBroadcast\" : -100\n"
    "}\n\n";

TEST_F(GetMACFilterGlobal, PrintsOneObjectWithEveryMember) {
  daemon_.macFilterGlobal = {{{"laptop", MACAddress("02:00:00:00:00:0A")}, {}}, true, -100};
  const ToolRun run = runTool({"getMACFilterGlobal"});
  EXPECT_EQ(run.output, kGlobalJson);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetMACFilterGlobal()"}));
}

TEST_F(GetMACFilterGlobal, DoesNotExamineItsArguments) {
  daemon_.macFilterGlobal = {{{"laptop", MACAddress("02:00:00:00:00:0A")}, {}}, true, -100};
  const ToolRun run = runTool({"getMACFilterGlobal", "--devices", "a", "--id", "x", "stray"});
  EXPECT_EQ(run.output, kGlobalJson);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetMACFilterGlobal()"}));
}

TEST_F(GetMACFilterProfiles, PrintsEveryMemberInTheDaemonsOrder) {
  daemon_.macFilterProfiles = {
      {7, "guests", MACFilterAction::Deny, {{"phone\xff", MACAddress("02-00-00-00-00-0A")}}},
      {1, "", static_cast<MACFilterAction>(2), {}}};
  const ToolRun run = runTool({"getMACFilterProfiles"});
  EXPECT_EQ(run.output,
            "[\n"
            "\t{\n"
            "\t\t\"action\" : \"Deny\",\n"
            "\t\t\"devices\" : \n"
            "\t\t[\n"
            "\t\t\t{\n"
            "\t\t\t\t\"address\" : \"02:00:00:00:00:0a\",\n"
            "\t\t\t\t\"name\" : \"phone\\ufffd\"\n"
            "\t\t\t}\n"
            "\t\t],\n"
            "\t\t\"id\" : 7,\n"
            "\t\t\"name\" : \"guests\"\n"
            "\t},\n"
            "\t{\n"
            "\t\t\"action\" : 2,\n"
            "\t\t\"devices\" : [],\n"
            "\t\t\"id\" : 1,\n"
            "\t\t\"name\" : \"\"\n"
            "\t}\n"
            "]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetMACFilterProfiles()"}));
}

TEST_F(GetMACFilterProfiles, DoesNotExamineItsArguments) {
  const ToolRun run = runTool({"getMACFilterProfiles", "--devices", "a", "--id", "x", "stray"});
  EXPECT_EQ(run.output, "[]\n\n");
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "GetMACFilterProfiles()"}));
}

TEST_F(SetMACFilterGlobal, Passes5000UnchangedWithAnEmptyDevicesOption) {
  expectSent(
      {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "5000", "--devices"},
      "SetMACFilterGlobal({devices=[], enablePreventBroadcast=true, maximumBroadcast=5000})");
}

TEST_F(SetMACFilterGlobal, SendsDevicesInTheirOrderWithTheirCanonicalAddresses) {
  expectSent({"setMACFilterGlobal", "--devices", "tv", "02-AB-00-00-00-0A", "", "ff:ff:ff:ff:ff:ff", "tv",
              "02:ab:00:00:00:0a", "--enablePreventBroadcast", "0", "--maximumBroadcast", "-1"},
             R"(SetMACFilterGlobal({devices=[{name="tv", address=02:ab:00:00:00:0a}, )"
             R"({name="", address=ff:ff:ff:ff:ff:ff}, {name="tv", address=02:ab:00:00:00:0a}], )"
             "enablePreventBroadcast=false, maximumBroadcast=-1})");
}

TEST_F(SetMACFilterGlobal, PassesDeviceNamesOfAnyBytes) {
  expectSent({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "0", "--devices",
              "Anna's \xff\n tv", "02:00:00:00:00:0a"},
             R"(SetMACFilterGlobal({devices=[{name="Anna's \xff\x0a tv", address=02:00:00:00:00:0a}], )"
             "enablePreventBroadcast=true, maximumBroadcast=0})");
}

TEST_F(SetMACFilterGlobal, CollectsTheDevicesOfSeveralOptions) {
  expectSent({"setMACFilterGlobal", "--devices", "a", "02:00:00:00:00:01", "--enablePreventBroadcast", "1",
              "--devices", "b", "02:00:00:00:00:02", "--maximumBroadcast", "0"},
             R"(SetMACFilterGlobal({devices=[{name="a", address=02:00:00:00:00:01}, )"
             R"({name="b", address=02:00:00:00:00:02}], enablePreventBroadcast=true, maximumBroadcast=0}))");
}

TEST_F(SetMACFilterGlobal, RefusesAnOddNumberOfDeviceWordsOnceItHasAClient) {
  expectNotSent({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1",
                 "--devices", "a", "00:11:22:33:44:55", "b"},
                kOddDevices);
  expectNotSent(
      {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1", "--devices", "a"},
      kOddDevices);
}

TEST_F(SetMACFilterGlobal, ReportsAnOddNumberOfDeviceWordsBeforeABadAddress) {
  expectNotSent({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1",
                 "--devices", "a", "bad", "b"},
                kOddDevices);
}

TEST_F(SetMACFilterGlobal, RefusesABadAddressOnceItHasAClient) {
  for (const char* address : kNoMACAddresses) {
    expectNotSent({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1",
                   "--devices", "a", "02:00:00:00:00:0a", "b", address, "c", "worse"},
                  "Invalid MAC address: " + std::string(address) + "\n");
  }
}

TEST_F(SetMACFilterGlobal, ReportsAFailureToObtainTheClientBeforeBadDevices) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  expectNotSent(
      {"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1", "--devices", "a"},
      "no client\n");
}

TEST_F(SetMACFilterGlobal, PrintsItsUsageWithoutTheDevicesOption) {
  const ToolRun run =
      runTool({"setMACFilterGlobal", "--enablePreventBroadcast", "1", "--maximumBroadcast", "1"});
  EXPECT_EQ(run.output,
            "Usage: SetMACFilterGlobal --enablePreventBroadcast 0/1 --maximumBroadcast 100 "
            "--devices DeviceName MACAddress:\n"
            "  --enablePreventBroadcast arg enablePreventBroadcast\n"
            "  --maximumBroadcast arg       maximumBroadcast\n"
            "  --devices arg                devices\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(CreateMACFilterProfile, CreatesAProfileWithoutDevicesForADevicesOptionWithoutWords) {
  daemon_.newMACFilterProfileId = 31;
  expectSent({"createMACFilterProfile", "--name", "a", "--action", "Allow", "--devices", "--applyToAll", "0"},
             R"(CreateMACFilterProfile({id=-1, name="a", action=Allow, devices=[]}, false))", "ID: 31\n");
}

TEST_F(CreateMACFilterProfile, SendsDevicesAndApplyToAllBesideTheProfile) {
  daemon_.newMACFilterProfileId = -4;
  expectSent({"createMACFilterProfile", "--name", "guests", "--action", "Deny", "--devices", "tv",
              "02:00:00:00:00:0A", "--applyToAll", "yes"},
             R"(CreateMACFilterProfile({id=-1, name="guests", action=Deny, )"
             R"(devices=[{name="tv", address=02:00:00:00:00:0a}]}, true))",
             "ID: -4\n");
}

TEST_F(CreateMACFilterProfile, PassesNamesOfAnyBytes) {
  expectSent({"createMACFilterProfile", "--name", "", "--action", "Allow", "--devices", "--applyToAll", "0"},
             R"(CreateMACFilterProfile({id=-1, name="", action=Allow, devices=[]}, false))", "ID: 0\n");
  expectSent(
      {"createMACFilterProfile", "--name", "-my \xff", "--action", "Allow", "--devices", "--applyToAll", "0"},
      R"(CreateMACFilterProfile({id=-1, name="-my \xff", action=Allow, devices=[]}, false))", "ID: 0\n");
}

TEST_F(CreateMACFilterProfile, RefusesADevicesOptionWithThreeWords) {
  expectNotSent({"createMACFilterProfile", "--name", "a", "--action", "Allow", "--devices", "a",
                 "00:11:22:33:44:55", "b", "--applyToAll", "0"},
                "input of column devices is not correct.\n");
}

TEST_F(CreateMACFilterProfile, RefusesABadAddress) {
  expectNotSent({"createMACFilterProfile", "--name", "a", "--action", "Allow", "--applyToAll", "0",
                 "--devices", "00:11:22:33:44:55", "a"},
                "Invalid MAC address: a\n");
}

TEST_F(CreateMACFilterProfile, RefusesTheActionAllowInLowerCase) {
  expectNotSent(
      {"createMACFilterProfile", "--name", "a", "--action", "allow", "--devices", "--applyToAll", "0"},
      "Failed to execute command: Failed to convert string to enum class "
      "[N4TALO4Wifi15MACFilterActionE]: allow: Runtime error\n");
}

TEST_F(CreateMACFilterProfile, PassesTheActionErrorAsMinus1) {
  static_assert(static_cast<int>(MACFilterAction::Error) == -1);
  expectSent({"createMACFilterProfile", "--name", "a", "--action", "Error", "--devices", "--applyToAll", "0"},
             R"(CreateMACFilterProfile({id=-1, name="a", action=Error, devices=[]}, false))", "ID: 0\n");
}

TEST_F(CreateMACFilterProfile, RefusesOtherWordsForTheAction) {
  for (const char* action : {"", "DENY", "Deny ", "Den", "Deny|Allow", "1", "-1", "%s%n"}) {
    expectNotSent(
        {"createMACFilterProfile", "--name", "a", "--action", action, "--devices", "--applyToAll", "0"},
        unknownWord(kMACFilterActionType, action));
  }
}

TEST_F(CreateMACFilterProfile, ReportsABadActionBeforeBadDevices) {
  expectNotSent({"createMACFilterProfile", "--name", "a", "--action", "bad", "--applyToAll", "0", "--devices",
                 "a", "bad", "b"},
                unknownWord(kMACFilterActionType, "bad"));
}

TEST_F(CreateMACFilterProfile, ReportsAFailureToObtainTheClientBeforeABadAction) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  expectNotSent(
      {"createMACFilterProfile", "--name", "a", "--action", "bad", "--applyToAll", "0", "--devices", "a"},
      "no client\n");
}

TEST_F(ModifyMACFilterProfile, SendsTheProfileWithItsIDAndPrintsNothing) {
  daemon_.newMACFilterProfileId = 9;
  expectSent({"modifyMACFilterProfile", "--id", "3", "--name", "guests", "--action", "Allow", "--devices",
              "tv", "02:00:00:00:00:0A"},
             R"(ModifyMACFilterProfile({id=3, name="guests", action=Allow, )"
             R"(devices=[{name="tv", address=02:00:00:00:00:0a}]}))");
}

TEST_F(ModifyMACFilterProfile, SendsNoDevicesForADevicesOptionWithoutWords) {
  expectSent({"modifyMACFilterProfile", "--id", "-1", "--name", "", "--devices", "--action", "Error"},
             R"(ModifyMACFilterProfile({id=-1, name="", action=Error, devices=[]}))");
}

TEST_F(ModifyMACFilterProfile, DoesNotKnowApplyToAll) {
  const ToolRun run = runTool({"modifyMACFilterProfile", "--id", "3", "--name", "guests", "--action", "Allow",
                               "--devices", "--applyToAll", "0"});
  EXPECT_EQ(run.output, "unrecognised option '--applyToAll'\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(ModifyMACFilterProfile, RefusesBadWordsOnceItHasAClient) {
  expectNotSent({"modifyMACFilterProfile", "--id", "3", "--name", "a", "--action", "deny", "--devices", "a"},
                unknownWord(kMACFilterActionType, "deny"));
  expectNotSent({"modifyMACFilterProfile", "--id", "3", "--name", "a", "--action", "Deny", "--devices", "a"},
                kOddDevices);
  expectNotSent(
      {"modifyMACFilterProfile", "--id", "3", "--name", "a", "--action", "Deny", "--devices", "a", "b"},
      "Invalid MAC address: b\n");
}

TEST_F(ModifyMACFilterProfile, ReportsAFailureToObtainTheClientBeforeBadWords) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  expectNotSent({"modifyMACFilterProfile", "--id", "3", "--name", "a", "--action", "bad", "--devices", "a"},
                "no client\n");
}

TEST_F(DeleteMACFilterProfile, SendsASetOfTheOneID) {
  expectSent({"deleteMACFilterProfile", "--id", "3"}, "DeleteMACFilterProfiles([3])");
  expectSent({"deleteMACFilterProfile", "--id", "-1"}, "DeleteMACFilterProfiles([-1])");
}

TEST_F(DeleteMACFilterProfile, PrintsItsUsageAndCallsNoClientOperationWithoutTheIDOption) {
  const ToolRun run = runTool({"deleteMACFilterProfile"});
  EXPECT_EQ(run.output,
            "Usage: deleteMACFilterProfile --id id:\n"
            "  --id arg              id\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

}  // namespace

}  // namespace TALO::Tool
