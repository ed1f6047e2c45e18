// The country decides which channels there are.

#include "hwsim/support/client.h"
#include "hwsim/support/scenario.h"
#include "hwsim/support/waiting.h"

namespace TALO::Hwsim {

namespace {

const Words kModel = {"--model", "Cedar300"};

class Country : public Scenario {
 protected:
  static bool IsInForce(const std::string& code) {
    return OutputOf({"iw", "reg", "get"}).find("country " + code + ":") != std::string::npos;
  }

  int Channel(const std::string& radio) {
    return Record("getRadioStatuses", "radio", radio)["channel"].asInt();
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

}  // namespace

}  // namespace TALO::Hwsim
