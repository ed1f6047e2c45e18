// Networks, the backhaul and its station do not take each other's SSIDs.

#include "support/story_test.h"

namespace TALO::EndToEnd {

namespace {

class SharedSSIDsStory : public StoryTest {
 protected:
  SharedSSIDsStory() { StartStory(""); }

  ToolRun SetUp(const char* command, const std::string& ssid) {
    return RunTool({command, "--enable", "1", "--ssid", ssid, "--password", "mesh-backhaul"});
  }
  void SwitchOff(const char* command) { Do({command, "--enable", "0", "--ssid", "", "--password", ""}); }
  void ExpectNetworkRefused(const std::string& ssid, const std::string& user) {
    EXPECT_EQ(RunTool({"createNetwork", "--ssid", ssid, "--password", "correct-horse"}),
              Failure("Create Network ID: Failed to execute command: the SSID \"" + ssid +
                      "\" is in use by the " + user + ": Already exists\n"));
    ExpectNow({"getNetworks"}, "[]\n\n");
  }
};

TEST_F(SharedSSIDsStory, ANetworkGetsAnSSIDOnceTheBackhaulHasGivenItUp) {
  EXPECT_EQ(SetUp("modifyBackhaul", "Mesh"), Success());
  ExpectNetworkRefused("Mesh", "backhaul");
  SwitchOff("modifyBackhaul");
  CreateNetwork("Mesh", 1);
}

TEST_F(SharedSSIDsStory, ANetworkGetsAnSSIDOnceTheBackhaulStationHasGivenItUp) {
  EXPECT_EQ(SetUp("modifyBackhaulSTA", "Parent"), Success());
  ExpectNetworkRefused("Parent", "backhaul station");
  EXPECT_EQ(SetUp("modifyBackhaulSTA", "Other"), Success());
  CreateNetwork("Parent", 1);
}

TEST_F(SharedSSIDsStory, TheBackhaulGetsAnSSIDOnceItsNetworkIsDeleted) {
  CreateNetwork("Home", 1);
  Do({"deactivate", "--id", "1"});
  for (const char* command : {"modifyBackhaul", "modifyBackhaulSTA"}) {
    EXPECT_EQ(SetUp(command, "Home"), Refusal("the SSID \"Home\" is in use by network 1: Already exists"));
  }
  Do({"deleteNetwork", "--id", "1"});
  // A repeater hands on what it joins.
  EXPECT_EQ(SetUp("modifyBackhaul", "Home"), Success());
  EXPECT_EQ(SetUp("modifyBackhaulSTA", "Home"), Success());
  ExpectNow({"getBackhaulInterfaces"}, "Interfaces: \n\t Band5GHz : wlan1_0\n\n");
  ExpectNow({"getBackhaulSTAInterfaces"}, "Interfaces: \n\t Band5GHz : wlan1bhs\n\n");
  ExpectNetworkRefused("Home", "backhaul");
}

}  // namespace

}  // namespace TALO::EndToEnd
