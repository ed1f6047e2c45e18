#include "commands/output.h"

#include "support/captured_output.h"
#include "support/fake_daemon.h"
#include "support/styled_json.h"
#include "support/tool_run.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace TALO::Tool {

namespace {

using Wifi::FakeDaemon;
using Wifi::MACFilterAction;
using Wifi::MACFilterGlobal;
using Wifi::MACFilterProfile;
using Wifi::StyledJson;

TEST(PrintRecord, PrintsTheStyledObjectAndALineEnd) {
  EXPECT_EQ(outputOf([] { printRecord(MACFilterGlobal()); }), StyledJson({
                                                                  "{",
                                                                  "\t'devices' : [],",
                                                                  "\t'enablePreventBroadcast' : false,",
                                                                  "\t'maximumBroadcast' : 0",
                                                                  "}",
                                                                  "",
                                                              }));
}

TEST(PrintRecords, PrintsAnEmptyArrayAndALineEndForNone) {
  EXPECT_EQ(outputOf([] { printRecords(std::vector<MACFilterProfile>{}); }), "[]\n\n");
}

TEST(PrintRecords, PrintsTheRecordsInTheOrderGivenEachAsOftenAsGiven) {
  const MACFilterProfile later{2, "b", MACFilterAction::Deny, {}};
  const MACFilterProfile sooner{1, "a", MACFilterAction::Allow, {}};
  const std::string output = outputOf([&] {
    printRecords(std::vector<MACFilterProfile>{later, sooner, later});
  });
  EXPECT_EQ(output, StyledJson({
                        "[",
                        "\t{",
                        "\t\t'action' : 'Deny',",
                        "\t\t'devices' : [],",
                        "\t\t'id' : 2,",
                        "\t\t'name' : 'b'",
                        "\t},",
                        "\t{",
                        "\t\t'action' : 'Allow',",
                        "\t\t'devices' : [],",
                        "\t\t'id' : 1,",
                        "\t\t'name' : 'a'",
                        "\t},",
                        "\t{",
                        "\t\t'action' : 'Deny',",
                        "\t\t'devices' : [],",
                        "\t\t'id' : 2,",
                        "\t\t'name' : 'b'",
                        "\t}",
                        "]",
                        "",
                    }));
}

class JsonAnswer : public testing::Test {
 protected:
  JsonAnswer() { FakeDaemon::Reset(); }
  FakeDaemon& daemon_ = FakeDaemon::Get();
};

TEST_F(JsonAnswer, IsAnEmptyArrayAndALineEndWhereThereIsNoRecord) {
  for (const std::string command :
       {"getNetworks", "getRadios", "getRadioStatuses", "getRadioStatusesSimple", "getStations",
        "getStationStatuses", "getBackhaulSTAStatuses", "getMACFilterProfiles", "getDevices"}) {
    SCOPED_TRACE(command);
    const ToolRun run = runTool({command});
    EXPECT_EQ(run.output, "[]\n\n");
    EXPECT_EQ(run.status, 0);
  }
}

TEST_F(JsonAnswer, HoldsTheRecordsInTheOrderOfTheDaemon) {
  daemon_.macFilterProfiles = {{2, "b", MACFilterAction::Deny, {}}, {1, "a", MACFilterAction::Allow, {}}};
  const ToolRun run = runTool({"getMACFilterProfiles"});
  EXPECT_EQ(run.output, StyledJson({
                            "[",
                            "\t{",
                            "\t\t'action' : 'Deny',",
                            "\t\t'devices' : [],",
                            "\t\t'id' : 2,",
                            "\t\t'name' : 'b'",
                            "\t},",
                            "\t{",
                            "\t\t'action' : 'Allow',",
                            "\t\t'devices' : [],",
                            "\t\t'id' : 1,",
                            "\t\t'name' : 'a'",
                            "\t}",
                            "]",
                            "",
                        }));
  EXPECT_EQ(run.status, 0);
}

TEST_F(JsonAnswer, HoldsARecordWithEmptyTextsInFull) {
  daemon_.stationSettings = {{}};
  const ToolRun run = runTool({"getStations"});
  EXPECT_EQ(run.output, StyledJson({
                            "[",
                            "\t{",
                            "\t\t'bssid' : '00:00:00:00:00:00',",
                            "\t\t'enable' : false,",
                            "\t\t'essid' : '',",
                            "\t\t'essidHex' : '',",
                            "\t\t'password' : '',",
                            "\t\t'radio' : 'Error',",
                            "\t\t'securityMode' : 'Error',",
                            "\t\t'user' : '',",
                            "\t\t'userHex' : ''",
                            "\t}",
                            "]",
                            "",
                        }));
  EXPECT_EQ(run.status, 0);
}

}  // namespace

}  // namespace TALO::Tool
