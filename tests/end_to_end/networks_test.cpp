#include "support/end_to_end_test.h"
#include "support/network_json.h"

#include <ctime>
#include <regex>

namespace TALO::EndToEnd {

namespace {

/// The daemon runs at debug level.
class Networks : public EndToEndTest {
 protected:
  Networks() { StartDaemon(); }

  ToolRun ListNetworks() {
    ToolRun run = RunTool({"getNetworks"});
    run.output = WithoutTimes(run.output);
    return run;
  }
  void ExpectNetworks(const std::vector<PrintedNetwork>& networks) {
    EXPECT_EQ(ListNetworks(), Success(PrintedNetworks(networks)));
  }
};

TEST_F(Networks, AreNoneAtFirst) {
  EXPECT_EQ(RunTool({"getNetworks"}), Success("[]\n\n"));
  EXPECT_EQ(RunTool({"getNetworkInterfaces"}), Success("\n"));
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("1\n"));
}

TEST_F(Networks, AreListedWithAllTheirMembersOnceMade) {
  CreateNetwork("Home", 1);
  ExpectNetworks({{}});
}

TEST_F(Networks, AreListedWithTheirInterfacesByID) {
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  EXPECT_EQ(RunTool({"getNetworkInterfaces"}), Success("ID: 1, Interface: \n"
                                                       "\twlan0_1\n\twlan1_1\n\twlan2_1\n"
                                                       "ID: 2, Interface: \n"
                                                       "\twlan0_2\n\twlan1_2\n\twlan2_2\n"
                                                       "\n"));
}

TEST_F(Networks, StandInTheOrderOfTheirIDs) {
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2, "battery-staple");
  ExpectNetworks(
      {{},
       {.id = 2, .slot = 2, .ssid = "Guests", .ssidHex = "477565737473", .passphrase = "battery-staple"}});
}

TEST_F(Networks, CarryTheTimeTheirPassphraseWasSet) {
  const std::time_t before = std::time(nullptr);
  CreateNetwork("Home", 1);
  const std::time_t after = std::time(nullptr);

  const std::string output = RunTool({"getNetworks"}).output;
  std::smatch found;
  ASSERT_TRUE(std::regex_search(output, found, std::regex("\"passphraseChangedAt\" : \"([^\"]*)\"")));
  std::tm parts{};
  const std::string text = found[1];
  const char* end = strptime(text.c_str(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  ASSERT_NE(end, nullptr) << text;
  EXPECT_EQ(*end, '\0') << text;
  EXPECT_LE(before, timegm(&parts));
  EXPECT_GE(after, timegm(&parts));
}

TEST_F(Networks, SwitchTheirAPsOnWhenMadeAndOffWhenDeleted) {
  CreateNetwork("Home", 1);
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
  Do({"deleteNetwork", "--id", "1"});
  EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("1\n"));
}

TEST_F(Networks, LeaveTheOthersAsTheyWereWhenDeleted) {
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  CreateNetwork("Attic", 3);
  Do({"deleteNetwork", "--id", "2"});
  ExpectNetworks({{}, {.id = 3, .slot = 3, .ssid = "Attic", .ssidHex = "4174746963"}});
}

TEST_F(Networks, GetIDsThatNoneHadBeforeAndTheInterfacesThatAreFree) {
  CreateNetwork("Home", 1);
  CreateNetwork("Guests", 2);
  Do({"deleteNetwork", "--id", "1"});
  CreateNetwork("Home", 3);
  ExpectNetworks({{.id = 2, .slot = 2, .ssid = "Guests", .ssidHex = "477565737473"}, {.id = 3}});
  Do({"deleteNetwork", "--id", "2"});
  Do({"deleteNetwork", "--id", "3"});
  CreateNetwork("Home", 4);
  ExpectNetworks({{.id = 4}});
}

TEST_F(Networks, AreAsBeforeAfterARestartOfTheirRadios) {
  CreateNetwork("Home", 1);
  for (const char* force : {"0", "1"}) {
    SCOPED_TRACE(force);
    Do({"restartNetworks", "--force", force});
    ExpectNetworks({{}});
    EXPECT_EQ(RunTool({"isAllNetworkAPDisabled"}), Success("0\n"));
  }
}

TEST_F(Networks, CanBeRestartedWhenThereAreNone) {
  Do({"restartNetworks", "--force", "0"});
  Do({"restartNetworks", "--force", "1"});
  ExpectNetworks({});
}

TEST_F(Networks, RefuseToDeleteAnIDThatNoNetworkHas) {
  CreateNetwork("Home", 1);
  for (const char* id : {"0", "2", "-1", "2147483647"}) {
    EXPECT_EQ(RunTool({"deleteNetwork", std::string("--id=") + id}),
              Refusal(std::string("there is no network ") + id + ": Not found"));
  }
  ExpectNetworks({{}});
  Do({"deleteNetwork", "--id", "1"});
  EXPECT_EQ(RunTool({"deleteNetwork", "--id", "1"}), Refusal("there is no network 1: Not found"));
}

TEST_F(Networks, FitSixteenAndNoMore) {
  for (int id = 1; id <= 16; ++id) {
    CreateNetwork("Network " + std::to_string(id), id);
  }
  EXPECT_EQ(RunTool({"createNetwork", "--ssid", "One more", "--password", "correct-horse"}),
            Failure("Create Network ID: Failed to execute command: the radio Band2_4GHz carries 16 networks "
                    "and cannot carry one more: Limit reached\n"));
  EXPECT_EQ(RunTool({"getInterfaceRadioMap"}).output.find("_17"), std::string::npos);
  // The refused one took no ID, and a deleted one leaves room.
  Do({"deleteNetwork", "--id", "5"});
  CreateNetwork("One more", 17);
}

}  // namespace

}  // namespace TALO::EndToEnd
