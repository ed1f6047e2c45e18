#include "support/command_test.h"
#include "support/conversion_messages.h"

#include <stdexcept>

namespace TALO::Tool {

namespace {

class ModifyStation : public CommandTest {
 protected:
  /// The command with the values that a test set in front.
  ToolRun run() {
    daemon_.calls.clear();
    return runTool({"modifyStation", "--enable", "1", "--radio", radio_, "--essid", essid_, "--user", user_,
                    "--password", password_, "--bssid", bssid_, "--securityMode", securityMode_});
  }

  /// Expects success and the call that `setting` lists.
  void expectSent(const std::string& setting) {
    const ToolRun sent = run();
    EXPECT_EQ(sent.output, "");
    EXPECT_EQ(sent.status, 0);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient, "ModifyStation(" + setting + ")"}));
  }

  /// Expects a failure after the client was obtained and before it was asked for anything.
  void expectNotSent(const std::string& message) {
    const ToolRun failed = run();
    EXPECT_EQ(failed.output, message);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(daemon_.calls, (Calls{kAskLogLevel, kGetClient}));
  }

  std::string radio_ = "Band5GHz";
  std::string essid_ = "Upstream";
  std::string user_ = "guest";
  std::string password_ = "correct-horse";
  std::string bssid_ = "02:00:00:00:00:0a";
  std::string securityMode_ = "PersonalWPA2";
};

TEST_F(ModifyStation, SendsAllItsOptions) {
  expectSent(
      R"({enable=true, essid="Upstream", user="guest", password="correct-horse", bssid=02:00:00:00:00:0a, )"
      R"(securityMode=PersonalWPA2, radio=Band5GHz})");
}

TEST_F(ModifyStation, FailsBeforeAnyClientCallWithEveryOptionButUser) {
  const ToolRun run =
      runTool({"modifyStation", "--enable", "1", "--radio", "Band5GHz", "--essid", "Upstream", "--password",
               "correct-horse", "--bssid", "02:00:00:00:00:0a", "--securityMode", "PersonalWPA2"});
  EXPECT_EQ(run.output,
            "Usage: modifyStation --enable 0|1 --radio Band2_4GHz|... --essid essid --bssid bssid "
            "--user user --password password --securityMode PersonalWPA2|...:\n"
            "  --enable arg          enable\n"
            "  --radio arg           radio\n"
            "  --essid arg           essid\n"
            "  --user arg            user\n"
            "  --password arg        password\n"
            "  --bssid arg           bssid\n"
            "  --securityMode arg    securityMode\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(ModifyStation, PrintsItsUsageForAMissingOptionWhateverTheOthersSay) {
  const ToolRun run = runTool({"modifyStation", "--enable", "1", "--radio", "bad", "--essid", "Upstream",
                               "--password", "", "--bssid", "bad", "--securityMode", "bad"});
  EXPECT_EQ(run.output,
            "Usage: modifyStation --enable 0|1 --radio Band2_4GHz|... --essid essid --bssid bssid "
            "--user user --password password --securityMode PersonalWPA2|...:\n"
            "  --enable arg          enable\n"
            "  --radio arg           radio\n"
            "  --essid arg           essid\n"
            "  --user arg            user\n"
            "  --password arg        password\n"
            "  --bssid arg           bssid\n"
            "  --securityMode arg    securityMode\n"
            "\n");
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(daemon_.calls, Calls{kAskLogLevel});
}

TEST_F(ModifyStation, SendsMinus1ForTheSecurityModeError) {
  securityMode_ = "Error";
  expectSent(
      R"({enable=true, essid="Upstream", user="guest", password="correct-horse", bssid=02:00:00:00:00:0a, )"
      R"(securityMode=Error, radio=Band5GHz})");
}

TEST_F(ModifyStation, RefusesASecurityModeInAnotherLetterCase) {
  securityMode_ = "personalwpa2";
  expectNotSent(
      "Failed to execute command: Failed to convert string to enum class "
      "[N4TALO4Wifi4Util12SecurityModeE]: personalwpa2: Runtime error\n");
}

TEST_F(ModifyStation, TakesEveryNameOfASecurityMode) {
  for (const char* mode :
       {"Error", "Disabled", "OWE", "WEP", "PersonalWPA", "PersonalWPA2", "PersonalWPA3", "PersonalWPAMixed",
        "PersonalWPA2_3Mixed", "EnterpriseWPA", "EnterpriseWPA2", "EnterpriseWPA3", "EnterpriseWPAMixed"}) {
    SCOPED_TRACE(mode);
    securityMode_ = mode;
    expectSent(R"({enable=true, essid="Upstream", user="guest", password="correct-horse", )"
               R"(bssid=02:00:00:00:00:0a, securityMode=)" +
               securityMode_ + ", radio=Band5GHz}");
  }
}

TEST_F(ModifyStation, RefusesWordsThatNameNoSecurityMode) {
  for (const char* mode :
       {"", "4", "-1", "WPA2", "PersonalWPA2 ", " OWE", "EnterpriseWPAMixe", "EnterpriseWPAMixedd", "%s%n"}) {
    SCOPED_TRACE(mode);
    securityMode_ = mode;
    expectNotSent(unknownWord(kSecurityModeType, mode));
  }
}

TEST_F(ModifyStation, TakesEveryNameOfARadio) {
  for (const char* radio : {"Error", "SmartConnect", "Band2_4GHz", "Band5GHz", "Band5GHz_1", "Band5GHz_2"}) {
    SCOPED_TRACE(radio);
    radio_ = radio;
    expectSent(R"({enable=true, essid="Upstream", user="guest", password="correct-horse", )"
               R"(bssid=02:00:00:00:00:0a, securityMode=PersonalWPA2, radio=)" +
               radio_ + "}");
  }
}

TEST_F(ModifyStation, RefusesWordsThatNameNoRadio) {
  for (const char* radio : kNoRadios) {
    SCOPED_TRACE(radio);
    radio_ = radio;
    expectNotSent(unknownWord(kRadioFrequencyType, radio));
  }
}

TEST_F(ModifyStation, TakesABSSIDInAnyLetterCaseWithColonsOrDashes) {
  for (const char* bssid : {"02:ab:cd:ef:00:0a", "02:AB:CD:EF:00:0A", "02-ab-Cd-eF-00-0A"}) {
    SCOPED_TRACE(bssid);
    bssid_ = bssid;
    expectSent(R"({enable=true, essid="Upstream", user="guest", password="correct-horse", )"
               R"(bssid=02:ab:cd:ef:00:0a, securityMode=PersonalWPA2, radio=Band5GHz})");
  }
}

TEST_F(ModifyStation, RefusesABSSIDThatIsNoMACAddress) {
  for (const char* bssid : kNoMACAddresses) {
    SCOPED_TRACE(bssid);
    bssid_ = bssid;
    expectNotSent("Invalid MAC address: " + bssid_ + "\n");
  }
}

TEST_F(ModifyStation, ReportsABadBSSIDFirst) {
  bssid_ = "any";
  securityMode_ = "bad mode";
  radio_ = "bad radio";
  expectNotSent("Invalid MAC address: any\n");
}

TEST_F(ModifyStation, ReportsABadSecurityModeBeforeABadRadio) {
  securityMode_ = "bad mode";
  radio_ = "bad radio";
  expectNotSent(unknownWord(kSecurityModeType, "bad mode"));
}

TEST_F(ModifyStation, ReportsAFailureToObtainTheClientBeforeAnyBadWord) {
  daemon_.Fail("WifiClientFactory", std::runtime_error("no client"));
  bssid_ = "any";
  securityMode_ = "bad mode";
  radio_ = "bad radio";
  expectNotSent("no client\n");
}

TEST_F(ModifyStation, PassesTextsOfAnyBytes) {
  essid_ = "a\xff\n ";
  user_ = "-user";
  password_ = "--pass word\x80";
  expectSent(R"({enable=true, essid="a\xff\x0a ", user="-user", password="--pass word\x80", )"
             R"(bssid=02:00:00:00:00:0a, securityMode=PersonalWPA2, radio=Band5GHz})");
}

TEST_F(ModifyStation, PassesEmptyTexts) {
  essid_ = "";
  user_ = "";
  password_ = "";
  expectSent(R"({enable=true, essid="", user="", password="", bssid=02:00:00:00:00:0a, )"
             R"(securityMode=PersonalWPA2, radio=Band5GHz})");
}

}  // namespace

}  // namespace TALO::Tool
