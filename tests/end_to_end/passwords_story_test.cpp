// Rotated passwords.

#include "support/story_test.h"

#include <regex>

namespace TALO::EndToEnd {

namespace {

const char* kPhone = R"("devices": [
  {"address": "0a:00:00:00:00:01", "knows": [{"ssid": "Home", "passphrase": "correct-horse"}]}])";

class PasswordsStory : public StoryTest {
 protected:
  PasswordsStory() {
    StartStory(kPhone);
    SignalLog signals(Address());
    CreateNetwork("Home", 1);
    signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan1_1");
  }

  /// Those of getNetworks in their order: the network's, that of the 2.4 GHz and that of the 5 GHz radio.
  std::vector<std::string> Passphrases() {
    const std::string output = RunTool({"getNetworks"}).output;
    const std::regex line("\"passphrase\" : \"([^\"]*)\"");
    std::vector<std::string> found;
    for (std::sregex_iterator at(output.begin(), output.end(), line), end; at != end; ++at) {
      found.push_back((*at)[1]);
    }
    return found;
  }

  static bool IsDrawn(const std::string& passphrase) {
    return std::regex_match(passphrase, std::regex("[34679ADEFHLMNRTacdefhjkmnprtwxy]{20}"));
  }
};

TEST_F(PasswordsStory, ARotationGivesTheNetworkANewPasswordAndDropsWhoKnewTheOld) {
  EXPECT_EQ(Passphrases(), std::vector<std::string>(3, "correct-horse"));
  SignalLog signals(Address());
  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  const auto first = Passphrases();
  ASSERT_EQ(first.size(), 3U);
  EXPECT_TRUE(IsDrawn(first[0])) << first[0];
  EXPECT_EQ(first, std::vector<std::string>(3, first[0]));
  ExpectNow({"getDevices"}, "[]\n\n");
  EXPECT_EQ(signals.Get(),
            (std::vector<std::string>{"StationDisconnected 0a:00:00:00:00:01 1 wlan1_1 passphrase changed",
                                      "NetworksChanged"}));

  Do({"rotatePassword", "--id", "1", "--radio", "SmartConnect"});
  EXPECT_NE(Passphrases(), first);
}

TEST_F(PasswordsStory, ARotationOnOneRadioLeavesTheOtherItsPassword) {
  SignalLog signals(Address());
  Do({"rotatePassword", "--id", "1", "--radio", "Band5GHz"});
  const auto rotated = Passphrases();
  ASSERT_EQ(rotated.size(), 3U);
  EXPECT_EQ(rotated[0], "correct-horse");
  EXPECT_EQ(rotated[1], "correct-horse");
  EXPECT_TRUE(IsDrawn(rotated[2])) << rotated[2];
  // The phone still has the other radio.
  signals.WaitFor("StationConnected 0a:00:00:00:00:01 1 wlan0_1");
}

TEST_F(PasswordsStory, ARotatedPasswordSurvivesARestart) {
  Do({"rotatePassword", "--id", "1", "--radio", "Band5GHz"});
  const auto before = Passphrases();
  RestartDaemon({.options = {"--log-level", "Debug", "--model", "Cedar300"}});
  EXPECT_EQ(Passphrases(), before);
}

TEST_F(PasswordsStory, ARotationOfNothingIsRefusedAndChangesNothing) {
  EXPECT_EQ(RunTool({"rotatePassword", "--id", "2", "--radio", "SmartConnect"}),
            Refusal("there is no network 2: Not found"));
  EXPECT_EQ(RunTool({"rotatePassword", "--id", "1", "--radio", "Error"}),
            Refusal("the radio Error does not exist: Invalid argument"));
  EXPECT_EQ(Passphrases(), std::vector<std::string>(3, "correct-horse"));
}

}  // namespace

}  // namespace TALO::EndToEnd
