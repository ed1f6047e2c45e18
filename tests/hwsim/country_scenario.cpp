// The country decides which channels there are.

#include "daemon/store/state_codec.h"
#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"
#include "support/files.h"

namespace TALO::Hwsim {

namespace {

const Words kModel = {"--model", "Cedar300"};

using Wifi::Util::RadioFrequency;

constexpr int k5GHzUpper = 5745;  ///< channel 149

class Country : public Scenario {
 protected:
  static bool IsInForce(const std::string& code) {
    return OutputOf({"iw", "reg", "get"}).find("country " + code + ":") != std::string::npos;
  }

  int Channel(const std::string& radio) {
    return Record("getRadioStatuses", "radio", radio)["channel"].asInt();
  }
  /// As the radio was set to be.
  int SetChannel(const std::string& radio) { return Record("getRadios", "radio", radio)["channel"].asInt(); }

  /// The daemon with the network Home and a radio on another channel than its first, which no command sets.
  void StartOnChannel(const Words& options, RadioFrequency radio, int channel) {
    StartOnRadios(options);
    CreateNetwork("Home", 1);
    EndDaemon();
    const std::string file = std::string(kStateDirectory) + "/state.json";
    auto state = Wifid::DecodeState(ReadFile(file));
    ASSERT_TRUE(state.Succeeded());
    for (Wifid::RadioState& each : state.Value().radios) {
      each.channel = each.radio == radio ? channel : each.channel;
    }
    WriteFile(file, Wifid::EncodeState(state.Value()));
    StartOnRadios(options);
  }
};

TEST_F(Country, TheDaemonLeavesTheWorldDomainAt5GHz) {
  ASSERT_TRUE(IsInForce("00"));
  StartOnRadios(kModel + Words{"--country", "DE"});
  EXPECT_TRUE(IsInForce("DE"));
  CreateNetwork("Home", 1);
  EXPECT_EQ(Channel("Band5GHz"), 36);
  Client laptop("laptop", 2);
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
}

TEST_F(Country, AnotherCountryTakesChannelsAwayOnlyFromThoseWhoHaveNoneOfIts) {
  StartOnRadios(kModel + Words{"--country", "DE"});
  CreateNetwork("Home", 1);
  Client phone("phone", 2);
  phone.Join({});
  const std::string since = phone.ConnectedSince();
  Do({"setCountryCode", "--country", "US"});
  EXPECT_EQ(RunTool({"getCountryCode"}), EndToEnd::Success("US\n"));
  EXPECT_TRUE(IsInForce("US"));
  EXPECT_EQ(Channel("Band2_4GHz"), 6);
  EXPECT_EQ(phone.ConnectedSince(), since);
  Client laptop("laptop", 3);
  laptop.Join({.frequency = k5GHz});
}

TEST_F(Country, AChannelThatTheNewCountryForbidsIsLeftAndNoClientOfAnotherRadioNotices) {
  StartOnChannel(kModel + Words{"--country", "US"}, RadioFrequency::Band5GHz, 149);
  EXPECT_EQ(Channel("Band5GHz"), 149);
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  phone.Join({});
  laptop.Join({.frequency = k5GHzUpper, .keyManagement = "SAE"});
  const std::string since = phone.ConnectedSince();

  Do({"setCountryCode", "--country", "DE"});
  EXPECT_TRUE(IsInForce("DE"));
  EXPECT_EQ(Channel("Band5GHz"), 36);
  EXPECT_EQ(SetChannel("Band5GHz"), 36);
  laptop.ExpectDisconnected();
  laptop.Control().Do("REMOVE_NETWORK all");
  WaitUntil("Home is gone from channel 149", [&] { return !laptop.Hears("Home", k5GHzUpper); });
  laptop.Join({.frequency = k5GHz, .keyManagement = "SAE"});
  ExpectDevicesInTheEnd({phone.Address(), laptop.Address()});
  EXPECT_EQ(phone.ConnectedSince(), since);
}

TEST_F(Country, AChannelOf24GHzThatTheNewCountryForbidsIsLeft) {
  constexpr int k2_4GHzUpper = 2472;
  StartOnChannel(kModel + Words{"--country", "DE"}, RadioFrequency::Band2_4GHz, 13);
  EXPECT_EQ(Channel("Band2_4GHz"), 13);
  Client phone("phone", 2);
  Client laptop("laptop", 3);
  phone.Join({.frequency = k2_4GHzUpper});
  laptop.Join({.frequency = k5GHz});
  const std::string since = laptop.ConnectedSince();

  Do({"setCountryCode", "--country", "US"});
  EXPECT_EQ(Channel("Band2_4GHz"), 1);
  EXPECT_EQ(SetChannel("Band2_4GHz"), 1);
  phone.Join({.frequency = 2412});
  EXPECT_EQ(laptop.ConnectedSince(), since);
}

TEST_F(Country, ABadCodeIsRefusedAndChangesNothing) {
  StartOnRadios(kModel + Words{"--country", "DE"});
  CreateNetwork("Home", 1);
  Client laptop("laptop", 2);
  laptop.Join({.frequency = k5GHz});
  const std::string since = laptop.ConnectedSince();
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "AQ"}).status, 1);
  EXPECT_EQ(
      RunTool({"setCountryCode", "--country", "AF"}),
      EndToEnd::Refusal("the country code AF is not among those of the model Cedar300: Invalid argument"));
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "MaxCountryCode"}),
            EndToEnd::Refusal("the country code MaxCountryCode does not exist: Invalid argument"));
  EXPECT_EQ(RunTool({"getCountryCode"}), EndToEnd::Success("DE\n"));
  EXPECT_TRUE(IsInForce("DE"));
  EXPECT_EQ(laptop.ConnectedSince(), since);
}

TEST_F(Country, ACountryIsStillInForceAfterTheDaemonIsStartedAgain) {
  StartOnRadios(kModel + Words{"--country", "DE"});
  Do({"setCountryCode", "--country", "FR"});
  EndDaemon();
  // As the kernel is after a power cut.
  OutputOf({"iw", "reg", "set", "00"});
  WaitUntil("the world is in force", [] { return IsInForce("00"); });
  StartOnRadios(kModel + Words{"--country", "DE"});
  EXPECT_EQ(RunTool({"getCountryCode"}), EndToEnd::Success("FR\n"));
  EXPECT_TRUE(IsInForce("FR"));
}

/// A router whose kernel knows no country's rules: the machine takes the database away for this suite.
class CountryWithoutRules : public Country {};

TEST_F(CountryWithoutRules, ACodeThatTheKernelDoesNotKnowIsRefusedAndChangesNothing) {
  StartOnRadios(kModel + Words{"--country", "DE"});
  EXPECT_EQ(RunTool({"setCountryCode", "--country", "US"}),
            EndToEnd::Failure("Failed to execute command: the kernel does not take the country US: it has "
                              "the rules of the world: Radio failed\n"));
  EXPECT_EQ(RunTool({"getCountryCode"}), EndToEnd::Success("DE\n"));
  EXPECT_TRUE(IsInForce("00"));
  const EndToEnd::ToolRun run = RunTool({"createNetwork", "--ssid", "Home", "--password", "correct-horse"});
  EXPECT_EQ(run, EndToEnd::Failure(
                     "Create Network ID: Failed to execute command: the kernel does not take the country "
                     "DE: it has the rules of the world: Radio failed\n"));
  EXPECT_TRUE(Ask({"getNetworks"}).empty());
}

}  // namespace

}  // namespace TALO::Hwsim
